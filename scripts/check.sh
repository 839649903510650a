#!/usr/bin/env bash
# Checks the sources without running them: format, text files, links, include fence, reasons for silenced checkers, names of
# temporary files, shell scripts, and clang-tidy.
# Every finding names the command that fixes it. `check.sh --quick` leaves out clang-tidy.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=scripts/sources.sh
. scripts/sources.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
complain() {
    printf '%s\n' "$*" >&2
    failed=1
}

sources=() scripts=() programs=() pages=() texts=()
list_sources sources '*.cpp' '*.h'
list_sources scripts '*.sh' .ci/run
list_sources programs '*.py' '*.cmake' CMakeLists.txt '*/CMakeLists.txt'
list_sources pages '*.md'
list_sources texts '*.cpp' '*.h' '*.sh' '*.md' '*.cmake' '*.txt' '*.asm' '*.json' ':!data' ':!demo'

echo 'check: format'
if ! clang-format --dry-run -Werror "${sources[@]}" 2>"$work/format"; then
    head -n 20 "$work/format" >&2
    complain 'The format differs. Fix it with: git ls-files "*.cpp" "*.h" | xargs clang-format -i'
fi

echo 'check: text files'
search "$work/bad" -lE $'\r$|[ \t]+$' "${texts[@]}"
while IFS= read -r file; do
    complain "$file has trailing spaces or CR LF. Fix it with: sed -i 's/[ \\t\\r]*\$//' '$file'"
done <"$work/bad"

echo 'check: links'
search "$work/links" -HZoE '\]\([^)]+\)' "${pages[@]}"
while IFS= read -r -d '' page && IFS= read -r link; do
    link=${link#']('}
    link=${link%')'}
    case $link in http:* | https:* | '#'*) continue ;; esac
    [ -e "$(dirname "$page")/${link%%#*}" ] || complain "$page links to $link, which does not exist. Fix the link or add the file."
done <"$work/links"

echo 'check: include fence'
scripts/include-fence.sh || complain 'Fix it by moving the code to the layer that it belongs to.'

echo 'check: reasons'
# Whatever silences a checker gives its reason on the same line or in a comment on the line above.
LC_ALL=C awk '
    FNR == 1 { above = "" }
    /NOLIN[T]|#[ \t]*shellcheck[ \t]+disable=|#[ \t]*pragma[ \t].*diagnostic[ \t]+ignored/ {
        reason = $0
        sub(/^.*(NOLIN[T][A-Z]*(\([^)]*\))?|disable=[A-Za-z0-9,-]*|ignored[ \t]*"[^"]*")/, "", reason)
        if (reason !~ /[[:alpha:]]/ && above !~ /^[ \t]*(#[^!]|\/\/).*[[:alpha:]]/) print FILENAME ":" FNR
    }
    { above = /shellcheck[ \t]+[a-z]+=|NOLIN[T]|#[ \t]*(include|pragma|define|if|else|endif)/ ? "" : $0 }
' "${sources[@]}" "${scripts[@]}" >"$work/bare"
while IFS= read -r place; do
    complain "$place silences a checker and does not say why. Fix the cause, or add the reason to the line."
done <"$work/bare"

echo 'check: temporary files'
# Anyone who can predict a name in the folder that all users share can create it first.
search "$work/shared" -nE '/tm[p]/|temp_directory_path\(\)[^;]*/ *"[^"]*";' "${sources[@]}" "${scripts[@]}" "${programs[@]}"
while IFS= read -r place; do
    complain "A name in the shared temporary folder can be predicted: $place. Fix it with mktemp or a fresh folder."
done <"$work/shared"

echo 'check: shell scripts'
shellcheck -x "${scripts[@]}" || complain 'Fix each line as shellcheck says.'

if [ "${1-}" != --quick ]; then
    echo 'check: clang-tidy'
    scripts/tidy.py || complain 'Fix each finding; a check that does not fit this project is turned off in .clang-tidy, with its reason.'
fi
[ "$failed" = 0 ] && echo 'check: nothing found'
exit "$failed"
