# shellcheck shell=bash
# Sourced: what comes from Debian, packages for this system and whole small systems beside it.

# install_missing PACKAGE...: installs those packages that are not there, which takes root. Ends the script when it cannot.
install_missing() {
    local package status missing=()
    for package in "$@"; do
        status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || echo absent)
        [ "$status" = 'install ok installed' ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        echo "these packages are missing and only root can install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing from Debian: ${missing[*]}"
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# make_debian FOLDER ARCHITECTURE [PACKAGE...]: makes a Debian 12 of that architecture in FOLDER, of its smallest set of
# packages and those named, with what these need. What debootstrap mounts meanwhile is private. Ends the script with the end
# of the log when it cannot.
make_debian() {
    local folder=$1 architecture=$2 log packages
    shift 2
    packages=$(IFS=, && echo "$*")
    log=$(mktemp)
    if ! unshare --mount debootstrap --variant=minbase --arch="$architecture" ${packages:+--include="$packages"} bookworm "$folder" \
        http://deb.debian.org/debian >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        echo "no Debian of $architecture could be made in $folder" >&2
        exit 1
    fi
    rm -f "$log"
}
