#!/usr/bin/env bash
# Sets up, builds, makes the demonstration disk with the real program, and boots its image: out/BootDisk.img.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/build.sh"
cd "$root"
image=$root/out/BootDisk.img
made=build/demo/out/BootDisk.img

rm -rf build/demo/out
status=0
(cd build/demo && timeout 120 "$root/scripts/with-display.sh" \
    "$root/scripts/wine.sh" velbooter.exe -t 144 demo 'out\BootDisk.img') >build/demo.log 2>&1 </dev/null || status=$?
if [ "$status" != 0 ] || [ ! -f "$made" ]; then
    echo "demo.sh: the program made no image (exit code $status)" >&2
    exit 1
fi
mkdir -p out
mv "$made" "$image"

free=$(mdir -i "$image" :: | sed -n 's/^ *\([0-9 ]*[0-9]\) bytes free.*/\1/p' | tr -d ' ')
clusterBytes=512
total=$((2847 * clusterBytes))
echo "Made     $image ($(stat -c %s "$image") bytes)"
echo "Disk     $((total - free)) bytes used, $free bytes free"

line=$(scripts/boot-image.sh "$image")
echo "Booted   $line"
