// Life expectancy e(x,j) and e(x), matrix E and its files.
#include <gtest/gtest.h>

#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "engine/life_table_engine.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::LoadCohort;

struct EngineRun {
  SessionStore S;
  test::OrderedPrompts P;
  LifeTableEngine E{S, P};
  EngineRun(const std::vector<test::Individual>& cohort, int m, double tu = 1) {
    LoadCohort(S, m, cohort);
    S.settings.TimeUnit = tu;
    S.ws.run.IsResamplingFlag = "y";
    E.Life01();
    E.Life03();
    E.Life04();
    E.AgeStageLifeExpectancy();
  }
};

TEST(LifeExpectancy, HandCohortCells) {
  EngineRun r(test::WalkCohort(), 3);
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
    const auto& L = r.S.ws.lifeTable;
    EXPECT_DOUBLE_EQ(L.Exj(5, 3), 4.0 / 3);
    EXPECT_DOUBLE_EQ(L.Exj(8, 3), 1.0 / 3);
    EXPECT_DOUBLE_EQ(L.Ex(0), 5.0 / 3);
  }
  // Two females, adult at ages 2..3 and 6..7: the cells (4,2), (5,2) lie in the stage's range
  // without individuals and keep the former value; the scratch walk is cleared.
  SessionStore S;
  test::OrderedPrompts P;
  LifeTableEngine E(S, P);
  LoadCohort(S, 2, {{"F", {2, 2}, {}}, {"F", {6, 2}, {}}});
  S.ws.run.IsResamplingFlag = "y";
  E.Life01();
  E.Life03();
  E.Life04();
  S.ws.lifeTable.Exj(4, 2) = 42;
  S.ws.lifeTable.Survivors(4, 2) = 9;
  E.AgeStageLifeExpectancy();
  EXPECT_EQ(S.ws.lifeTable.Exj(4, 2), 42);
  EXPECT_EQ(S.ws.lifeTable.Exj(2, 2), 2);
  EXPECT_EQ(S.ws.lifeTable.Survivors(4, 2), 0);
}

TEST(LifeExpectancy, MatrixETableAndItsFigureFile) {
  test::TempDir dir;
  EngineRun r(test::WalkCohort(), 3);
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
