#!/usr/bin/env bash
# Builds every disk that ships, including custom, in a copy of the application folder to which only the DOS files have been
# added, here their stand-ins: shipped-disks.sh APP DOSFILES
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
[ ! -e "$1/dos" ] || fail "$1 comes with a folder dos: stand-ins must not ship"
copy_application "$1"
cp -a "$2" "$application/dos"
# The disk for a free DOS has an IO.SYS of ours, which starts this file.
printf 'stands for a kernel' >"$application/dos/KERNEL.SYS"

mapfile -t disks < <(tr -d '\r' <"$application/files/disklist.ini" | sed -n 's/^Name=//p')
count=$(tr -d '\r' <"$application/files/disklist.ini" | sed -n 's/^Count=//p')
[ "${#disks[@]}" = "$count" ] || fail "the catalogue counts $count disks and names ${#disks[@]}"
[ "$count" -ge 4 ] || fail "the catalogue has only $count disks"

for disk in custom "${disks[@]}"; do
    for type in 144:1474560 288:2949120; do
        image=$application/out/$disk-${type%:*}.img
        run_program -t "${type%:*}" "$disk" "out\\$disk-${type%:*}.img"
        check_image "$image" "${type#*:}"
        for file in IO.SYS COMMAND.COM; do
            source=$application/dos
            [ "$disk-$file" != freedos-IO.SYS ] || source=$application/files/freedos
            mtype -i "$image" "::$file" | cmp - "$(find_any_case "$source" "$file")" ||
                fail "$disk: $file on the disk is not the file of DOS"
        done
    done
done
[ "$(find "$application/out" -type f | wc -l)" = $((2 * (count + 1))) ] || fail "there are other files beside the images"
echo "All $((count + 1)) disks are built in both sizes: custom ${disks[*]}"
