#!/usr/bin/env bash
# Builds the release preset and runs every benchmark (or those named on the command line).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release
if [ $# -eq 0 ]; then
  set -- $(cd build/release/bin && ls bench_* 2>/dev/null)
fi
for b in "$@"; do
  echo "== $b"
  "build/release/bin/$b" --benchmark_counters_tabular=true
done
