#!/usr/bin/env bash
# Installs what is missing, builds the command-line tool `vorix` and runs its demonstration: a
# 20-second recording with 60 Hz mains hum, rendered through the hum suppression program and
# measured before and after (the files land in ./vorix-demo). `--bench` shows the filter
# engine's benchmark table instead, in nanoseconds per frame.
set -euo pipefail
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
if [ "${1:-}" = "--bench" ]; then
    shift
    cmake --build build/release --target vorix_engine_bench
    exec ./build/release/bench/vorix_engine_bench --benchmark_counters_tabular=true "$@"
fi
cmake --build build/release --target vorix
echo
exec ./build/release/apps/vorix/vorix demo "$@"
