#!/usr/bin/env bash
# Creates the prefix of the selected Wine (see wine-environment.sh) with its drive C:, registry and fonts. An existing prefix
# stays if it was created by this version of this script and of Wine; any other is rebuilt.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/wine-environment.sh
. "$root/scripts/wine-environment.sh"
recipe=$(sha256sum <"${BASH_SOURCE[0]}")$(in_wine_root dpkg-query -W libwine)
if [ -f "$WINEPREFIX/.ready" ] && [ "$(cat "$WINEPREFIX/.ready")" = "$recipe" ]; then exit 0; fi

log=$WINEPREFIX/setup.log
if [ -d "$WINEPREFIX" ]; then
    if [ ! -f "$log" ]; then
        echo "wine-prefix.sh: $WINEPREFIX is not a prefix that this script created, so it stays: choose another folder" >&2
        exit 1
    fi
    stop_wine
fi
echo "Creating the Wine prefix $WINEPREFIX"
rm -rf "$WINEPREFIX"
mkdir -p "$WINEPREFIX"
: >"$log"
# Debian's Wine does not look for its fonts where Debian's package puts them.
fonts=$WINEPREFIX/drive_c/windows/Fonts
mkdir -p "$fonts"
cp /usr/share/wine/fonts/* "$fonts/"
# The server keeps its output open as long as it runs, so it never gets this script's.
run() { "$root/scripts/wine.sh" "$@" >>"$log" 2>&1 </dev/null; }
run wineboot --init
# A crash ends the program at once instead of showing a dialog that nobody answers.
run reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
run winecfg -v win10
# Some prefixes come with a Command folder, which would indicate a Windows 98 installation; the 32-bit one is not even empty.
rm -rf "$WINEPREFIX/drive_c/windows/command"
echo "$recipe" >"$WINEPREFIX/.ready"
