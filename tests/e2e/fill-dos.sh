#!/usr/bin/env bash
# Runs fill-dos.bat on folders like those of a free DOS: fill-dos.sh APP
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
copy_application "$1"

# fill STATUS FOLDER: the output is in $scratch/fill-dos.log.
fill() {
    local status=0
    (cd "$application" && timeout 200 "$root/scripts/wine.sh" cmd /c "files\\freedos\\fill-dos.bat $2") \
        >"$scratch/fill-dos.log" 2>&1 </dev/null || status=$?
    [ "$status" = "$1" ] || fail "fill-dos.bat $2 ended with $status, not $1: $(cat "$scratch/fill-dos.log")"
}
expect_nothing() { [ ! -e "$application/dos" ] || fail "$1: something was written"; }

# put FOLDER NAME...: each file contains its own name.
put() {
    local folder=$scratch/$1 name
    shift
    mkdir -p "$folder"
    for name in "$@"; do printf '%s' "$name" >"$folder/$name"; done
}
# expect NAME CONTENT: the file of dos is the one that was called CONTENT.
expect() { [ "$(cat "$application/dos/$1")" = "$2" ] || fail "$1 is not $2"; }

fill 1 ''
fill 1 '..\nowhere'
expect_nothing 'a folder that is not there'
put free COMMAND.COM
fill 1 '..\free'
expect_nothing 'no kernel'
put free/kernel KERNEL.SYS
rm "$scratch/free/COMMAND.COM"
fill 1 '..\free'
expect_nothing 'no COMMAND.COM'

put free/tools COMMAND.COM ATTRIB.COM HIMEMX.EXE XCDROM.SYS UDVD2.SYS GCDROM.SYS ATAPICDD.SYS SHSUCDX.COM KEYB.EXE
before=$(cd "$scratch/free" && find . -type f -exec sha256sum {} + | sort)
fill 0 '..\free'
[ "$(cd "$scratch/free" && find . -type f -exec sha256sum {} + | sort)" = "$before" ] || fail 'the free DOS was changed'
for pair in KERNEL.SYS=KERNEL.SYS COMMAND.COM=COMMAND.COM ATTRIB.EXE=ATTRIB.COM HIMEM.SYS=HIMEMX.EXE CDROM.SYS=XCDROM.SYS \
    CDROM2.SYS=UDVD2.SYS CDROM3.SYS=GCDROM.SYS MSCDEX.EXE=SHSUCDX.COM KEYB.COM=KEYB.EXE; do
    expect "${pair%%=*}" "${pair#*=}"
done
cmp -s "$application/dos/IO.SYS" "$application/files/freedos/IO.SYS" || fail 'IO.SYS is not ours'
for name in CHOICE.COM SMARTDRV.EXE EMM386.EXE; do
    cmp -s "$application/dos/$name" "$application/files/freedos/ABSENT.EXE" || fail "$name does not say that it is absent"
done
[ ! -e "$application/dos/MOUSE.COM" ] || fail 'a name that nothing asks for was filled'
grep -q 'Not part of this DOS:.* SMARTDRV.EXE' "$scratch/fill-dos.log" || fail 'it does not say what is missing'
[ "$(find "$application/dos" -iname '*.*' | wc -l)" = 31 ] || fail "dos holds $(find "$application/dos" -iname '*.*' | wc -l) files"

fill 1 '..\free'
grep -q 'holds files already' "$scratch/fill-dos.log" || fail 'it does not say that dos is filled'
echo 'fill-dos.bat takes a free DOS.'
