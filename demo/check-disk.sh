#!/usr/bin/env bash
# Prints what the image of a demonstration disk contains, and fails if that is not what the disk asks for: check-disk.sh
# IMAGE FOLDER NAME. FOLDER is the application folder in which the disk NAME was built. Modules and drivers must be those of
# the disk's row and configuration, the drivers byte for byte; the network lists must consist of the drivers' own texts, and
# the answer files must contain the data of the key file.
set -euo pipefail

if [[ $# -ne 3 || ! -f $1 || ! -f $2/files/$3.ini ]]; then
    echo 'usage: check-disk.sh IMAGE FOLDER NAME (an image, an application folder, a disk of it)' >&2
    exit 2
fi
image=$1
folder=$2
name=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$image: $*" >&2
    exit 1
}

# ini_value FILE SECTION KEY
ini_value() {
    awk -v section="[$2]" -v key="$3=" '
        { sub(/\r$/, "") }
        /^\[/ { inside = ($0 == section) }
        inside && index($0, key) == 1 { print substr($0, length(key) + 1); exit }' "$1"
}
# section_lines FILE SECTION: the lines of a section without its comments.
section_lines() {
    awk -v section="[$2]" '
        { sub(/\r$/, "") }
        /^\[/ { inside = ($0 == section); next }
        inside && !/^;/ && NF' "$1"
}
# member CABINET NAME: prints one member.
member() { cabextract -q -p -F "$2" "$1"; }
# one_line LABEL WORD...
one_line() {
    local label=$1
    shift
    printf '%-8s %s\n' "$label" "${*:-none}"
}

configuration=$folder/files/$name.ini
row=$(tr -d '\r' <"$folder/files/disklist.ini" | awk -v name="Name=$name" '/^\[/ { row = $0 } $0 == name { print row }' | tr -d '[]')
takes() { [[ $(ini_value "$folder/files/disklist.ini" "$row" "$1") == 1 ]]; }

# The groups that the disk takes; ODI goes before NDIS.
groups=()
lists=no
if takes aspi; then groups+=(aspi); fi
if takes netw; then
    groups+=(odi16 odi32)
elif takes ndis; then
    groups+=(ndis)
    lists=yes
fi

# chosen GROUP: the drivers that the configuration names, or all drivers of the store if it has no such section.
chosen() {
    if grep -q '^\[DefaultDrivers\]' "$configuration"; then
        section_lines "$configuration" DefaultDrivers | tr '[:lower:]' '[:upper:]' | sed -n "s/^${1^^}\\\\//p" | sed 's/\.CAB.*//'
    else
        find "$folder/drivers/$1" -name '*.cab' -printf '%f\n' | tr '[:lower:]' '[:upper:]' | sed 's/\.CAB$//'
    fi | sort
}

expect_drivers() {
    local group driver
    for group in "${groups[@]}"; do
        while read -r driver; do
            echo "LIB/${group^^}/$driver.CAB" >>"$work/expected"
            cmp -s "$work/disk/LIB/${group^^}/$driver.CAB" "$folder/drivers/$group/${driver,,}.cab" ||
                fail "LIB/${group^^}/$driver.CAB is not the driver of the store"
        done < <(chosen "$group")
    done
}

expect_modules() {
    local source target
    while IFS='=' read -r source target; do
        if [[ ${target^^} == LIB* && -f $folder/${source//\\//} ]]; then echo "${target//\\//}" >>"$work/expected"; fi
    done < <(section_lines "$configuration" Copy_CABs)
    while IFS='=' read -r source target; do
        echo "$target/$source.cab" >>"$work/expected"
    done < <(section_lines "$configuration" Create_CABs)
}

# The lists contain the texts of the drivers on the disk, in the order of their names.
expect_lists() {
    local driver cabinet
    if [[ $lists == no ]]; then
        ! compgen -G "$work/disk/ETC/_MSNET.*" >/dev/null || fail 'there are network lists on a disk without NDIS drivers'
        return 0
    fi
    printf '%s\r\n' '; This file is used to manual' '; select a network driver' ':_ndis "Select Network driver..." [x]' >"$work/nic"
    printf '%s\r\n' '; PCI map file (build from ndis.pci files)' >"$work/pci"
    while read -r driver; do
        cabinet=$folder/drivers/ndis/${driver,,}.cab
        member "$cabinet" ndis.txt | head -n 1 >>"$work/nic"
        member "$cabinet" ndis.pci >>"$work/pci"
    done < <(chosen ndis)
    for driver in nic pci; do
        diff "$work/$driver" "$work/disk/ETC/_MSNET.${driver^^}" >&2 || fail "ETC/_MSNET.${driver^^} does not consist of the drivers' texts"
    done
    one_line Lists "_MSNET.NIC with $(($(wc -l <"$work/nic") - 3)) drivers," "_MSNET.PCI with $(($(wc -l <"$work/pci") - 1)) adapters"
}

# expect_answer CABINET MEMBER KEY-FILE-SECTION KEY: the member of a setup module has the key file's product key under KEY.
expect_answer() {
    local key
    key=$(ini_value "$folder/keyfile.txt" "$3" ProductKey)
    [[ -n $key ]] || fail "$folder/keyfile.txt has no ProductKey in [$3]"
    member "$work/disk/LIB/$1.CAB" "bin/$2" | tr -d '\r"' | grep -x -F "$4=$key" >"$work/line" || fail "$2 in LIB/$1.CAB lacks $4=$key"
    answers+=("$2")
}
expect_answers() {
    local answers=() file
    if [[ -f $work/disk/LIB/SETUPWIN.CAB ]]; then
        for file in auto.inf def.inf key.inf; do expect_answer SETUPWIN "$file" Win9xInfo ProductKey; done
        member "$work/disk/LIB/SETUPWIN.CAB" bin/os.bat | tr -d '\r' |
            grep -x -F "@set OSVersion= $(ini_value "$folder/keyfile.txt" Win9xInfo OptimizedFor)" >"$work/line" ||
            fail 'os.bat in LIB/SETUPWIN.CAB does not name the edition'
        answers+=(os.bat)
    fi
    if [[ -f $work/disk/LIB/SETUPNT.CAB ]]; then expect_answer SETUPNT unattend.txt Win2KInfo ProductID; fi
    if ((${#answers[@]} > 0)); then one_line Answers "${answers[@]}"; fi
}

mkdir "$work/disk"
mcopy -s -Q -n -m -i "$image" '::*' "$work/disk" || fail 'mcopy cannot read it'
: >"$work/expected"
expect_drivers
expect_modules
(cd "$work/disk" && find LIB -type f 2>/dev/null) | tr '[:lower:]' '[:upper:]' | sort >"$work/found"
tr '[:lower:]' '[:upper:]' <"$work/expected" | sort | diff - "$work/found" >&2 || fail 'LIB holds other cabinets than the disk asks for'

# shellcheck disable=SC2046  # one word for each cabinet
one_line Modules $(sed -n 's/^LIB\/\([^/]*\)\.CAB$/\1/p' "$work/found")
for group in "${groups[@]}"; do
    # shellcheck disable=SC2046  # one word for each cabinet
    one_line "${group^^}" $(sed -n "s/^LIB\/${group^^}\/\(.*\)\.CAB\$/\1/p" "$work/found")
done
expect_lists
expect_answers
