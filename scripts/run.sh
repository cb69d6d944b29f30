#!/usr/bin/env bash
# Installs what is missing, builds the release preset and runs the main job.
# Until the development host exists this makes the demo project in ./demo and prints
# its system codes, specialty by specialty.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release
bin=build/release/bin
if [ -x "$bin/qvproj" ]; then
  rm -rf demo
  "$bin/qvproj" demo demo
  for spec in 给排水 电气 暖通 消防 弱电; do
    "$bin/qvproj" print demo "$spec"
  done
  echo "demo project written to $(pwd)/demo"
else
  echo "built into $bin; the project tool is not there yet"
fi
