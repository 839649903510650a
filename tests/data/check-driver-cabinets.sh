#!/usr/bin/env bash
# Packs the sample drivers of the demonstration and looks into each cabinet with cabextract: check-driver-cabinets.sh
# CABARC. Each line of the table must have become one cabinet that contains its description, its PCI list and a driver that
# says what it is; a table with a fault must be rejected.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
cabarc=$(realpath "${1:?usage: check-driver-cabinets.sh CABARC}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# check_cabinet GROUP NAME DESCRIPTION
check_cabinet() {
    local cabinet=$work/store/$1/${2,,}.cab members text pci driver line
    case $1 in
        aspi) text=scsi.txt pci=scsi.pci driver=$2.SYS ;;
        ndis) text=ndis.txt pci=ndis.pci driver=$2.DOS ;;
        odi16) text=odi.txt pci=odi16.pci driver=$2.COM ;;
        odi32) text=odi.txt pci=odi32.pci driver=$2.LAN ;;
    esac
    members=("$text" "$pci" "$driver")
    [ ! -f "$root/demo/drivers/$1/$2.NIC" ] || members+=("$2.NIC")
    [ -f "$cabinet" ] || fail "there is no $1/${2,,}.cab"
    rm -rf "$work/unpacked"
    cabextract -q -d "$work/unpacked" "$cabinet" || fail "cabextract cannot read $1/${2,,}.cab"
    diff <(printf '%s\n' "${members[@]}" | sort) <(find "$work/unpacked" -type f -printf '%P\n' | sort) ||
        fail "$1/${2,,}.cab holds other files than it should"

    cd "$work/unpacked"
    [ "$(cat "$text")" = "$(printf '%-13s%s\r' "$2" "$3")" ] || fail "$1/${2,,}.cab: $text is $(cat "$text")"
    [ "$(head -n 1 "$text" | wc -c)" -gt 15 ] || fail "$1/${2,,}.cab: $text has no text after its 13th column"
    [ -s "$pci" ] || fail "$1/${2,,}.cab: $pci is empty"
    while IFS= read -r line; do
        [[ $line =~ ^[0-9A-F]{4}\ [0-9A-F]{4}\ $2\ \;\ .+$'\r'$ ]] || fail "$1/${2,,}.cab: $pci has the line $line"
    done <"$pci"
    grep -a -q -F "$driver: a stand-in of the demonstration, not the DOS driver." "$driver" ||
        fail "$1/${2,,}.cab: $driver does not say what it is"
    cd "$work"
}

"$root/demo/drivers/pack-drivers.sh" "$cabarc" "$work/store"
count=0
while read -r group name _ description; do
    [[ -n $group && $group != '#'* ]] || continue
    check_cabinet "$group" "$name" "$description"
    count=$((count + 1))
done <"$root/demo/drivers/drivers.table"
[ "$count" -ge 12 ] || fail "only $count drivers"
[ "$(find "$work/store" -type f | wc -l)" = "$count" ] || fail "there are other files than the $count cabinets"

# The same table gives the same bytes.
"$root/demo/drivers/pack-drivers.sh" "$cabarc" "$work/again"
diff -r "$work/store" "$work/again" || fail 'a second run packs other cabinets'

# expect_refusal TEXT SED: a copy of the table that is changed by the sed command is rejected with TEXT.
expect_refusal() {
    local report
    rm -rf "$work/demo"
    cp -a "$root/demo" "$work/demo"
    sed -i "$2" "$work/demo/drivers/drivers.table"
    if report=$("$work/demo/drivers/pack-drivers.sh" "$cabarc" "$work/refused" 2>&1); then
        fail "not rejected: $1"
    fi
    [[ $report == *"$1"* ]] || fail "rejected with a text other than \"$1\": $report"
}
expect_refusal 'no group odi64' 's/^odi32/odi64/'
expect_refusal 'no adapter of the family intel-pro1000, which the driver E100B asks for' '/^ndis/s/intel-pro100 /intel-pro1000 /'
expect_refusal 'the driver E100B has no description' 's/^\(ndis *E100B *[^ ]*\).*/\1/'
echo "All $count driver cabinets contain what they should."
