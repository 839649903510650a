#!/usr/bin/env bash
# Configures and builds one preset, quietly: build-preset.sh PRESET [TARGET...]. Without a target it builds
# everything. The output of the tools goes to build/PRESET.log; its end is shown if something fails.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
preset=$1
shift
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
mkdir -p build
log=$root/build/$preset.log
if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "build-preset.sh: the build of $preset failed; the whole log is $log" >&2
    exit 1
fi
