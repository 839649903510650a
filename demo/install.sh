#!/usr/bin/env bash
# Turns an application folder into the demonstration: install.sh CABARC STANDINS FOLDER.
# Copies the demonstration's files, catalogue rows and key file into FOLDER, packs its ready-made modules and
# its sample drivers with the native CABARC, and copies the stand-ins for the DOS files from STANDINS to
# FOLDER/dos.
set -euo pipefail

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
if [[ $# -ne 3 || ! -x $1 || ! -d $2 || ! -d $3 ]]; then
    echo 'usage: install.sh CABARC STANDINS FOLDER (a program and two folders that exist)' >&2
    exit 2
fi
cabarc=$(realpath "$1")
standins=$2
folder=$(realpath "$3")

mkdir -p "$folder/dos" "$folder/modules"
cp -a "$here/files/." "$folder/files/"
"$here/add-rows.sh" "$folder/files/disklist.ini" "$here/disklist.rows.ini"
cp "$here/keyfile.txt" "$folder/"
"$here/drivers/pack-drivers.sh" "$cabarc" "$folder/drivers"

for module in "$here"/modules/*/; do
    name=$(basename "$module")
    (cd "$module" && "$cabarc" -m LZX:21 -p -r n "$folder/modules/$name.cab" '*.*' >/dev/null)
done

# The DOS files have upper-case 8.3 names; nothing else in a build folder is copied.
copied=0
for file in "$standins"/*; do
    name=$(basename "$file")
    if [[ -f $file && $name =~ ^[A-Z0-9]{1,8}\.(SYS|COM|EXE|MOD)$ ]]; then
        cp "$file" "$folder/dos/"
        copied=$((copied + 1))
    fi
done
if ((copied != 25)); then
    echo "$standins: $copied DOS files, not 25" >&2
    exit 1
fi
