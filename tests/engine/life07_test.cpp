#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>

#include "engine/stage_statistics.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

// A table of three ages: l(x) 1, 0.5, 0.25 and m(x) 0, 2, 4.
void SmallTable(Session& S, double tu) {
  S.settings.TimeUnit = tu;
  S.identity.ProjectName = "P";
  S.identity.UserName = "U";
  S.identity.TreatmentName = "T";
  S.header.StageCount = 2;
  S.header.StageName(1, 1) = "Nymph";
  S.header.StageName(1, 2) = "Female";
  S.header.StageName(1, 3) = "Male";
  S.ws.tables.LastAge = 2;
  const double lx[] = {1, 0.5, 0.25}, mx[] = {0, 2, 4};
  for (int x = 0; x <= 2; ++x) {
    S.ws.tables.Lx(x) = lx[x];
    S.ws.params.Mx(x) = mx[x];
  }
  S.ws.tables.Sxj(0, 1) = 1;
  S.ws.tables.Sxj(1, 2) = 0.25;
  S.ws.tables.Sxj(1, 3) = 0.25;
  S.ws.tables.Sxj(2, 2) = 0.25;
}

TEST(Life07, AgeSpecificFigureFileAndItsOutputLevel) {
  for (double tu : {1.0, 0.5}) {
    Session S;
    test::OrderedPrompts P;
    test::TempDir dir;
    SmallTable(S, tu);
    S.identity.DataFileBase = dir.file("c");
    StageStatsEngine e(S, P);
    e.Life07();
    const std::string expected =
        tu == 1 ? "0,1,0,0\n1,0.5,2,1\n2,0.25,4,1\n3,0,0,0\n" : "0,1,0,0\n0.5,0.5,2,1\n1,0.25,4,1\n1.5,0,0,0\n";
    EXPECT_EQ(test::ReadFile(dir.file("c_2a_Fig_Lx-Mx-LxMx.txt")),
              "\"P\"\n\"T\"\n\"U\"\n\"Notewell! This age-specific life table is calculated based on age-stage, "
              "two-sex life table\"\nAge,l(x),m(x),l(x)m(x)\n" +
                  expected);
  }
  Session S;
  test::OrderedPrompts P;
  test::TempDir dir;
  SmallTable(S, 1);
  S.identity.DataFileBase = dir.file("c");
  S.options.OutputLevel = "Nooutput";
  StageStatsEngine e(S, P);
  e.Life07();
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// A run that began an hour "later" on the clock went past midnight: 23 hours.
TEST(Life08, ElapsedTimePastMidnight) {
  Session S;
  test::OrderedPrompts P;
  const std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  S.identity.RunStartHour = (tm.tm_hour + 1) % 24;
  S.identity.RunStartMinute = tm.tm_min;
  S.identity.RunStartSecond = tm.tm_sec;
  StageStatsEngine(S, P).Life08();
  EXPECT_EQ(S.stageStats.ElapsedHours, 23);
  EXPECT_EQ(S.stageStats.ElapsedMinutes, 0);
}

}  // namespace
}  // namespace korvan
