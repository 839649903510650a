#!/usr/bin/env bash
# Sets up, builds, creates every demonstration disk with the real program, checks the contents of each, and boots its
# image: out/BootDisk.img from the disk demo, out/NAME.img from each other one.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/build.sh"
cd "$root"
mapfile -t disks < <(tr -d '\r' <demo/disklist.rows.ini | sed -n 's/^Name=//p')

image_of() { if [ "$1" = demo ]; then echo BootDisk.img; else echo "$1.img"; fi; }

# All on one screen, so that Wine starts only once.
make_images() {
    local disk status
    for disk in "$@"; do
        status=0
        (cd build/demo && timeout 120 ../../scripts/wine.sh velbooter.exe -t 144 "$disk" "out\\$(image_of "$disk")") || status=$?
        if [ "$status" != 0 ] || [ ! -f "build/demo/out/$(image_of "$disk")" ]; then
            echo "demo.sh: the program created no image of the disk $disk (exit code $status); see build/demo.log" >&3
            return 1
        fi
    done
}
export -f make_images image_of

print_space() {
    local free clusterBytes=512 total
    free=$(mdir -i "$1" :: | sed -n 's/^ *\([0-9 ]*[0-9]\) bytes free.*/\1/p' | tr -d ' ')
    total=$((2847 * clusterBytes))
    echo "Disk     $((total - free)) bytes used, $free bytes free"
}

rm -rf build/demo/out
scripts/with-display.sh bash -c 'make_images "$@"' make_images "${disks[@]}" 3>&2 >build/demo.log 2>&1 </dev/null
mkdir -p out
for disk in "${disks[@]}"; do
    image=$root/out/$(image_of "$disk")
    mv "build/demo/out/$(image_of "$disk")" "$image"
    echo
    echo "Created  $image ($(stat -c %s "$image") bytes)"
    print_space "$image"
    demo/check-disk.sh "$image" build/demo "$disk"
    line=$(scripts/boot-image.sh "$image")
    echo "Booted   $line"
done
rmdir build/demo/out
