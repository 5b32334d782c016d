#!/usr/bin/env bash
# Sets up the machine, builds, and starts the standalone editor.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh"
exec "${BQ2_BUILD_DIR:-$root/build}/app/brindlet-editor2" "$@"
