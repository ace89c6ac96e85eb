#!/usr/bin/env bash
# The figures of the bootstrap's speed by thread count: bench/time_bootstrap.sh (fast A1 + A3,
# B = 100,000, seed 7) at 1, 2 and 16 threads on a data file (bench/beetle.txt by default), as a
# table: wall and CPU time, the sample loop, the time outside it, the time a sample takes on one
# thread, and the peak memory. Run from the top of the tree after a build:
#   bench/bootstrap_figures.sh [build/korvan] [data file]
set -euo pipefail
korvan=${1:-build/korvan}
data=${2:-bench/beetle.txt}
here=$(dirname "$0")
echo "| threads | wall, s | CPU, s | sample loop, s | outside the loop, s | per sample (1 thread), us | peak memory, MB |"
echo "|---|---|---|---|---|---|---|"
for threads in 1 2 16; do
  out=$("$here/time_bootstrap.sh" "$korvan" "$data" "$threads")
  wall=$(sed -n 's/^wall \([0-9.]*\) s.*/\1/p' <<<"$out")
  cpu=$(sed -n 's/.*user \([0-9.]*\) s.*/\1/p' <<<"$out")
  memory=$(sed -n 's/.*peak memory \([0-9]*\) KiB.*/\1/p' <<<"$out")
  loop=$(sed -n 's/^sample loop \([0-9.]*\) s.*/\1/p' <<<"$out")
  outside=$(sed -n 's/.*outside the loop \([0-9.]*\) s.*/\1/p' <<<"$out")
  sample=$(sed -n 's/.*(\([0-9]*\) us a sample.*/\1/p' <<<"$out")
  echo "| $threads | $wall | $cpu | $loop | $outside | ${sample:--} | $((memory / 1024)) |"
done
