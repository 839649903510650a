# shellcheck shell=bash
# Sourced: points Wine at the project's own prefix, quiet, and without offers to download anything.
# VELBOOTER_WINEPREFIX names another prefix, so that two people can test side by side.
root=${root:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)}
# Wine takes the code page of file names from the locale; without one, names beyond ASCII could not be opened.
export LC_ALL=C.UTF-8
export WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml='
