#!/usr/bin/env bash
# Installs what is missing, builds Fieldwright in Release and starts it.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/deps.sh"
cmake -S "$top" -B "$top/build/release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DFW_TESTS=OFF
cmake --build "$top/build/release"
program="$top/build/release/program/fieldwright"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  exec xvfb-run -a -s '-screen 0 1280x1024x24' "$program"
fi
exec "$program"
