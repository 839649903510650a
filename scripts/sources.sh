# shellcheck shell=bash
# Sourced by the checks, which run in the root of the project: lists its files.

# list_sources ARRAY PATTERN...: fills ARRAY with the project's files that match one of git's patterns, except ignored ones.
# Ends the script if git fails or if there is no such file: a check that looked at nothing would call everything fine.
list_sources() {
    local -n listedFiles=$1
    shift
    local listing
    listing=$(mktemp)
    # The user who runs the check need not be the owner of the files.
    if ! git -c "safe.directory=$(pwd -P)" ls-files -z --cached --others --exclude-standard -- "$@" >"$listing"; then
        rm -f "$listing"
        echo "$(basename "$0"): git cannot list the files of $(pwd -P)" >&2
        exit 1
    fi
    mapfile -d '' -t listedFiles <"$listing"
    rm -f "$listing"
    if [ ${#listedFiles[@]} = 0 ]; then
        echo "$(basename "$0"): there is no file to check: $*" >&2
        exit 1
    fi
}

# search OUTPUT GREP-ARGUMENT...: writes what grep finds to the file OUTPUT; finding nothing is fine. Ends the script if grep
# cannot read a file.
search() {
    local output=$1 status=0
    shift
    grep "$@" >"$output" || status=$?
    if [ "$status" -gt 1 ]; then
        echo "$(basename "$0"): grep fails, see above" >&2
        exit 1
    fi
}
