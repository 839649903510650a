#!/usr/bin/env bash
# Adds catalogue rows to a catalogue: add-rows.sh CATALOGUE ROWS, which changes CATALOGUE.
# Each [row] of ROWS becomes a numbered section after the last one, and Count grows with it,
# so that the demonstration does not have to repeat the rows that ship. Adding the same rows
# to the same catalogue twice is an error.
set -euo pipefail

if [[ $# -ne 2 || ! -f $1 || ! -f $2 ]]; then
    echo "usage: add-rows.sh CATALOGUE ROWS (two files that exist)" >&2
    exit 2
fi
catalogue=$1
rows=$2

count=$(tr -d '\r' <"$catalogue" | sed -n '/^\[Disks_List\]$/,/^\[[0-9]/s/^Count=\([0-9][0-9]*\)$/\1/p')
if [[ -z $count ]]; then
    echo "$catalogue: no Count in [Disks_List]" >&2
    exit 1
fi
while read -r name; do
    if tr -d '\r' <"$catalogue" | grep -qx "Name=$name"; then
        echo "$catalogue: it already has a row named $name" >&2
        exit 1
    fi
done < <(tr -d '\r' <"$rows" | sed -n 's/^Name=//p')

result=$(mktemp "$catalogue.XXXXXX")
trap 'rm -f "$result"' EXIT
added=$(grep -c '^\[row\]' "$rows" || true)
{
    tr -d '\r' <"$catalogue" | sed "s/^Count=$count\$/Count=$((count + added))/"
    tr -d '\r' <"$rows" | awk -v number="$count" '
        $0 == "[row]" { number++; print ""; print "[" number "]"; next }
        number > first && !/^;/ && NF' first="$count"
} | sed 's/$/\r/' >"$result"
chmod --reference="$catalogue" "$result"
mv "$result" "$catalogue"
trap - EXIT
