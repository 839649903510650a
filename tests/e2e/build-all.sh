#!/usr/bin/env bash
# Runs buildall.bat, and build-all.sh of the demonstration, on a catalogue of two disks: build-all.sh APP DOSFILES
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
copy_application "$1"
cp -r "$2" "$application/dos"

# expect_end STATUS COMMAND...: runs it in the application folder; the output is in $scratch/build-all.log.
expect_end() {
    local wanted=$1 status=0
    shift
    (cd "$application" && timeout 500 "$@") >"$scratch/build-all.log" 2>&1 </dev/null || status=$?
    [ "$status" = "$wanted" ] || fail "$* ended with $status, not $wanted: $(cat "$scratch/build-all.log")"
}
# build STATUS ARGUMENT...
build() {
    expect_end "$1" "$root/scripts/with-display.sh" "$root/scripts/wine.sh" cmd /c ".\\buildall.bat ${*:2}"
}
expect_lines() {
    local line
    for line in "$@"; do
        tr -d '\r' <"$scratch/build-all.log" | grep -q -x -F "$line" || fail "no line \"$line\": $(cat "$scratch/build-all.log")"
    done
}
expect_images() {
    local folder=$application/$1 bytes=$2
    shift 2
    diff <(printf '%s\n' "$@" | sort) <(find "$folder" -type f -size "${bytes}c" -printf '%f\n' | sort) >&2 ||
        fail "$folder holds other images"
}

# Section 3 is not counted: its disk does not belong to the catalogue any more.
printf '[Disks_List]\r\nCount=2\r\n\r\n[0]\r\nfile=a.img\r\naspi=0\r\nndis=0\r\nnetw=0\r\n' >"$application/files/disklist.ini"
for number in 1 2 3; do
    names=(custom minimal flash network)
    name=${names[number]}
    printf '\r\n[%s]\r\nName=%s\r\nDesc=A disk\r\nIcon=1\r\nfile=b.img\r\naspi=0\r\nndis=0\r\nnetw=0\r\n' "$number" "$name"
done >>"$application/files/disklist.ini"

build 2 ''
build 2 'out 360'
build 2 '\\server\share'
expect_lines 'The folder "\\server\share" is not on a drive with a letter.'
[ ! -e "$application/server" ] || fail 'a share became a folder of the program'
build 0 'out'
expect_lines 'custom.img  custom' 'minimal.img  minimal' 'flash.img  flash' '3 built, 0 not built'
expect_images out 1474560 custom.img minimal.img flash.img

expect_end 2 "$root/demo/build-all.sh"
expect_end 2 "$root/demo/build-all.sh" -a "$scratch" "$scratch/out"
expect_end 2 "$root/demo/build-all.sh" -a "$application" "$scratch/out" 360
expect_end 0 "$root/demo/build-all.sh" -a "$application" usb 288 NUMBERED
expect_lines 'DSKA0000.IMG  custom' 'DSKA0001.IMG  minimal' 'DSKA0002.IMG  flash'
expect_images usb 2949120 DSKA0000.IMG DSKA0001.IMG DSKA0002.IMG
diff <(head -n 3 "$scratch/build-all.log") "$application/usb/disks.txt" >&2 || fail 'disks.txt has other lines'

# cmd takes the ampersand of an unquoted word for the end of a command. The call is in a batch file, because Wine's cmd does not
# read quotes inside the command of /c as Windows does.
printf 'call buildall.bat "out & about"\r\n' >"$application/ampersand.bat"
expect_end 0 "$root/scripts/with-display.sh" "$root/scripts/wine.sh" cmd /c '.\ampersand.bat'
expect_images 'out & about' 1474560 custom.img minimal.img flash.img

# A folder in the place of an image: that disk fails, the others are built.
rm -r "$application/out"
mkdir -p "$application/out/minimal.img"
build 1 'out'
expect_lines 'minimal.img  minimal  not built, exit code 7' '2 built, 1 not built'
expect_images out 1474560 custom.img flash.img
echo 'buildall.bat builds the disks of the catalogue.'
