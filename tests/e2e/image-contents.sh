#!/usr/bin/env bash
# Builds the demonstration disk in both sizes and compares the images with what the disk's configuration asks for, file by
# file and cabinet member by cabinet member; then boots both: image-contents.sh DEMO
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/e2e/common.sh
. "$here/common.sh"
copy_application "$1"
expected=$scratch/expected

# Adds a copy of $1 to the expected disk under the name $2, which is relative and may have backslashes.
expect_file() {
    local target=${2//\\//}
    target=$expected/${target^^}
    mkdir -p "$(dirname "$target")"
    cp "$1" "$target"
}

# A source of a configuration line: the application folder takes precedence over its folder dos.
find_source() {
    find_any_case "$application" "$1" || find_any_case "$application/dos" "$1"
}

expect_copy() {
    local source=$1 target=$2 folder file
    if [[ $source == *'*.*' ]]; then
        folder=$(find_source "${source%\\\*.\*}") || return 0
        while IFS= read -r file; do
            expect_file "$file" "$target\\$(basename "$file")"
        done < <(find "$folder" -mindepth 1 -maxdepth 1 -type f)
    elif file=$(find_source "$source"); then
        expect_file "$file" "$target"
    fi
}

# A cabinet is expected as its source folder plus the files that the configuration adds, under modules/NAME.
expect_module() {
    local name=$1 target=$2 folder=$1
    [ "$name" != dos ] || folder=dos_files
    mkdir -p "$scratch/modules"
    cp -a "$application/files/$folder" "$scratch/modules/$name"
    printf '%s\n' "${target^^}/${name^^}.CAB" >>"$scratch/cabinets"
}

# An addition of "dos\bin\X.EXE=source" goes into the module's folder.
add_to_module() {
    local source target=${2//\\//} module folder
    source=$(find_source "$1") || fail "the demonstration asks for $1, which is not there"
    module=${target%%/*}
    folder=$(find_any_case "$scratch/modules/$module" "$(dirname "${target#*/}")")
    cp "$source" "$folder/$(basename "$target")"
}

read_configuration() {
    local line section='' left right
    while IFS= read -r line; do
        line=${line%$'\r'}
        case $line in
            '' | ';'*) continue ;;
            '['*) section=$line && continue ;;
        esac
        left=${line%%=*}
        right=${line#*=}
        if [ "$section" = "$1" ]; then "$2" "$left" "$right"; fi
    done <"$application/files/demo.ini"
}

expect_copy 'files\base_files\*.*' ''
expect_copy 'files\base_files\bin\*.*' 'BIN'
read_configuration '[Copy_CABs]' expect_copy
read_configuration '[Copy_Files]' expect_copy
read_configuration '[Create_CABs]' expect_module
read_configuration '[Copy_Files_for_CABs]' add_to_module

list_files() { (cd "$1" && find . -type f -printf '%P\n' | tr '[:lower:]' '[:upper:]' | sort); }

compare_contents() {
    local disk=$scratch/disk$1 image=$2 cabinet name file
    mkdir "$disk"
    mcopy -s -Q -n -m -i "$image" '::*' "$disk" || fail "mcopy cannot read $image"
    { list_files "$expected"; cat "$scratch/cabinets"; } | sort >"$scratch/names.expected"
    list_files "$disk" >"$scratch/names.found"
    diff "$scratch/names.expected" "$scratch/names.found" >&2 || fail "$image contains other files than it should"
    while IFS= read -r file; do
        cmp "$expected/$file" "$(find_any_case "$disk" "$file")" || fail "$file in $image is not the file it was"
    done < <(cd "$expected" && find . -type f -printf '%P\n')
    while IFS= read -r cabinet; do
        name=$(basename "${cabinet,,}" .cab)
        rm -rf "$scratch/unpacked"
        cabextract -q -d "$scratch/unpacked" "$(find_any_case "$disk" "$cabinet")" || fail "cabextract cannot read $cabinet"
        diff -r "$scratch/modules/$name" "$scratch/unpacked" >&2 || fail "$cabinet in $image is not its module"
    done <"$scratch/cabinets"
    [ "$(mlabel -s -i "$image" :: | tr -d '\n' | sed 's/.* is //; s/ *(.*//; s/ *$//')" = VELSTART ] ||
        fail "$image has another label: $(mlabel -s -i "$image" ::)"
    for file in IO.SYS MSDOS.SYS; do
        mattrib -i "$image" "::$file" | grep -q ' SHR ' || fail "$file in $image: $(mattrib -i "$image" "::$file")"
    done
}

boot() {
    "$root/scripts/boot-image.sh" "$1" >"$scratch/boot.txt" || fail "$1 does not start"
}

run_program -t 144 demo 'out\one.img'
check_image "$application/out/one.img" 1474560
compare_contents 144 "$application/out/one.img"
boot "$application/out/one.img"

run_program -t 288 demo 'out\two.img'
check_image "$application/out/two.img" 2949120
compare_contents 288 "$application/out/two.img"
boot "$application/out/two.img"
echo "Both images contain the $(wc -l <"$scratch/names.found") files they should, and start."
