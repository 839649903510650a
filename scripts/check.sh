#!/usr/bin/env bash
# Checks the sources without running them: format, include fence, tidy text files, shell scripts, and clang-tidy.
# Every finding names the command that mends it. `check.sh --quick` leaves clang-tidy out.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
failed=0
complain() {
    printf '%s\n' "$*" >&2
    failed=1
}

mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h')
mapfile -t scripts < <(git ls-files --cached --others --exclude-standard -- '*.sh' .ci/run)

echo 'check: format'
if ! clang-format --dry-run -Werror "${sources[@]}" 2>/tmp/velbooter-format.$$; then
    head -n 20 /tmp/velbooter-format.$$ >&2
    complain 'The format differs. Mend it with: git ls-files "*.cpp" "*.h" | xargs clang-format -i'
fi
rm -f /tmp/velbooter-format.$$

echo 'check: text files'
bad=$(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' '*.sh' '*.md' '*.cmake' '*.txt' '*.asm' '*.json' \
    ':!data' ':!demo' | tr '\n' '\0' | xargs -0 grep -lE $'\r$|[ \t]+$' || [ $? -le 123 ])
[ -z "$bad" ] || complain "Trailing blanks or CR LF in: $bad. Mend with: sed -i 's/[ \\t\\r]*\$//' FILE"

echo 'check: links'
while IFS=: read -r page link; do
    [ -e "$(dirname "$page")/${link%%#*}" ] || complain "$page links to $link, which is not there. Mend the link or bring the file."
done < <(git ls-files --cached --others --exclude-standard -- '*.md' | xargs grep -oE '\]\([^)]+\)' /dev/null |
    sed -E 's/\]\(([^)]*)\)$/\1/' | grep -vE ':(https?:|#)')

echo 'check: include fence'
scripts/include-fence.sh || complain 'Mend it by moving the code to the floor it belongs to.'

echo 'check: shell scripts'
shellcheck -x "${scripts[@]}" || complain 'Mend each line as shellcheck says.'

if [ "${1-}" != --quick ]; then
    echo 'check: clang-tidy'
    scripts/tidy.sh || complain 'Mend each finding; a check that is wrong here is switched off in .clang-tidy with its reason.'
fi
[ "$failed" = 0 ] && echo 'check: nothing found'
exit "$failed"
