#!/usr/bin/env bash
# Runs a command on a virtual screen of its own and returns its exit code: with-display.sh COMMAND [ARGUMENT...]
set -euo pipefail
numberFile=$(mktemp)
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$numberFile" >/dev/null 2>&1 &
server=$!
trap 'kill "$server" 2>/dev/null; wait "$server" 2>/dev/null; rm -f "$numberFile"' EXIT
for _ in $(seq 100); do
    [ -s "$numberFile" ] && break
    kill -0 "$server" || { echo 'with-display.sh: the virtual screen did not start' >&2; exit 1; }
    sleep 0.1
done
DISPLAY=:$(cat "$numberFile")
export DISPLAY
status=0
"$@" || status=$?
exit "$status"
