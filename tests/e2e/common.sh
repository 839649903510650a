# shellcheck shell=bash
# Sourced by the other scripts in this folder: runs the built program in a copy of an application folder and checks its images.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Creates $scratch, which is removed when the script ends, and copies the application folder $1 to $scratch/boot disks: the
# space is part of the test.
copy_application() {
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
    [ -f "$1/velbooter.exe" ] || fail "no application in $1: scripts/build.sh creates it"
    application="$scratch/boot disks"
    cp -a "$1" "$application"
    rm -rf "$application/out"
}

# Runs the program in $application with the given words. A message box would stay until the time limit.
run_program() {
    local status=0
    (cd "$application" && timeout 200 "$root/scripts/wine.sh" velbooter.exe "$@") \
        >"$scratch/program.log" 2>&1 </dev/null || status=$?
    if [ "$status" = 124 ]; then
        local failures=$root/build/e2e-failures picture='no picture could be taken'
        [ "${VELBOOTER_WINE:-x64}" = x64 ] || failures+=-$VELBOOTER_WINE
        mkdir -p "$failures"
        if import -window root "$failures/$(basename "$0" .sh).png"; then picture="see $failures"; fi
        fail "velbooter.exe $* does not end; $picture"
    fi
    [ "$status" = 0 ] || fail "velbooter.exe $* ended with exit code $status: $(cat "$scratch/program.log")"
    for left in Drivers.ini cabs Temp; do
        [ ! -e "$application/$left" ] || fail "velbooter.exe $* left $left"
    done
}

# Expects a sound file system on the image $1, which has $2 bytes.
check_image() {
    [ -f "$1" ] || fail "there is no image $1"
    [ "$(stat -c %s "$1")" = "$2" ] || fail "$1 has $(stat -c %s "$1") bytes, not $2"
    fsck.fat -n "$1" >"$scratch/fsck.log" 2>&1 || fail "fsck.fat finds fault with $1: $(cat "$scratch/fsck.log")"
}

# Prints the path of the file or folder $2, with either slash and in any case, below the folder $1; fails if there is none.
find_any_case() {
    local path=$1 part parts
    IFS=/ read -ra parts <<<"${2//\\//}"
    for part in "${parts[@]}"; do
        path=$(find "$path" -mindepth 1 -maxdepth 1 -iname "$part" -print -quit)
        [ -n "$path" ] || return 1
    done
    printf '%s\n' "$path"
}
