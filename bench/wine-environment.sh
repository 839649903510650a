# shellcheck shell=bash
# Sourced by the benches that run the program: a Wine prefix of their own, whose server can be ended without ending that of a
# test. The repository is the current folder and in $root.
export VELBOOTER_WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine-bench}
scripts/setup.sh
# shellcheck source=scripts/wine-environment.sh
. scripts/wine-environment.sh
