#!/usr/bin/env bash
# Tries the disks under a real DOS: test-dos.sh FOLDER [DISK...] fills dos\ from FOLDER, which holds a free DOS, with
# files\freedos\fill-dos.bat, builds every disk of the catalogue and the demonstration's disk with the real program, starts
# each in QEMU and compares what is on the screen with scripts/dos/disks.plan. With DISKs only these.
#
# Prints a line for each disk: what passed, what failed, and what could not be run because FOLDER has no such file, which is
# no failure. The disk firmware is the disk flash with a maker's file; the disk client is the disk network with the files of a
# network client and two TCP/IP tools, which only show that they were started; the disk drivers is the disk cdrom with other
# drivers, see other_drivers. The exit code is 0 only when nothing failed. What was on the screen of a start that failed is in
# build/test-dos. The files of FOLDER get into nothing but a temporary copy of the application folder.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/wine-path.sh
. "$root/scripts/wine-path.sh"
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
    disks+=(custom demo firmware client drivers)
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

# stand_in_driver FILE OPTION...: writes a driver that gives itself out as its name: driver.asm.
stand_in_driver() { nasm -f bin -w+all -Werror "-DNAME='$(basename "$1")'" "${@:2}" -o "$1" "$root/demo/standins/driver.asm"; }

# other_drivers: the first driver for CD-ROM drives finds none and the second is the real one; HIMEM.SYS is none, and the real one has the
# name HIMEMX.EXE; and a driver for a SCSI adapter, in a cabinet, has beside it one for disks, a RAM drive, and one for CDs, the real one.
other_drivers() {
    local driver
    cp -a dos dos.kept
    for driver in CDROM2.SYS ASPICD.SYS; do [[ ! -f dos/CDROM.SYS ]] || cp dos/CDROM.SYS "dos/$driver"; done
    cp dos/HIMEM.SYS dos/HIMEMX.EXE
    cp files/realmode/VELRAM.SYS dos/ASPIDISK.SYS
    for driver in CDROM.SYS HIMEM.SYS; do stand_in_driver "dos/$driver"; done
    mkdir members
    stand_in_driver members/HOST.SYS -DSTAYS
    printf '%-13sA SCSI adapter\r\n' HOST >members/scsi.txt
    (cd members && "$root/scripts/wine.sh" ../cabarc.exe n '..\drivers\aspi\host.cab' '*.*')
}
usual_drivers() {
    rm -r dos members drivers/aspi/host.cab
    mv dos.kept dos
}

# without_client: the disk network has no files of a client.
without_client() { (cd "$work/client" && find . -type f -print0) | (cd files && xargs -0 rm); }

# build_images FOLDER DISK...: all on one screen, so that Wine starts only once. A disk without an image fails later, by its name.
build_images() {
    local disk source status
    "$root/scripts/wine.sh" cmd /c 'files\freedos\fill-dos.bat' "$1" || return 1
    for disk in "${@:2}"; do
        status=0
        source=$disk
        case $disk in
            firmware)
                mkdir -p files/flash/files
                echo 'Stands for firmware.' >files/flash/files/FIRMWARE.BIN
                source=flash
                ;;
            client)
                cp -a "$work/client/." files/
                source=network
                ;;
            drivers)
                other_drivers || return 1
                source=cdrom
                ;;
        esac
        timeout 300 "$root/scripts/wine.sh" velbooter.exe -t 144 "$source" "out\\$disk.img" || status=$?
        echo "$disk: exit code $status"
        case $disk in
            client) without_client || return 1 ;;
            drivers) usual_drivers || return 1 ;;
        esac
    done
}
export -f stand_in_driver without_client other_drivers usual_drivers build_images
export root work
if ! (cd "$app" && "$root/scripts/with-display.sh" bash -c 'build_images "$@"' build_images "$(wine_path "$from")" "${disks[@]}") \
    >"$logs/build.log" 2>&1 </dev/null; then
    cat "$logs/build.log" >&2
    exit 1
fi
"$root/scripts/dos/run-disks.py" "$root/scripts/dos/disks.plan" "$app/dos" "$app/out" "$logs" "${disks[@]}"
