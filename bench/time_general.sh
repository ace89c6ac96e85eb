#!/usr/bin/env bash
# Times the commands on lists and leave-one-out passes: the jackknife of a cohort of 390
# individuals (the beetle cohort grown to the most the store holds), "G. Gen. boot" on its
# total longevities (B = 100,000, n = 390, both modes at once: means and the age of 0.5 l(x)),
# and "L. Sort+count" on the 100,000 means that G wrote. Wall time and peak memory of each.
# Run from the top of the tree after a build:   bench/time_general.sh [build/korvan] [threads]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
threads=${2:-2}
top=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 "$top/bench/make_beetle.py" 390 "$work/beetle390.txt"
cd "$work"
sed "s#examples/mite.txt#$work/beetle390.txt#" "$top/examples/mite_fast.answers" > fast.answers
run() {
  local what=$1
  shift
  /usr/bin/time -f "$what: wall %e s, user %U s, peak memory %M KiB" \
    "$korvan" --seed 7 --threads "$threads" --quiet --defaults "$@" > /dev/null
}
run "A1 (Fast Run) alone, 390 individuals" --answers fast.answers A1
run "A1 (Fast Run) + jackknife, 390 individuals" --answers fast.answers A1 Command21
cat > g.answers <<ANSWERS
Do you need flow record? = No
Multiplicate a data file? = No
General bootstrapping and finding the age of lx <= 0.5? = Yes
Data formate = Yes
Open life table data file = $work/beetle390_G_Total longevity-all.txt
Save original frequency = No
Pause? = No
Bootstrap = 100000
ANSWERS
run "G, B = 100,000, n = 390" --answers g.answers G
cat > l.answers <<ANSWERS
Do you need flow record? = No
Sort and count = Yes
Sort and count general data or bootstrap results = No
Data formate = No
Open a bootstrap file to sort = $work/beetle390_G_Total longevity-all_0_GB_0_results for PT 1 by 1.txt
ANSWERS
run "L, 100,000 values" --answers l.answers L
