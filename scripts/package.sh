#!/usr/bin/env bash
# Creates what a user downloads: build/velbooter-VERSION-x64.zip and -x86.zip. Each comes with its .sha256, with a .toolchain.txt,
# which names the compiler, the linker and the libraries, and with the ZIP of its test programs, -x64-tests.zip and
# -x86-tests.zip, whose run-tests.bat runs them on any Windows. Each ZIP contains one folder with its own name; to run the
# program, unpack one anywhere. The same sources and the same SOURCE_DATE_EPOCH (default: the time of the last commit) give the
# same bytes.
# package.sh [PRESET...]   (default: mingw-x64 and mingw-x86)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(mingw-x64 mingw-x86)
"$root/scripts/setup.sh"
cd "$root"
for preset in "${presets[@]}"; do
    # The packed tests include the demonstration.
    scripts/build.sh "${preset#mingw-}"
    scripts/build-preset.sh "$preset" packed_tests
    if ! { cpack --preset "$preset" && cpack --config "build/$preset/CPackTests.cmake" -B "build/$preset/package"; } \
        >>"build/$preset.log" 2>&1; then
        tail -n 20 "build/$preset.log" >&2
        echo "package.sh: the package of $preset failed; the whole log is build/$preset.log" >&2
        exit 1
    fi
    # CPack leaves a description of the package there, too.
    for zip in build/"$preset"/package/*.zip; do
        mv "$zip" "$zip.sha256" "${zip%.zip}.toolchain.txt" build/
        echo "Packed build/$(basename "$zip")"
    done
done
