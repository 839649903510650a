#!/usr/bin/env bash
# The layers: a folder of src includes only from layers below its own (or from itself), no two files include each other, and the
# headers of the systems and of zlib stay where windows, files and compression are handled. Everywhere else only headers of the
# C++ standard library stand between angle brackets; what runs on DOS has none of them.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=scripts/sources.sh
. scripts/sources.sh

# Sets $layer to the layer of a file.
layerOf() {
    case $1 in
        src/common/*) layer=1 ;;
        src/forms/*) layer=2 ;;
        src/run/*) layer=3 ;;
        src/disk/*) layer=4 ;;
        src/drivers/* | src/setup/* | src/dos/*) layer=5 ;;
        src/start/*) layer=6 ;;
        src/ui/windows/*) layer=8 ;;
        src/ui/*) layer=7 ;;
        src/*) layer=9 ;;
        # A program of its own, which has the functions for processes and the exit codes from below.
        console/*) layer=4 ;;
        # For the program and the companions alike.
        resources/* | base/* | floppy/*) layer=0 ;;
        tools/shared/*) layer=101 ;;
        tools/*) layer=102 ;;
        realmode/*) layer=201 ;;
        *) layer=999 ;;
    esac
}
# Sets $folder to the folder that a file belongs to, whose files may include each other's: two names deep, but for the
# windows, which are a layer above the pages.
folderOf() {
    local rest
    case $1 in
        src/ui/windows/*) folder=src/ui/windows ;;
        */*/*)
            rest=${1#*/}
            folder=${1%%/*}/${rest%%/*}
            ;;
        */*) folder=${1%%/*} ;;
        *) folder=$1 ;;
    esac
}

# The headers of the C++ standard library.
standardHeaders=" algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem format forward_list fstream
    functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory
    memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set
    shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream syncstream
    system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector version "
standardHeaders=${standardHeaders//$'\n'/ }

# mayInclude FILE HEADER: whether FILE is a place for HEADER, which is none of the standard library.
mayInclude() {
    case $1 in
        src/common/*.cpp | src/ui/windows/* | src/WinMain.cpp | console/Main.cpp) true ;;
        tools/*_win.cpp | tools/*_posix.cpp) true ;;
        tools/cabarc/MsZipCompressor.cpp) [ "$2" = zlib.h ] ;;
        # There is no library on DOS.
        realmode/*) [[ $2 == stdint.h || $2 == stddef.h ]] ;;
        *) false ;;
    esac
}

failed=0
complain() {
    printf 'include fence: %s\n' "$*" >&2
    failed=1
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
files=()
list_sources files 'src/*.h' 'src/*.cpp' 'console/*.h' 'console/*.cpp' 'tools/*.h' 'tools/*.cpp' 'base/*.h' 'floppy/*.h' 'floppy/*.cpp' \
    'realmode/*.h' 'realmode/*.cpp'
search "$work/includes" -HZE '^[[:space:]]*#[[:space:]]*include' "${files[@]}"
declare -A edges

quoted='^[[:space:]]*#[[:space:]]*include[[:space:]]*"([^"]+)"'
angled='^[[:space:]]*#[[:space:]]*include[[:space:]]*<([^>]+)>'
while IFS= read -r -d '' file && IFS= read -r line; do
    if [[ $line =~ $quoted ]]; then
        included=${BASH_REMATCH[1]}
        folderOf "$file"
        fromFolder=$folder
        folderOf "$included"
        if [ "$fromFolder" != "$folder" ]; then
            layerOf "$file"
            from=$layer
            layerOf "$included"
            [[ $included != console/* ]] || complain "$file includes $included, which is velbooter.com's own"
            [ "$layer" -lt "$from" ] || complain "$file includes $included, which is in no layer below"
            [ $((from / 100)) = $((layer / 100)) ] || [ "$layer" = 0 ] ||
                complain "$file includes $included: the program and the companions share no code"
        fi
        a=${file%.*}
        b=${included%.*}
        edges["$a $b"]=1
        [ "$a" = "$b" ] || [ -z "${edges["$b $a"]:-}" ] || complain "$a and $b include each other"
    elif [[ $line =~ $angled ]]; then
        header=${BASH_REMATCH[1]}
        [[ $standardHeaders == *" $header "* && $file != realmode/* ]] || mayInclude "$file" "$header" ||
            complain "$file includes <$header>, which is not of the C++ standard library"
    else
        complain "$file includes in a way that cannot be followed: $line"
    fi
done <"$work/includes"
exit "$failed"
