#!/usr/bin/env bash
# Measures the companions beside a peer in the same run and prints the ratios: writing images against mtools and mkfs.fat,
# packing against gcab's MSZIP. The reference sets are made from Debian packages on the first run (build/corpus).
# usage: bench.sh [RUNS]   (timed runs of each command, 20 when not given)
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
runs=${1:-20}
"$root/scripts/setup.sh"
cd "$root"
scripts/build-preset.sh host bfi cabarc bootsect
corpus=$root/build/corpus
[ -d "$corpus/s6_floppy" ] || bench/make-corpus.sh "$corpus" >build/corpus.log 2>&1
bin=$root/build/host/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp build/host/boot/bootsect.bin "$work/boot.bin"

median() { # median PREPARE COMMAND: the median wall time of COMMAND in milliseconds; ends the script when it fails
    rm -f "$work/time.json"
    if ! hyperfine -N -w 3 -r "$runs" --prepare "$1" --export-json "$work/time.json" "$2" >"$work/hyperfine.log" 2>&1; then
        cat "$work/hyperfine.log" >&2
        return 1
    fi
    sed -n 's/^ *"median": \([0-9.e-]*\),*/\1/p' "$work/time.json" | awk '{ printf "%.2f", $1 * 1000 }'
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
sum() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a + b }'; }

# A recipe's time is the sum of its programs' times, each started alone: no shell is counted. A program that makes a file
# finds none, and mcopy finds a fresh empty disk.
echo "Writing an image from $(find "$corpus/s6_floppy" -type f | wc -l) files, wall time, median of $runs runs"
printf '%-34s %9s %9s\n' recipe ms 'bfi / it'
image=$work/disk.img
cd "$corpus/s6_floppy"
# mcopy keeps the order it is given: the system files come first, then everything else.
rest=$(find . -mindepth 1 -maxdepth 1 ! -name IO.SYS ! -name MSDOS.SYS | sort | tr '\n' ' ')
bfi="$bin/bfi -b=$work/boot.bin -l=VELSTART -t=144 -f=$image ."
mformat="mformat -C -f 1440 -v VELSTART -N 12345678 -i $image ::"
mkfs="mkfs.fat -C -F 12 -n VELSTART -i 12345678 $image 1440"
mcopy="mcopy -m -Q -s -i $image IO.SYS MSDOS.SYS $rest ::"
$mformat
mv "$image" "$work/empty.img"
own=$(median "rm -f $image" "$bfi")
copying=$(median "cp $work/empty.img $image" "$mcopy")
printf '%-34s %9s %9s\n' 'bfi' "$own" 1.00
for making in "$mformat" "$mkfs"; do
    time=$(sum "$(median "rm -f $image" "$making")" "$copying")
    printf '%-34s %9s %9s\n' "${making%% *} + mcopy" "$time" "$(ratio "$own" "$time")"
done
rm -f "$image"
[ "$($bfi && fsck.fat -n "$image" >/dev/null && echo clean)" = clean ]
cd "$root"

echo
echo 'Packing each set into one cabinet: bytes of the file, and user + system seconds'
printf '%-12s %10s %10s %10s %8s %8s %9s %9s %7s %7s\n' set input gcab-MSZIP our-MSZIP /gcab our-LZX /gcab s-gcab s-MSZIP s-LZX
cpu() { # cpu COMMAND...: user + system seconds of one run
    { /usr/bin/env bash -c 'TIMEFORMAT="%U %S"; time "$@" >/dev/null 2>&1' - "$@"; } 2>&1 | awk '{ printf "%.2f", $1 + $2 }'
}
totals=(0 0 0 0)
for set in "$corpus"/s?_*/; do
    set=${set%/}
    cd "$set"
    mapfile -t files < <(find . -type f -printf '%P\n' | LC_ALL=C sort)
    gcabTime=$(cpu gcab -c -z "$work/gcab.cab" "${files[@]}")
    mszipTime=$(cpu "$bin/cabarc" -m MSZIP -p -r n "$work/mszip.cab" '*.*')
    lzxTime=$(cpu "$bin/cabarc" -m LZX:21 -p -r n "$work/lzx.cab" '*.*')
    sizes=("$(cat "${files[@]}" | wc -c)")
    for cabinet in gcab mszip lzx; do sizes+=("$(stat -c %s "$work/$cabinet.cab")"); done
    printf '%-12s %10s %10s %10s %8s %8s %9s %9s %7s %7s\n' "${set##*/}" "${sizes[0]}" "${sizes[1]}" "${sizes[2]}" \
        "$(ratio "${sizes[2]}" "${sizes[1]}")" "${sizes[3]}" "$(ratio "${sizes[3]}" "${sizes[1]}")" \
        "$gcabTime" "$mszipTime" "$lzxTime"
    for i in 0 1 2 3; do totals[i]=$((totals[i] + sizes[i])); done
done
printf '%-12s %10s %10s %10s %8s %8s %9s\n' total "${totals[0]}" "${totals[1]}" "${totals[2]}" \
    "$(ratio "${totals[2]}" "${totals[1]}")" "${totals[3]}" "$(ratio "${totals[3]}" "${totals[1]}")"
