# shellcheck shell=bash
# Sourced by the scripts beside it.

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Makes $scratch, which goes with the script.
make_scratch() {
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
}

# pack BUILD FOLDER [CONFIGURATION]: leaves in FOLDER the package of what is built in BUILD, or another of CPack's.
pack() {
    local configuration=$1/${3:-CPackConfig.cmake}
    [ -f "$configuration" ] || fail "$1 is not built: scripts/package.sh does it"
    cpack --config "$configuration" -B "$2" >"$scratch/cpack.log" 2>&1 || fail "cpack: $(cat "$scratch/cpack.log")"
}

# unpack ZIP FOLDER: leaves in FOLDER the one folder of ZIP, which has its name; nothing may lie beside it.
unpack() {
    local top other
    top=$(basename "$1" .zip)
    other=$(unzip -Z1 "$1" | grep -v "^$top/." || true)
    [ -z "$other" ] || fail "$(basename "$1") holds more than the folder $top: $other"
    unzip -q "$1" -d "$2"
}
