#!/usr/bin/env bash
# Runs the tests of one preset, those for Windows under the Wine of their architecture and on a virtual screen of their own,
# and prints how many there were: run-tests.sh PRESET [CTEST OPTION...]. The preset must have been built; `-R TEXT` runs the
# tests whose names contain TEXT. The exit code is 0 only if at least one test ran and none failed.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
begun=false
if [ "${1-}" = --on-screen ]; then
    begun=true
    shift
fi
preset=${1:?usage: run-tests.sh PRESET [CTEST OPTION...]}
shift

case $preset in
    mingw-*)
        export VELBOOTER_WINE=${preset#mingw-}
        # shellcheck source=scripts/wine-environment.sh
        . scripts/wine-environment.sh
        if ! $begun; then
            enter=(scripts/with-display.sh scripts/run-tests.sh --on-screen "$preset" "$@")
            if [ "$VELBOOTER_WINE" = x86 ] && ! sees_checkout; then enter=(scripts/with-i386-root.sh "${enter[@]}"); fi
            exec "${enter[@]}"
        fi
        # One server for all tests: a cold start would cost each of them seconds. The server and the services that the first
        # program starts keep their output open as long as they run, so they do not get ours.
        trap stop_wine EXIT
        stop_wine
        in_wine_root wineserver -p >/dev/null 2>&1 </dev/null
        scripts/wine.sh cmd /c exit >/dev/null 2>&1 </dev/null
        ;;
esac

export CTEST_PARALLEL_LEVEL=${CTEST_PARALLEL_LEVEL:-$(nproc)}
status=0
log=build/$preset/Testing/Temporary/LastTest.log
rm -f "$log"
ctest --preset "$preset" "$@" || status=$?
if [ ! -f "$log" ]; then
    echo "run-tests.sh: no test of $preset was run" >&2
    exit 1
fi

# A ctest test is a suite of a test program, a single case of one, or a script.
awk -v preset="$preset" '
    function end_test() {
        if (name == "") return
        if (cases == 0) { cases = 1; failures = passed ? 0 : 1 }
        if (!passed && failures == 0) failures = 1
        all += cases; failed += failures
    }
    / Testing: / { end_test(); name = $3; cases = failures = 0; passed = 0 }
    /^\[==========\] [0-9]+ tests? .* ran\./ { cases = $2 }
    /^\[  FAILED  \] [0-9]+ tests?, listed below:/ { failures = $4 }
    /^Test Passed\./ { passed = 1 }
    /^run-in-wine\.sh: exit code .* before the first line/ { dead = dead " " name }
    END {
        end_test()
        if (dead != "") printf "%s: ended before their first line:%s\n", preset, dead
        printf "%s: %d tests passed, %d failed\n", preset, all - failed, failed
    }
' "$log"
exit "$status"
