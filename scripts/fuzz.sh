#!/usr/bin/env bash
# Fuzzes the companions, each target for MINUTES (default 10), two at a time: fuzz.sh [MINUTES] [TARGET...]
# Targets: lzx cabinet image reader arguments names unpack, and lines, the random lines for the program's own readers, which run
# under Wine. Without a target all of them run. The corpus is kept in build/fuzz/TARGET for the next time; an input that
# breaks something is left in build/fuzz, and the exit code is then 1.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
all=(lzx cabinet image reader arguments names unpack lines)
# The number of tests with random lines, which have no corpus and share the time.
lineSeries=5

minutes=10
if [[ ${1-} =~ ^[0-9]+$ ]]; then
    minutes=$1
    shift
fi
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=("${all[@]}")
native=()
withLines=false
for target in "${targets[@]}"; do
    if [[ " ${all[*]} " != *" $target "* ]]; then
        echo "fuzz.sh: there is no target $target; there are: ${all[*]}" >&2
        exit 2
    fi
    if [ "$target" = lines ]; then withLines=true; else native+=("$target"); fi
done

"$root/scripts/setup.sh"
cd "$root"
mkdir -p build/fuzz
if [ ${#native[@]} -gt 0 ]; then scripts/build-preset.sh host-fuzz "${native[@]/#/fuzz_}"; fi
if $withLines; then scripts/build-preset.sh mingw-x64 test_random_lines; fi

# The files that the targets pack are kept in memory if the system has a place for that.
if [ -d /dev/shm ]; then export TMPDIR=/dev/shm; fi

run_native() { # run_native TARGET SECONDS
    local folder=build/fuzz/$1 status=0
    mkdir -p "$folder"
    nice -n 15 "build/host-fuzz/fuzz/fuzz_$1" -max_total_time="$2" -timeout=100 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/$1-" "$folder" >"build/fuzz/$1.log" 2>&1 || status=$?
    local runs edges
    runs=$(sed -n 's/^stat::number_of_executed_units: //p' "build/fuzz/$1.log")
    edges=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "build/fuzz/$1.log" | tail -n 1)
    echo "$1: ${runs:-no} inputs, ${edges:-no} edges reached"
    if [ "$status" != 0 ]; then
        echo "fuzz.sh: $1 found something; see build/fuzz/$1.log" >&2
        return 1
    fi
}

run_lines() { # run_lines SECONDS
    local status=0
    VELBOOTER_FUZZ_SECONDS=$(($1 / lineSeries)) nice -n 15 scripts/with-display.sh \
        scripts/wine.sh build/mingw-x64/tests/test_random_lines.exe >build/fuzz/lines.log 2>&1 </dev/null || status=$?
    echo "lines: $(sed -n 's/^\([0-9]*\) texts.*/\1/p' build/fuzz/lines.log | awk '{ sum += $1 } END { print sum + 0 }') texts"
    if [ "$status" != 0 ]; then
        echo 'fuzz.sh: lines found something; see build/fuzz/lines.log' >&2
        return 1
    fi
}

run() { # run TARGET SECONDS
    if [ "$1" = lines ]; then run_lines "$2"; else run_native "$1" "$2"; fi
}
export -f run run_native run_lines
export lineSeries
printf '%s\n' "${targets[@]}" | xargs -P 2 -I TARGET bash -c "run TARGET $((minutes * 60))" || exit 1
