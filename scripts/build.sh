#!/usr/bin/env bash
# Configures and builds into ./build (or $BQ2_BUILD_DIR); extra arguments go to cmake.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BQ2_BUILD_DIR:-$root/build}
# ccache, where present, lets several build trees share their compiled objects.
launcher=()
command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")}
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${BQ2_BUILD_TYPE:-RelWithDebInfo} "${launcher[@]}" "$@" >/dev/null
cmake --build "$build" --parallel "$(nproc)"
