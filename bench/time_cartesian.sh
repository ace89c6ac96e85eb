#!/usr/bin/env bash
# Times "Q. CartesianPT" at the size it is made for: eleven treatments of B = 1,000 (55 pairs,
# 5.5 x 10^7 differences, a million a pair), then one pair in detail (its six files of a
# million lines). Column files of normal values written here. Wall time and peak memory.
# Run from the top of the tree after a build:   bench/time_cartesian.sh [build/korvan]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
python3 - <<'PY'
import random
random.seed(5)
for t in range(1, 12):
    with open(f"t{t}.txt", "w") as f:
        f.write(f'"T{t}-r"\n"Next line is Bootstrap sample size (n)"\n100\n')
        f.write('"Next line is total effective Bootstrap number (B)"\n1000\n')
        f.write(f'"r",100,{0.2 + 0.002 * t}\n')
        for _ in range(1000):
            f.write(f"{random.gauss(0.2 + 0.002 * t, 0.01)!r}\n")
PY
answers() {  # detailed? treatments...
  local detailed=$1
  shift
  echo "Do you need detailed info? = $detailed"
  echo "Do you need flow record? = No"
  echo "Detailed differences = Yes"
  echo "Read data file one by one for paired comparison using Cartesian Product = $#"
  echo "Transformation? = 0"
  echo "Add a code to the output filename? = 1"
  local i=0
  for f in "$@"; do
    i=$((i + 1))
    echo "Input treatment $i = $f"
  done
}
answers No t{1..11}.txt > all.answers
answers Yes t1.txt t2.txt > detail.answers
run() {
  local what=$1
  shift
  /usr/bin/time -f "$what: wall %e s, user %U s, peak memory %M KiB" "$korvan" --quiet --defaults "$@" > /dev/null
}
run "Q, 11 treatments of B = 1,000 (55 pairs)" --answers all.answers Q
run "Q, one pair in detail (six files)" --answers detail.answers Q
ls -l ./*_5-* | awk '{print "  " $5 " bytes  " $NF}'
