#!/usr/bin/env bash
# Creates the sample driver cabinets: pack-drivers.sh CABARC FOLDER writes FOLDER/GROUP/NAME.cab for each line of
# drivers.table. A cabinet contains what the driver store asks for: the description, the PCI list, a stand-in for the
# driver and, if GROUP/NAME.NIC exists beside this script, the driver's settings. CABARC is the native archiver.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [[ $# -ne 2 || ! -x $1 ]]; then
    echo 'usage: pack-drivers.sh CABARC FOLDER (a program that exists, a folder to fill)' >&2
    exit 2
fi
cabarc=$(realpath "$1")
mkdir -p "$2"
folder=$(realpath "$2")
drivers=$here/drivers.table
adapters=$here/adapters.table
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# CONFIG.SYS or the network loads a device driver, the user starts a program; each has its own stand-in.
assemble() {
    nasm -f bin -w+all -Werror -DDRIVER "-DNAME='$2'" -o "$2" "$here/../standins/$1.asm"
}

pack() {
    local group=$1 name=$2 family=$3 description=$4 text pci standin extension
    case $group in
        aspi) text=scsi.txt pci=scsi.pci standin=driver extension=SYS ;;
        ndis) text=ndis.txt pci=ndis.pci standin=driver extension=DOS ;;
        odi16) text=odi.txt pci=odi16.pci standin=program extension=COM ;;
        odi32) text=odi.txt pci=odi32.pci standin=program extension=LAN ;;
        *) fail "$drivers: no group $group" ;;
    esac
    rm -rf "$work/members"
    mkdir -p "$work/members" "$folder/$group"
    cd "$work/members"
    printf '%-13s%s\r\n' "$name" "$description" >"$text"
    awk -v family="$family" -v driver="$name" '$1 == family {
        vendor = $2; device = $3
        sub(/^[^ ]+ +[^ ]+ +[^ ]+ +/, "")
        printf "%s %s %s ; %s\r\n", vendor, device, driver, $0 }' "$adapters" >"$pci"
    [[ -s $pci ]] || fail "$adapters: no adapter of the family $family, which the driver $name asks for"
    assemble "$standin" "$name.$extension"
    [[ ! -f $here/$group/$name.NIC ]] || cp "$here/$group/$name.NIC" .
    touch -r "$drivers" -- *
    "$cabarc" n "$folder/$group/${name,,}.cab" '*.*' >/dev/null
}

while read -r group name family description; do
    [[ -n $group && $group != '#'* ]] || continue
    [[ -n $description ]] || fail "$drivers: the driver $name has no description"
    pack "$group" "$name" "$family" "$description"
done <"$drivers"
