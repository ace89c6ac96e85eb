#!/usr/bin/env bash
# Times "B. Read N, F" on a group-reared file at the bounds (13 rows: 11 preadult stages, the
# female and the male stage; ages 0..575; 390 individuals): the reading, its checks, the
# engine's pass and the two-stage form; then B on the two-stage form with the rebuilding of the
# individuals (case 2). Wall time and peak memory of each; the target is 0.5 s a run.
# Run from the top of the tree after a build:   bench/time_group.sh [build/korvan]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
top=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 "$top/bench/make_group_file.py" "$work/group.txt"
cd "$work"
cat > b.answers <<ANSWERS
Group reared life table with predation rate? = No
Open group-reared life table data = $work/group.txt
Open group-reared life table data = $work/group_0A3_Group-reared Life Table_2 Stages.txt
Do you need flow record? = No
Each time unit =? = 1
Estimate matrices G and D? = Yes
Double check matrix S based on N and F? = Yes
Stop here or continue? = Yes
Do you want to group stages? = No
Which case is good for your data =? = 2
ANSWERS
run() {
  local what=$1
  shift
  /usr/bin/time -f "$what: wall %e s, user %U s, peak memory %M KiB" "$korvan" --quiet --defaults "$@" > /dev/null
}
run "B, 13 rows, ages 0..575 (read, analyse, two-stage form)" --answers b.answers B
run "B on the two-stage form, rebuilding 390 individuals" --answers b.answers --answer "Open group-reared life table data=$work/group_0A3_Group-reared Life Table_2 Stages.txt" B
ls "$work" | grep -c . | xargs echo "files written:"
grep -c "" "$work/group_0A3_Group-reared Life Table_2 Stages_0A2_Individual Life Table.txt" | xargs echo "lines of the rebuilt file:"
