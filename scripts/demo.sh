#!/usr/bin/env bash
# Installs what is missing, builds the release tree and shows what the filter engine costs:
# the benchmark table in nanoseconds per frame.
set -euo pipefail
cd "$(dirname "$0")/.."

./scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build/release --target vorix_engine_bench
./build/release/bench/vorix_engine_bench --benchmark_counters_tabular=true "$@"
