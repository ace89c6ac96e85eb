#!/usr/bin/env python3
"""Writes example files from the cohort examples/mite.txt.

The two tables of a matching run: the immature life table (stages 1..m-1 of every individual)
and the adult life table (adult duration and daily eggs of every adult, zeros for a male).

The five data files of a 3D study (examples/3d/): its females three times, their daily eggs
split by the mother's age into daughters, sons and infertile eggs (young mothers lay more
daughters), its males, and its N-type individuals. The user field (line 2) marks each file for
the matrix file of its Basic Run."""
import re
from pathlib import Path

here = Path(__file__).parent
lines = (here / "mite.txt").read_text().splitlines()
head, body = lines[:8], lines[8:]
fields = []
for line in body:
    fields += [f.strip() for f in line.split(",") if f.strip()]

records, i = [], 0
m = 5
while i < len(fields):
    no, sex = int(fields[i]), fields[i + 1]
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
    records.append((no, sex, durations, eggs))

def write(name, rows, title, count):
    text = [f'"{title}"', head[1], head[2], str(count)] + head[4:8] + rows
    (here / name).write_text("\n".join(text) + "\n")

imm = [f"{k},{sex}," + ",".join(str(d) for d in durs[: m - 1]) for k, (no, sex, durs, eggs) in enumerate(records, 1)]
write("mite_0-Immature.txt", imm, "Tetranychus urticae, immature", len(imm))
adults = [(sex, durs[m - 1], eggs) for no, sex, durs, eggs in records if sex in "FM"]
rows = []
for k, (sex, d, eggs) in enumerate(adults, 1):
    values = (eggs + [0] * d)[:d]
    rows.append(f"{k},{sex},{d}")
    for j in range(0, d, 20):
        rows.append(",".join(str(v) for v in values[j:j + 20]))
write("mite_0-Adult.txt", rows, "Tetranychus urticae, adult", len(adults))


def split(e, day):
    daughters = round(e * max(0.2, 0.8 - 0.04 * day))
    infertile = e // 10
    return daughters, e - daughters - infertile, infertile


def write_3d(name, user, rows):
    text = [head[0], f'"{user}"', head[2], str(len(rows))] + head[4:8]
    for k, (sex, durations, eggs) in enumerate(rows, 1):
        text.append(f" {k} ,{sex}," + ",".join(f" {d}" for d in durations))
        if sex == "F":
            values = [str(v) for v in eggs] + ["-1"]
            for j in range(0, len(values), 20):
                text.append(",".join(values[j:j + 20]))
    (here / "3d" / name).write_text("\n".join(text) + "\n")


(here / "3d").mkdir(exist_ok=True)
females = [(s, d, e) for _, s, d, e in records if s == "F"]
for kind, user in ((0, "daughter"), (1, "son"), (2, "infertile")):
    rows = [(s, d, [split(e, day)[kind] for day, e in enumerate(eggs)]) for s, d, eggs in females]
    write_3d(f"mite_{user}.txt", user, rows)
write_3d("mite_male.txt", "Male", [(s, d, e) for _, s, d, e in records if s == "M"])
write_3d("mite_ntype.txt", "N-type", [(s, d, e) for _, s, d, e in records if s == "N"])
