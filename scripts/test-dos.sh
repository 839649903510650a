#!/usr/bin/env bash
# Tries the disks under a real DOS: test-dos.sh FOLDER [DISK...] fills dos\ from FOLDER, which holds a free DOS, with
# files\freedos\fill-dos.bat, builds every disk of the catalogue and the demonstration's disk with the real program, starts
# each in QEMU and compares what is on the screen with scripts/dos/disks.plan. With DISKs only these.
#
# Prints a line for each disk: what passed, what failed, and what could not be run because FOLDER has no such file, which is
# no failure. The disk firmware is the disk flash with a maker's file, the disk client the disk network with the files of a
# network client and two TCP/IP tools, which only show that they were started. The exit code is 0 only when nothing failed. What
# was on the screen of a start that failed is in build/test-dos. The files of FOLDER get into nothing but a temporary copy of
# the application folder.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
if [[ $# -lt 1 || ! -d $1 ]]; then
    echo 'usage: test-dos.sh FOLDER [DISK...] (a folder with a free DOS: kernel/ and tools/)' >&2
    exit 2
fi
from=$(realpath "$1")
shift
[ -x "$root/build/demo/velbooter.exe" ] || "$root/scripts/build.sh"

work=$(mktemp -d)
trap 'chmod -R u+w "$work" && rm -rf "$work"' EXIT
app=$work/app
cp -a "$root/build/demo" "$app"
chmod -R u+w "$app"
rm -r "$app/dos"  # the demonstration's stand-ins
logs=$root/build/test-dos
rm -rf "$logs"
mkdir -p "$logs"

disks=("$@")
if [ ${#disks[@]} -eq 0 ]; then
    mapfile -t disks < <(tr -d '\r' <"$root/data/files/disklist.ini" | sed -n 's/^Name=//p')
    disks+=(custom demo firmware client)
fi

# stand_in FILE OPTION...: writes a program that shows its name, its arguments and what the option LAST says: program.asm.
stand_in() {
    mkdir -p "$(dirname "$1")"
    nasm -f bin -w+all -Werror "-DTEXT='$(basename "${1%.*}")'" "${@:2}" -o "$1" "$root/scripts/dos/program.asm"
}

# packet_driver NAME PCI: adds a packet driver to the driver store of $app, with what is in the folder $work/NAME besides.
packet_driver() {
    stand_in "$work/$1/$1.COM" -DDRIVER -DLAST=13,10
    printf '%-13sPacket driver that has no card\r\n' "$1" >"$work/$1/ndis.txt"
    printf '%s %s ; A card\r\n' "$2" "$1" >"$work/$1/ndis.pci"
    (cd "$work/$1" && "$root/build/host/bin/cabarc" n "$app/drivers/ndis/${1,,}.cab" '*.*' >/dev/null)
}
packet_driver PKTTEST '8086 100E'
mkdir "$work/PKTOWN"
printf 'PKTOWN.COM INT=0x60\r\nIF ERRORLEVEL 1 SET PKTDRV=\r\n' >"$work/PKTOWN/PKTOWN.BAT"
packet_driver PKTOWN '1AF4 1000'
stand_in "$work/client/msnet/NET/NET.EXE" -DLAST=13,10
for name in NETBIND.COM UMB.COM TCPTSR.EXE TINYRFC.EXE NMTSR.EXE EMSBFR.EXE; do
    stand_in "$work/client/msnet/NET/$name" "-DLAST='; '"  # in one row, which shows their order
done
echo 'Stands for the TCP/IP of a client.' >"$work/client/msnet/NET/TCPDRV.DOS"
for name in DHCP FTP; do stand_in "$work/client/tcpip/TCP/$name.EXE" -DTOOL -DLAST=13,10; done

# wine_path PATH: as Windows programs see it; Z: is the root of this system.
wine_path() { printf 'Z:%s' "${1//\//\\}"; }

# build_images FOLDER DISK...: all on one screen, so that Wine starts only once. A disk without an image fails later, by its name.
build_images() {
    local disk source status
    "$root/scripts/wine.sh" cmd /c 'files\freedos\fill-dos.bat' "$1" || return 1
    for disk in "${@:2}"; do
        status=0
        source=$disk
        if [[ $disk == firmware ]]; then
            mkdir -p files/flash/files
            echo 'Stands for firmware.' >files/flash/files/FIRMWARE.BIN
            source=flash
        elif [[ $disk == client ]]; then
            cp -a "$work/client/." files/
            source=network
        fi
        timeout 300 "$root/scripts/wine.sh" velbooter.exe -t 144 "$source" "out\\$disk.img" || status=$?
        echo "$disk: exit code $status"
        # The disk network has none of them.
        if [[ $disk == client ]]; then (cd "$work/client" && find . -type f -print0) | (cd files && xargs -0 rm); fi
    done
}
export -f build_images
export root work
if ! (cd "$app" && "$root/scripts/with-display.sh" bash -c 'build_images "$@"' build_images "$(wine_path "$from")" "${disks[@]}") \
    >"$logs/build.log" 2>&1 </dev/null; then
    cat "$logs/build.log" >&2
    exit 1
fi
"$root/scripts/dos/run-disks.py" "$root/scripts/dos/disks.plan" "$app/dos" "$app/out" "$logs" "${disks[@]}"
