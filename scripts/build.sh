#!/usr/bin/env bash
# Builds the Windows program and its companions for 64 bits, or for 32 bits with x86, and leaves two runnable application
# folders: build/app, which is what ships, and build/demo, the same with the demonstration's disks, sample drivers and
# stand-ins for the DOS files; for 32 bits build/app-x86 and build/demo-x86. build.sh [x64|x86]
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
architecture=${1:-x64}
case $architecture in
    x64) suffix= ;;
    x86) suffix=-x86 ;;
    *)
        echo "build.sh: neither x64 nor x86: $architecture" >&2
        exit 2
        ;;
esac
preset=mingw-$architecture
app=build/app$suffix
demo=build/demo$suffix
"$root/scripts/setup.sh"
cd "$root"

# The native companions pack what the demonstration adds.
scripts/build-preset.sh host bfi cabarc
scripts/build-preset.sh "$preset" shipped standins

rm -rf "$app" "$demo"
cmake --install "build/$preset" --prefix "$app" >/dev/null

cp -a "$app" "$demo"
demo/install.sh build/host/bin/cabarc "build/$preset/demo-dos" "$demo"
echo "Built $app and $demo."
