#!/usr/bin/env bash
# Runs a command while drive A: of the Wine prefix is a small file system: with-drive-a.sh OPTIONS COMMAND [ARGUMENT...]
# OPTIONS are those of a tmpfs (size=1440k,nr_inodes=5), or "none" for a missing drive A:. The command can change them
# while it runs: it writes new options into the file "request" in the folder VELBOOTER_DRIVE_A_CONTROL and waits until that
# file is gone. Needs root. Two of these never run at once on one prefix.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"
if [ $# -lt 2 ]; then
    echo 'usage: with-drive-a.sh OPTIONS COMMAND [ARGUMENT...]' >&2
    exit 2
fi
options=$1
shift
if [ "$(id -u)" != 0 ]; then
    echo 'with-drive-a.sh: only root can mount the file system of drive A:' >&2
    exit 2
fi

# The command gets no copy of the lock: a Wine server that it starts would hold it for as long as it runs.
exec 9>"$WINEPREFIX/drive-a.lock"
flock 9

work=$(mktemp -d)
link=$WINEPREFIX/dosdevices/a:
watcher=
# shellcheck disable=SC2317  # the trap calls it
clean_up() {
    # A watcher that could not remount the drive has already ended and said why.
    if [ -n "$watcher" ] && kill -0 "$watcher"; then kill "$watcher"; fi
    rm -f "$link"
    if mountpoint -q "$work/floppy"; then umount -l "$work/floppy"; fi
    rm -rf --one-file-system "$work"
}
trap clean_up EXIT
trap 'exit 130' INT TERM

rm -f "$link"
mkdir "$work/floppy" "$work/control"
export VELBOOTER_DRIVE_A_CONTROL=$work/control
if [ "$options" != none ]; then
    mount -t tmpfs -o "$options" tmpfs "$work/floppy"
    ln -s "$work/floppy" "$link"
    while sleep 0.05; do
        [ -f "$work/control/request" ] || continue
        mount -o "remount,$(cat "$work/control/request")" "$work/floppy"
        rm "$work/control/request"
    done 9>&- &
    watcher=$!
fi

status=0
"$@" 9>&- || status=$?
exit "$status"
