# shellcheck shell=bash
# Sourced by scripts that hand paths to Windows programs.

# wine_path PATH: prints an absolute path as Windows programs see it; Z: is the root of this system.
wine_path() { printf 'Z:%s' "${1//\//\\}"; }
