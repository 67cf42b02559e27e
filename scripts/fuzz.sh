#!/usr/bin/env bash
# Builds the fuzz targets (clang, address and undefined-behaviour sanitizers), writes the seed
# corpus from the product's own documents, and runs every target for SECONDS (default 30) on its
# corpus. Findings land in build/fuzz/findings/<target>/; the corpus grows in build/fuzz/corpus.
# Usage: scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-30}"
shift || true
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(settings core-chunk chunk-parser xml-archive control-text audio-file process-chunks)

dir=build/fuzz
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DVORIX_SANITIZE="address;undefined" -DVORIX_BUILD_FUZZ=ON -DVORIX_BUILD_TESTS=OFF \
    -DVORIX_BUILD_BENCH=OFF >/dev/null
cmake --build "$dir"
"$dir/fuzz/vorix_fuzz_seeds" "$dir/seeds"

status=0
for target in "${targets[@]}"; do
    corpus="$dir/corpus/$target"
    findings="$dir/findings/$target"
    mkdir -p "$corpus" "$findings"
    echo "=== fuzz $target for ${seconds}s"
    if ! "$dir/fuzz/vorix_fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$findings/" "$corpus" "$dir/seeds/$target" \
        2>"$dir/$target.log"; then
        status=1
        tail -40 "$dir/$target.log"
    fi
    grep -E '^stat::(number_of_executed_units|peak_rss_mb)|cov:' "$dir/$target.log" | tail -3 || true
done
exit $status
