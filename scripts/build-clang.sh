#!/usr/bin/env bash
# Builds the product library and the plug-in again with Clang, warnings as errors, into
# ./build-clang (or $BQ2_CLANG_BUILD_DIR). Maya's macOS build uses Clang, which refuses some code
# that GCC lets pass; extra arguments go to cmake.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BQ2_CLANG_BUILD_DIR:-$root/build-clang}
compiler=$(command -v clang++-14 || command -v clang++)
launcher=()
command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")}
# No optimisation and no debug information: the question is only whether it compiles and links.
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_COMPILER="$compiler" \
      -DBQ2_PRODUCT_ONLY=ON "${launcher[@]}" "$@" >/dev/null
cmake --build "$build" --parallel "$(nproc)"
