#!/usr/bin/env bash
# Builds the fuzz targets of fuzz/ with clang, AddressSanitizer and UndefinedBehaviorSanitizer
# (in build-fuzz/) and runs each for a fixed number of runs, starting from its seed corpus in
# tests/fuzz_corpus/<name>/ and from the corpus grown by earlier runs in build-fuzz/corpus/.
#
# Usage: scripts/fuzz.sh [runs] [target...]
#   runs     executions per target (default 100000)
#   target   e.g. data_file_fuzzer (default: every fuzz/*_fuzzer.cpp)
# KORVAN_FUZZ_SECONDS caps the time per target (the test command uses it to stay brief).
#
# A crash, a sanitizer report, an uncaught exception or an input slower than 10 s stops the run
# with a non-zero exit; the input is left in build-fuzz/findings/ (crash-*, timeout-*, ...).
# Replay one with: build-fuzz/<target> build-fuzz/findings/<file>
set -euo pipefail
cd "$(dirname "$0")/.."

runs=${1:-100000}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in fuzz/*_fuzzer.cpp; do targets+=("$(basename "$f" .cpp)"); done
fi

cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DKORVAN_FUZZ=ON \
      -DKORVAN_TESTS=OFF -DKORVAN_GUI=OFF -DKORVAN_BENCH=OFF >/dev/null
cmake --build build-fuzz -j"$(nproc)" --target "${targets[@]}" >&2

mkdir -p build-fuzz/findings
for target in "${targets[@]}"; do
  name=${target%_fuzzer}
  mkdir -p "build-fuzz/corpus/$name"
  options=(-runs="$runs" -timeout=10 -max_len=65536 -print_final_stats=1
           -artifact_prefix=build-fuzz/findings/)
  [ -n "${KORVAN_FUZZ_SECONDS:-}" ] && options+=(-max_total_time="$KORVAN_FUZZ_SECONDS")
  echo "fuzz: $target, $runs runs" >&2
  "build-fuzz/$target" "${options[@]}" "build-fuzz/corpus/$name" "tests/fuzz_corpus/$name" 2>&1 |
    grep -v -E '^#[0-9]+ +(NEW|REDUCE|pulse)' >&2
done
