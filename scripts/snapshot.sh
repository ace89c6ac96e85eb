#!/usr/bin/env bash
# Writes every file of a seeded run into a folder, for comparing two builds file by file:
#   A1 + A3 (B = 2,000) on examples/mite.txt, bench/beetle.txt and the largest cohort allowed
#   (bench/make_beetle.py grown to 390 individuals), then command C on the r columns of the
#   first two, in detail (difference files, normal curves).
# Lines that carry the clock (dates, times, elapsed seconds) are blanked, so that two runs of
# one build give the same folder.
#   scripts/snapshot.sh build/korvan OUT [threads]      then: diff -r OUT1 OUT2
set -euo pipefail
korvan=$(realpath "$1")
out=$2
threads=${3:-2}
top=$(cd "$(dirname "$0")/.." && pwd)
rm -rf "$out"
mkdir -p "$out"
out=$(realpath "$out")
cp "$top/examples/mite.txt" "$top/bench/beetle.txt" "$out/"
python3 "$top/bench/make_beetle.py" 390 "$out/beetle390.txt"
cd "$out"
for cohort in mite beetle beetle390; do
  sed "s#examples/mite.txt#$cohort.txt#" "$top/examples/mite_fast.answers" > fast.answers
  # Samples of the cohort's own size.
  sed "s#^\(Bootstrap sample size (n) =? = \).*#\1$(sed -n 4p "$cohort.txt" | tr -d '\r ')#" \
    "$top/examples/mite_boot.answers" > boot.answers
  "$korvan" --seed 7 --threads "$threads" --quiet --answers fast.answers \
    --answers boot.answers A1 A3 > "$cohort.stdout"
done
cat > c.answers <<'EOF'
Fast paired bootstrap test? = No
Do you need detailed info? = Yes
Do you need flow record? = No
Detailed differences = Yes
Read data file one by one for multiple comparison = 2
Transformation? = 0
Input treatment 1 = mite_Effect Boot-A2a-r.txt
Input treatment 2 = beetle_Effect Boot-A2a-r.txt
Add a code to the output filename? = 1
Task completed! = Yes
EOF
"$korvan" --quiet --answers c.answers C > c.stdout
rm -f fast.answers boot.answers c.answers
# Names that carry the clock: the report of C, the records of samples.
for f in "24-Paired boot test results-"*; do mv "$f" "24-Paired boot test results-<clock>.txt"; done
for f in *-20[0-9][0-9]-*-*-*.txt; do
  [ -e "$f" ] && mv "$f" "$(echo "$f" | sed -E 's/-20[0-9]{2}(-[0-9]{1,2}){4}\.txt$/-<clock>.txt/')"
done
# The clock: times of day, dates, seconds of a run.
sed -i -E -e 's/[0-9]{1,2}:[0-9]{2}:[0-9]{2}( ?[AP]M)?/<time>/g' \
  -e 's#[0-9]{1,4}[-/][0-9]{1,2}[-/][0-9]{2,4}#<date>#g' \
  -e "s#$out#<out>#g" -e 's/(results-[^ ]*)_[0-9]+-[0-9]+\.txt/\1_<clock>.txt/' \
  -e '/[Ss]econds?|[Ee]lapsed|[Tt]ime used|[Tt]otal time/s/[0-9.]+/<n>/g' ./*
echo "$(ls | wc -l) files in $out"
