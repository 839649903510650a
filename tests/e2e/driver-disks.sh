#!/usr/bin/env bash
# Builds the demonstration disks with drivers and setup modules and checks their images: every driver cabinet in its place,
# the network lists line for line, the answer files key for key: driver-disks.sh DEMO
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
copy_application "$1"

# Prints the driver names that the configuration of the disk $1 names for the group $2, in lower case and sorted.
default_drivers() {
    tr -d '\r' <"$application/files/$1.ini" | awk -v group="$2" '
        /^\[/ { inside = ($0 == "[DefaultDrivers]") }
        inside && /\\/ { split(tolower($0), part, "\\"); sub(/\.cab.*/, "", part[2]); if (part[1] == group) print part[2] }' | sort
}

# Builds the disk $1 into $scratch/$1, as files.
build_disk() {
    run_program -t 144 "$1" "out\\$1.img"
    check_image "$application/out/$1.img" 1474560
    mkdir "$scratch/$1"
    mcopy -s -Q -n -m -i "$application/out/$1.img" '::*' "$scratch/$1" || fail "mcopy cannot read the image of $1"
}

# Expects exactly the default drivers of the group $2 on the disk $1, each the cabinet of the store.
check_group() {
    local folder driver
    folder=$(find_any_case "$scratch/$1" "lib/$2") || fail "$1: there is no folder lib/$2"
    default_drivers "$1" "$2" >"$scratch/wanted"
    [ -s "$scratch/wanted" ] || fail "$1 names no default drivers of $2"
    find "$folder" -type f -printf '%f\n' | tr '[:upper:]' '[:lower:]' | sed 's/\.cab$//' | sort >"$scratch/found"
    diff "$scratch/wanted" "$scratch/found" >&2 || fail "$1: other drivers in lib/$2 than it should have"
    while read -r driver; do
        cmp "$(find_any_case "$folder" "$driver.cab")" "$(find_any_case "$application/drivers/$2" "$driver.cab")" ||
            fail "$1: lib/$2/$driver.cab is not the cabinet of the store"
    done <"$scratch/wanted"
}

check_no_group() {
    if find_any_case "$scratch/$1" "lib/$2" >/dev/null; then fail "$1: it contains drivers of $2"; fi
}

# The members $2 of the selected NDIS drivers of the disk $1, in the order in which Drivers.ini lists them: that of the
# folder.
ndis_members() {
    local driver
    while read -r driver; do
        grep -qxF "$driver" <(default_drivers "$1" ndis) || continue
        cabextract -q -p -F "$2" "$(find_any_case "$application/drivers/ndis" "$driver.cab")" >"$scratch/member"
        if [ "$2" = ndis.txt ]; then head -n 1 "$scratch/member"; else cat "$scratch/member"; fi
    done < <(find "$application/drivers/ndis" -iname '*.cab' -printf '%f\n' | tr '[:upper:]' '[:lower:]' | sed 's/\.cab$//' | sort)
}

check_lists() {
    local folder
    folder=$(find_any_case "$scratch/$1" etc) || fail "$1: there is no folder etc"
    { printf '; This file is used to manual\r\n; select a network driver\r\n:_ndis "Select Network driver..." [x]\r\n'
      ndis_members "$1" ndis.txt; } >"$scratch/nic"
    { printf '; PCI map file (build from ndis.pci files)\r\n'; ndis_members "$1" ndis.pci; } >"$scratch/pci"
    cmp "$scratch/nic" "$(find_any_case "$folder" _msnet.nic)" || fail "$1: _msnet.nic differs"
    cmp "$scratch/pci" "$(find_any_case "$folder" _msnet.pci)" || fail "$1: _msnet.pci differs"
    [ "$(grep -c $'\r$' "$scratch/nic")" = "$(wc -l <"$scratch/nic")" ] || fail 'a driver describes itself without CR LF'
}

check_no_lists() {
    if find_any_case "$scratch/$1" etc/_msnet.nic >/dev/null; then fail "$1: it contains a network list"; fi
}

# ini_value FILE SECTION KEY: the value as it is in the file, quotes included.
ini_value() {
    tr -d '\r' <"$1" | awk -v section="[$2]" -v key="$3=" '
        /^\[/ { inside = (tolower($0) == tolower(section)) }
        inside && index(tolower($0), tolower(key)) == 1 { print substr($0, length(key) + 1); found = 1; exit }
        END { exit !found }'
}

expect_value() {
    local value
    value=$(ini_value "$1" "$2" "$3") || fail "$1: there is no key $3 in [$2]"
    [ "$value" = "$4" ] || fail "$1: [$2] $3 is $value, not $4"
}

key_value() { ini_value "$application/keyfile.txt" "$1" "$2"; }

# unpack_module DISK MODULE: into $scratch/DISK-MODULE.
unpack_module() {
    local cabinet
    cabinet=$(find_any_case "$scratch/$1" "lib/$2.cab") || fail "$1: there is no module $2"
    cabextract -q -d "$scratch/$1-$2" "$cabinet" || fail "cabextract cannot read the module $2 of $1"
}

check_setupwin() {
    local bin inf express display
    unpack_module "$1" setupwin
    bin=$(find_any_case "$scratch/$1-setupwin" bin)
    for inf in key def auto; do
        expect_value "$(find_any_case "$bin" $inf.inf)" Setup ProductKey "\"$(key_value Win9xInfo ProductKey)\""
    done
    for inf in def:0:1 auto:1:0; do
        IFS=: read -r inf express display <<<"$inf"
        inf=$(find_any_case "$bin" "$inf.inf")
        expect_value "$inf" Setup Express "$express"
        expect_value "$inf" NameAndOrg Name "\"$(key_value Win9xInfo OwnerName)\""
        expect_value "$inf" NameAndOrg Org "\"$(key_value Win9xInfo Organization)\""
        expect_value "$inf" NameAndOrg Display "$display"
        expect_value "$inf" Network ComputerName "\"$(key_value Win9xInfo ComputerName)\""
        expect_value "$inf" Network Workgroup "\"$(key_value Win9xInfo Workgroup)\""
        expect_value "$inf" VREDIR LogonDomain "\"$(key_value Win9xInfo Workgroup)\""
        expect_value "$inf" Network Display "$display"
    done
    printf '@set OSVersion= %s\r\n' "$(key_value Win9xInfo OptimizedFor)" | cmp - "$(find_any_case "$bin" os.bat)" ||
        fail "$1: os.bat differs"
    find_any_case "$bin" SETUPWIN.BAT >/dev/null || fail "$1: the module setupwin lacks its own files"
}

check_setupnt() {
    local answers
    unpack_module "$1" setupnt
    answers=$(find_any_case "$scratch/$1-setupnt" bin/unattend.txt) || fail "$1: there is no unattend.txt"
    expect_value "$answers" UserData FullName "\"$(key_value Win2KInfo OwnerName)\""
    expect_value "$answers" UserData OrgName "\"$(key_value Win2KInfo Organization)\""
    expect_value "$answers" UserData ProductID "$(key_value Win2KInfo ProductKey)"
    expect_value "$answers" UserData ComputerName "\"$(key_value Win2KInfo ComputerName)\""
    expect_value "$answers" Identification JoinWorkgroup "\"$(key_value Win2KInfo Workgroup)\""
    expect_value "$answers" Identification JoinDomain ''
    find_any_case "$scratch/$1-setupnt" bin/SETUPNT.BAT >/dev/null || fail "$1: the module setupnt lacks its own files"
}

build_disk demonet
check_group demonet ndis
check_no_group demonet aspi
check_lists demonet

build_disk demoodi
check_group demoodi odi16
check_group demoodi odi32
check_no_group demoodi ndis
check_no_lists demoodi

build_disk demoset
check_setupwin demoset
check_setupnt demoset
check_no_group demoset ndis
check_no_lists demoset

build_disk demoall
check_group demoall aspi
check_group demoall ndis
check_lists demoall
check_setupwin demoall
check_setupnt demoall
echo 'The four disks contain the drivers, lists and answers that they should.'
