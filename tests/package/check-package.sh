#!/usr/bin/env bash
# Packs the contents of a build folder and inspects the package as a file: the same bytes every time, the right checksum,
# every file that docs/shipped-files.md promises and no other. check-package.sh BUILD ARCHITECTURE (x64 or x86)
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/package/common.sh
. "$root/tests/package/common.sh"
build=$1
architecture=$2
make_scratch

# Neither the folder, the user's settings nor the time of day may have an effect.
export SOURCE_DATE_EPOCH=1700000001
pack "$build" "$scratch/first"
(umask 077 && export TZ=Asia/Tokyo && pack "$build" "$scratch/second")
version=$(sed -n 's/.*VERSION_TEXT "\(.*\)"/\1/p' "$root/resources/Version.h")
zip=velbooter-$version-$architecture.zip
[ -f "$scratch/first/$zip" ] || fail "there is no $zip"
cmp "$scratch/first/$zip" "$scratch/second/$zip" || fail "$zip differs when it is packed again"
[ "$(wc -l <"$scratch/first/$zip.sha256")" = 1 ] || fail "$zip.sha256 has more than its line"
(cd "$scratch/first" && sha256sum --check --strict --quiet "$zip.sha256") || fail "$zip.sha256 is not that of $zip"

# The tools it was built with, as Debian knows them by the names of their packages.
tools=velbooter-$version-$architecture.toolchain.txt
case $architecture in x64) processor=x86-64 ;; *) processor=i686 ;; esac
dpkg-query -W -f '${Package} ${Version}\n' "g++-mingw-w64-$processor-posix" "binutils-mingw-w64-$processor" \
    "mingw-w64-$processor-dev" libz-mingw-w64-dev | sort >"$scratch/tools"
sed -E 's/^(compiler|linker|C runtime|zlib): .*[0-9].*, //' "$scratch/first/$tools" | sort >"$scratch/named"
diff "$scratch/tools" "$scratch/named" >&2 || fail "$tools names other tools (>) than those installed (<)"
cmp "$scratch/first/$tools" "$scratch/second/$tools" || fail "$tools differs when $zip is packed again"

# A ZIP file counts time in steps of two seconds.
times=$(unzip -Z -T "$scratch/first/$zip" | sed -n 's/^-.* \([0-9]\{8\}\.[0-9]\{6\}\) .*/\1/p' | sort -u)
[ "$times" = 20231114.221322 ] || fail "the files of $zip have other times than SOURCE_DATE_EPOCH: $times"
# Extra fields would contain the user's ID.
if unzip -Z -v "$scratch/first/$zip" | grep 'length of extra field' | grep -qv ' 0 bytes'; then
    fail "$zip keeps more of its files than it needs"
fi
(unset SOURCE_DATE_EPOCH && pack "$build" "$scratch/unset")
(SOURCE_DATE_EPOCH=$(git -c "safe.directory=$(cd "$root" && pwd -P)" -C "$root" log -1 --format=%ct) && pack "$build" "$scratch/commit")
cmp "$scratch/unset/$zip" "$scratch/commit/$zip" || fail "without SOURCE_DATE_EPOCH $zip has not the time of the last commit"

# "Extract here" must not mix the program with other files: it empties its folders cabs and Temp.
top=${zip%.zip}
unpack "$scratch/first/$zip" "$scratch"
{
    printf '%s\n' velbooter.exe velbooter.com bfi.exe cabarc.exe corvane_help.chm files/bootsect.bin user-guide.html \
        LICENSE.txt CHANGELOG.txt files/freedos/{ABSENT.EXE,IO.SYS} files/realmode/{BOOTHD,FINDRAM,PCIFIND,WHICHDRV}.COM \
        files/realmode/{UNPACK.EXE,VELRAM.SYS}
    # shellcheck disable=SC1003,SC2016  # the table's paths, between backquotes, with backslashes
    sed -n 's/^| `\([^`]*\)`.*/\1/p' "$root/docs/shipped-files.md" | tr '\\' /
} | LC_ALL=C sort >"$scratch/promised"
(cd "$scratch/$top" && find . -type f -printf '%P\n' | LC_ALL=C sort) >"$scratch/found"
diff "$scratch/promised" "$scratch/found" >&2 || fail "$zip holds other files (>) than docs/shipped-files.md promises (<)"

while read -r file; do
    cmp "$root/data/$file" "$scratch/$top/$file" || fail "$file is not that of data/"
done < <(cd "$root/data" && find . -type f -printf '%P\n')
case $architecture in x64) format=pei-x86-64 ;; *) format=pei-i386 ;; esac
for program in velbooter.exe velbooter.com bfi.exe cabarc.exe; do
    x86_64-w64-mingw32-objdump -f "$scratch/$top/$program" | grep -q "file format $format\$" ||
        fail "$program is not a program of $architecture"
done
(cd "$scratch/$top" && "$root/tests/programs/check-programs.sh" x86_64-w64-mingw32-objdump "$version" velbooter.exe \
    velbooter.com bfi.exe cabarc.exe) || fail "the programs of $zip are not what they have to be"
for text in LICENSE CHANGELOG; do
    tr -d '\r' <"$scratch/$top/$text.txt" | cmp - "$root/$text"* || fail "$text.txt is not $text"
    [ "$(grep -c $'\r$' "$scratch/$top/$text.txt")" = "$(wc -l <"$scratch/$top/$text.txt")" ] ||
        fail "$text.txt has lines that Windows does not end"
done
grep -q '<title>The Veltrane: the guide</title>' "$scratch/$top/user-guide.html" || fail 'user-guide.html is not the guide'
echo "$zip: $(wc -l <"$scratch/found") files"
