# shellcheck shell=bash
# Sourced by other scripts: installs Debian packages and creates small Debian systems beside this one.

# install_missing PACKAGE...: installs the packages that are missing, which needs root. Ends the script if it cannot.
install_missing() {
    local package status missing=()
    for package in "$@"; do
        status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || echo absent)
        [ "$status" = 'install ok installed' ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        echo "$(basename "$0"): these packages are missing and only root can install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing from Debian: ${missing[*]}"
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# make_debian FOLDER ARCHITECTURE [PACKAGE...]: creates a Debian 12 of that architecture in FOLDER, with the smallest set of
# packages, the given ones and their dependencies. Ends the script with the end of the log if it cannot.
make_debian() {
    local folder=$1 architecture=$2 work packages
    shift 2
    packages=$(IFS=, && echo "$*")
    work=$(mktemp -d)
    mkdir -p "$folder" "$work/debian"
    # Debootstrap cannot handle spaces in paths, so the folder is mounted at another place for it. What it mounts itself is
    # private, too.
    # shellcheck disable=SC2016  # the inner shell's own words
    if ! unshare --mount bash -c 'mount --bind "$1" "$2" && shift && exec debootstrap "${@:2}" "$1" http://deb.debian.org/debian' - \
        "$folder" "$work/debian" --variant=minbase --arch="$architecture" ${packages:+--include="$packages"} bookworm \
        >"$work/log" 2>&1 </dev/null; then
        tail -n 20 "$work/log" >&2
        rm -rf "$work"
        echo "$(basename "$0"): no $architecture Debian could be created in $folder" >&2
        exit 1
    fi
    rm -rf "$work"
}
