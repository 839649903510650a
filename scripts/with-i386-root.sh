#!/usr/bin/env bash
# Runs a command that can start programs of the i386 Debian in build/debian-i386 on the files of this system: they see the
# checkout, /tmp and /dev at the same paths: with-i386-root.sh COMMAND [ARGUMENT...]
# Needs root, and the i386 Debian (scripts/setup-i386.sh). The mounts are private and disappear with the command.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"

if [ ! -f "$i386_root/.ready" ]; then
    echo 'with-i386-root.sh: there is no i386 Debian: scripts/setup-i386.sh creates it' >&2
    exit 1
fi
if [ "${1-}" != --mounted ]; then exec unshare --mount "${BASH_SOURCE[0]}" --mounted "$@"; fi
shift

# A later mount below one of these paths is then visible at both.
mount --make-rshared /
mount --rbind /dev "$i386_root/dev"
mount --rbind /tmp "$i386_root/tmp"
mount -t proc proc "$i386_root/proc"
mkdir -p "$i386_root$root"
mount --bind "$root" "$i386_root$root"
exec "$@"
