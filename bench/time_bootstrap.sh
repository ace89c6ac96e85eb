#!/usr/bin/env bash
# Times the whole command "A1" + "A3. Bootstrap" (fast run, B = 100,000) on the reference
# cohort of the benchmark (bench/beetle.txt: 100 individuals, 6 stages, about 60 days of life)
# or on the data file given (e.g. `python3 bench/make_beetle.py 390 /tmp/beetle390.txt` for the
# largest cohort allowed), with its wall and CPU time, the time of the sample loop and of the
# rest, and the peak memory. Run from the top of the tree
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
/usr/bin/time -o time.txt -f "wall %e s, user %U s, peak memory %M KiB" \
  "$korvan" --seed 7 --threads "$threads" --quiet --answers fast.answers \
  --answers "$top/examples/mite_boot_fast.answers" A1 A3 > /dev/null
cat time.txt
# The report's "Total time" is the time of the sample loop (from the first sample to the means
# of the last); the rest of the wall time is outside the loop: reading the file, Basic Run, the
# set-up of the workers, the sorts, the statistics and the result files.
loop=$(grep -ho 'Total time: [0-9.]* sec' ./*_0B_Bootstrap_Output.txt | head -1 | sed 's/[^0-9.]//g' || true)
if [ -n "$loop" ]; then
  wall=$(sed 's/^wall \([0-9.]*\) s.*/\1/' time.txt)
  awk -v w="$wall" -v l="$loop" -v t="$threads" 'BEGIN {
    printf "sample loop %.2f s, outside the loop %.2f s", l, w - l
    if (t == 1) printf " (%.0f us a sample on one thread)", l / 100000 * 1e6
    printf "\n" }'
fi
echo "$(( $(ls | wc -l) - 3 )) files written"
