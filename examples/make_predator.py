#!/usr/bin/env python3
"""Writes examples/predator.txt and examples/predator_consumption.txt: a predatory mite cohort
(a phytoseiid) reared singly on leaf discs with spider-mite eggs as prey, and the number of prey
eggs each individual ate on every day of its life.

The cohort is made up by the team: 60 eggs followed daily through egg, larva, protonymph and
deutonymph to the adult female or male; a few die as preadults. The egg eats nothing, the larva
little, the nymphs a few prey a day, an adult female many (most while she lays eggs), a male
fewer. A female's eggs follow her prey: a day of more prey is a day of more eggs.

The numbers come from the portable generator of make_mite.py with a fixed seed, so the files are
the same on every machine. The life table has the layout of the program's own writer; the
consumption file has its head (project, user, treatment, N) and one record per individual: its
number, one value for each day of its life from age 0, and -1.

Run: python3 examples/make_predator.py  (writes the two files beside this script)
"""
import os

from make_mite import Lcg, number

STAGES = ["Egg", "Larva", "Protonymph", "Deutonymph"]
N = 60
HEAD = ['"Project: Neoseiulus womersleyi Ver. 5/7/2024"', '"KORVAN team"', '"Spider-mite eggs 25 C 16L:8D"']
# Mean prey a day in each preadult stage; adult female and male.
PREADULT_PREY = [0.0, 0.6, 3.0, 4.5]
FEMALE_PREY, MALE_PREY = 11.0, 5.0


def prey(rng, mean):
    """Prey eaten on one day: about the mean, sometimes nothing."""
    if mean == 0 or rng.uniform() < 0.05:
        return 0
    return int(mean * (0.5 + rng.uniform()) + 0.5)


def main():
    rng = Lcg(20240611)
    table = HEAD + [str(N), "2,5", "F," + ",".join(STAGES) + ",Female", "M," + ",".join(STAGES) + ",Male",
                    "Egg,Female"]
    eaten = HEAD + [str(N)]
    for i in range(1, N + 1):
        durations = [2 + rng.pick([1, 4, 2]), 1 + rng.pick([4, 2]), 1 + rng.pick([3, 4, 1]),
                     1 + rng.pick([3, 4, 1])]
        u = rng.uniform()
        days = []  # prey on each day of life
        if u < 0.15:
            stage = rng.pick([2, 3, 3, 2])
            lived = max(1, durations[stage] - 1)
            record = durations[:stage] + [-lived]
            for k, d in enumerate(record):
                days += [prey(rng, PREADULT_PREY[k]) for _ in range(abs(d))]
            table.append(number(i) + " ,N," + ",".join(number(d) for d in record))
        else:
            female = u < 0.15 + 0.6
            adult = (12 + 2 * rng.pick([1, 2, 3, 3, 2, 1])) if female else (8 + 2 * rng.pick([1, 2, 2, 1]))
            record = durations + [adult]
            for k, d in enumerate(durations):
                days += [prey(rng, PREADULT_PREY[k]) for _ in range(d)]
            table.append(number(i) + (" ,F," if female else " ,M,") + ",".join(number(d) for d in record))
            if female:
                apop = 1 + rng.pick([2, 3, 1])
                adult_prey = []
                eggs = []
                for day in range(1, adult + 1):
                    laying = apop < day <= adult - 2
                    p = prey(rng, FEMALE_PREY if laying else FEMALE_PREY * 0.5)
                    adult_prey.append(p)
                    eggs.append(int(p / 4.5 + rng.uniform() * 0.8) if laying else 0)
                days += adult_prey
                values = eggs + [-1]
                for start in range(0, len(values), 20):
                    table.append(",".join(number(v) for v in values[start:start + 20]))
            else:
                days += [prey(rng, MALE_PREY) for _ in range(adult)]
        values = [i] + days + [-1]
        for start in range(0, len(values), 20):
            eaten.append(",".join(number(v) for v in values[start:start + 20]))
    here = os.path.dirname(os.path.abspath(__file__))
    for name, lines in (("predator.txt", table), ("predator_consumption.txt", eaten)):
        with open(os.path.join(here, name), "w", newline="\n") as out:
            out.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
