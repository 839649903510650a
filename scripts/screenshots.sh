#!/usr/bin/env bash
# Takes screenshots of the wizard's pages and of the driver selection at 96 and 144 dots per inch in build/screenshots, and
# creates the pictures of the guide and the README, docs/pictures, from those at 96: screenshots.sh [E2E_TESTS.exe]
# Without an argument it builds the program of the end-to-end tests, and the demonstration that the tests copy.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
program=${1-}
if [ -z "$program" ]; then
    scripts/build.sh
    scripts/build-preset.sh mingw-x64 e2e_tests
    program=build/mingw-x64/tests/e2e_tests.exe
fi
rm -f build/screenshots/wizard-*.png build/screenshots/select-drivers-*.png
log=build/screenshots.log
if ! scripts/with-display.sh scripts/wine.sh "$program" '--gtest_filter=*WizardPictures*' >"$log" 2>&1 </dev/null; then
    tail -n 20 "$log" >&2
    echo "screenshots.sh: no screenshots were taken; the whole log is $log" >&2
    exit 1
fi

mkdir -p docs/pictures
for picture in build/screenshots/wizard-*-96.png build/screenshots/select-drivers-96.png; do
    name=$(basename "$picture" -96.png)
    convert "$picture" -strip +dither -colors 128 -define png:compression-level=9 "PNG8:docs/pictures/$name.png"
done
echo "Took the screenshots in build/screenshots and created $(find docs/pictures -name '*.png' | wc -l) pictures in docs/pictures."
