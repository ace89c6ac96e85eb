#!/usr/bin/env bash
# Builds KORVAN and runs every test. Called by the README's test command and by CI.
#   1. build/: the suite.
#   2. build-asan/: the whole suite again under AddressSanitizer and UndefinedBehaviorSanitizer.
#   3. build-fuzz/: a brief run of every fuzz target (about a minute in all; longer runs: README).
# KORVAN_FUZZ_TOTAL_SECONDS sets the length of step 3 (default 60; 0 leaves it out).
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)

scripts/setup.sh build
ctest --test-dir build --output-on-failure -j"$jobs"

# -O1 keeps the sanitizer build and its run within the time of CI; the checks are the same.
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Sanitize -DCMAKE_CXX_FLAGS_SANITIZE="-O1 -g" \
      -DKORVAN_SANITIZE=ON -DKORVAN_GUI=OFF -DKORVAN_BENCH=OFF >/dev/null
cmake --build build-asan -j"$jobs" >&2
ctest --test-dir build-asan --output-on-failure -j"$jobs"

total=${KORVAN_FUZZ_TOTAL_SECONDS:-60}
if [ "$total" -gt 0 ]; then
  targets=(fuzz/*_fuzzer.cpp)
  KORVAN_FUZZ_SECONDS=$((total / ${#targets[@]})) scripts/fuzz.sh 10000000
fi
