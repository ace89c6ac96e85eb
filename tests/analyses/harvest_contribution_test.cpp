// Mass rearing under harvest and the contribution of offspring types, on small cohorts run
// through a Basic Run. The harvest rate is checked against the dominant eigenvalue of the
// harvested colony's projection matrix, the stable colony against the cohort's own day counts;
// the contributions of two types that split the eggs add up to the pooled cohort's.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>

#include "analyses/contribution.h"
#include "analyses/harvest.h"
#include "bootstrap/bootstrap_run_fixture.h"
#include "commands/harvest_command.h"
#include "engine/population_parameters_fixture.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using boottest::PoolIndividual;

using Prompts = test::OkPrompts;

struct Colony {
  test::TempDir dir;
  std::vector<PoolIndividual> cohort = boottest::SmallCohort();
  Prompts P;
  std::unique_ptr<Session> S;
  Colony() { S = boottest::BasicRunOf(dir.file("colony.txt"), 3, cohort, P); }
  void Answer(int target, int lastAge, const std::string& level = "Ro(original)") {
    P.Answer("Target stage", std::to_string(target))
        .Answer("Enter the Last harvest age:", std::to_string(lastAge))
        .Answer("Expected harvest number of target stage =", "500")
        .Answer("Cost per harvesting one individual of the target stage =", "0.1")
        .Answer("Conservation level", level);
  }
  void Harvest() { FurtherAnalysisForms(*S, P).cmdHarvest_Click(); }
  // The colony's growth per time unit when the target's cut takes the share rate.
  double LambdaAt(double rate) {
    auto owned = std::make_unique<Session>();
    Session& copy = *owned;
    copy.header.StageCount = S->header.StageCount;
    auto& t = copy.ws.tables;
    const auto& o = S->ws.tables;
    const int m = S->header.StageCount;
    t.LastAge = o.LastAge;
    for (int x = 0; x <= o.LastAge; ++x)
      for (int j = 1; j <= m + 1; ++j) {
        t.Sxj(x, j) = o.Sxj(x, j), t.Gxj(x, j) = o.Gxj(x, j), t.Dxj(x, j) = o.Dxj(x, j);
        t.Fxj(x, j) = o.Fxj(x, j);
        if (S->harvest.HarvestStage == 1 && j == m) t.Fxj(x, j) *= 1 - rate;
        if (S->harvest.HarvestStage == 2 && j == 1) t.Dxj(x, j) *= 1 - rate;
      }
    return test::ProjectionLambda(copy, 4000);
  }
  // Days lived in stage j and individuals reaching it, over the cohort, per newborn.
  // Stage 4 is the male adult, whose days are the third duration of a male.
  double DaysIn(int j) const {
    double days = 0;
    for (const auto& a : cohort) {
      if (j >= 3 && (a.sex == "M") != (j == 4)) continue;
      const int stage = j == 4 ? 3 : j;
      if (stage <= static_cast<int>(a.durations.size())) days += std::fabs(a.durations[stage - 1]);
    }
    return days / cohort.size();
  }
  double Reaching(int j) const {
    double n = 0;
    for (const auto& a : cohort) n += static_cast<int>(a.durations.size()) >= j ? 1 : 0;
    return n / cohort.size();
  }
};

TEST(Harvest, SustainableRateIsTheLastGridRateThatReplacesTheColony) {
  for (int target : {1, 2}) {
    Colony c;
    const int last = c.S->ws.tables.LastAge;
    c.Answer(target, last);
    c.Harvest();
    const auto& h = c.S->harvest;
    const auto& t = c.S->ws.tables;
    const double R0 = c.S->params.R0_Basic;
    const double rate = h.OptimalHarvestRate;
    SCOPED_TRACE(target);
    EXPECT_NEAR(h.R0ToLastHarvestAge, R0, 1e-9);  // the whole table
    ASSERT_GT(rate, 0);
    // The colony still replaces itself at the rate, and not one grid step on.
    EXPECT_GE(c.LambdaAt(rate), 1);
    EXPECT_LT(c.LambdaAt(rate + 0.0001), 1);
    const int i = static_cast<int>(std::lround(rate / 0.0001));
    EXPECT_GE(h.HarvestR0(i), 1);
    EXPECT_LT(h.HarvestR0(i + 1), 1);
    // Eggs: R0 falls as 1 - rate, so the rate is the closed form on the grid.
    if (target == 1) {
      EXPECT_NEAR(rate, std::floor((R0 - 1) / R0 * 10000 + 1e-9) / 10000, 1e-12);
    }
    // Sh is s(x,j), times 1 - rate behind the cut.
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= 4; ++j)
        EXPECT_NEAR(h.Sh(x, j), t.Sxj(x, j) * (target == 2 && j >= 2 ? 1 - rate : 1), 1e-12) << x << "," << j;
    double total = 0;
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= 4; ++j) total += h.Ph(x, j);
    EXPECT_NEAR(total, 1, 1e-12);
    // The yield of one newborn: the eggs laid (R0), or the newborn reaching stage 2.
    EXPECT_NEAR(h.HarvestPerEgg, rate * (target == 1 ? R0 : c.Reaching(2)), 1e-12);
    const double Y = 500 / h.HarvestPerEgg;
    for (int j = 1; j <= 4; ++j) {
      const double behind = target == 2 && j >= 2 ? 1 - rate : 1;
      EXPECT_NEAR(h.StageTotal(j), Y * c.DaysIn(j) * behind, 1e-9 * Y) << j;
    }
    for (const char* f : {"_0L_harvest_0-Basic_output.txt", "_0L_harvest_1-system_output.txt", "_0K-fig_harvest_G.txt",
                          "_0K-fig_harvest_D.txt", "_0K-fig_harvest_F.txt", "_0K-fig_harvest_SASD.txt",
                          "_0K-fig_harvest_Sxj.txt"})
      EXPECT_TRUE(std::filesystem::exists(c.dir.file(std::string("colony") + f))) << f;
    EXPECT_TRUE(c.P.Met("Job done."));
  }
}

TEST(Harvest, CostsOfTheStableColony) {
  Colony c;
  c.S->header.RegularLifeTable = "No";
  const double cost[] = {0, 0.5, 1.5, 2, 3};  // stages 1..3, male in row 2
  for (int j = 1; j <= 3; ++j) c.S->header.StageRearingCost(1, j) = cost[j];
  c.S->header.StageRearingCost(2, 3) = cost[4];
  c.Answer(1, c.S->ws.tables.LastAge);
  c.Harvest();
  const auto& h = c.S->harvest;
  const double Y = 500 / h.HarvestPerEgg;
  double total = 0;
  for (int j = 1; j <= 4; ++j) total += cost[j] * Y * c.DaysIn(j);
  EXPECT_NEAR(h.TotalCost, total, 1e-9 * total);
  EXPECT_NEAR(h.StageRecruits(2), Y * c.Reaching(2), 1e-9 * Y);
  const std::string words = test::ReadFile(c.dir.file("colony_0L_harvest_1-system_output.txt"));
  EXPECT_NE(words.find("Fecundity of female is harvested per time unit. Harvest rate ="), std::string::npos);
  EXPECT_NE(words.find("Total cost (per time unit) for the mass-rearing system, i.e., sum of C(j) ="),
            std::string::npos);
}

TEST(Harvest, EndingsAndConservation) {
  {  // Too short a rearing system: R0 to the last age at most 1.
    Colony c;
    int age = 0;
    while (c.S->ws.params.CumLxMx(age + 1) <= 1) ++age;
    c.Answer(1, age);
    try {
      c.Harvest();
      FAIL();
    } catch (const ProgramEnd& e) {
      EXPECT_NE(e.message.find("You cannot setup a mass-rearing system with this last harvest age."), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(c.dir.file("colony_0L_harvest_1-system_output.txt")));
  }
  {  // A last age beyond the table, and a second calculation in the session, end with a message.
    Colony c;
    c.Answer(1, c.S->ws.tables.LastAge + 1);
    EXPECT_THROW(c.Harvest(), ProgramEnd);
    c.Answer(2, c.S->ws.tables.LastAge);
    c.Harvest();
    c.Answer(2, c.S->ws.tables.LastAge);
    try {
      c.Harvest();
      FAIL();
    } catch (const ProgramEnd& e) {
      EXPECT_EQ(e.message.rfind("Stop:", 0), 0u);
    }
  }
  {  // Males harvested: R0 never falls, the rate stays 0 and the division is refused.
    Colony c;
    c.Answer(4, c.S->ws.tables.LastAge);
    c.P.Answer("Harvesting male?", "No").Answer("Harvesting male adult", "7").Answer("Harvesting male adult", "0.2");
    EXPECT_THROW(c.Harvest(), ProgramEnd);
    EXPECT_EQ(c.S->harvest.OptimalHarvestRate, 0);
    EXPECT_NEAR(c.S->harvest.FecundityLossOnMaleHarvest, 0.8, 1e-15);
    int asked = 0;
    for (const auto& d : c.P.With("Harvesting male adult")) asked += d.kind == "InputBox";
    EXPECT_EQ(asked, 2);  // the answer out of range is asked again
  }
  {  // R0 - SE from the bootstrap's file; a garbled file reads nothing.
    Colony c;
    const std::string se = c.dir.file("se.txt");
    const double R0 = c.S->params.R0_Basic;
    test::WriteFile(se, "\"25C\"\n\"R0\",\"SE of Boot(R0)\",\"R0(0.025)\",\"R0(0.15866)\"\n" + FullPrecision(R0) +
                            ",0.75,5,6\n");
    c.Answer(1, c.S->ws.tables.LastAge, "Ro-SE");
    c.P.Answer("Open Z-Ro and bootSE for harvest.txt", se);
    c.Harvest();
    EXPECT_NEAR(c.S->harvest.TargetR0, R0 - 0.75, 1e-12);
    EXPECT_NEAR(c.S->harvest.ScaledR0Sum, R0 - 0.75, 1e-9);
    EXPECT_TRUE(std::filesystem::exists(c.dir.file("colony_0L_harvest_0-Basic-conserved_output.txt")));
    test::WriteFile(se, "\"25C\"\n\"R0\",\"SE\"\n");
    Colony d;
    d.Answer(1, d.S->ws.tables.LastAge, "Ro(0.025)");
    d.P.Answer("Open Z-Ro and bootSE for harvest.txt", se);
    EXPECT_THROW(d.Harvest(), ProgramEnd);
    EXPECT_TRUE(d.P.Met("Read Ro and SE first"));
  }
}

// The cohort with each female's eggs of a day split between two types (a half, rounded down,
// and the rest).
std::vector<PoolIndividual> EggsOfType(int type) {
  auto cohort = boottest::SmallCohort();
  for (auto& a : cohort)
    for (double& e : a.eggs) e = type == 1 ? std::floor(e / 2) : e - std::floor(e / 2);
  return cohort;
}

TEST(Contribution, TypesThatSplitTheEggsAddUpToThePooledCohort) {
  test::TempDir dir;
  Prompts P;
  const auto pooled = boottest::BasicRunOf(dir.file("pooled.txt"), 3, boottest::SmallCohort(), P);
  const PopulationParameters& pp = pooled->params;
  double r = 0, lambda = 0, R0 = 0;
  for (int type : {0, 1, 2}) {
    const std::string name = "type" + std::to_string(type) + ".txt";
    auto S = type == 0 ? boottest::BasicRunOf(dir.file(name), 3, boottest::SmallCohort(), P)
                       : boottest::BasicRunOf(dir.file(name), 3, EggsOfType(type), P);
    if (type == 2) {  // the parameters entered
      P.Answer("1. Read population parameters of all offspring", "")
          .Answer("Intrinsic rate of increase of all offspring =", FullPrecision(pp.R_Basic))
          .Answer("Net reproductive rate of all offspring =", FullPrecision(pp.R0_Basic));
    } else {
      P.Answer("1. Read population parameters of all offspring", dir.file("pooled_ZZ-population parameters.txt"));
    }
    FurtherAnalysisForms(*S, P).ContributionPartition_Click();
    const auto& c = S->contribution;
    if (type == 0) {
      // The pooled cohort against itself: 1, and its own reproductive values.
      EXPECT_NEAR(c.ContributionToR, 1, 1e-6);
      EXPECT_NEAR(c.ContributionToLambda, 1, 1e-6);
      EXPECT_DOUBLE_EQ(c.ContributionToR0, 1);
      for (int x = 0; x <= S->ws.tables.LastAge; ++x) {
        EXPECT_NEAR(c.ContributionVx(x), S->ws.params.Vx(x), 1e-12 * std::fabs(S->ws.params.Vx(x))) << x;
        for (int j = 1; j <= 3; ++j)
          EXPECT_NEAR(c.ContributionVxj(x, j), S->params.VxjBasic(x, j), 1e-12 * std::fabs(S->params.VxjBasic(x, j)));
      }
      continue;
    }
    r += c.ContributionToR;
    lambda += c.ContributionToLambda;
    R0 += c.ContributionToR0;
    EXPECT_TRUE(std::filesystem::exists(dir.file("type" + std::to_string(type) + "-Contribution table.txt")));
  }
  EXPECT_NEAR(r, 1, 1e-6);
  EXPECT_NEAR(lambda, 1, 1e-6);
  EXPECT_NEAR(R0, 1, 1e-12);
}

TEST(Contribution, GarbledFileOrZeroR0EndsWithAMessage) {
  test::TempDir dir;
  Prompts P;
  auto S = boottest::BasicRunOf(dir.file("a.txt"), 3, boottest::SmallCohort(), P);
  test::WriteFile(dir.file("zz.txt"), "\"Intrinsic rate\",abc\n");
  P.Answer("1. Read population parameters of all offspring", dir.file("zz.txt"));
  FurtherAnalysisForms(*S, P).ContributionPartition_Click();
  EXPECT_TRUE(P.Met("1. Read population parameters of all offspring"));
  EXPECT_FALSE(std::filesystem::exists(dir.file("a-Contribution table.txt")));
  P.Answer("1. Read population parameters of all offspring", "")
      .Answer("Intrinsic rate of increase of all offspring =", "")
      .Answer("Net reproductive rate of all offspring =", "");
  EXPECT_THROW(FurtherAnalysisForms(*S, P).ContributionPartition_Click(), ProgramEnd);
}

}  // namespace
}  // namespace korvan
