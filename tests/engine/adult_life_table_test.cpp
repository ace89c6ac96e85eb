#include <gtest/gtest.h>

#include <filesystem>

#include "engine/stage_statistics.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

struct AdultRun {
  Session S;
  test::OrderedPrompts P;
  StageStatsEngine e{S, P};
  test::TempDir dir;
  explicit AdultRun(double tu, const std::vector<test::Individual>& cohort = test::HandCohort()) {
    test::LoadHandCohort(S, cohort, tu);
    S.identity.DataFileBase = dir.file("c");
    e.CountOvipositionDays();
    e.PreadultMean();
    e.Life10();
    e.CalculateAdultLifeTable();
    e.WriteAdultAgeSpecificLifeTable();
    e.WriteAdultAgeSpecificLifeTableB();
    e.WriteFemaleLifeTableBasedOnPreAandSa();
  }
  std::string File(const std::string& suffix) const { return test::ReadFile(dir.file("c" + suffix)); }
};

// Hand cohort: females alive by adult day 4 4 3 2 1 of 4 -> l = 1 1 0.75 0.5 0.25, then 0;
// means by adult day 1.25 1.75 11/3 0 2. Preadult: 5 of 7 finished the larva, mean 5.2 days,
// rounded 5. From birth: l = 1 for age 0, 5/7 for ages 1..4, then 5/7 times the adult l(x).
TEST(AdultAgeLifeTable, TablesOnAdultAgeAndFromBirthByHand) {
  AdultRun run(1);
  const auto& r = run.S.stageStats;
  const double lx[] = {1, 1, 0.75, 0.5, 0.25, 0};
  const double mx[] = {1.25, 1.75, 11.0 / 3, 0, 2, 0};
  for (int k = 0; k <= 5; ++k) {
    EXPECT_EQ(r.AdultAge(k), k);
    EXPECT_NEAR(r.AdultLx(k), lx[k], 1e-12) << k;
    EXPECT_NEAR(r.AdultMx(k), mx[k], 1e-12) << k;
  }
  EXPECT_EQ(r.PreadultAgeRounded, 5);
  EXPECT_NEAR(r.PreadultSurvival, 5.0 / 7, 1e-12);
  EXPECT_EQ(r.BirthLx(0), 1);
  EXPECT_NEAR(r.BirthLx(4), 5.0 / 7, 1e-12);
  EXPECT_EQ(r.BirthMx(4), 0);
  EXPECT_NEAR(r.BirthLx(7), 5.0 / 7 * 0.75, 1e-12);
  EXPECT_NEAR(r.BirthMx(7), 11.0 / 3, 1e-12);
  EXPECT_EQ(r.BirthAge(9), 9);

  const std::string b = run.File("_21B_Adult Age-spec life table without preadult mortality.txt");
  EXPECT_EQ(b.rfind("Project: Hand cohort\nPreadult survival rate = 0.714285714285714 \n"
                    "Preadult age (rounded to integer) = 5 \n"
                    "Notewell! This age-specific life table is calculated based on adult age\n",
                    0),
            0u);
  EXPECT_NE(b.find("It is a wrong manipulation.  You should not use this file.\nAdult age,l(x),m(x),l(x)m(x)\n"
                   "0,1,1.25,1.25\n1,1,1.75,1.75\n2,0.75,3.66666666666667,2.75\n3,0.5,0,0\n4,0.25,2,0.5\n5,0,0,0\n"),
            std::string::npos);
  const std::string a = run.File("_21A_Adult Age-spec life table with preadult mortality.txt");
  EXPECT_NE(a.find("Preadult survival rate = 0.714285714285714 . Max female longevity = 10 \n"), std::string::npos);
  EXPECT_NE(a.find("Adult age (from birth),l(x),m(x)\n5,0.714285714285714,1.25\n"), std::string::npos);
  EXPECT_NE(a.find("9,0.178571428571429,2\n10,0,0\n"), std::string::npos);
  const std::string c = run.File("_21C_Age-life table with preA time and lx.txt");
  EXPECT_NE(c.find("Adult age,l(x),m(x),l(x)m(x)\n0,1,0,0\n1,0.714285714285714,0,0\n"), std::string::npos);
  EXPECT_NE(c.find("\n10,0,0,0\n"), std::string::npos);
}

// With 0.5 the adult ages are rounded half to even: 0, 0.5, 1, 1.5, 2 become 0 0 1 2 2.
TEST(AdultAgeLifeTable, AgesInHalfDaysRoundHalfToEven) {
  AdultRun run(0.5);
  const auto& r = run.S.stageStats;
  const int ages[] = {0, 0, 1, 2, 2, 2};
  for (int k = 0; k <= 5; ++k) EXPECT_EQ(r.AdultAge(k), ages[k]) << k;
  // Preadult mean 2.6 days rounds to 3.
  EXPECT_EQ(r.PreadultAgeRounded, 3);
}

TEST(AdultAgeLifeTable, NoFilesWhenNoFemaleLaidEggsOrUnderNooutput) {
  AdultRun run(1, {{"F", {2, 2, 3}, {0, 0}}, {"M", {2, 2, 3}, {}}});
  {
    Session S;
    test::OrderedPrompts P;
    test::TempDir dir;
    test::LoadHandCohort(S, test::HandCohort());
    S.identity.DataFileBase = dir.file("c");
    S.options.OutputLevel = "Nooutput";
    StageStatsEngine e(S, P);
    e.CountOvipositionDays();
    e.PreadultMean();
    e.Life10();
    e.CalculateAdultLifeTable();
    e.WriteAdultAgeSpecificLifeTable();
    e.WriteAdultAgeSpecificLifeTableB();
    e.WriteFemaleLifeTableBasedOnPreAandSa();
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
    EXPECT_EQ(S.stageStats.PreadultAgeRounded, 5);
  }
  EXPECT_FALSE(std::filesystem::exists(run.dir.file("c_21B_Adult Age-spec life table without preadult mortality.txt")));
  EXPECT_FALSE(std::filesystem::exists(run.dir.file("c_21A_Adult Age-spec life table with preadult mortality.txt")));
  EXPECT_FALSE(std::filesystem::exists(run.dir.file("c_21C_Age-life table with preA time and lx.txt")));
}

}  // namespace
}  // namespace korvan
