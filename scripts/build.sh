#!/usr/bin/env bash
# Builds the Windows program and its companions and leaves two runnable application folders: build/app, which is what
# ships, and build/demo, the same with the demonstration's disks, sample drivers and stand-ins for the DOS files.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/setup.sh"
cd "$root"

# The native companions pack what the demonstration brings along.
scripts/build-preset.sh host bfi cabarc
scripts/build-preset.sh mingw-x64 velbooter velbooter_com bfi cabarc bootsect standins

rm -rf build/app build/demo
mkdir -p build/app
cp -a data/. build/app/
cp build/mingw-x64/bin/velbooter.{exe,com} build/mingw-x64/bin/{cabarc,bfi}.exe build/app/
cp build/mingw-x64/boot/bootsect.bin build/app/files/
help/build.py build/app/corvane_help.chm

cp -a build/app build/demo
demo/install.sh build/host/bin/cabarc build/mingw-x64/demo-dos build/demo
echo "Built build/app and build/demo."
