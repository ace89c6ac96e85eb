#pragma once
// Transforms of a life table as its data file holds it: the cohort (sex, stage durations, the
// daily eggs of each female) and its head (the stage names of each type, the two special
// stages, the rearing costs). Each changes them in place, so that the writer of the data file
// writes the new table; each first tests what it is given and returns the reason it can't be
// done, with nothing changed, or an empty text when it is done.
//
// The durations are those of the file: stage m is the adult stage, a negative duration is the
// stage of death (its absolute value the time lived in it) and ends the record; Fecundity(i, x)
// holds the eggs of adult day x = 1..d of a female and -1 on day d + 1. Every result stays
// within the fixed bounds of a life table: at most MaxStageCount stages, a life of at most
// kMaxAge time units, a fecundity list that ends by day kMaxAge.
#include <string>

#include "bootstrap/uniform_random.h"
#include "store/session_store.h"

namespace korvan {

// The most stages of a table: one less with two types, whose male adult stage is m + 1 in the
// age-stage tables.
int MaxStageCount(const CohortHeader& h);

// The stage in which the record of individual i ends: that of its death, else m.
int LastStageOf(const Cohort& c, long i, int m);

// Why the head of a table read can't be written back as it is (a type code, stage name or
// special stage that is empty or holds a comma, a double quote or a line end: the stage lines of
// the file are written bare), or empty.
std::string UnwritableHeadRefusal(const CohortHeader& h);

// Why a new stage name can't stand in a data file (empty, blanks around it, a comma or a double
// quote, which the file's stage lines can't hold, or the name of another stage of any type
// outside stages keepFirst..keepLast, which it replaces), or empty.
std::string StageNameRefusal(const CohortHeader& h, const std::string& name, int keepFirst = 0, int keepLast = -1);

// Preadult stages first..last become one stage of that name. Durations add; an individual that
// died inside the span has the negative sum of its time in it. A special stage inside the span
// becomes the new stage; the new stage's rearing cost is the mean of the old ones weighted by
// the time the cohort spent in each, which keeps the cohort's total cost.
std::string GroupStages(CohortHeader& h, Cohort& c, int first, int last, const std::string& name);

// A table of time unit 1 to one of x = 1..24 units per unit: every duration times x; the eggs
// of each day go on the first of its x units (the age at which the day begins, the age the
// daily table gives them) and its other units have none. Costs per time unit are divided by
// x. Non-integer durations are taken when x makes them whole.
std::string ToTimeUnits(CohortHeader& h, Cohort& c, int x);

// A stage of that name and duration (whole, at least 1) inserted before stage k = 1..m for
// every individual that reached stage k; its rearing cost is cost.
std::string AddStage(CohortHeader& h, Cohort& c, int k, const std::string& name, double duration, double cost);

// Time added to preadult stage k of every individual that reached it, also of one that died in
// it (which then dies that much later): a fixed whole time, or with share the share (0..1) of
// the individual's own time in the stage, rounded to whole units (a half up).
std::string AddTimeToStage(const CohortHeader& h, Cohort& c, int k, double amount, bool share);

// Preadult stage k split into two stages: an individual that completed it spends round(p d)
// time units (a half up) of its d in the first, at least one in each; one of d = 1 spends one
// in each and lives one unit longer (counted in lengthened). An individual that died in stage
// k dies in the first part when its time there is at most the first part of the cohort (p times
// the mean time of those that completed the stage, rounded, at least 1; with none that did,
// of those that died in it), else in the second with the rest of its time. The special stage
// k becomes the first part as the span's first stage, the second part as its last.
std::string SplitStage(CohortHeader& h, Cohort& c, int k, double p, const std::string& firstName,
                       const std::string& secondName, long& lengthened);

// The eggs of every female after adult day days (>= 1) set to zero; her adult life stays.
std::string KeepEggsOfFirstDays(const CohortHeader& h, Cohort& c, int days);

// An adult life table (stage m the adult stage of every individual, F or M) after an
// overwintering of days: for each adult a draw u; when mortality > u it dies in winter, its
// adult duration grows by CInt(days * a second draw) and it has no eggs (counted in died);
// otherwise days without eggs come before its own adult life.
std::string AddOverwinter(const CohortHeader& h, Cohort& c, int days, double mortality, UniformGenerator& u,
                          long& died);

}  // namespace korvan
