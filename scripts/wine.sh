#!/usr/bin/env bash
# Runs a Windows program in the project's own Wine prefix: wine.sh PROGRAM [ARGUMENT...]
# Tests and scripts all go through it, so that no other prefix is ever touched.
set -euo pipefail
# shellcheck source=scripts/wine-environment.sh
. "$(dirname "${BASH_SOURCE[0]}")/wine-environment.sh"
exec wine "$@"
