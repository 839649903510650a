#!/usr/bin/env bash
# Runs more-dos.bat on a folder with cabinets like those of a setup CD, with a stand-in for the system's expand:
# more-dos.sh APP UNPACKER
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
# shellcheck source=scripts/wine-path.sh
. "$root/scripts/wine-path.sh"
copy_application "$1"
system=$scratch/system
mkdir -p "$system/System32" "$scratch/cd" "$scratch/program"
cp "$2" "$system/System32/expand.exe"
cp "$application/cabarc.exe" "$system/"
cp "$application/more-dos.bat" "$scratch/program/"

# pack CABINET NAME...: each member contains its own name.
pack() {
    local cabinet=$1 name
    shift
    mkdir "$scratch/members"
    for name in "$@"; do printf '%s' "$name" >"$scratch/members/$name"; done
    (cd "$scratch/members" && "$root/scripts/wine.sh" "$application/cabarc.exe" n "..\\cd\\$cabinet" '*.*') >"$scratch/pack.log" 2>&1 ||
        fail "cabarc.exe does not pack $cabinet: $(cat "$scratch/pack.log")"
    rm -r "$scratch/members"
}

# take STATUS FOLDER: the output is in $scratch/more-dos.log.
take() {
    local status=0
    # Wine's cmd takes a name that begins with one of its commands for that command.
    (cd "$scratch/program" && timeout 200 "$root/scripts/wine.sh" cmd /c \
        "set SystemRoot=$(wine_path "$system")&& .\\more-dos.bat $2") >"$scratch/more-dos.log" 2>&1 </dev/null || status=$?
    [ "$status" = "$1" ] || fail "more-dos.bat $2 ended with $status, not $1: $(cat "$scratch/more-dos.log")"
}
expect_files() {
    local name
    diff <(printf '%s\n' "$@" | sort) <(find "$scratch/program/dos" -type f -printf '%f\n' | sort) >&2 || fail 'dos holds other files'
    for name in "$@"; do
        case $name in CDROM.SYS) name=OAKCDROM.SYS ;; esac
        grep -q -x "$name" "$scratch/program/dos"/* || fail "no file of dos is $name of the CD"
    done
}

take 2 ''
take 2 '..\cd'
pack BASE4.CAB COMMAND.COM MSCDEX.EXE OAKCDROM.SYS
pack BASE5.CAB KEYB.COM KEYBOARD.SYS ASPICD.SYS
take 0 '..\cd'
expect_files CDROM.SYS MSCDEX.EXE KEYB.COM KEYBOARD.SYS ASPICD.SYS
grep -q 'Not found there:.* CHKDSK.EXE' "$scratch/more-dos.log" || fail 'it does not say what is missing'

# An existing file stays.
printf 'MSCDEX.EXE' >"$scratch/program/dos/MSCDEX.EXE"
touch -d 2000-01-01 "$scratch/program/dos/MSCDEX.EXE"
take 0 '..\cd'
[ "$scratch/program/dos/MSCDEX.EXE" -ot "$scratch/program/dos/KEYB.COM" ] || fail 'MSCDEX.EXE is not the one that was there'

rm -r "$scratch/program/dos" "$scratch/cd/BASE5.CAB" "$scratch/cd/BASE4.CAB"
pack OTHER.CAB COMMAND.COM
take 1 '..\cd'
echo 'more-dos.bat takes what the CD has.'
