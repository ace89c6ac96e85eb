#!/usr/bin/env python3
"""Splits the example cohort examples/mite.txt into the two tables of a matching run: the
immature life table (stages 1..m-1 of every individual) and the adult life table (adult
duration and daily eggs of every adult, zeros for a male)."""
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
