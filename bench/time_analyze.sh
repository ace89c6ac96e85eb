#!/usr/bin/env bash
# Times `korvan analyze` as a paper uses it: the three example cohorts (100 individuals each),
# B = 100,000 each, the paired test of every statistic and the summary. Wall time and memory.
# Run from the top of the tree after a build:   bench/time_analyze.sh [build/korvan] [threads]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
threads=${2:-0}
top=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$top"/examples/mite_20C.txt "$top"/examples/mite.txt "$top"/examples/mite_30C.txt "$work/"
cd "$work"
/usr/bin/time -f "analyze, 3 treatments of 100, B = 100,000: wall %e s, user %U s, peak memory %M KiB" \
  "$korvan" analyze mite_20C.txt mite.txt mite_30C.txt --seed 1 --threads "$threads" --quiet > /dev/null
