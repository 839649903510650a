# shellcheck shell=bash
# Sourced by scripts that keep programs under Wine on one core: sets first_core and last_core, the numbers of two of the cores
# that this script may use, the same one if there is no other.
# A program and Wine's server take turns. On two cores each waits until the other's core is awake, which in a virtual machine
# takes longer than the work: a program that starts in 0.14 s on one core needed 0.67 s on two idle ones, and less on busy ones.
cores=$(taskset --cpu-list --pid $$)
cores=${cores##* }
# shellcheck disable=SC2034  # for the scripts that source this one
first_core=${cores%%[-,]*} last_core=${cores##*[-,]}
