#!/usr/bin/env bash
# Times the program under Wine with many disks, drivers and files, each load compared with half of it, and the longest
# time that a message from another program waited for its answer: load.sh [RUNS]
# Needs build/demo (scripts/build.sh).
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=bench/wine-environment.sh
. bench/wine-environment.sh
export runs=${1:-5}
scripts/build-preset.sh mingw-x64 load_bench
log=$(mktemp)
export log
trap 'stop_wine; rm -f "$log"' EXIT
stop_wine

measure() {
    wineserver -p
    wine cmd /c exit
    wine build/mingw-x64/tests/load_bench.exe "$runs" || return
    # Before the screen disappears, which Wine would report.
    stop_wine
}
export -f measure stop_wine in_wine_root
"${on_one_core[@]}" scripts/with-display.sh bash -c measure >"$log" 2>&1 </dev/null || { tail -n 20 "$log" >&2; exit 1; }
# What the archiver prints goes to the same place.
sed -n '/^The program under great loads/,$p' "$log"
