#!/usr/bin/env bash
# Boots a floppy image in an emulated machine without a screen, for 20 seconds at most: boot-image.sh IMAGE
# Prints the line that IO.SYS writes to the serial port; fails when none comes.
set -euo pipefail
image=${1:?usage: boot-image.sh IMAGE}
work=$(mktemp -d)
machine=
trap 'set +e; { kill "$machine"; wait "$machine"; } 2>/dev/null; rm -rf "$work"' EXIT

timeout 20 qemu-system-i386 -display none -no-reboot -net none -m 16 -boot a -serial "file:$work/serial" \
    -drive "if=floppy,format=raw,readonly=on,file=${image//,/,,}" </dev/null >"$work/log" 2>&1 &
machine=$!
# The machine stops by itself when its time is up. A line counts only when it is complete.
until line=$(grep -a -m 1 $'IO\\.SYS.*\r' "$work/serial" 2>/dev/null); do
    if ! kill -0 "$machine" 2>/dev/null; then
        echo "boot-image.sh: $image does not start IO.SYS" >&2
        cat "$work/serial" "$work/log" >&2
        exit 1
    fi
    sleep 0.1
done
printf '%s\n' "${line%$'\r'}"
