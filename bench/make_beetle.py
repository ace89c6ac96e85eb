#!/usr/bin/env python3
"""Writes bench/beetle.txt: the reference cohort of the bootstrap benchmark.

100 individuals in 6 stages (egg, three larval instars, pupa, adult female or male) with about
60 days of life: some 18 preadult days and 20 to 45 adult days; about a sixth die as
preadults. Females lay a few eggs a day after a short pre-oviposition period. The numbers come
from a Park-Miller generator with a fixed seed, so the file is the same everywhere.

Run: python3 bench/make_beetle.py  (writes beetle.txt beside this script)
     python3 bench/make_beetle.py N PATH  (the same cohort grown to N individuals, at PATH)
"""
import os
import sys

STAGES = ["Egg", "L1", "L2", "L3", "Pupa"]
N = 100


class Lcg:
    def __init__(self, seed):
        self.state = seed

    def uniform(self):
        self.state = (self.state * 48271) % 2147483647
        return self.state / 2147483647

    def between(self, lo, hi):
        return lo + int(self.uniform() * (hi - lo + 1))


def number(v):
    return (" " if v >= 0 else "") + str(v)


def main(n=N, path=None):
    rng = Lcg(20250601)
    lines = ['"Project: Bench beetle"', '"KORVAN team"', '"Stored grain 28 C"', str(n), "2,6",
             "F," + ",".join(STAGES) + ",Female", "M," + ",".join(STAGES) + ",Male", "Egg,Female"]
    for i in range(1, n + 1):
        pre = [rng.between(3, 5), rng.between(2, 4), rng.between(2, 4), rng.between(3, 5), rng.between(4, 6)]
        u = rng.uniform()
        if u < 0.16:
            stage = rng.between(0, 4)
            record = pre[:stage] + [-max(1, pre[stage] - 1)]
            lines.append(number(i) + " ,N," + ",".join(number(d) for d in record))
            continue
        female = u < 0.16 + 0.46
        adult = rng.between(25, 45) if female else rng.between(20, 40)
        lines.append(number(i) + (" ,F," if female else " ,M,") + ",".join(number(d) for d in pre + [adult]))
        if not female:
            continue
        apop = rng.between(1, 3)
        eggs = [0 if d <= apop else max(0, int(6 * (1 - d / (adult + 5)) * (0.5 + rng.uniform()) + 0.5))
                for d in range(1, adult + 1)] + [-1]
        for start in range(0, len(eggs), 20):
            lines.append(",".join(number(v) for v in eggs[start:start + 20]))
    path = path or os.path.join(os.path.dirname(os.path.abspath(__file__)), "beetle.txt")
    with open(path, "w", newline="\n") as out:
        out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    if len(sys.argv) == 3:
        main(int(sys.argv[1]), sys.argv[2])
    else:
        main()
