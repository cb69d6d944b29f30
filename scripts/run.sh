#!/usr/bin/env bash
# Installs what is missing, builds the release preset and opens qvhost on the demo
# project in ./demo (made with "qvproj demo" when it is not there; --fresh remakes it).
# Without a display qvhost runs the demo script host/demo.qvs offscreen and writes its
# screenshots to ./demo-screenshots.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release
bin=build/release/bin
if [ "${1:-}" = "--fresh" ]; then
  rm -rf demo
fi
if [ ! -f demo/project.qvks ]; then
  rm -rf demo
  "$bin/qvproj" demo demo
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$bin/qvhost" --project demo
fi
rm -rf demo-screenshots
"$bin/qvhost" --project demo --script host/demo.qvs
echo "no display: ran the demo script host/demo.qvs; screenshots in $(pwd)/demo-screenshots:"
ls -1 demo-screenshots
