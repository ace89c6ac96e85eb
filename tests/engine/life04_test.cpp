// Survival, mortality, l(x), median ages, stage rates and the replicate's results; life
// expectancy e(x,j) and e(x), matrix E and its files.
#include <gtest/gtest.h>

#include "bootstrap/replicate_chain.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "engine/life_table_engine.h"
#include "store/faults.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::LoadCohort;

struct EngineRun {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E{S, P};
  explicit EngineRun(const std::vector<test::Individual>& cohort, int m = 3, double tu = 1) {
    LoadCohort(S, m, cohort, tu);
    S.ws.run.IsResamplingFlag = "y";  // the computing steps only
  }
  void Engine() {
    E.Life01();
    E.Life03();
    E.Life04();
  }
  EngineRun& Expectancy() {
    Engine();
    S.ws.run.IsResamplingFlag = "n";  // a resampling pass leaves life expectancy out
    E.AgeStageLifeExpectancy();
    return *this;
  }
};

TEST(Survival, HandCohortGivesPQMortalityAndLx) {
  EngineRun r(test::WalkCohort());
  r.S.ws.run.IsResamplingFlag = "n";
  r.S.settings.SpecificAge = 4;
  r.E.Life01();
  r.E.Life02();
  r.E.Life03();
  r.E.Life04Gosub0290();
  const auto& T = r.S.ws.tables;
  const auto& L = r.S.ws.lifeTable;
  // S1 is below m-1: p = g + d. p(0,1) = 1/2 + 1/4.
  EXPECT_DOUBLE_EQ(T.Pxj(0, 1), 0.75);
  EXPECT_DOUBLE_EQ(T.Qxj(0, 1), 0.25);
  EXPECT_DOUBLE_EQ(T.Pxj(1, 1), 1);
  // S2 is m-1: both adult moves count. p(3,2) = g 1/2 + d(3,3) 1/2 (the male's move).
  EXPECT_DOUBLE_EQ(T.Pxj(3, 2), 1);
  EXPECT_DOUBLE_EQ(T.Pxj(4, 2), 1);
  EXPECT_NEAR(T.Qxj(2, 2), 1.0 / 3, 1e-15);
  // Adults: p = g; the last day of each sex is a certain death.
  EXPECT_DOUBLE_EQ(T.Qxj(8, 3), 1);
  EXPECT_DOUBLE_EQ(T.Qxj(6, 4), 1);
  EXPECT_DOUBLE_EQ(T.Qxj(5, 4), 0);
  // Distribution of mortality: one death of four in each stage; it sums to 1.
  for (int j = 1; j <= 4; ++j) EXPECT_NEAR(L.StageDeathProb(j), 0.25, 1e-15) << j;
  EXPECT_NEAR(L.PreadultDeathProb, 0.5, 1e-15);
  EXPECT_NEAR(r.S.lifeTable.OriginalPreadultDeathProb, 0.5, 1e-15);
  const int deaths[9] = {1, 0, 1, 0, 0, 0, 1, 0, 1};
  for (int x = 0; x <= 8; ++x) EXPECT_EQ(L.AgeDeaths(x), deaths[x]) << x;
  // l(x) from the survivors 4,3,3,2,2,2,2,1,1.
  const double lx[9] = {1, .75, .75, .5, .5, .5, .5, .25, .25};
  for (int x = 0; x <= 8; ++x) {
    EXPECT_DOUBLE_EQ(T.Lx(x), lx[x]) << x;
    EXPECT_DOUBLE_EQ(r.S.basic.OriginalLx(x), lx[x]);
    EXPECT_DOUBLE_EQ(L.OneMinusLx(x), 1 - lx[x]);
  }
  EXPECT_DOUBLE_EQ(r.S.lifeTable.LxAtSpecificAge, 0.5);
  EXPECT_DOUBLE_EQ(r.S.lifeTable.MedianAge, 3);
  // Stage rates: entry 1, 3/4, 1/4, 1/4; S1 -> S2 3/4; S2 -> adult (1+1)/(4*3/4).
  EXPECT_DOUBLE_EQ(L.StageEntry(2), 0.75);
  EXPECT_DOUBLE_EQ(L.StageEntry(3), 0.25);
  EXPECT_DOUBLE_EQ(L.StageEntry(4), 0.25);
  EXPECT_DOUBLE_EQ(L.StageSurvival(2), 0.5);
  EXPECT_DOUBLE_EQ(L.StageSurvival(3), 0);
  EXPECT_DOUBLE_EQ(L.StageToNext(1), 0.75);
  EXPECT_DOUBLE_EQ(L.StageToNext(2), 2.0 / 3);
  EXPECT_DOUBLE_EQ(r.S.lifeTable.OriginalStageToNext(2), 2.0 / 3);
  EXPECT_DOUBLE_EQ(L.MeanFecundityFromF, 8);
}

TEST(Survival, TwoStagesOfFemalesAndTheMedianInFractionalTimeUnits) {
  // m = 2, females only: p(x,1) = g + d(x,1) + d(x,2), with d(x,2) = 0.
  {
    EngineRun r({{"F", {2, 2}, {}}, {"F", {1, 1}, {}}, {"N", {-2}, {}}}, 2);
    r.Engine();
    const auto& T = r.S.ws.tables;
    EXPECT_DOUBLE_EQ(T.Gxj(0, 1), 2.0 / 3);
    EXPECT_DOUBLE_EQ(T.Dxj(0, 1), 1.0 / 3);
    EXPECT_DOUBLE_EQ(T.Pxj(0, 1), 1);
    EXPECT_DOUBLE_EQ(T.Pxj(1, 1), 0.5);  // g 0 + d(1,1) 1/2, the other one died
    for (int x = 0; x <= 3; ++x) EXPECT_EQ(T.Dxj(x, 2), 0);
  }
  // l(x) is exactly 0.5 from age 10 on: the median is 10 time units, in days 10 with a time
  // unit of 1 and 10/3 = 3.33 with 0.3.
  for (double tu : {1.0, 0.3, 0.5}) {
    EngineRun r({{"F", {10}, {}}, {"F", {20}, {}}}, 1);
    r.S.ws.run.IsResamplingFlag = "n";
    r.S.settings.TimeUnit = tu;
    r.S.settings.SpecificSurvival = 0.4;  // never reached: LastAge, unrounded
    r.E.Life01();
    r.E.Life03();
    r.E.Life04Gosub0290();
    const double median = tu == 1 ? 10 : tu == 0.3 ? 3.33 : 5;
    EXPECT_DOUBLE_EQ(r.S.lifeTable.MedianAge, median) << tu;
    const double last = tu == 0.3 ? 19.0 / 3 : 19 * tu;
    EXPECT_DOUBLE_EQ(r.S.lifeTable.SpecificSurvivalAge, last) << tu;
  }
}

TEST(Survival, ReplicatesFileTheirResultsUnderTheirNumberAndSumLx) {
  Session S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  S.settings.SpecificAge = 1;
  S.settings.SpecificSurvival = 0.3;
  S.lifeTable.OriginalLastAge = 4;  // the Basic EngineRun's last age
  S.ws.run.IsResamplingFlag = "y";
  S.ws.run.ResampleKind = "b";
  // Replicate 1: l = 1, 1, .5, .5 (LastAge 3). Replicate 2: l = 1, .5 (LastAge 1).
  LoadCohort(S, 1, {{"F", {2}, {}}, {"F", {4}, {}}});
  ReplicateChain chain(S, P);
  S.ws.run.Boot = 1;
  E.Life01();
  E.Life03();
  E.Life04();
  chain.FileReplicate();
  LoadCohort(S, 1, {{"F", {1}, {}}, {"F", {2}, {}}});
  S.ws.run.Boot = 2;
  S.ws.boot.sample.Clear();
  E.Life01();
  E.Life03();
  E.Life04();
  chain.FileReplicate();
  auto& B = S.lifeTable.BootLists();
  EXPECT_DOUBLE_EQ(B.BootLxAtSpecificAge(1), 1);
  EXPECT_DOUBLE_EQ(B.BootLxAtSpecificAge(2), 0.5);
  EXPECT_DOUBLE_EQ(B.BootMedianAge(1), 2);
  EXPECT_DOUBLE_EQ(B.BootMedianAge(2), 1);
  EXPECT_DOUBLE_EQ(B.BootSpecificSurvivalAge(1), 3);  // l(3) = .5 > .3: LastAge
  EXPECT_DOUBLE_EQ(B.BootStageDeathProb(1, 2), 1);
  const auto& L = S.ws.lifeTable;
  const double sum[6] = {2, 1.5, .5, .5, 0, 0};
  const double sq[6] = {2, 1.25, .25, .25, 0, 0};
  const double hi[6] = {1, 1, .5, .5, 0, 0};
  const double lo[6] = {1, .5, 0, 0, 0, 0};
  for (int x = 0; x <= 5; ++x) {
    EXPECT_DOUBLE_EQ(L.LxSum(x), sum[x]) << x;
    EXPECT_DOUBLE_EQ(L.LxSumSquares(x), sq[x]) << x;
    EXPECT_DOUBLE_EQ(L.LxMax(x), hi[x]) << x;
    EXPECT_DOUBLE_EQ(L.LxMin(x), lo[x]) << x;
  }
  EXPECT_EQ(L.LxReplicates, 2);
  // A jackknife pass adds nothing to the sums; the Basic EngineRun's l(x) stands untouched.
  S.ws.run.ResampleKind = "j";
  S.ws.run.Boot = 3;
  E.Life04();
  EXPECT_EQ(L.LxReplicates, 2);
  EXPECT_EQ(S.basic.OriginalLx(0), 0);
}

TEST(Survival, AReplicateThatRunsOutOfIndividualsAsksWhetherToGoOn) {
  auto make = [](EngineRun& r) {
    r.S.ws.run.Boot = 7;
    r.S.ws.run.ResampleKind = "b";
    r.E.Life01();
    r.E.Life02();
    r.S.ws.tables.LastAge = 10;  // the replicate's individuals are all dead at age 9
    r.E.Life03();
  };
  {
    EngineRun r(test::WalkCohort());
    make(r);
    r.P.answers = {"Yes"};
    r.E.Life04();
    ASSERT_EQ(r.P.titles.size(), 1u);
    EXPECT_EQ(r.P.titles[0], "Error in data file");
    EXPECT_EQ(r.P.texts[0],
              "Bootstrap no. 7. Survival rate =0, at age = 9.\nSampled individuals:1 2 3 4 \n"
              "Effective fecundity =8\nDo you want to continue?\nYes = continue.  No = stop.");
    EXPECT_EQ(r.S.ws.lifeTable.OneMinusLx(9), 1);
    // It leaves the step at once: no median filed.
    EXPECT_EQ(r.S.lifeTable.BootLists().BootMedianAge(7), 0);
  }
  {
    EngineRun r(test::WalkCohort());
    make(r);
    r.P.answers = {"No"};
    EXPECT_THROW(r.E.Life04(), ProgramEnd);
  }
}

TEST(Survival, ACohortThatDiesOutInTheFirstStageEndsTheProgram) {
  test::TempDir dir;
  EngineRun r({{"N", {-2}, {}}, {"N", {-1}, {}}}, 4);
  r.S.identity.DataFileBase = dir.file("c");
  try {
    r.Engine();
    FAIL() << "the run should have ended";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "All insects died in stage 2. Program ended.");
    EXPECT_EQ(e.title, "All insects died.");
  }
  const std::string sx = test::ReadFile(dir.file("c_1_Fig_Sx.txt"));
  EXPECT_EQ(sx,
            "\"Age-stage survival rate\"\nAge,S1,S2,S3,Female,Male\n"
            "0,1,0,0,0,0\n1,0.5,0,0,0,0\n2, 0, 0, 0, 0, 0\n");
}

// A Basic EngineRun's tables, numbered through the file, and the figure files by output level.
TEST(Survival, BasicRunWritesTheTablesAndTheFigureFiles) {
  test::TempDir dir;
  auto basic = [&](const std::vector<test::Individual>& cohort, const std::string& level, const std::string& base) {
    EngineRun r(cohort);
    r.S.ws.run.IsResamplingFlag = "n";
    r.S.options.OutputLevel = level;
    r.S.identity.DataFileBase = dir.file(base);
    r.S.channels.MainOutput.Open(dir.file(base + "_0A_Life Table_Output.txt"));
    r.S.channels.MainTableNumber = 2;
    r.Engine();
    r.S.channels.MainOutput.Close();
    return test::ReadFile(dir.file(base + "_0A_Life Table_Output.txt"));
  };
  const std::string main = basic(test::WalkCohort(), "Yes", "a");
  // Tables follow each other with running numbers (there is no consumption table).
  const char* titles[] = {
      "Table 3 . Age-stage-specific survival - Actual number (Matrix N)",
      "Table 4 . Age-stage-specific survival - Actual number (Matrix N) with sum",
      "Table 5 . Age-stage-specific growth probability g(x,j) (Matrix G)",
      "Table 8 . Age-stage-specific development number nd(x,j) (Matrix Nd) ",
      "Table 9 . Age-stage-specific death number (Matrix N-dead)",
      "Table 10 . Age-stage-specific fecundity f(x,j) (Matrix F)",
      "Table 12 . Age-stage-specific cumulative total fecundity (Matrix Ft,cumu(x,j))",
      "Table 15 . Survival rate to each age-stage interval (Matrix S)",
      "Table 16 . Age-specific survival rate l(x)",
      "Table 23 . Stage survival rate.  It is the probability that a newborn",
      "Table 24 . Age-stage specific life expectancy (matrix E)"};
  std::size_t at = 0;
  for (const char* t : titles) {
    const auto found = main.find(t, at);
    EXPECT_NE(found, std::string::npos) << t;
    if (found != std::string::npos) at = found;
  }
  EXPECT_NE(main.find("Sum[n(x,j)]=  20 . This is the mean longevity of all individuals."), std::string::npos);
  EXPECT_NE(main.find("Sum[n(x,j)]/ 4 =  5 . It is the mean longevity."), std::string::npos);
  EXPECT_NE(main.find("Total death =  4 . This must equal to the total individuals  4 ."), std::string::npos);
  EXPECT_NE(main.find("Ftotal = 8  (Total eggs laid by the whole population)."), std::string::npos);
  EXPECT_NE(main.find(" Age S1       S2       Female   Male"), std::string::npos);
  EXPECT_NE(main.find(" Age S1->S2   S2->Fem  S2->Mal  Male"), std::string::npos);
  EXPECT_NE(main.find("The probability from pupa to female is 0.3333 "), std::string::npos);
  EXPECT_EQ(main.find("Matrix LTC"), std::string::npos);  // no costs in the file

  // Which files each output level writes: stats_basic_run_files_test.cpp.
  const std::string d = test::ReadFile(dir.file("a_Fig_Dxj.txt"));
  EXPECT_EQ(d.substr(0, d.find('\n', d.find('\n') + 1) + 1),
            "\"Development transition probability (matrix D)\"\nAge,S1 to S2,S2 to Female,S2 to Male,Male\n");
  const std::string nxj = test::ReadFile(dir.file("a_1a_Fig_Nxj.txt"));
  EXPECT_NE(nxj.find("\n4,0,1,0,1\n"), std::string::npos);
  EXPECT_NE(nxj.find("\n9,0,0,0,0\n"), std::string::npos);
  const std::string lx = test::ReadFile(dir.file("a_Fig_Age_lx_Kx_qx.txt"));
  EXPECT_NE(lx.find("\n2,0.75,0.176091259055681,0.333333333333333,0.583333333333333\n"), std::string::npos);

  // No female: no fecundity tables.
  const std::string noFemale = basic({{"M", {1, 1, 2}, {}}, {"N", {1, -1}, {}}}, "No", "b");
  EXPECT_EQ(noFemale.find("(Matrix F)"), std::string::npos);
  EXPECT_EQ(noFemale.find("Ft(x,j)"), std::string::npos);
  EXPECT_NE(noFemale.find("(Matrix U)"), std::string::npos);
}

// Rearing costs 1, 2, 3 (female) and 5 (male) per day: the walk cohort lives 6, 7, 4 and 3
// days in these stages, so the study cost 6 + 14 + 12 + 15 = 47; the extra cost is overwritten
// at each cell and ends at the last male cell, s(6,male) = 1/4: 47 + 5/4.
TEST(Survival, RearingCostsOfTheCohortInTheTablesAndTheFigureFile) {
  test::TempDir dir;
  EngineRun r(test::WalkCohort());
  auto& H = r.S.header;
  H.RegularLifeTable = "No";
  H.StageRearingCost(1, 1) = 1;
  H.StageRearingCost(1, 2) = 2;
  H.StageRearingCost(1, 3) = 3;
  H.StageRearingCost(2, 3) = 5;
  r.S.ws.run.IsResamplingFlag = "n";
  r.S.identity.DataFileBase = dir.file("c");
  r.S.channels.MainOutput.Open(dir.file("main.txt"));
  r.Engine();
  r.S.channels.MainOutput.Close();
  EXPECT_DOUBLE_EQ(r.S.ws.lifeTable.CohortCost, 47);
  EXPECT_DOUBLE_EQ(r.S.ws.lifeTable.CostExtra, 48.25);
  const std::string main = test::ReadFile(dir.file("main.txt"));
  EXPECT_NE(main.find("Sum[LTC(x,j)]=  47 . This is the cost of this life table study."), std::string::npos);
  EXPECT_NE(main.find("Sum[LTC(x,j)]/ 4 =  11.75 . It is the cost of one individual."), std::string::npos);
  EXPECT_NE(main.find("Rearing cost of each age-stage interval (Matrix RC)"), std::string::npos);
  // RC(x,j) = s(x,j) times the stage's cost: at age 4, S2 1/4 * 2 and the male 1/4 * 5.
  EXPECT_NE(test::ReadFile(dir.file("c_1a_Fig_RCxj.txt")).find("\n4,0,0.5,0,1.25\n"), std::string::npos);
}

TEST(LifeExpectancy, HandCohortCells) {
  EngineRun r(test::WalkCohort(), 3);
  r.Expectancy();
  const auto& L = r.S.ws.lifeTable;
  // The female on her last day: one time unit. From her first adult day: 4.
  EXPECT_DOUBLE_EQ(L.Exj(8, 3), 1);
  EXPECT_DOUBLE_EQ(L.Exj(5, 3), 4);
  EXPECT_DOUBLE_EQ(L.Exj(4, 4), 3);
  // (4,2) holds only individual 1, who lives ages 4..8.
  EXPECT_DOUBLE_EQ(L.Exj(4, 2), 5);
  // (3,2) holds individuals 1 and 2; both adult stages are reached, each weighted by its own
  // d: 1 + 1/2 (S2) + 4 * 1/2 (female path) + 3 * 1/2 (male path) = 5.
  EXPECT_DOUBLE_EQ(L.Exj(3, 2), 5);
  // (2,2): 1 + 2/3 + 1/3 + 4 * 1/3 + 3 * 1/3 = 13/3.
  EXPECT_NEAR(L.Exj(2, 2), 13.0 / 3, 1e-12);
  // From the newborn's cell the walk reproduces s(x,j): e(0,1) is the mean longevity.
  EXPECT_NEAR(L.Exj(0, 1), L.MeanLongevitySum, 1e-12);
  EXPECT_NEAR(L.Exj(0, 1), 5, 1e-12);
  // e(x) from l(x) = 1, .75, .75, .5, .5, .5, .5, .25, .25 summed from the end.
  EXPECT_DOUBLE_EQ(L.Ex(8), 1);
  EXPECT_DOUBLE_EQ(L.Ex(7), 2);
  EXPECT_DOUBLE_EQ(L.Ex(3), 2.5 / 0.5);
  EXPECT_DOUBLE_EQ(L.Ex(0), 5);
}

TEST(LifeExpectancy, FractionalTimeUnitsAndCellsWithoutIndividuals) {
  // With a time unit of 0.3 the values are divided by 3: 4 time units are 4/3 days.
  {
    EngineRun r(test::WalkCohort(), 3, 0.3);
    r.Expectancy();
    const auto& L = r.S.ws.lifeTable;
    EXPECT_DOUBLE_EQ(L.Exj(5, 3), 4.0 / 3);
    EXPECT_DOUBLE_EQ(L.Exj(8, 3), 1.0 / 3);
    EXPECT_DOUBLE_EQ(L.Ex(0), 5.0 / 3);
  }
  // Two females, adult at ages 2..3 and 6..7: the cells (4,2), (5,2) lie in the stage's range
  // without individuals and keep the former value; the scratch walk is cleared.
  EngineRun r({{"F", {2, 2}, {}}, {"F", {6, 2}, {}}}, 2);
  auto& L = r.S.ws.lifeTable;
  r.Engine();
  L.Exj(4, 2) = 42;
  L.Survivors(4, 2) = 9;
  r.S.ws.run.IsResamplingFlag = "n";
  r.E.AgeStageLifeExpectancy();
  EXPECT_EQ(L.Exj(4, 2), 42);
  EXPECT_EQ(L.Exj(2, 2), 2);
  EXPECT_EQ(L.Survivors(4, 2), 0);
}

TEST(LifeExpectancy, MatrixETableAndItsFigureFile) {
  test::TempDir dir;
  EngineRun r(test::WalkCohort(), 3);
  r.Expectancy();
  auto& S = r.S;
  S.identity.DataFileBase = dir.file("c");
  S.channels.MainOutput.Open(dir.file("main.txt"));
  S.channels.MainPageNumber = 4;
  S.channels.MainTableNumber = 9;
  // Equal maxima: the youngest age, then the lowest stage, stands.
  auto& L = S.ws.lifeTable;
  L.Exj(0, 1) = 5;
  L.Exj(2, 4) = 7;
  L.Exj(2, 2) = 7;
  L.Exj(3, 1) = 7;
  r.E.PrintMatrixExj();
  S.channels.MainOutput.Close();
  EXPECT_EQ(L.NewbornExj, 5);
  EXPECT_EQ(L.MaxExj, 7);
  EXPECT_EQ(L.MaxExjAge, 2);
  EXPECT_EQ(L.MaxExjStage, 2);
  const std::string main = test::ReadFile(dir.file("main.txt"));
  EXPECT_NE(main.find("Page 5 "), std::string::npos);
  EXPECT_NE(main.find("Table 10 . Age-stage specific life expectancy (matrix E)"), std::string::npos);
  EXPECT_NE(main.find("Life expectancy of newborn, E(0,1)= 5 "), std::string::npos);
  EXPECT_NE(main.find("Maximal life expectancy Max(Exj)= 7  at age  2 and stage  2 ."), std::string::npos);
  EXPECT_NE(main.find("e(x,j) is the life expectancy of individuals of age x and stage j."), std::string::npos);
  // Age 0 lies outside S2's range (1..4): " - ".
  const auto row0 = main.find("\n 0 ");
  ASSERT_NE(row0, std::string::npos);
  EXPECT_NE(main.substr(row0, main.find('\n', row0 + 1) - row0).find(" - "), std::string::npos);

  r.E.AgeStageLifeExpectancy();
  r.E.PrintLifeExpectancy();
  const std::string fig = test::ReadFile(dir.file("c_3_Fig_Exj.txt"));
  EXPECT_EQ(fig.substr(0, fig.find('\n', fig.find('\n') + 1) + 1),
            "\"Age-stage life expectancy\"\nAge,S1,S2,Female,Male\n");
  EXPECT_NE(fig.find("\n8,0,0,1,0\n9,0,0,0,0\n"), std::string::npos);
  S.options.OutputLevel = "Nooutput";
  S.identity.DataFileBase = dir.file("d");
  r.E.PrintLifeExpectancy();
  EXPECT_FALSE(std::filesystem::exists(dir.file("d_3_Fig_Exj.txt")));
}

TEST(LifeExpectancy, SubMatricesOfTheChosenCell) {
  test::TempDir dir;
  EngineRun r(test::WalkCohort(), 3);
  r.Expectancy();
  auto& S = r.S;
  S.identity.DataFileBase = dir.file("c");
  S.ws.run.IsResamplingFlag = "n";
  S.options.WriteSubMatrix = "Yes";
  S.options.SubMatrixAge = 3;
  S.options.SubMatrixStage = 2;
  r.E.AgeStageLifeExpectancy();
  const std::string sub = test::ReadFile(dir.file("c_Sub_Sxj_age3 and stage2.txt"));
  // The walk from (3,2): s'(3,2) = 1, s'(4,2) = 1/2, s'(4,male) = 1/2, s'(5,F) = 1/2, ...
  EXPECT_EQ(sub.substr(0, sub.find('\n')), "\"Sub Age-stage survival rate for life expectancy\"");
  EXPECT_NE(sub.find("\n3,0,1,0,0\n4,0,0.5,0,0.5\n5,0,0,0.5,0.5\n"), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(dir.file("c_Sub_Gxj_age3 and stage2.txt")));
  EXPECT_TRUE(std::filesystem::exists(dir.file("c_Sub_Dxj_age3 and stage2.txt")));
}

}  // namespace
}  // namespace korvan
