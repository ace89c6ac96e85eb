#include "bootstrap/result_files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "bootstrap/bootstrap_fixture.h"
#include "bootstrap/count_individuals.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using boottest::ListPrompts;

// Three effective samples of a cohort of females and N-type only (no male).
std::unique_ptr<Session> ThreeSamples(const test::TempDir& dir) {
  const std::vector<boottest::PoolIndividual> pool = {{"F", {3, 4}, {0, 5, 2, 0}}, {"N", {-2}, {}}};
  auto S = boottest::MakePoolStore(2, pool, 2);
  S->identity.DataFileBase = dir.file("t");
  S->identity.TreatmentName = "Control";
  S->header.CohortSizeRead = 2;
  S->ws.cohort.IndividualSex(1) = "F";
  S->ws.cohort.IndividualSex(2) = "N";
  S->boot.BootB = S->boot.EffectiveCount = 3;
  for (long b = 1; b <= 3; ++b) {
    S->boot.EffectiveList(b) = static_cast<std::int32_t>(b);
    S->boot.BootR(b) = 0.1 * b;
    S->boot.BootR0(b) = 1 + b;
    S->boot.BootIndividuals(1, b) = 1;
    S->boot.BootIndividuals(2, b) = static_cast<std::int16_t>(b == 2 ? 1 : 2);
  }
  return S;
}

// A cumulative run names its main files by its range and numbers its rows from f; the output
// level and the major-files flag leave out what they mark; files that have no meaning for the
// cohort (males, doubling time with r = 0) are not written.
TEST(ResultFiles, NamesSerialsAndConditions) {
  test::TempDir dir;
  auto S = ThreeSamples(dir);
  ListPrompts P;
  S->boot.FirstBootNumber = 100001;
  S->options.OutputLevel = "No";
  S->boot.MajorFilesOnly = "Yes";
  BootResultFiles(*S, P).WriteEffectiveBootstrapInColumn();
  const auto a2a = test::Lines(dir.file("t_Effect Boot-A2a-r from 100001 to 100003.txt"));
  ASSERT_EQ(a2a.size(), 9u);
  EXPECT_EQ(a2a[0], "\"Control-r\"");
  EXPECT_EQ(a2a[1], "\"Next line is Bootstrap sample size (n)\"");
  EXPECT_EQ(a2a[2], "2");
  EXPECT_EQ(a2a[3], "\"Next line is total effective Bootstrap number (B)\"");
  EXPECT_EQ(a2a[4], "3");
  EXPECT_EQ(a2a[5], "\"r\",2,0");
  EXPECT_EQ(a2a[8], "0.3");
  EXPECT_EQ(test::Lines(dir.file("t_Effect Boot-A3b-lambda-with SN from 100001 to 100003.txt"))[6], "100001,0");
  EXPECT_TRUE(std::filesystem::exists(dir.file("t_Effect Boot-A1a-R0 from 100001 to 100003.txt")));
  EXPECT_FALSE(std::filesystem::exists(dir.file("t_Effect Boot-A4-T.txt")));              // m
  EXPECT_FALSE(std::filesystem::exists(dir.file("t_Effect Boot-U2_lx-at age 0.txt")));    // o
  EXPECT_FALSE(std::filesystem::exists(dir.file("t_Z-R0 and boot SE for harvest.txt")));  // m
  // The stage files are of the m kind too: survival to each stage, stage means and mortality.
  auto count = [](const test::TempDir& d, const std::string& part) {
    int n = 0;
    for (const auto& e : std::filesystem::directory_iterator(d.path()))
      n += e.path().filename().string().find(part) != std::string::npos;
    return n;
  };
  EXPECT_EQ(count(dir, "W4_Surv Prob to") + count(dir, "S1_Stage mean") + count(dir, "S2_Stage mortality"), 0);

  test::TempDir all;
  auto T = ThreeSamples(all);
  T->options.OutputLevel = "Yes";
  T->boot.BootR(2) = 0;
  T->header.StageName(1, 1) = "Egg";
  T->header.StageName(1, 2) = "Female";
  BootResultFiles(*T, P).WriteEffectiveBootstrapInColumn();
  EXPECT_TRUE(std::filesystem::exists(all.file("t_Effect Boot-A4-T.txt")));
  EXPECT_TRUE(std::filesystem::exists(all.file("t_Effect Boot-U2_lx-at age 0.txt")));
  EXPECT_TRUE(std::filesystem::exists(all.file("t_Effect Boot-W10_Nn.txt")));
  EXPECT_FALSE(std::filesystem::exists(all.file("t_Effect Boot-W9_Nm.txt")));
  EXPECT_FALSE(std::filesystem::exists(all.file("t_Effect Boot-A5-doubling time.txt")));
  EXPECT_EQ(test::Lines(all.file("t_Effect Boot-A1b-R0-with SN.txt"))[8], "3,4");
  // A cohort without males: no file of the male stage.
  for (const char* name : {"W4_Surv Prob to Egg.txt", "W4_Surv Prob to Female.txt", "W4_Surv Prob to Preadult.txt",
                           "W4_Surv Prob to Egg_Adult.txt", "S1_Stage mean_Egg.txt", "S2_Stage mortality_Egg.txt",
                           "S2_Stage mortality_Female.txt"})
    EXPECT_TRUE(std::filesystem::exists(all.file(std::string("t_Effect Boot-") + name))) << name;
  EXPECT_EQ(count(all, "W4_Surv Prob to") + count(all, "S1_Stage mean") + count(all, "S2_Stage mortality"), 8);
  const auto harvest = test::Lines(all.file("t_Z-R0 and boot SE for harvest.txt"));
  ASSERT_EQ(harvest.size(), 3u);
  EXPECT_EQ(harvest[1], "\"R0\",\"SE of Boot(R0)\",\"R0(0.025)\",\"R0(0.15866)\"");

  test::TempDir none;
  auto U = ThreeSamples(none);
  U->options.OutputLevel = "Nooutput";
  BootResultFiles(*U, P).WriteEffectiveBootstrapInColumn();
  for (const auto& e : std::filesystem::directory_iterator(none.path())) ADD_FAILURE() << e.path();
}

// Draws per individual over all samples, in the column form.
TEST(ResultFiles, IndividualCounts) {
  test::TempDir dir;
  auto S = ThreeSamples(dir);
  ListPrompts P;
  BootIndividualCounts counts(*S, P);
  counts.CountBootstrapIndFreq();
  EXPECT_EQ(S->boot.IndividualDraws(1), 4);  // once in each sample, twice in sample 2
  EXPECT_EQ(S->boot.IndividualDraws(2), 2);
  const auto lines = test::Lines(dir.file("t_0H_Boot individual counts.txt"));
  ASSERT_EQ(lines.size(), 8u);
  EXPECT_EQ(lines[5], "\"Ind. no.\",2,3");
  EXPECT_EQ(lines[6], "1,4");
  EXPECT_EQ(lines[7], "2,2");
}

}  // namespace
}  // namespace korvan
