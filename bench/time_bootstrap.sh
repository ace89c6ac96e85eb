#!/usr/bin/env bash
# Times the whole command "A1" + "A3. Bootstrap" (fast run, B = 100,000) on the reference
# cohort of the benchmark (bench/beetle.txt: 100 individuals, 6 stages, about 60 days of life)
# or on the data file given, with its wall time and peak memory. Run from the top of the tree
# after a build:   bench/time_bootstrap.sh [build/korvan] [data file] [threads]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
data=$(realpath "${2:-bench/beetle.txt}")
threads=${3:-2}
top=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$data" "$work/"
sed "s#examples/mite.txt#$work/$(basename "$data")#" "$top/examples/mite_fast.answers" > "$work/fast.answers"
cd "$work"
/usr/bin/time -f "wall %e s, user %U s, peak memory %M KiB" \
  "$korvan" --seed 7 --threads "$threads" --quiet --answers fast.answers \
  --answers "$top/examples/mite_boot_fast.answers" A1 A3 > /dev/null
echo "$(ls | wc -l) files written"
