#!/usr/bin/env bash
# Prints what a Windows program is built with: the versions of the compiler, the linker, the C runtime and zlib, and the Debian
# package of each. The output depends on neither the folder, the user nor the time: describe-toolchain.sh COMPILER
set -euo pipefail
shopt -s inherit_errexit
compiler=$(command -v "$1")

# package FILE: the package that installed the file, with its version.
package() {
    local owner
    # Debian lists some files under a path that contains a link.
    owner=$(dpkg-query -S "$1" 2>/dev/null || dpkg-query -S "$(realpath "$1")")
    dpkg-query -W -f '${Package} ${Version}' "${owner%%: *}"
}
# header NAME: the path of the header that the compiler uses for <NAME>.
header() {
    local path
    path=$(printf '#include <%s>\n' "$1" | "$compiler" -E -x c++ - | sed -n "s|^# 1 \"\(.*/$1\)\".*|\1|p" | sed -n 1p)
    realpath "$path"
}
# macro HEADER NAME: the value of a macro that the header defines.
macro() {
    printf '#include <%s>\n' "$1" | "$compiler" -E -dM -x c++ - | sed -n "s/^#define $2 //p" | tr -d '"'
}
linker=$(command -v "$("$compiler" -print-prog-name=ld)")
runtime=$(macro _mingw.h __MINGW64_VERSION_MAJOR).$(macro _mingw.h __MINGW64_VERSION_MINOR).$(macro _mingw.h __MINGW64_VERSION_BUGFIX)

echo "compiler: $("$compiler" --version | sed -n 1p), $(package "$compiler")"
echo "linker: $("$linker" --version | sed -n 1p), $(package "$linker")"
echo "C runtime: mingw-w64 $runtime, $(package "$("$compiler" -print-file-name=libmingw32.a)")"
echo "zlib: $(macro zlib.h ZLIB_VERSION), $(package "$(header zlib.h)")"
