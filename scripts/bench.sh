#!/usr/bin/env bash
# Measures the companions and the program, compares each with a peer in the same run and prints the ratios: writing images with
# mtools and mkfs.fat, packing with gcab's MSZIP and the codec of wimlib, the whole build with a script of gcab and mtools, and
# the wizard under load with itself. The first run builds the reference sets from Debian packages (build/corpus).
# usage: bench.sh [RUNS]   (timed runs of each command; the default is 20)
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
runs=${1:-20}
"$root/scripts/setup.sh"
dpkg-query -W libwim-dev time >/dev/null 2>&1 || apt-get install -y -qq --no-install-recommends libwim-dev time >/dev/null
cd "$root"
scripts/build-preset.sh host bfi cabarc bootsect
corpus=$root/build/corpus
[ -d "$corpus/s6_floppy" ] || bench/make-corpus.sh "$corpus" >build/corpus.log 2>&1
bin=$root/build/host/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp build/host/realmode/bootsect.bin "$work/boot.bin"

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

# A recipe's time is the sum of the times of its programs, each started alone: no shell is included. A program that creates a
# file does not find an old one, and mcopy finds a fresh empty disk.
echo "Writing an image from $(find "$corpus/s6_floppy" -type f | wc -l) files, wall time, median of $runs runs"
printf '%-34s %9s %9s\n' recipe ms 'bfi / it'
image=$work/disk.img
cd "$corpus/s6_floppy"
# mcopy keeps the order of its arguments: the system files come first, then everything else.
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

gcc -O2 -o "$work/reference-codec" bench/reference-codec.c -lwim

# A row of the table of one set: its bytes and its seconds.
format='%-12s %9s | %9s %9s %6s | %9s %9s %6s %7s | %6s %7s %6s %6s %6s | %6s\n'
echo
echo 'Packing each set into one cabinet. Bytes of the cabinets, and of the bare codec, whose data would also need the frames and headers'
echo 'of a cabinet; user + system seconds, the lowest of three runs, of seven in turns for codec and LZX:21; peak memory in MiB.'
# shellcheck disable=SC2059  # the rows share one format
printf "$format" set input gcab MSZIP /gcab codec LZX:21 /gcab /codec s:gcab s:MSZIP codec LZX:21 /codec MiB
cpu_once() { # cpu_once COMMAND...: user + system seconds
    { /usr/bin/env bash -c 'TIMEFORMAT="%U %S"; time "$@" >/dev/null 2>&1' - "$@"; } 2>&1 | awk '{ printf "%.2f\n", $1 + $2 }'
}
lowest() { sort -n | head -n 1; }
cpu() { # cpu COMMAND...: the lowest of three runs
    for _ in 1 2 3; do cpu_once "$@"; done | lowest
}
memory() { # memory COMMAND...: the peak memory in MiB
    command time -f %M "$@" 2>&1 >/dev/null | tail -n 1 | awk '{ printf "%.0f", $1 / 1024 }'
}
add() { # add FIELD VALUE
    totals[$1]=$(awk -v a="${totals[$1]:-0}" -v b="$2" 'BEGIN { print a + b }')
}
declare -A totals
table_row() { # table_row NAME: prints the values in the array v
    # shellcheck disable=SC2059  # the rows share one format
    printf "$format" "$1" "${v[input]}" "${v[gcab]}" "${v[mszip]}" "$(ratio "${v[mszip]}" "${v[gcab]}")" "${v[codec]}" "${v[lzx]}" \
        "$(ratio "${v[lzx]}" "${v[gcab]}")" "$(awk -v a="${v[lzx]}" -v b="${v[codec]}" 'BEGIN { printf "%.3f", a / b }')" \
        "${v[gcabTime]}" "${v[mszipTime]}" "${v[codecTime]}" "${v[lzxTime]}" "$(ratio "${v[lzxTime]}" "${v[codecTime]}")" "${v[memory]}"
}
for set in "$corpus"/s?_*/; do
    set=${set%/}
    cd "$set"
    mapfile -t files < <(find . -type f -printf '%P\n' | LC_ALL=C sort)
    gcab=(gcab -c -z "$work/gcab.cab" "${files[@]}")
    mszip=("$bin/cabarc" -m MSZIP -p -r n "$work/mszip.cab" '*.*')
    lzx=("$bin/cabarc" -m LZX:21 -p -r n "$work/lzx.cab" '*.*')
    declare -A v=([gcabTime]=$(cpu "${gcab[@]}") [mszipTime]=$(cpu "${mszip[@]}") [memory]=$(memory "${lzx[@]}"))
    # In turns: whatever else the machine does for a while slows both.
    for _ in 1 2 3 4 5 6 7; do
        cpu_once "${lzx[@]}" >&3
        "$work/reference-codec" "$set.cat" 100 >&4
    done 3>"$work/lzx.times" 4>"$work/codec.times"
    v[lzxTime]=$(lowest <"$work/lzx.times")
    v[codec]=$(head -n 1 "$work/codec.times" | cut -d ' ' -f 1)
    v[codecTime]=$(cut -d ' ' -f 2 "$work/codec.times" | lowest)
    v[input]=$(stat -c %s "$set.cat")
    for cabinet in gcab mszip lzx; do v[$cabinet]=$(stat -c %s "$work/$cabinet.cab"); done
    for field in "${!v[@]}"; do add "$field" "${v[$field]}"; done
    table_row "${set##*/}"
done
declare -A v
for field in "${!totals[@]}"; do v[$field]=${totals[$field]}; done
v[memory]=''
table_row total
cd "$root"

scripts/build.sh
echo
bench/whole-build.sh "$runs"
echo
bench/load.sh 3
