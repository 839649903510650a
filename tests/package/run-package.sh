#!/usr/bin/env bash
# Uses the package as a user does: unpacks it into a folder with spaces in its name, renames the new folder, also with a space,
# copies the DOS files, here their stand-ins, to its folder dos, builds a disk with one command, opens and closes the wizard:
# run-package.sh BUILD DOSFILES E2E_TESTS.exe
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=tests/package/common.sh
. "$root/tests/package/common.sh"
# shellcheck source=tests/e2e/common.sh
. "$root/tests/e2e/common.sh"
make_scratch
pack "$1" "$scratch/packed"
application="$scratch/my programs/The Veltrane"
mkdir "$scratch/my programs"
unpack "$scratch"/packed/*.zip "$scratch/my programs"
mv "$scratch/my programs"/velbooter-* "$application"
cp -a "$2" "$application/dos"

# Wine would put a word with spaces in double quotes, which the program treats as part of the target.
run_program -t 144 minimal my 'disks\boot' disk.img
check_image "$application/my disks/boot disk.img" 1474560
mtype -i "$application/my disks/boot disk.img" ::IO.SYS | cmp - "$2/IO.SYS" || fail 'the image does not contain the DOS files'

# The window tests use copies of this folder, also with spaces in their paths.
tests='ConsoleTwinTest.WaitsForTheBuildAndNamesTheImage:Each/WithoutArguments.OpensTheWizardAndDoesNotWaitForIt/*'
VELBOOTER_DEMO_FOLDER=$application "$root/tests/support/run-in-wine.sh" "$3" "--gtest_filter=$tests" >"$scratch/windows.log" 2>&1 ||
    fail "velbooter.com or the wizard: $(cat "$scratch/windows.log")"
grep -qF '[  PASSED  ] 3 tests.' "$scratch/windows.log" || fail "there are not three tests of windows: $(cat "$scratch/windows.log")"
