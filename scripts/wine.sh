#!/usr/bin/env bash
# Runs a Windows program in the project's own Wine prefix: wine.sh PROGRAM [ARGUMENT...]
# All tests and scripts use it, so that no other prefix is ever touched. VELBOOTER_WINE=x86 selects the 32-bit Wine.
set -euo pipefail
# shellcheck source=scripts/wine-environment.sh
. "$(dirname "${BASH_SOURCE[0]}")/wine-environment.sh"
if [ "$VELBOOTER_WINE" = x64 ]; then exec "${at_fixed_addresses[@]}" wine "$@"; fi
if ! sees_checkout; then exec "$root/scripts/with-i386-root.sh" "${BASH_SOURCE[0]}" "$@"; fi
exec "${at_fixed_addresses[@]}" chroot "$i386_root" /usr/bin/env -C "$PWD" wine "$@"
