# shellcheck shell=bash
# Sourced by the benchmarks that run the program: selects a Wine prefix of their own, whose server can be stopped without
# stopping that of a test. The repository is the current folder and in $root.
export VELBOOTER_WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine-bench}
scripts/setup.sh
# shellcheck source=scripts/wine-environment.sh
. scripts/wine-environment.sh
