#!/usr/bin/env bash
# Installs what is missing, builds and runs every test.
# Usage: scripts/test.sh [debug|asan]   (default: debug)
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:-debug}"
./scripts/setup.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"
