#!/usr/bin/env bash
# Builds every disk of a catalogue under Wine, as buildall.bat does on Windows: build-all.sh [-a APP] FOLDER [144|288] [NUMBERED]
#
# APP is the application folder, with the DOS files in APP/dos; without it the demonstration's, build/demo. FOLDER is a path of
# this system. What is printed, what is in FOLDER and the exit code are those of buildall.bat.
set -euo pipefail
shopt -s inherit_errexit
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/wine-path.sh
. "$root/scripts/wine-path.sh"
app=$root/build/demo
if [ "${1-}" = -a ] && [ $# -ge 2 ]; then
    app=$2
    shift 2
fi
if [ $# -lt 1 ] || [ $# -gt 3 ]; then
    echo 'usage: build-all.sh [-a APP] FOLDER [144|288] [NUMBERED]' >&2
    exit 2
fi
if [ ! -f "$app/buildall.bat" ]; then
    echo "build-all.sh: $app is no application folder: it has no buildall.bat" >&2
    exit 2
fi
folder=$(wine_path "$(realpath -m "$1")")
cd "$app"
exec "$root/scripts/with-display.sh" "$root/scripts/wine.sh" cmd /c buildall.bat "$folder" "${@:2}" </dev/null
