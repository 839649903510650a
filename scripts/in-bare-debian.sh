#!/usr/bin/env bash
# Runs commands as a newcomer would: in a minimal Debian 12, in a fresh clone of the last commit, in a path with a space and
# without a locale: in-bare-debian.sh [COMMAND...]
# Each COMMAND is a line for the shell and runs at the root of the clone; the default is README's two commands, the tests
# last. The commands run one after another until one fails, and its exit code is returned. Needs root and some 6 GB below
# TMPDIR (default /var/tmp). Every mount and every process belongs to private namespaces and disappears with the script.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
commands=("$@")
[ $# -gt 0 ] || commands=(./scripts/demo.sh ./scripts/test.sh)
checkout='/home/new user/velbooter'

if [ "$(id -u)" != 0 ]; then
    echo 'in-bare-debian.sh: only root can create a Debian root and enter it' >&2
    exit 1
fi
# shellcheck source=scripts/debian-packages.sh
. "$root/scripts/debian-packages.sh"
install_missing debootstrap git

bare=$(mktemp -d "${TMPDIR:-/var/tmp}/velbooter-bare.XXXXXXXXXX")
inside=
# shellcheck disable=SC2317  # the trap calls it
clean_up() {
    local first
    # When the first process inside ends, the kernel ends all the others, and only then does its parent return. So nothing
    # writes to the folder any more when it is removed.
    if [ -n "$inside" ] && first=$(cat "/proc/$inside/task/$inside/children") &&
        first=${first%% *} && kill -KILL "${first:-$inside}"; then
        wait "$inside" || true # its code is that of this signal
    fi
    rm -rf --one-file-system "$bare"
}
trap clean_up EXIT
trap 'exit 130' INT TERM HUP

# Not everything inside runs as root.
chmod 755 "$bare"
make_debian "$bare" amd64
# Nothing that a user adds to a fresh system may have an effect: neither the caller's settings nor their git configuration.
# Root may clone what belongs to another user.
env -i PATH="$PATH" git clone --quiet --upload-pack "git -c 'safe.directory=*' upload-pack" "file://$root" "$bare$checkout"

# shellcheck disable=SC2016  # the inner shell's own words
enter='set -e
# Private mounts are possible only if the root is a mount itself.
mount --bind "$1" "$1"
mount -t proc proc "$1/proc"
mount -t devpts devpts "$1/dev/pts"
mount -t tmpfs tmpfs "$1/dev/shm"
bare=$1
checkout=$2
shift 2
for command; do
    echo "In a bare Debian: $command"
    chroot "$bare" /usr/bin/env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
        /bin/bash -c "cd \"\$1\" && eval \"\$2\"" - "$checkout" "$command" </dev/null
done'
# If this script is killed, the namespaces and everything in them end with it.
setpriv --pdeathsig KILL unshare --mount --pid --fork --kill-child bash -c "$enter" - "$bare" "$checkout" "${commands[@]}" &
inside=$!
status=0
wait "$inside" || status=$?
inside=
exit "$status"
