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

run_tests() {
    wineserver -p >/dev/null 2>&1 </dev/null
    scripts/wine.sh cmd /c exit >/dev/null 2>&1 </dev/null
    local failed=0
    for preset in host host-asan mingw-x64; do
        echo "Testing $preset"
        ctest --preset "$preset" --no-tests=error -j "$(nproc)" || failed=1
    done
    return "$failed"
}
export -f run_tests
scripts/with-display.sh bash -c run_tests
