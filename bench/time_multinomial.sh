#!/usr/bin/env bash
# Times the multinomial expansion and the counting of bootstrap life tables at the sizes they
# are made for:
#   1. "Multinomial" (Command2, Yes) on the expansion of a cohort of ten: C(19, 10) = 92,378
#      items read, sorted on R0 and written to the five "_0_MNT_" files (goal: under 1 s and
#      100 MB, A1 and Basic Run of the ten included);
#   2. "M. Count LT" on a record of B = 100,000 samples of a cohort of 100 (goal: under 10 s).
# The cohorts, the expansion (in the layout the program writes for n <= 6) and the record are
# written here. Wall time and peak memory.
# Run from the top of the tree after a build:   bench/time_multinomial.sh [build/korvan]
set -euo pipefail
korvan=$(realpath "${1:-build/korvan}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
python3 - <<'PY'
import itertools, math, random
random.seed(7)

def cohort(path, n):
    with open(path, "w") as f:
        f.write('"Project: Bench"\n"Bench"\n"25 C"\n%d\n2,3\n' % n)
        f.write("F,Egg,Larva,Female\nM,Egg,Larva,Male\nEgg,Larva\n")
        eggs = []
        for i in range(1, n + 1):
            sex = "F" if i % 2 else "M"
            f.write(f" {i} ,{sex}, {random.randint(2, 4)}, {random.randint(3, 6)}, {random.randint(5, 15)}\n")
            if sex == "F":
                days = [random.randint(0, 9) for _ in range(5)]
                days[0] += 1  # every female lays
                eggs.append(sum(days))
                f.write(",".join(map(str, days)) + ",-1\n")
            else:
                eggs.append(0)
    return eggs

cohort("ten.txt", 10)
n = 10
with open("ten_expansion.txt", "w") as f:
    f.write('"Multinomial expansion for exact results of bootstrap (Sorted)."\n"Number of individuals =",10\n')
    for k, c in enumerate(itertools.combinations_with_replacement(range(1, n + 1), n), 1):
        mnc = math.factorial(n)
        for i in set(c):
            mnc //= math.factorial(c.count(i))
        f.write(",".join(map(str, (k, mnc) + c)) + "\n")

eggs = cohort("hundred.txt", 100)
n, B = 100, 100000
with open("hundred_11_record.txt", "w") as f:
    f.write('"Project: Bench"\n"25 C"\n"EffectBoot-Yes and KorvanMating-Yes"\n')
    f.write(f'"Total number of effective bootstrap =",{B}\n{B}\n"Bootstrap sample size =",{n}\n{n}\n')
    for b in range(1, B + 1):
        s = [random.randint(1, n) for _ in range(n)]
        f.write(f'"Bootstrap Sample: ",{b}\n')
        for j in range(0, n, 20):
            f.write(",".join(f" {x} " for x in s[j:j + 20]) + "\n")
        f.write(f'"Net reproductive rate ",{b}\n {sum(eggs[x - 1] for x in s) / n!r}\n"Finite rate ",{b}\n 1.1\n')
    for label in ("Mean of R0", "Variance of R0", "SE of R0", "R0 of whole cohort", "Mean of finite rate",
                  "Variance of finite rate", "SE of finite rate", "Finite rate of whole cohort"):
        f.write(f'"{label}"\n 1\n')
PY
cat > command2.answers <<'A'
Open life table data file = ten.txt
Do you need only the basic output (0A) and figure files? = No
Fast run for two-sex or parthenogenetic population? = Yes
Do you need the contribution of this life table to intrinsic rate? = No
Read the file with all MNC or create the file of MNC? = Yes
Open multinomial expansion data file = ten_expansion.txt
A
cat > count.answers <<'A'
Open bootstrap record file (In general, it is file no. 11). = hundred_11_record.txt
Sort bootstrap life tables for multinomial theorem? = No
Are you sure? = Yes
Precision level =? = 0
Task completed = OK
A
run() {
  local what=$1
  shift
  /usr/bin/time -f "$what: wall %e s, user %U s, peak memory %M KiB" "$korvan" --quiet --defaults "$@" > /dev/null
}
run "A1 + Command2 (Yes), n = 10, 92,378 items" --answers command2.answers A1 Command2
run "M. Count LT, B = 100,000 samples of n = 100" --answers count.answers M
wc -l ten_expansion_0_MNT_1-Expansion.txt "hundred_11_record_00_E_LT_Ro_sorted and LT counted.txt" | sed 's/^/  /'
