#!/usr/bin/env bash
# Builds the Windows program and its companions and leaves two runnable application folders: build/app, which is what
# ships, and build/demo, the same with the demonstration's disks, sample drivers and stand-ins for the DOS files.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/scripts/setup.sh"
cd "$root"

# The native companions pack what the demonstration brings along.
scripts/build-preset.sh host bfi cabarc
scripts/build-preset.sh mingw-x64 shipped standins

rm -rf build/app build/demo
cmake --install build/mingw-x64 --prefix build/app >/dev/null

cp -a build/app build/demo
demo/install.sh build/host/bin/cabarc build/mingw-x64/demo-dos build/demo
echo "Built build/app and build/demo."
