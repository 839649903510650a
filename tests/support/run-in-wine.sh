#!/usr/bin/env bash
# Runs a test program in Wine and prints its output, including Wine's own messages: run-in-wine.sh PROGRAM
# [ARGUMENT...]. Wine's own processes outlive a test and keep its output open, and the test runner would wait for them.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
status=0
WINEDEBUG=err+all,fixme-all "$root/scripts/wine.sh" "$@" >"$log" 2>&1 </dev/null || status=$?
cat "$log"
# Wine prints its own messages, too, so a missing first line of the tests means that the test program has not started.
if [ "$status" != 0 ] && ! grep -q '^Running main' "$log"; then
    echo "run-in-wine.sh: exit code $status before the first line of $1"
fi
exit "$status"
