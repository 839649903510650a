#!/usr/bin/env bash
# Installs what building and testing need from Debian, and makes the Wine prefix in build/wine. Run as root; a second run
# finds everything in place and returns at once.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

packages=(
    # building
    git cmake ninja-build g++ zlib1g-dev nasm imagemagick python3 cmark-gfm fp-utils zip
    g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix libz-mingw-w64-dev googletest
    # running and looking
    wine wine64 xvfb xauth xdotool x11-utils qemu-system-x86
    # checking what was made
    mtools dosfstools cabextract p7zip-full gcab libarchive-tools libmspack-dev unzip
    # keeping the source in order, and measuring
    clang libclang-rt-dev clang-format clang-tidy shellcheck hyperfine
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || echo absent)
    [ "$status" = 'install ok installed' ] || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    if [ "$(id -u)" != 0 ]; then
        echo "setup.sh: these packages are missing and only root can install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing from Debian: ${missing[*]}"
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"
prefix=$WINEPREFIX
if [ ! -f "$prefix/.ready" ]; then
    echo "Making the Wine prefix $prefix"
    rm -rf "$prefix"
    mkdir -p "$prefix"
    log=$prefix/setup.log
    # The server keeps its output open as long as it lives, so it never gets this script's.
    "$root/scripts/wine.sh" wineboot --init >"$log" 2>&1 </dev/null
    # A crash ends the program at once instead of showing a dialog that nobody answers.
    "$root/scripts/wine.sh" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f \
        >>"$log" 2>&1 </dev/null
    "$root/scripts/wine.sh" winecfg -v win10 >>"$log" 2>&1 </dev/null
    # Some prefixes come with a Command folder, which stands for a Windows 98 installation.
    rmdir "$prefix/drive_c/windows/command" 2>/dev/null || [ ! -e "$prefix/drive_c/windows/command" ]
    touch "$prefix/.ready"
fi
