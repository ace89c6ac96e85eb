#!/usr/bin/env python3
"""Writes the five data files of a 3D study from the example cohort examples/mite.txt: its
females three times, their daily eggs split by the mother's age into daughters, sons and
infertile eggs (young mothers lay more daughters), its males, and its N-type individuals.
The user field (line 2) marks each file for the matrix file of its Basic Run."""
from pathlib import Path

here = Path(__file__).parent
lines = (here / "mite.txt").read_text().splitlines()
head, body = lines[:8], lines[8:]
fields = []
for line in body:
    fields += [f.strip() for f in line.split(",") if f.strip()]
records, i, m = [], 0, 5
while i < len(fields):
    sex = fields[i + 1]
    i += 2
    durations = []
    for _ in range(m):
        d = int(fields[i]); i += 1
        durations.append(d)
        if d < 0:
            break
    eggs = []
    if sex == "F":
        while fields[i] != "-1":
            eggs.append(int(fields[i])); i += 1
        i += 1
    records.append((sex, durations, eggs))


def split(e, day):
    daughters = round(e * max(0.2, 0.8 - 0.04 * day))
    infertile = e // 10
    return daughters, e - daughters - infertile, infertile


def write(name, user, rows):
    text = [head[0], f'"{user}"', head[2], str(len(rows))] + head[4:8]
    for k, (sex, durations, eggs) in enumerate(rows, 1):
        text.append(f" {k} ,{sex}," + ",".join(f" {d}" for d in durations))
        if sex == "F":
            values = [str(v) for v in eggs] + ["-1"]
            for j in range(0, len(values), 20):
                text.append(",".join(values[j:j + 20]))
    (here / "3d" / name).write_text("\n".join(text) + "\n")


(here / "3d").mkdir(exist_ok=True)
females = [r for r in records if r[0] == "F"]
for kind, user in ((0, "daughter"), (1, "son"), (2, "infertile")):
    rows = [(s, d, [split(e, day)[kind] for day, e in enumerate(eggs)]) for s, d, eggs in females]
    write(f"mite_{user}.txt", user, rows)
write("mite_male.txt", "Male", [r for r in records if r[0] == "M"])
write("mite_ntype.txt", "N-type", [r for r in records if r[0] == "N"])
