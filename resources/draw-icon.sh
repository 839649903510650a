#!/usr/bin/env bash
# Draws velbooter.ico beside this script: a floppy disk with a start triangle on its label, in the sizes
# that Windows asks for. The same ImageMagick gives the same bytes on every run.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# draw SIZE: the picture is drawn on a grid of 32 by 32 units, eight times too large, and made smaller.
# Long edges lie on even units, which are whole pixels in the smallest size too.
draw() {
    local size=$1
    local scale=$((size / 4))
    convert -size "$((scale * 32))x$((scale * 32))" xc:none \
        -draw "translate -0.5,-0.5 scale $scale,$scale
               fill #1d3f72 polygon 0,0 26,0 32,6 32,32 0,32
               fill #2f64b0 polygon 1,1 25.6,1 31,6.4 31,31 1,31
               fill #c9d1dc polygon 8,0 24,0 24,10 8,10
               fill #4a5568 polygon 18,2 22,2 22,8 18,8
               fill #f7f5ee polygon 6,14 26,14 26,32 6,32
               fill #d23c30 polygon 6,14 26,14 26,18 6,18
               fill #2a9d4a polygon 12,20 12,30 21,25" \
        -filter Box -resize "${size}x${size}" -depth 8 -strip "$work/$size.png"
}

for size in 16 32 48 256; do draw "$size"; done
convert "$work/16.png" "$work/32.png" "$work/48.png" "$work/256.png" -define png:exclude-chunks=date,time,tIME \
    "$here/velbooter.ico"
