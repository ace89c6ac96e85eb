#!/usr/bin/env bash
# Builds KORVAN and runs every test. Called by the README's test command and by CI.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh build
ctest --test-dir build --output-on-failure -j"$(nproc)"

# The whole suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKORVAN_SANITIZE=ON -DKORVAN_GUI=OFF \
      -DKORVAN_BENCH=OFF >/dev/null
cmake --build build-asan -j"$(nproc)" >&2
ctest --test-dir build-asan --output-on-failure -j"$(nproc)"

# A brief fuzz run of every target (longer runs: see the README).
KORVAN_FUZZ_SECONDS=30 scripts/fuzz.sh 30000
