#!/usr/bin/env python3
"""Writes a group-reared life table at the bounds of the store: 390 individuals, 11 preadult
stages with the female and the male stage (13 rows), ages 0..575. The counts come from a made-up
cohort of individuals, so the file passes every check of "B. Read N, F"; some individuals die
in the last preadult stage after the first adults have emerged (a death in the overlap).
Usage: make_group_file.py OUT"""
import sys

STAGES = 12          # S: the female stage; S + 1 is the male stage
AGES = 576           # ages 0..575
N = 390

count = [[0] * (AGES + 1) for _ in range(STAGES + 2)]
eggs = [0] * (AGES + 1)
for i in range(N):
    age = 0
    died = False
    for j in range(1, STAGES):
        d = 2 + (i * 7 + j) % 4
        if i % 13 == 5 and j == (i // 13) % (STAGES - 1) + 1:   # dies in this stage
            for x in range(age, age + max(1, d - 1)):
                count[j][x] += 1
            died = True
            break
        for x in range(age, age + d):
            count[j][x] += 1
        age += d
    if died:
        continue
    adult = STAGES if i % 2 == 0 else STAGES + 1
    life = AGES - age if i == 0 else 20 + (i * 31) % 300
    life = min(life, AGES - age)
    for x in range(age, age + life):
        count[adult][x] += 1
        if adult == STAGES:
            eggs[x] += (i + x) % 6

def first_last(row):
    ages = [x for x in range(AGES) if row[x] > 0]
    return (ages[0], ages[-1]) if ages else (0, 0)

with open(sys.argv[1], "w") as f:
    f.write('"Project: bench group","KORVAN team","13 rows, ages 0..575"\n%d\n2,%d\n' % (N, STAGES))
    names = ["Stage%d" % j for j in range(1, STAGES)]
    f.write(",".join(["F"] + names + ["Female"]) + "\n")
    f.write(",".join(["M"] + names + ["Male"]) + "\n")
    for j in range(1, STAGES + 2):
        a, b = first_last(count[j])
        if j == 1:
            a = 0
        code = names[j - 1] if j < STAGES else ("Female" if j == STAGES else "Male")
        f.write("%s,%d,%d,%s\n" % (code, a, b, ",".join(str(count[j][x]) for x in range(a, b + 1))))
    a, b = first_last(count[STAGES])
    f.write("Female,%d,%d,%s\n" % (a, b, ",".join(str(eggs[x]) for x in range(a, b + 1))))
