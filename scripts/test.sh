#!/usr/bin/env bash
# Installs what is missing, builds the test configuration with the sanitizers and runs every test.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
"$top/scripts/deps.sh"
cmake -S "$top" -B "$top/build/test" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DFW_SANITIZE=ON -DFW_TESTS=ON
cmake --build "$top/build/test"
export ASAN_OPTIONS=detect_leaks=0
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$top/build/test" --output-on-failure -j"$(nproc)"
