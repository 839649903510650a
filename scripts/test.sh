#!/usr/bin/env bash
# Sets up, builds all presets except host-fuzz, checks the sources and runs every test. The last lines show how many tests there
# were; before them is the time that each step took. The exit code is 0 only if nothing failed.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=scripts/cores.sh
. scripts/cores.sh
mkdir -p build
logs=build/test-logs
rm -rf "$logs"
mkdir "$logs"
failed=0

# step TITLE COMMAND...: runs one step and records how long it took.
step() {
    local title=$1 status=0
    shift
    echo "$title"
    SECONDS=0
    "$@" || status=$?
    printf '%-34s %2d:%02d\n' "$title" $((SECONDS / 60)) $((SECONDS % 60)) >>"$logs/times"
    return "$status"
}

# begin NAME TITLE COMMAND...: runs a step in parallel with those that follow; its output is kept in a file until finish NAME
# shows it. It has a process group of its own, so that all of it ends with this script.
set -m
declare -A running
begin() {
    local name=$1
    shift
    step "$@" >"$logs/$name" 2>&1 </dev/null &
    running[$name]=$!
}
# Shows only the number of the tests that passed.
finish() {
    wait "${running[$1]}" || failed=1
    unset "running[$1]"
    grep -vE '^( *[0-9]+/[0-9]+ Test +#.* Passed +[0-9.]+ sec| *Start +[0-9]+: .*)$' "$logs/$1"
}
# shellcheck disable=SC2317  # the trap calls it
end_jobs() {
    local job
    for job in "${running[@]}"; do kill -- "-$job" 2>/dev/null || true; done
    wait
}
trap end_jobs EXIT

step 'Setting up' scripts/setup.sh
# Keeps two cores busy: Windows programs are tested, and packages unpacked, while other things are compiled. The tests under Wine
# take longest, so the native builds and the checks make way for them.
export CTEST_PARALLEL_LEVEL=1
begin i386 'Creating the i386 Debian' scripts/setup-i386.sh
step 'Building for 64 bits' scripts/build.sh x64
step 'Building the tests for 64 bits' scripts/build-preset.sh mingw-x64
begin mingw-x64 'Testing on 64 bits' taskset --cpu-list "$first_core" scripts/run-tests.sh mingw-x64
step 'Building for 32 bits' scripts/build.sh x86
step 'Building the tests for 32 bits' scripts/build-preset.sh mingw-x86
finish i386
begin mingw-x86 'Testing on 32 bits' taskset --cpu-list "$last_core" scripts/run-tests.sh mingw-x86
for preset in host host-asan; do
    step "Building $preset" nice scripts/build-preset.sh "$preset"
    begin "$preset" "Testing $preset" scripts/run-tests.sh "$preset"
done
step 'Checking the sources' nice scripts/check.sh || failed=1
presets=(host host-asan mingw-x64 mingw-x86)
for preset in "${presets[@]}"; do finish "$preset"; done

echo
echo 'Minutes and seconds of each step, some of them in parallel:'
cat "$logs/times"
echo
all=0
lost=0
for preset in "${presets[@]}"; do
    line=$(grep "^$preset: [0-9]* tests passed, [0-9]* failed" "$logs/$preset") || line="$preset: 0 tests passed, 1 failed"
    sed -n "/^$preset: ended before/p" "$logs/$preset"
    echo "$line"
    read -r _ passed _ _ failures _ <<<"$line"
    all=$((all + passed))
    lost=$((lost + failures))
done
[ "$lost" = 0 ] || failed=1
echo "$all passed, $lost failed"
exit "$failed"
