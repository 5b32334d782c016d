#!/usr/bin/env bash
# Builds the libFuzzer targets with clang, AddressSanitizer and UndefinedBehaviorSanitizer into
# build-fuzz (or $BQ2_FUZZ_BUILD_DIR), seeds each corpus from fuzz/seeds, the product's own scripts
# and CPython's standard library, and runs every target for the given seconds (default 60).
# A crash stops the script with its input saved under crashes/ in the build folder.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-60}
build=${BQ2_FUZZ_BUILD_DIR:-$root/build-fuzz}
launcher=()
command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")}
CC=clang-14 CXX=clang++-14 cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DBQ2_BUILD_FUZZ=ON -DBQ2_BUILD_TESTS=OFF -DBQ2_BUILD_BENCH=OFF "${launcher[@]}" >/dev/null
targets=$(cd "$root/fuzz" && ls fuzz_*.cpp | sed 's/\.cpp$//')
# shellcheck disable=SC2086
cmake --build "$build" --parallel "$(nproc)" --target $targets

corpus=$build/corpus
mkdir -p "$corpus" "$build/crashes"
seed() { # target, files...
    local target=$1
    shift
    mkdir -p "$corpus/$target"
    [ $# -gt 0 ] && cp -n "$@" "$corpus/$target/" 2>/dev/null || true
}
seed fuzz_MelParser "$root"/fuzz/seeds/mel/* "$root"/resources/bq2_scripts/*.mel
seed fuzz_PythonParser "$root"/fuzz/seeds/python/* "$root"/resources/bq2_python/*.py \
    $(ls -S /usr/lib/python3.11/*.py 2>/dev/null | tail -n 150)
seed fuzz_IniReaders "$root"/fuzz/seeds/ini/*
seed fuzz_Highlighters "$root"/fuzz/seeds/highlighters/*
seed fuzz_WorkspaceReader "$root"/fuzz/seeds/workspace/*
for target in $targets; do
    mkdir -p "$corpus/$target"
    echo "fuzzing $target for ${seconds}s"
    ASAN_OPTIONS=detect_leaks=0 QT_QPA_PLATFORM=offscreen "$build/fuzz/$target" "$corpus/$target" \
        -max_total_time="$seconds" -max_len=65536 -timeout=20 -rss_limit_mb=4096 -print_final_stats=1 \
        -artifact_prefix="$build/crashes/$target-" 2>"$build/$target.log" ||
        { tail -n 60 "$build/$target.log"; exit 1; }
    grep -E '^(stat::number_of_executed_units|#[0-9]+ +DONE)' "$build/$target.log" || true
done
