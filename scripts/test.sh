#!/usr/bin/env bash
# Sets up, builds everything, checks the sources and runs every test. The last lines are the test runner's own; the exit code
# is 0 only when nothing failed.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/build.sh"
cd "$root"
# shellcheck source=scripts/wine-environment.sh
. scripts/wine-environment.sh
scripts/check.sh

for preset in host host-asan mingw-x64; do
    echo "Building $preset"
    scripts/build-preset.sh "$preset"
done
echo 'Building mingw-x86, of which only the package is tested'
scripts/build-preset.sh mingw-x86 shipped

# One server for all tests: a cold start would cost each of them seconds. The server and the services that the first program
# starts keep their output open as long as they live, so they get none of ours.
stop_wine() { if wineserver -k 2>/dev/null; then wineserver -w; fi; }
trap stop_wine EXIT
stop_wine

# Once in some thousand starts Wine does not start a process, of the tests or of what they run. So a test under Wine that fails
# is run once more (see CMakePresets.json), and here is said which ones that were: a name that comes back is a fault.
tell_repeated() {
    sed -n 's/^ *[0-9/]* *Test *#[0-9]*: \([^ ]*\) .*\*\*\*.*/Failed at first: \1/p' "$1" | sort -u
}

run_tests() {
    wineserver -p >/dev/null 2>&1 </dev/null
    scripts/wine.sh cmd /c exit >/dev/null 2>&1 </dev/null
    local failed=0
    for preset in host host-asan mingw-x64; do
        echo "Testing $preset"
        ctest --preset "$preset" --no-tests=error -j "$(nproc)" --output-log "build/$preset-tests.log" || failed=1
        tell_repeated "build/$preset-tests.log"
    done
    return "$failed"
}
export -f run_tests tell_repeated
scripts/with-display.sh bash -c run_tests
