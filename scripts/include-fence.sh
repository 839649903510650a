#!/usr/bin/env bash
# The floors of the house: a folder of src includes only from floors below its own (or from itself), no two
# files include each other, and the system's header stays where windows and files are handled.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

floor() {
    case $1 in
        src/common/*) echo 1 ;;
        src/forms/* | src/console/*) echo 2 ;;
        src/disk/*) echo 3 ;;
        src/drivers/* | src/setup/* | src/dos/*) echo 4 ;;
        src/start/*) echo 5 ;;
        src/ui/*) echo 6 ;;
        src/*) echo 7 ;;
        resources/*) echo 0 ;;
        tools/shared/*) echo 101 ;;
        tools/*) echo 102 ;;
        *) echo 999 ;;
    esac
}
room() { case $1 in src/ui/*) echo src/ui ;; */*/*) echo "${1%/*}" | cut -d/ -f1,2 ;; *) echo "$1" ;; esac; }

# What is true of every floppy: the program foretells with it how the image tool lays a disk out.
isShared() { case $1 in tools/bfi/Geometry.h | tools/bfi/ShortName.h) true ;; *) false ;; esac; }

failed=0
complain() {
    printf 'include fence: %s\n' "$*" >&2
    failed=1
}
edges=$(mktemp)
trap 'rm -f "$edges"' EXIT

while IFS=: read -r file included; do
    from=$(floor "$file")
    to=$(floor "$included")
    if [ "$(room "$file")" != "$(room "$included")" ]; then
        [[ $included != src/console/* ]] || complain "$file includes $included, which is velbooter.com's own"
        [ "$to" -lt "$from" ] || isShared "$included" || complain "$file includes $included, which is not on a floor below"
        [ $((from / 100)) = $((to / 100)) ] || [ "$to" = 0 ] || isShared "$included" || complain "$file includes $included of the other house"
    fi
    printf '%s %s\n' "${file%.*}" "${included%.*}" >>"$edges"
done < <(git ls-files --cached --others --exclude-standard -- 'src/*.h' 'src/*.cpp' 'tools/*.h' 'tools/*.cpp' |
    xargs grep -HoE '^#include "[^"]+"' | sed -E 's/#include "([^"]+)"/\1/')

while read -r a b; do
    [ "$a" = "$b" ] || ! grep -qxF "$b $a" "$edges" || complain "$a and $b include each other"
done < <(sort -u "$edges")

while read -r file; do
    case $file in
        src/common/*.cpp | src/ui/windows/* | src/WinMain.cpp | src/console/Main.cpp) ;;
        tools/*_win.cpp) ;;
        *) complain "$file includes the system's header" ;;
    esac
done < <(git ls-files --cached --others --exclude-standard -- 'src/*.h' 'src/*.cpp' 'tools/*.h' 'tools/*.cpp' |
    xargs grep -lE '^#include <(windows|fdi)\.h>')
exit "$failed"
