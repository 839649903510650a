#!/usr/bin/env bash
# Packs a folder so that the same files give the same bytes, regardless of who packs them, where and when:
# make-zip.sh FOLDER ZIP
# The ZIP contains FOLDER itself, so that its files never mix with those of the folder that it is unpacked into. All files get
# the same time, SOURCE_DATE_EPOCH in seconds since 1970 or that of the last commit, in FOLDER too.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
folder=$(realpath "$1")
zip=$(realpath "$2")
if ! epoch=${SOURCE_DATE_EPOCH:-$(git -c "safe.directory=$root" -C "$root" log -1 --format=%ct 2>/dev/null)}; then
    echo 'make-zip.sh: there is no commit to take the time from: set SOURCE_DATE_EPOCH' >&2
    exit 1
fi
rm -f "$zip"
find "$folder" -type f -exec touch -d "@$epoch" {} +
cd "$folder/.."
# A ZIP file stores local times only.
find "$(basename "$folder")" -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X "$zip" -@
