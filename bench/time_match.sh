#!/usr/bin/env bash
# Times "D. Boot. match" at the size it is made for: B = 100,000 matches of 100 individuals of
# the example tables split from the mite cohort (examples/mite_0-Immature.txt and
# mite_0-Adult.txt), with the match record of every match, a winter of 5 days and mortality
# 0.2. Wall time and peak memory. Run from the top of the tree after a build:
#   bench/time_match.sh [build/korvan] [threads]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
threads=${2:-0}
top=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$top"/examples/mite_0-Immature.txt "$top"/examples/mite_0-Adult.txt "$work/"
cd "$work"
cat > match.answers <<'ANSWERS'
Open immature life table = mite_0-Immature.txt
Open adult life table = mite_0-Adult.txt
A3. Sample size = 100
A4. Bootstrap B = 100000
A5. Overwinter duration = 5
A6. Ow ran. max. mortality = 0.2
SameBootstrapMatch = No
Teaching demo? = No
Only effective match? = Yes
Two-sex mating? = Yes
B. Read data and match record to write specific life table = No
ANSWERS
/usr/bin/time -f "D, B = 100,000 matches of 100: wall %e s, user %U s, peak memory %M KiB" \
  "$korvan" --seed 1 --threads "$threads" --quiet --answers match.answers D > /dev/null
echo "match record: $(du -h ./*_2C_match* | cut -f1)"
