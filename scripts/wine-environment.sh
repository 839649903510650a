# shellcheck shell=bash
# Sourced by other scripts: points Wine at a prefix of the project's own, quietly, and without offers to download anything.
# VELBOOTER_WINE selects the Wine: x64, this system's own (the default), or x86, that of the i386 Debian created by
# scripts/setup-i386.sh. VELBOOTER_WINEPREFIX selects another prefix, so that two people can test side by side.
root=${root:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)}
export VELBOOTER_WINE=${VELBOOTER_WINE:-x64}
WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine}
case $VELBOOTER_WINE in
    x64) ;;
    x86) WINEPREFIX+=-x86 ;;
    *)
        echo "VELBOOTER_WINE is neither x64 nor x86: $VELBOOTER_WINE" >&2
        exit 2
        ;;
esac
export WINEPREFIX
# Wine gets the code page of file names from the locale; without one, names beyond ASCII could not be opened.
export LC_ALL=C.UTF-8
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml='
export FONTCONFIG_FILE=$root/scripts/no-fonts.conf

# Wine's loader is below the page 7FFE0000, which every Windows program needs, and Linux puts the loader's heap anywhere in the
# gigabyte that follows it: one start in several thousand ends with "failed to map the shared user data", before the program's
# first instruction. Without random addresses the heap directly follows the loader and stays below that page.
# shellcheck disable=SC2034  # for the scripts that source this one
at_fixed_addresses=(setarch --addr-no-randomize)

i386_root=$root/build/debian-i386
# Whether programs of the i386 Debian see this checkout: only inside scripts/with-i386-root.sh.
sees_checkout() { [ -e "$i386_root$root/scripts/wine-environment.sh" ]; }

# in_wine_root COMMAND...: runs a command of the system that the selected Wine belongs to, in the current folder.
in_wine_root() {
    if [ "$VELBOOTER_WINE" = x64 ]; then
        "$@"
    elif sees_checkout; then
        chroot "$i386_root" /usr/bin/env -C "$PWD" "$@"
    else
        "$root/scripts/with-i386-root.sh" chroot "$i386_root" /usr/bin/env -C "$PWD" "$@"
    fi
}

# Ends every program of the prefix and waits until its server has exited.
stop_wine() { if in_wine_root wineserver -k 2>/dev/null; then in_wine_root wineserver -w; fi; }
