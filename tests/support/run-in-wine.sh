#!/usr/bin/env bash
# Runs a test program in Wine and prints what it printed: run-in-wine.sh PROGRAM [ARGUMENT...]
# Wine's own processes outlive a test and hold its output open, for which the test runner would wait. And once in a long
# while, on a busy machine, Wine ends before the program has begun: nothing is printed then, not even the first
# line of every test program, and the program is started again, once.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
run() {
    status=0
    "$root/scripts/wine.sh" "$@" >"$log" 2>&1 </dev/null || status=$?
}
run "$@"
if [ "$status" != 0 ] && [ ! -s "$log" ]; then
    echo "run-in-wine.sh: exit code $status before the first line; starting $1 again" >&2
    run "$@"
fi
cat "$log"
exit "$status"
