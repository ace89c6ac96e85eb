#!/usr/bin/env python3
"""Writes examples/mite.txt: a two-spotted spider mite cohort reared on bean leaf discs at 25 C,
and beside it mite_20C.txt and mite_30C.txt, the same species at 20 C (slower, longer-lived,
fewer eggs a day) and 30 C (faster, shorter-lived, more eggs a day): three treatments to
compare.

The cohort is made up by the team to look like a real rearing: 100 eggs followed daily through
egg, larva, protonymph and deutonymph to the adult female or male; a few die as preadults.
Daily eggs of each female over her 10 to 30 adult days rise to a peak and fall again.

The numbers come from a small linear congruential generator with a fixed seed, so the file is
the same on every machine and every Python. The layout is the one the program's own writer
uses: quoted head, bare type lines, one line per individual, fecundity in lines of at most
20 values.

Run: python3 examples/make_mite.py  (writes the three files beside this script)
"""
import os

STAGES = ["Egg", "Larva", "Protonymph", "Deutonymph"]
N = 100


class Lcg:
    """Park-Miller minimal standard generator: plain integer arithmetic, fully portable."""

    def __init__(self, seed):
        self.state = seed

    def uniform(self):
        self.state = (self.state * 48271) % 2147483647
        return self.state / 2147483647

    def pick(self, weights):
        """Index drawn with the given (integer) weights."""
        u = self.uniform() * sum(weights)
        for k, w in enumerate(weights):
            if u < w:
                return k
            u -= w
        return len(weights) - 1


# Treatments: file, treatment line, seed, development time and adult life relative to 25 C,
# eggs added to the daily peak.
TREATMENTS = [
    ("mite.txt", "Bean leaf discs 25 C 16L:8D", 20240507, 1.0, 1.0, 0),
    ("mite_20C.txt", "Bean leaf discs 20 C 16L:8D", 20240520, 1.6, 1.4, -3),
    ("mite_30C.txt", "Bean leaf discs 30 C 16L:8D", 20240530, 0.7, 0.75, 2),
]


def scaled(days, factor):
    """Days at another temperature, at least one."""
    return days if factor == 1.0 else max(1, int(days * factor + 0.5))


def preadult_durations(rng, slow=1.0):
    # Days in egg, larva, protonymph, deutonymph at about 25 C, scaled to the temperature.
    egg = 3 + rng.pick([1, 6, 3])
    larva = 1 + rng.pick([3, 5, 1])
    proto = 1 + rng.pick([4, 4, 1])
    deuto = 1 + rng.pick([3, 5, 2])
    return [scaled(d, slow) for d in (egg, larva, proto, deuto)]


def female_eggs(rng, days, more=0):
    """Daily eggs: a pre-oviposition day or two, a peak near day 5 to 8, a slow decline."""
    apop = rng.pick([2, 5, 2])  # 0, 1 or 2 days without eggs
    peak_day = apop + 3 + rng.pick([1, 2, 2, 1])
    peak = 7 + more + rng.pick([1, 2, 3, 2, 1])
    eggs = []
    for day in range(1, days + 1):
        if day <= apop:
            mean = 0.0
        elif day <= peak_day:
            mean = peak * (day - apop) / (peak_day - apop)
        else:
            mean = peak * max(0.0, 1.0 - (day - peak_day) / (days - peak_day + 4))
        value = int(mean * (0.6 + 0.8 * rng.uniform()) + 0.5)
        if day > apop and rng.uniform() < 0.06:
            value = 0  # a day without eggs now and then
        eggs.append(value)
    if rng.uniform() < 0.05:
        eggs = [0] * days  # an infertile female
    return eggs


def number(v):
    """A number with the blank a non-negative number carries in front of it."""
    return (" " if v >= 0 else "") + str(v)


def write(name, treatment, seed, slow, life, more):
    rng = Lcg(seed)
    lines = [
        '"Project: Tetranychus urticae Ver. 5/7/2024"',
        '"KORVAN team"',
        '"' + treatment + '"',
        str(N),
        "2,5",
        "F," + ",".join(STAGES) + ",Female",
        "M," + ",".join(STAGES) + ",Male",
        "Egg,Female",
    ]
    for i in range(1, N + 1):
        durations = preadult_durations(rng, slow)
        u = rng.uniform()
        if u < 0.12:
            # Died as a preadult: the stage of death carries the days lived in it, negative.
            stage = rng.pick([3, 4, 2, 2])
            lived = max(1, durations[stage] - rng.pick([1, 1, 1]))
            record = durations[:stage] + [-lived]
            lines.append(number(i) + " ,N," + ",".join(number(d) for d in record))
            continue
        if u < 0.12 + 0.62:
            adult = scaled(10 + rng.pick([2, 3, 4, 5, 5, 4, 3, 2, 2, 1]) * 2 + rng.pick([1, 1]), life)
            record = durations + [adult]
            lines.append(number(i) + " ,F," + ",".join(number(d) for d in record))
            values = female_eggs(rng, adult, more) + [-1]
            for start in range(0, len(values), 20):
                chunk = values[start:start + 20]
                lines.append(",".join(number(v) for v in chunk))
        else:
            adult = scaled(8 + rng.pick([2, 3, 4, 4, 3, 2, 2, 1, 1, 1]) * 2 + rng.pick([1, 1]), life)
            record = durations + [adult]
            lines.append(number(i) + " ,M," + ",".join(number(d) for d in record))
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), name)
    with open(path, "w", newline="\n") as out:
        out.write("\n".join(lines) + "\n")


# Rearing cost of one individual per day in each stage (Egg .. Female, then Male), for the
# harvest analysis of a mass rearing: the 25 C cohort with its costs in the head.
COSTS = "0.001,0.004,0.004,0.004,0.02,0.01"


def write_costs():
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "mite.txt")) as source:
        lines = source.read().split("\n")
    lines.insert(7, COSTS)
    with open(os.path.join(here, "mite_costs.txt"), "w", newline="\n") as out:
        out.write("\n".join(lines))


def write_daughters():
    """The 25 C cohort counting only the eggs that became daughters (three in four of each
    day's eggs, rounded down): one type of offspring for the contribution analysis."""
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "mite.txt")) as source:
        lines = source.read().split("\n")
    out_lines, eggs = [], False
    for line in lines:
        fields = [f.strip() for f in line.split(",")]
        if len(fields) > 1 and fields[1] in ("F", "M", "N"):
            eggs = fields[1] == "F"
        elif eggs and line:
            values = [int(f) for f in fields]
            line = ",".join(number(v if v < 0 else (3 * v) // 4) for v in values)
            eggs = -1 not in values
        out_lines.append(line)
    out_lines[2] = '"Bean leaf discs 25 C 16L:8D, daughters only"'
    with open(os.path.join(here, "mite_daughters.txt"), "w", newline="\n") as out:
        out.write("\n".join(out_lines))


def main():
    for treatment in TREATMENTS:
        write(*treatment)
    write_costs()
    write_daughters()


if __name__ == "__main__":
    main()
