#!/usr/bin/env bash
# Sets up the machine, builds, and runs every test headless.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
"$root/scripts/build.sh" "$@"
"$root/scripts/build-clang.sh"
export QT_QPA_PLATFORM=offscreen
cd "${BQ2_BUILD_DIR:-$root/build}"
ctest --output-on-failure --timeout 300 -j "$(nproc)"
# The libFuzzer targets: built with clang into build-fuzz, 60 s each with no crash.
"$root/scripts/fuzz.sh" 60
