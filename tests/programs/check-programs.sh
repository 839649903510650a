#!/usr/bin/env bash
# Checks the finished Windows programs from outside: check-programs.sh OBJDUMP VERSION PROGRAM...
# Each imports only what comes with Windows, can be loaded at any address, does not execute data, has a protected stack, runs with
# the rights of its user, requests the current common controls, and contains the version and the product's name.
set -euo pipefail
objdump=$1
version=$2
shift 2
failed=0
complain() {
    printf '%s\n' "$*" >&2
    failed=1
}
# Libraries that every Windows since version 7 has. cabinet.dll is another, but Windows prefers one in the program's folder.
known=' advapi32.dll comctl32.dll comdlg32.dll gdi32.dll imagehlp.dll kernel32.dll msvcrt.dll ole32.dll shell32.dll user32.dll '

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
has_text() { grep -aqE -- "$1" "$work/text"; }
has_header() { grep -qE -- "$1" "$work/headers"; }

[ $# -gt 0 ] || complain 'no program to check'
for program in "$@"; do
    name=$(basename "$program")
    "$objdump" -p "$program" >"$work/headers"
    # Resource texts have 16 bits per character; without the zero bytes they can be searched.
    tr -d '\0' <"$program" >"$work/text"
    sed -n 's/^[ \t]*DLL Name: //p' "$work/headers" >"$work/imports"
    while read -r library; do
        case $known in *" ${library,,} "*) ;; *) complain "$name imports $library, which does not come with Windows" ;; esac
    done <"$work/imports"
    for flag in DYNAMIC_BASE NX_COMPAT; do
        has_header "^[[:space:]]+$flag\$" || complain "$name is linked without $flag"
    done
    if has_header 'file format pei-x86-64$'; then
        has_header '^[[:space:]]+HIGH_ENTROPY_VA$' || complain "$name is linked without HIGH_ENTROPY_VA"
    fi
    # Without them the system cannot load the program elsewhere, whatever the flags say.
    if has_header '^[[:space:]]+relocations stripped$' || ! has_header '^Entry 5 0*[1-9a-f][0-9a-f]* 0*[1-9a-f][0-9a-f]* .*\[\.reloc\]'; then
        complain "$name carries no relocations"
    fi
    has_text 'stack smashing detected' || complain "$name does not watch its stack"
    has_text 'level="asInvoker"' || complain "$name has no manifest that says asInvoker"
    has_text 'Microsoft\.Windows\.Common-Controls' || complain "$name does not ask for the common controls"
    has_text 'The Veltrane' || complain "$name does not carry the product's name"
    has_text "FileVersion.?${version//./\\.}" || complain "$name does not carry version $version"
done
exit "$failed"
