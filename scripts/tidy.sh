#!/usr/bin/env bash
# Runs clang-tidy over the sources: the companions as the native build compiles them, the program with the headers of the
# Windows toolchain. `tidy.sh FILE...` checks just these files.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
mapfile -t files < <(if [ $# -gt 0 ]; then printf '%s\n' "$@"; else
    git ls-files --cached --others --exclude-standard -- 'src/*.cpp' 'tools/*.cpp'
fi)

gcc=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include
windowsFlags=(--target=x86_64-w64-windows-gnu -nostdinc++ -isystem "$gcc/c++"
    -isystem "$gcc/c++/x86_64-w64-mingw32" -isystem "$gcc/c++/backward" -isystem /usr/x86_64-w64-mingw32/include
    -DWINVER=0x0601 -D_WIN32_WINNT=0x0601 -DNOMINMAX -DWIN32_LEAN_AND_MEAN)

check() {
    local file=$1
    local flags=()
    case $file in
        src/* | tools/*_win.cpp) flags=("${windowsFlags[@]}") ;;
    esac
    clang-tidy --quiet "$file" -- -std=c++20 -I. "${flags[@]}" 2>/dev/null
}
export -f check
failed=0
# Two at a time; a file's findings are printed together when it is done.
running=0
for file in "${files[@]}"; do
    { out=$(check "$file") || { printf '%s\n' "$out"; exit 1; }; } &
    running=$((running + 1))
    if [ "$running" -ge "$(nproc)" ]; then
        wait -n || failed=1
        running=$((running - 1))
    fi
done
while [ "$running" -gt 0 ]; do
    wait -n || failed=1
    running=$((running - 1))
done
exit "$failed"
