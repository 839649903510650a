#!/usr/bin/env bash
# Packs the test programs of a build folder, unpacks them into a folder with spaces in its name and runs them with their
# run-tests.bat: run-packed-tests.sh BUILD ARCHITECTURE (x64 or x86). ctest has already run all of them, so some tests of each
# program are enough.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/package/common.sh
. "$root/tests/package/common.sh"
# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"
# shellcheck source=scripts/wine-path.sh
. "$root/scripts/wine-path.sh"
build=$1
architecture=$2
make_scratch

export SOURCE_DATE_EPOCH=1700000001
pack "$build" "$scratch/first" CPackTests.cmake
(umask 077 && export TZ=Asia/Tokyo && pack "$build" "$scratch/second" CPackTests.cmake)
version=$(sed -n 's/.*VERSION_TEXT "\(.*\)"/\1/p' "$root/resources/Version.h")
zip=velbooter-$version-$architecture-tests.zip
cmp "$scratch/first/$zip" "$scratch/second/$zip" || fail "$zip differs when it is packed again"
(cd "$scratch/first" && sha256sum --check --strict --quiet "$zip.sha256") || fail "$zip.sha256 is not that of $zip"

mkdir "$scratch/my tests (1)"
unpack "$scratch/first/$zip" "$scratch/my tests (1)"
folder="$scratch/my tests (1)/${zip%.zip}"
tests=$folder/tests
programs=$(tr -d "\r" <"$folder/run-tests.bat" | sed -n "s/^call :run //p")
[ -n "$programs" ] || fail 'run-tests.bat runs nothing'
twice=$(find "$folder" -type f -size +50k -exec sha256sum {} + | sort | uniq -w 64 -d)
[ -z "$twice" ] || fail "these are in $zip twice: $twice"

# Every name in left-out.txt must match a test. ctest lists the cases of a program when it starts.
while read -r program pattern; do
    [ -f "$build/tests/$program.exe" ] || fail "left-out.txt names $program, which is no test program"
    [ "$pattern" != '*' ] || continue
    awk '/^[^ ]/ { suite = $1 } /^ / { print suite $1 }' "$build/tests/$program.exe.cases" >"$scratch/cases"
    found=false
    while read -r name; do
        # shellcheck disable=SC2053  # the right side is a pattern
        if [[ $name == $pattern ]]; then found=true; fi
    done <"$scratch/cases"
    "$found" || fail "no test of $program has a name like $pattern"
done < <(tr -d '\r' <"$folder/left-out.txt" | sed -n 's/^    //p')

# run CODE PROGRAM...: runs run-tests.bat for these programs, or for all of them, and expects its exit code.
export CI=true
run() {
    local expected=$1 status=0
    shift
    rm -f "$folder/report.txt"
    (cd / && "$root/scripts/wine.sh" cmd /c call "$(wine_path "$folder/run-tests.bat")" "$@" </dev/null >"$scratch/shown" 2>&1) ||
        status=$?
    tr -d '\r' <"$scratch/shown" >"$scratch/lines"
    if [ -f "$folder/report.txt" ]; then tr -d "\r" <"$folder/report.txt"; fi >"$scratch/report"
    [ "$status" = "$expected" ] ||
        fail "run-tests.bat ended with $status instead of $expected: $(cat "$scratch/lines" "$scratch/report")"
}

# What a run could have changed outside its folder: the files of drive C: and the user's registry. Wine itself rewrites files in
# the folder windows and records windows in its own keys.
look_outside() {
    find "$WINEPREFIX/drive_c" -path "$WINEPREFIX/drive_c/windows" -prune -o -printf '%P %s %T@\n' | sort
    find "$WINEPREFIX/drive_c/windows" -printf '%P %s\n' | sort
    "$root/scripts/wine.sh" reg export HKCU "$(wine_path "$scratch/user.reg")" /y </dev/null >"$scratch/export" 2>&1 ||
        fail "no registry: $(cat "$scratch/export")"
    iconv -f utf-16 -t utf-8 "$scratch/user.reg" |
        awk '/^\[/ { of_wine = index($0, "[HKEY_CURRENT_USER\\Software\\Wine\\") == 1 } !of_wine'
}
# Wine starts a desktop for the first window and ends it a second after the last one. The desktop keeps the output of the
# program that caused it open. So that this is not the program of a test, a window stays open all the time.
"$root/scripts/wine.sh" notepad </dev/null >/dev/null 2>&1 &
trap 'rm -rf "$scratch"; kill %%' EXIT
timeout 300 xdotool search --sync --onlyvisible --name ' - Notepad$' >/dev/null || fail 'no window can be shown'
look_outside >"$scratch/before"

# The first of the tests of each program.
export GTEST_TOTAL_SHARDS=200 GTEST_SHARD_INDEX=0
run 0
for program in $programs; do
    grep -q "^$program: [1-9][0-9]* ran, [1-9][0-9]* passed, 0 failed (exit code 0)\$" "$scratch/report" ||
        fail "$program is not in the report: $(cat "$scratch/report")"
done
grep -q 'Windows' "$scratch/report" || fail 'the report does not name the Windows'
passed=$(($(sed -n "s/^[a-z0-9_]*: [0-9]* ran, \([0-9]*\) passed.*/\1/p" "$scratch/report" | paste -sd+)))
[ "$(tail -n 1 "$scratch/report")" = "$passed passed, 0 failed" ] || fail "the report does not end with its sum"
grep -q "^$passed passed, 0 failed: " "$scratch/lines" || fail "the sum is not shown: $(cat "$scratch/lines")"
look_outside >"$scratch/after"
diff "$scratch/before" "$scratch/after" >&2 || fail 'the tests have changed something outside their folder'
[ ! -e "$folder/temp" ] || fail "temporary files are left: $(find "$folder/temp")"
unset GTEST_TOTAL_SHARDS GTEST_SHARD_INDEX

# A test that fails, a program without tests, one that cannot start, and one that does not exist.
rm "$tests/demo/bfi.exe"
cp "$tests/demo/cabarc.exe" "$tests/test_console.exe"
echo 'no program' >"$tests/test_forms.exe"
run 1 bfi_tests test_console test_forms
grep -q '^bfi_tests: [0-9]* ran, [1-9][0-9]* passed, [1-9][0-9]* failed (exit code 1)$' "$scratch/report" ||
    fail "the report does not mention the tests that fail: $(cat "$scratch/report")"
grep -q 'BfiProgram.IsSilentAndGives0WhenTheImageIsWritten' "$scratch/report" || fail 'the report does not name a test that failed'
grep -q '^test_console: 0 ran, 0 passed, 1 failed (exit code 2)$' "$scratch/report" || fail 'a program without tests passes'
grep -q '^test_forms: 0 ran, 0 passed, 1 failed' "$scratch/report" || fail 'a program that cannot start passes'
run 1 test_nosuch
grep -q '^There is no test program test_nosuch\.$' "$scratch/lines" || fail 'a wrong name is not named'
echo "$zip: $(wc -w <<<"$programs") programs, $passed tests run"
