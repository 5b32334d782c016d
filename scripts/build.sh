#!/usr/bin/env bash
# Configures and builds into ./build (or $BQ2_BUILD_DIR); extra arguments go to cmake.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BQ2_BUILD_DIR:-$root/build}
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${BQ2_BUILD_TYPE:-RelWithDebInfo} "$@" >/dev/null
cmake --build "$build" --parallel "$(nproc)"
