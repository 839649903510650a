#!/usr/bin/env bash
# Installs the Debian packages that building and testing need, and creates the Wine prefix in build/wine. Run it as root;
# a second run finds everything in place and returns at once.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/debian-packages.sh
. "$root/scripts/debian-packages.sh"

packages=(
    # building
    git cmake ninja-build g++ zlib1g-dev nasm imagemagick python3 cmark-gfm fp-utils zip
    g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix libz-mingw-w64-dev googletest
    # running and watching
    wine wine64 fonts-wine xvfb xauth xdotool x11-utils qemu-system-x86 dosbox debootstrap
    # checking the results
    mtools dosfstools cabextract p7zip-full gcab libarchive-tools libmspack-dev unzip xorriso syslinux-common
    # keeping the source in order, and measuring
    clang libclang-rt-dev clang-format clang-tidy shellcheck python3-yaml hyperfine
)
install_missing "${packages[@]}"
"$root/scripts/wine-prefix.sh"
