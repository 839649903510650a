#!/usr/bin/env bash
# Proves that check-programs.sh detects programs that are linked in another way than ours: check-programs-test.sh COMPILER
# OBJDUMP
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
compiler=$1
objdump=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
cat >"$work/program.cpp" <<'SOURCE'
#include <cstdio>
int main() {
    char line[80];
    return std::fgets(line, sizeof line, stdin) != nullptr ? line[0] : 1;
}
SOURCE
good=(-O2 -static -fstack-protector-strong -Xlinker --dynamicbase -Xlinker --nxcompat)
# The 32-bit linker does not know the 64-bit flags below.
is64=false
case $("$compiler" -dumpmachine) in x86_64-*) is64=true ;; esac
! $is64 || good+=(-Xlinker --high-entropy-va)

# check OPTION...: sets $report to what the check says about a program that is linked with the options.
check() {
    "$compiler" "$work/program.cpp" "$@" -o "$work/program.exe"
    if report=$("$here/check-programs.sh" "$objdump" 1.2.3 "$work/program.exe" 2>&1); then report+=' (and it reports success)'; fi
}
# expect TEXT OPTION...
expect() {
    check "${@:2}"
    if [[ $report != *"$1"* || $report == *'reports success'* ]]; then
        printf 'not seen: %s\n%s\n' "$1" "$report"
        failures=$((failures + 1))
    fi
}

# The only remaining complaints are about what windres adds.
check "${good[@]}"
if grep -vE 'manifest|common controls|product|version' <<<"$report"; then
    echo 'the check complains about a program that is linked as ours are'
    failures=$((failures + 1))
fi
expect 'program.exe does not carry version 1.2.3' "${good[@]}"
expect 'program.exe is linked without DYNAMIC_BASE' "${good[@]}" -Wl,--disable-dynamicbase
expect 'program.exe is linked without NX_COMPAT' "${good[@]}" -Wl,--disable-nxcompat
! $is64 || expect 'program.exe is linked without HIGH_ENTROPY_VA' "${good[@]}" -Wl,--disable-high-entropy-va
expect 'program.exe carries no relocations' "${good[@]}" -Wl,--disable-reloc-section
expect 'program.exe does not watch its stack' "${good[@]}" -fno-stack-protector
expect 'program.exe imports libssp-0.dll, which does not come with Windows' -O2 -fstack-protector-strong
[ "$failures" = 0 ]
