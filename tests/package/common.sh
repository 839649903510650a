# shellcheck shell=bash
# Sourced by the other scripts in this folder.

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Creates $scratch, which is removed when the script ends.
make_scratch() {
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
}

# pack BUILD FOLDER [CONFIGURATION]: puts the package of what is built in BUILD, or another CPack package, into
# FOLDER.
pack() {
    local configuration=$1/${3:-CPackConfig.cmake}
    [ -f "$configuration" ] || fail "$1 is not built: scripts/package.sh does it"
    cpack --config "$configuration" -B "$2" >"$scratch/cpack.log" 2>&1 || fail "cpack: $(cat "$scratch/cpack.log")"
}

# unpack ZIP FOLDER: puts the one folder of ZIP, which has the ZIP's name, into FOLDER; the ZIP must contain
# nothing else.
unpack() {
    local top other
    top=$(basename "$1" .zip)
    other=$(unzip -Z1 "$1" | grep -v "^$top/." || true)
    [ -z "$other" ] || fail "$(basename "$1") holds more than the folder $top: $other"
    unzip -q "$1" -d "$2"
}
