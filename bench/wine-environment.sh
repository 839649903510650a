# shellcheck shell=bash
# Sourced by the benchmarks that run the program: selects a Wine prefix of their own, whose server can be stopped without
# stopping that of a test, and sets on_one_core, the words before a command that keep all it starts on one core. The repository
# is the current folder and in $root.
export VELBOOTER_WINEPREFIX=${VELBOOTER_WINEPREFIX:-$root/build/wine-bench}
scripts/setup.sh
# shellcheck source=scripts/wine-environment.sh
. scripts/wine-environment.sh
# shellcheck source=scripts/cores.sh
. scripts/cores.sh
# shellcheck disable=SC2034  # for the scripts that source this one
on_one_core=("${at_fixed_addresses[@]}" taskset --cpu-list "$first_core")
