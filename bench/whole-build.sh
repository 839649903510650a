#!/usr/bin/env bash
# Times the unattended build of the demonstration disk under Wine and a script that builds the same disk with gcab, mformat
# and mcopy, and shows separately what starting the tools costs. scripts/bench.sh calls it: whole-build.sh RUNS
# Needs build/demo (scripts/build.sh).
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=bench/wine-environment.sh
. bench/wine-environment.sh
export runs=${1:-20}
work=$(mktemp -d)
export work
trap 'stop_wine; rm -rf "$work"' EXIT
stop_wine

# Three copies of the demonstration: in the second one the two modules are ready-made, so that nothing is packed, and in the
# third one the image tool is missing as well, so that the program starts nothing.
cp -r build/demo "$work/packing"
cp -r build/demo "$work/ready"
sed -i '/^\[Create_CABs\]/,$d' "$work/ready/files/demo.ini"
printf '[Copy_Files]\r\nready\\dos.cab=LIB\\dos.cab\r\nready\\keyb.cab=LIB\\keyb.cab\r\n' >>"$work/ready/files/demo.ini"
mkdir "$work/ready/ready"
cp -r "$work/ready" "$work/alone"
rm "$work/alone/bfi.exe"

# The peer packs the folders of the two modules and copies everything else; all files come from the image.
cat >"$work/peer.sh" <<'PEER'
set -e
cd "$work/modules"
for module in dos keyb; do (cd "$module" && gcab -c -z "$work/tree/LIB/$module.cab" ./*) >/dev/null; done
cd "$work/tree"
mformat -C -f 1440 -v VELSTART -i "$work/peer.img" ::
# mcopy keeps the order of its arguments: the system files come first, then everything else.
shopt -s extglob
mcopy -m -Q -s -i "$work/peer.img" IO.SYS MSDOS.SYS !(IO.SYS|MSDOS.SYS) ::
PEER

measure() {
    set -euo pipefail
    median() { # median PREPARE COMMAND [OPTION]
        rm -f "$work/time.json"
        if ! hyperfine -N -w 2 -r "$runs" --prepare "$1" --export-json "$work/time.json" "${@:3}" "$2" >"$work/hyperfine.log" 2>&1; then
            cat "$work/hyperfine.log" >&3
            return 1
        fi
        sed -n 's/^ *"median": \([0-9.e-]*\),*/\1/p' "$work/time.json" | awk '{ printf "%.1f\n", $1 * 1000 }'
    }
    wineserver -p
    # Without a window manager Wine waits two seconds for each window of the program to be adopted by one.
    wine reg add 'HKCU\Software\Wine\AppDefaults\velbooter.exe\X11 Driver' /v Managed /d N /f
    cd "$work/packing"
    wine velbooter.exe -t 144 demo bench.img
    mkdir "$work/tree" "$work/modules"
    mcopy -s -i bench.img '::*' "$work/tree/"
    for module in dos keyb; do
        cabextract -q -d "$work/modules/$module" "$work/tree/LIB/${module^^}.CAB"
        cp "$work/tree/LIB/${module^^}.CAB" "$work/ready/ready/$module.cab"
        mv "$work/tree/LIB/${module^^}.CAB" "$work/alone/ready/$module.cab"
    done
    median "rm -f bench.img" "wine velbooter.exe -t 144 demo bench.img" >"$work/whole.ms"
    (cd "$work/ready" && median "rm -f bench.img" "wine velbooter.exe -t 144 demo bench.img") >"$work/ready.ms"
    # Without the image tool the exit code is 7.
    (cd "$work/alone" && median true "wine velbooter.exe -t 144 demo bench.img" --ignore-failure) >"$work/alone.ms"
    median "rm -f $work/peer.img" "bash $work/peer.sh" >"$work/peer.ms"
    fsck.fat -n "$work/peer.img"
}
export -f measure
"${on_one_core[@]}" scripts/with-display.sh bash -c measure 3>&2 >"$work/log" 2>&1 </dev/null || { tail -n 20 "$work/log" >&2; exit 1; }

read -r whole ready alone peer < <(cat "$work"/{whole,ready,alone,peer}.ms | paste -sd ' ')
echo "The unattended demonstration build under Wine, wall time, median of $runs runs"
row() { printf '%-62s %8s %8s\n' "$1" "$2" "$(awk -v a="$2" -v b="$peer" 'BEGIN { printf "%.1f", a / b }')"; }
printf '%-62s %8s %8s\n' recipe ms '/ peer'
row 'velbooter.exe, which starts cabarc twice and bfi' "$whole"
row 'the same with both modules ready-made: starts bfi alone' "$ready"
row 'the same without bfi: starts nothing' "$alone"
row 'peer: bash, gcab twice, mformat, mcopy' "$peer"
awk -v whole="$whole" -v alone="$alone" 'BEGIN { printf "A tool started by the program, its work included: %.1f ms\n", (whole - alone) / 3 }'
