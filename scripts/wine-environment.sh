# shellcheck shell=bash
# Sourced: points Wine at the project's own prefix, quiet, and without offers to download anything.
# VELBOOTER_WINEPREFIX names another prefix, so that two people can test side by side.
root=${root:-$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)}
export WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml='
