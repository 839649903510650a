#!/usr/bin/env bash
# Runs a test program in Wine and prints what it printed, what Wine has to complain of included: run-in-wine.sh PROGRAM
# [ARGUMENT...]. Wine's own processes outlive a test and hold its output open, for which the test runner would wait.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
WINEDEBUG=err+all,fixme-all "$root/scripts/wine.sh" "$@" >"$log" 2>&1 </dev/null || status=$?
cat "$log"
# Wine prints what it has to complain of; without a word of either a test program has not begun.
if [ "$status" != 0 ] && ! grep -q '^Running main' "$log"; then
    echo "run-in-wine.sh: exit code $status before the first line of $1"
fi
exit "$status"
