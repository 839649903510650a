#!/usr/bin/env bash
# Creates an i386 Debian with a 32-bit Wine in build/debian-i386, in which the 32-bit programs are tested, and its Wine
# prefix. This system's own list of architectures stays as it is. Needs root; a second run finds everything in place.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/debian-packages.sh
. "$root/scripts/debian-packages.sh"
export VELBOOTER_WINE=x86
# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"
# The tests of windows call the last two through Wine.
packages=(wine wine32 xdotool imagemagick)
install_missing debootstrap fonts-wine

# If two run at once, the second waits and then finds everything in place.
mkdir -p "$root/build"
exec 9>"$root/build/debian-i386.lock"
flock 9

if [ ! -f "$i386_root/.ready" ] || [ "$(cat "$i386_root/.ready")" != "${packages[*]}" ]; then
    if [ "$(id -u)" != 0 ]; then
        echo 'setup-i386.sh: only root can create a Debian root and enter it' >&2
        exit 1
    fi
    echo "Creating an i386 Debian in $i386_root"
    rm -rf --one-file-system "$i386_root"
    make_debian "$i386_root" i386 "${packages[@]}"
    echo "${packages[*]}" >"$i386_root/.ready"
fi
# A Wine server started here must not keep the lock.
"$root/scripts/wine-prefix.sh" 9>&-
