#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "engine/stage_statistics.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

// Runs the statistics and their tables in the order of a Basic Run and returns the report.
std::string Report(Session& S, const test::TempDir& dir) {
  test::OrderedPrompts P;
  StageStatsEngine e(S, P);
  S.identity.DataFileBase = dir.file("cohort");
  S.channels.MainOutput.Open(dir.file("cohort_0A_Life Table_Output.txt"));
  e.CountOvipositionDays();
  e.PreadultMean();
  e.Life10();
  e.Life11();
  e.Life12();
  e.APOPandTPOP();
  e.PrintAPOPandTPOP();
  e.AgeFecundityFromBirth();
  e.CountOvipositionPeriod();
  e.Life12PrintAgeFecundityFromBirth();
  S.channels.MainOutput.Close();
  return test::ReadFile(dir.file("cohort_0A_Life Table_Output.txt"));
}

bool HasLine(const std::string& text, const std::string& line) {
  std::istringstream in(text);
  std::string l;
  while (std::getline(in, l))
    if (l == line) return true;
  return false;
}

// The tables' order in a whole run: stats_basic_run_files_test.cpp.
TEST(StageStatisticsReport, TablesFollowEachOtherNumberedWithPageMarks) {
  Session S;
  test::TempDir dir;
  test::LoadHandCohort(S);
  const std::string r = Report(S, dir);
  EXPECT_NE(r.find("Table 4. (Continued)"), std::string::npos);
  // Ages 0..10 take two blocks of the last table: five pages, a form feed before all but the first.
  EXPECT_EQ(std::count(r.begin(), r.end(), '\f'), 4);
  EXPECT_EQ(r.rfind(std::string(69, ' ') + "Page 1 \n", 0), 0u);
  EXPECT_NE(r.find("\f" + std::string(68, ' ') + "Page 5 \n"), std::string::npos);
  EXPECT_EQ(S.channels.MainTableNumber, 4);
}

TEST(StageStatisticsReport, DurationsTableMarksDeathsAndClosesWithStatistics) {
  Session S;
  test::TempDir dir;
  test::LoadHandCohort(S);
  const std::string r = Report(S, dir);
  // Individual 5 died after 2 days as a larva; it has no preadult or adult time.
  EXPECT_TRUE(HasLine(r, " 5             2        d 2        -         -         -             4                N"));
  EXPECT_TRUE(HasLine(r, "N              6         5         5         5         5             7 "));
  EXPECT_TRUE(HasLine(r, "Mean           2.3333    2.8       4         5.2       4             7.2857 "));
  EXPECT_TRUE(HasLine(r, "Variance       0.2667    0.7       2.5       0.7       2.5           13.9048 "));
  EXPECT_TRUE(HasLine(r, " Time unit used:  1 "));
  EXPECT_EQ(r.find("you collected your data every"), std::string::npos);
  // Adult-age fecundity: a "d" the day after the last adult day, the totals of each female.
  EXPECT_TRUE(HasLine(r, " 2       5       0       5       0       d       10      2        2             5        0            4 "));
  EXPECT_TRUE(HasLine(r, "Maximum of daily fecundity = 6 observed for female no. 1 "));
  EXPECT_TRUE(HasLine(r, "The sum of age-specific mean fecundity is: 8.6667 "));
}

// The minimum rule shows in the table: female 2 has APOP 0, yet the minimum is 1.
TEST(StageStatisticsReport, ApopTableInWholeAndHalfTimeUnits) {
  {
    Session S;
    test::TempDir dir;
    test::LoadHandCohort(S);
    const std::string r = Report(S, dir);
    EXPECT_TRUE(HasLine(r, "     2           0         6 "));
    EXPECT_TRUE(HasLine(r, "Min              1         5 "));
    EXPECT_TRUE(HasLine(r, "Mean             0.67      5.67 "));
    EXPECT_TRUE(HasLine(r, "S.E.             0.3333    0.3333 "));
  }
  {
    Session S;
    test::TempDir dir;
    test::LoadHandCohort(S, test::HandCohort(), 0.5);
    const std::string r = Report(S, dir);
    EXPECT_TRUE(HasLine(r, "     1           0.5       3 "));
    EXPECT_TRUE(HasLine(r, "     7           0.5       2.5 "));
    EXPECT_TRUE(HasLine(r, "Mean             0.33      2.83 "));
    EXPECT_TRUE(HasLine(r, "         stage, preadult and total longevity (you collected your data every  0.5  time unit)"));
    EXPECT_TRUE(HasLine(r, "The rows below the individuals are in days."));
    EXPECT_TRUE(HasLine(r, "Mean           1.1667    1.4       2         2.6       2             3.6429 "));
  }
  {
    Session S;
    test::TempDir dir;
    test::LoadHandCohort(S, {{"M", {2, 2, 3}, {}}, {"N", {2, -1}, {}}});
    const std::string r = Report(S, dir);
    EXPECT_EQ(r.find("APOP"), std::string::npos);
  }
}

// The closing table on the hand cohort (numbers checked in stage_statistics_test.cpp), and the
// dashes where a count gives no mean or no spread.
TEST(StageStatisticsReport, BasicStatisticsTable) {
  Session S;
  test::TempDir dir;
  test::LoadHandCohort(S);
  Report(S, dir);
  S.ws.params.PeakVxjAge = 6;
  S.ws.params.FirstVxjAge = 4;
  S.channels.MainOutput.Open(dir.file("life06.txt"));
  test::OrderedPrompts P;
  StageStatsEngine e(S, P);
  e.Life06();
  S.channels.MainOutput.Close();
  const std::string r = test::ReadFile(dir.file("life06.txt"));
  EXPECT_EQ(r.find("\f"), 0u);
  EXPECT_NE(r.find("Table 5. Basic Statistics of Life History Data  (This table is based on routine\n"
                   "          statistics.  I suggest you try the bootstrap method.)\n"),
            std::string::npos);
  for (const char* line : {
           "Stage              Sex        N         Mean      S.D.      S.E.      Variance",
           "Egg                All        6         2.33      0.52      0.21      0.27 ",
           "Adult Female       All        5         4         1.58      0.71      2.5 ",
           "Egg                M          1         3         -         -         -",
           "Larva              N          0        -          -         -         -",
           "Male               M          1         6         -         -         -",
           "Egg-Adult          All        5         9.2       1.92      0.86      3.7 ",
           "Egg-Larva          F          4         5.25      0.96      0.48      0.92 ",
           "Mean longevity     All        7         7.29      3.73      1.41      13.9 ",
           "Mean longevity     N          2         2.5       2.12      1.5       4.5 ",
           "Fecundity (F)      F (all)    4         6.25      5.68      2.84      32.25 ",
           "Fecundity (Fr)     Rep. F     3         8.33      4.73      2.73      22.33 ",
           "TPOP               F          3         5.67      0.58      0.33      0.33 ",
           "APOP               F          3         0.67      0.58      0.33      0.33 ",
           "Ovi. days          F          3         2         1         0.58      1 ",
           "F : M : N = 4:1:2",
           "Among 4 females, 1 female(s) did not produce offspring.",
           "If you use jackknife method, you will get 4 zeros of pseudo-R0.",
           "The age of peak v(x,j) is  6 . In general, it must be between  4 ",
           "and TPOP 5.67  or close to  5.66666666666667 .",
           "The percentage of oviposition days is 57.14 %.",
           "using all bootstrap sample means.  Thus, it is the variance of all means.",
       })
    EXPECT_TRUE(HasLine(r, line)) << line;
  // Without females there are no fecundity, APOP, TPOP or oviposition rows.
  Session S2;
  test::LoadHandCohort(S2, {{"M", {2, 2, 3}, {}}, {"N", {2, -1}, {}}});
  Report(S2, dir);
  S2.channels.MainOutput.Open(dir.file("life06b.txt"));
  StageStatsEngine e2(S2, P);
  e2.Life06();
  S2.channels.MainOutput.Close();
  const std::string r2 = test::ReadFile(dir.file("life06b.txt"));
  EXPECT_EQ(r2.find("Fecundity (F)"), std::string::npos);
  EXPECT_EQ(r2.find("Ovi. days"), std::string::npos);
  EXPECT_EQ(r2.find("The age of peak v(x,j)"), std::string::npos);
  EXPECT_TRUE(HasLine(r2, "F : M : N = 0:1:1"));
}

}  // namespace
}  // namespace korvan
