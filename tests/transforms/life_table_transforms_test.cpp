// The transforms on small cohorts worked out by hand: durations, eggs, stage names, special
// stages and costs of the new table, and the refusals that leave a table as it was.
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <vector>

#include "support/cohort.h"
#include "transforms/life_table_transforms.h"

namespace korvan {
namespace {

using Durations = std::vector<double>;

// Four stages Egg, Larva, Pupa and the adult stage:
//   1 F  2 3 1 4   eggs 0 5 3 0
//   2 M  2 2 2 3
//   3 N  1 -2      died in the larva
//   4 N  2 1 -3    died in the pupa
//   5 N  -1        died in the egg
struct Table {
  std::unique_ptr<Session> S = std::make_unique<Session>();
  CohortHeader& h = S->header;
  Cohort& c = S->ws.cohort;
  explicit Table(int m = 4, std::vector<test::Individual> cohort = {{"F", {2, 3, 1, 4}, {0, 5, 3, 0}},
                                                                   {"M", {2, 2, 2, 3}},
                                                                   {"N", {1, -2}},
                                                                   {"N", {2, 1, -3}},
                                                                   {"N", {-1}}}) {
    test::LoadCohort(*S, m, cohort, 1, {"Egg", "Larva", "Pupa"});
  }
  // The durations of individual i up to the end of its record.
  Durations Of(long i) const {
    Durations d;
    for (int j = 1; j <= LastStageOf(c, i, h.StageCount); ++j) d.push_back(c.StageDuration(i, j));
    return d;
  }
  // The eggs of female i, days 1..d, and what stands on day d + 1.
  Durations Eggs(long i) const {
    Durations e;
    const long d = static_cast<long>(c.StageDuration(i, h.StageCount));
    for (long x = 1; x <= d + 1; ++x) e.push_back(c.Fecundity(i, x));
    return e;
  }
  std::vector<std::string> Names(int t) const {
    std::vector<std::string> n;
    for (int j = 1; j <= h.StageCount + (t == 1 ? 1 : 0); ++j) n.push_back(h.StageName(t, j));
    return n;
  }
};

TEST(GroupStages, DurationsAddAndADeathInsideTheSpanIsTheNegativeSum) {
  Table t;
  t.h.RegularLifeTable = "No";
  const double costs[] = {0, 1, 2, 4, 5};
  for (int j = 1; j <= 4; ++j) t.h.StageRearingCost(1, j) = costs[j];
  t.h.StageRearingCost(2, 4) = 6;
  EXPECT_EQ(GroupStages(t.h, t.c, 2, 3, "Larva+Pupa"), "");
  EXPECT_EQ(t.h.StageCount, 3);
  EXPECT_EQ(t.Of(1), (Durations{2, 4, 4}));
  EXPECT_EQ(t.Of(2), (Durations{2, 4, 3}));
  EXPECT_EQ(t.Of(3), (Durations{1, -2}));
  EXPECT_EQ(t.Of(4), (Durations{2, -4}));
  EXPECT_EQ(t.Of(5), (Durations{-1}));
  EXPECT_EQ(t.Eggs(1), (Durations{0, 5, 3, 0, -1}));
  EXPECT_EQ(t.Names(1), (std::vector<std::string>{"Egg", "Larva+Pupa", "Female", "Male"}));
  EXPECT_EQ(t.Names(2), (std::vector<std::string>{"Egg", "Larva+Pupa", "Male"}));
  EXPECT_EQ(t.h.SpecialGroup(2), "Larva+Pupa");  // the span ended in the pupa
  // 8 time units in the larva at 2, 6 in the pupa at 4: the cohort's cost stays.
  EXPECT_DOUBLE_EQ(t.h.StageRearingCost(1, 2), (8 * 2 + 6 * 4) / 14.0);
  EXPECT_EQ(t.h.StageRearingCost(1, 3), 5);
  EXPECT_EQ(t.h.StageRearingCost(2, 3), 6);

  // Refused, with nothing changed: the adult stage, a span the wrong way, another stage's name,
  // a name the stage line can't hold.
  Table u;
  EXPECT_NE(GroupStages(u.h, u.c, 2, 4, "X"), "");
  EXPECT_NE(GroupStages(u.h, u.c, 3, 2, "X"), "");
  EXPECT_NE(GroupStages(u.h, u.c, 2, 3, "Egg"), "");
  EXPECT_NE(GroupStages(u.h, u.c, 2, 3, "Larva, pupa"), "");
  EXPECT_EQ(u.h.StageCount, 4);
  EXPECT_EQ(u.Of(4), (Durations{2, 1, -3}));
  // One stage grouped by itself keeps the table; it may keep its name.
  EXPECT_EQ(GroupStages(u.h, u.c, 2, 2, "Larva"), "");
  EXPECT_EQ(u.Of(1), (Durations{2, 3, 1, 4}));
  EXPECT_EQ(u.Names(1), Table().Names(1));
}

TEST(ToTimeUnits, DurationsTimesXAndEachDaysEggsOnItsFirstUnit) {
  Table t;
  t.h.StageRearingCost(1, 2) = 3;
  EXPECT_EQ(ToTimeUnits(t.h, t.c, 3), "");
  EXPECT_EQ(t.Of(1), (Durations{6, 9, 3, 12}));
  EXPECT_EQ(t.Of(4), (Durations{6, 3, -9}));
  EXPECT_EQ(t.Eggs(1), (Durations{0, 0, 0, 5, 0, 0, 3, 0, 0, 0, 0, 0, -1}));
  EXPECT_EQ(t.h.StageRearingCost(1, 2), 1);  // a cost per time unit

  // Half days become whole with x = 2, not with x = 3; a life beyond the table's 575 units is
  // refused as well, and nothing changes.
  Table half(4, {{"F", {2.5, 3, 1, 2}, {4, 1}}, {"M", {2, 2, 2, 300}}});
  EXPECT_NE(ToTimeUnits(half.h, half.c, 3), "");
  EXPECT_EQ(half.Of(1), (Durations{2.5, 3, 1, 2}));
  EXPECT_NE(ToTimeUnits(half.h, half.c, 2).find("would live 612"), std::string::npos);
  EXPECT_NE(ToTimeUnits(half.h, half.c, 0), "");
  half.c.StageDuration(2, 4) = 3;
  EXPECT_EQ(ToTimeUnits(half.h, half.c, 2), "");
  EXPECT_EQ(half.Of(1), (Durations{5, 6, 2, 4}));
  EXPECT_EQ(half.Eggs(1), (Durations{4, 0, 1, 0, -1}));
}

TEST(AddStage, InsertedForEveryIndividualThatReachedIt) {
  Table t;
  EXPECT_EQ(AddStage(t.h, t.c, 2, "Prelarva", 2, 0), "");
  EXPECT_EQ(t.h.StageCount, 5);
  EXPECT_EQ(t.Of(1), (Durations{2, 2, 3, 1, 4}));
  EXPECT_EQ(t.Of(3), (Durations{1, 2, -2}));
  EXPECT_EQ(t.Of(5), (Durations{-1}));  // died before it
  EXPECT_EQ(t.Eggs(1), (Durations{0, 5, 3, 0, -1}));
  EXPECT_EQ(t.Names(1), (std::vector<std::string>{"Egg", "Prelarva", "Larva", "Pupa", "Female", "Male"}));
  EXPECT_EQ(t.Names(2).back(), "Male");
  // Before the adult stage it lengthens the life of every adult only.
  EXPECT_EQ(AddStage(t.h, t.c, 5, "Teneral", 1, 0), "");
  EXPECT_EQ(t.Of(2), (Durations{2, 2, 2, 2, 1, 3}));
  EXPECT_EQ(t.Of(4), (Durations{2, 2, 1, -3}));

  // A table of two stages names its span's end "Adult"; grown, the span ends at a stage.
  Table two(2, {{"F", {3, 2}, {1, 1}}, {"M", {3, 2}}});
  two.h.SpecialGroup(2) = "Adult";
  EXPECT_EQ(AddStage(two.h, two.c, 1, "Young", 4, 0), "");
  EXPECT_EQ(two.Of(1), (Durations{4, 3, 2}));
  EXPECT_EQ(two.h.SpecialGroup(2), "Egg");                // the last preadult stage now
  EXPECT_NE(AddStage(two.h, two.c, 1, "Egg", 1, 0), "");  // a name of the table already
  EXPECT_NE(AddStage(two.h, two.c, 1, "Old", 0, 0), "");
  // Twelve stages is the most a table of two types holds.
  two.h.StageCount = 12;
  EXPECT_NE(AddStage(two.h, two.c, 1, "Young", 1, 0).find("at most 12"), std::string::npos);
}

TEST(AddTimeToStage, FixedOrAShareOfItsOwnTimeAlsoForThoseThatDiedInIt) {
  Table t;
  EXPECT_EQ(AddTimeToStage(t.h, t.c, 2, 0.5, true), "");
  EXPECT_EQ(t.Of(1), (Durations{2, 5, 1, 4}));  // 3 + 1.5 rounded up
  EXPECT_EQ(t.Of(2), (Durations{2, 3, 2, 3}));
  EXPECT_EQ(t.Of(3), (Durations{1, -3}));
  EXPECT_EQ(t.Of(4), (Durations{2, 2, -3}));    // 1 + 0.5 rounded up
  EXPECT_EQ(t.Of(5), (Durations{-1}));
  EXPECT_EQ(AddTimeToStage(t.h, t.c, 1, 2, false), "");
  EXPECT_EQ(t.Of(5), (Durations{-3}));
  // Refused: the adult stage, a share above 1, a time that isn't whole.
  EXPECT_NE(AddTimeToStage(t.h, t.c, 4, 1, false), "");
  EXPECT_NE(AddTimeToStage(t.h, t.c, 2, 1.5, true), "");
  EXPECT_NE(AddTimeToStage(t.h, t.c, 2, 1.5, false), "");
  EXPECT_EQ(t.Of(1), (Durations{4, 5, 1, 4}));
}

TEST(SplitStage, WholeUnitsInEachPartAndADeathInThePartItsTimeReaches) {
  Table t;
  t.h.SpecialGroup(2) = "Larva";
  long lengthened = -1;
  // The larvae that completed the stage spent 3, 2 and 1 units there: the cohort's first part
  // is round(0.5 * 2) = 1.
  EXPECT_EQ(SplitStage(t.h, t.c, 2, 0.5, "L1", "L2", lengthened), "");
  EXPECT_EQ(t.Of(1), (Durations{2, 2, 1, 1, 4}));  // 3 -> 2 + 1
  EXPECT_EQ(t.Of(2), (Durations{2, 1, 1, 2, 3}));
  EXPECT_EQ(t.Of(3), (Durations{1, 1, -1}));       // 2 units: dies in the second part
  EXPECT_EQ(t.Of(4), (Durations{2, 1, 1, -3}));    // 1 unit: one in each, one more in all
  EXPECT_EQ(lengthened, 1);
  EXPECT_EQ(t.Names(1), (std::vector<std::string>{"Egg", "L1", "L2", "Pupa", "Female", "Male"}));
  EXPECT_EQ(t.h.SpecialGroup(2), "L2");

  // One that died within the cohort's first part dies there.
  Table d(4, {{"M", {1, 6, 1, 3}}, {"N", {1, -2}}});
  EXPECT_EQ(SplitStage(d.h, d.c, 2, 0.5, "L1", "L2", lengthened), "");
  EXPECT_EQ(d.Of(2), (Durations{1, -2}));
  EXPECT_EQ(d.Of(1), (Durations{1, 3, 3, 1, 3}));
  EXPECT_NE(SplitStage(d.h, d.c, 2, 1, "A", "B", lengthened), "");
  EXPECT_NE(SplitStage(d.h, d.c, 2, 0.5, "A", "A", lengthened), "");
}

TEST(KeepEggsOfFirstDays, LaterEggsGoAndTheAdultLifeStays) {
  Table t;
  EXPECT_EQ(KeepEggsOfFirstDays(t.h, t.c, 2), "");
  EXPECT_EQ(t.Eggs(1), (Durations{0, 5, 0, 0, -1}));
  EXPECT_NE(KeepEggsOfFirstDays(t.h, t.c, 0), "");
}

// Draws given in order.
class Draws : public UniformGenerator {
 public:
  explicit Draws(std::deque<double> u) : u_(std::move(u)) {}
  void SeedSample(std::uint64_t, std::int64_t) override {}
  double Next() override {
    const double u = u_.front();
    u_.pop_front();
    return u;
  }

 private:
  std::deque<double> u_;
};

TEST(AddOverwinter, DaysWithoutEggsBeforeTheAdultLifeOrADeathInWinter) {
  Table t(2, {{"F", {0, 3}, {1, 2, 3}}, {"M", {0, 2}}, {"F", {0, 2}, {4, 4}}});
  long died = -1;
  Draws u({0.7, 0.2, 0.6, 0.5});
  // Mortality 0.5: the first (0.7) lives to spring; the male (0.2) dies in winter after
  // CInt(2 * 0.6) = 1 more unit; the last (0.5) lives.
  EXPECT_EQ(AddOverwinter(t.h, t.c, 2, 0.5, u, died), "");
  EXPECT_EQ(died, 1);
  EXPECT_EQ(t.c.StageDuration(1, 2), 5);
  EXPECT_EQ(t.Eggs(1), (Durations{0, 0, 1, 2, 3, -1}));
  EXPECT_EQ(t.c.StageDuration(2, 2), 3);
  EXPECT_EQ(t.Eggs(3), (Durations{0, 0, 4, 4, -1}));
  // A female that dies in winter has no eggs.
  Table f(2, {{"F", {0, 3}, {1, 2, 3}}});
  Draws all({0.1, 0.9});
  EXPECT_EQ(AddOverwinter(f.h, f.c, 4, 1, all, died), "");
  EXPECT_EQ(f.Eggs(1), (Durations{0, 0, 0, 0, 0, 0, 0, -1}));
  EXPECT_NE(AddOverwinter(f.h, f.c, 600, 0, all, died), "");
}

}  // namespace
}  // namespace korvan
