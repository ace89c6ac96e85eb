#include "bootstrap/percentile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "bootstrap/bootstrap_fixture.h"
#include "commands/spec_boot_sample.h"
#include "input/data_file_reader.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using boottest::ListPrompts;

std::unique_ptr<Session> HandStore(const test::TempDir& dir, long B, int n) {
  const std::vector<boottest::PoolIndividual> pool = {
      {"F", {3, 4}, {0, 5, 2, 0}}, {"M", {2, 5}, {}}, {"M", {3, 2}, {}}, {"N", {-2}, {}}};
  auto S = boottest::MakePoolStore(2, pool, n);
  S->identity.DataFileBase = dir.file("t");
  S->identity.ProjectName = "Test";
  S->identity.TreatmentName = "Control";
  S->header.TypeCount = 2;
  S->header.TypeCode(1) = "F";
  S->header.TypeCode(2) = "M";
  S->header.StageName(1, 1) = S->header.StageName(2, 1) = "Egg";
  S->header.StageName(1, 2) = "Female";
  S->header.StageName(2, 2) = "Male";
  S->header.SpecialGroup(1) = "Egg";
  S->header.SpecialGroup(2) = "Adult";
  S->boot.BootB = S->boot.EffectiveCount = static_cast<std::int32_t>(B);
  for (long b = 1; b <= B; ++b) {
    S->boot.EffectiveList(b) = static_cast<std::int32_t>(b);
    S->boot.BootEffectLabel(b) = kLabelEffective;
    for (int p = 1; p <= n; ++p) S->boot.BootIndividuals(p, b) = static_cast<std::int16_t>(1 + (b + p) % 4);
  }
  return S;
}

// R0 groups compare each value with the one before it; the precision prompt repeats until it
// gets 0 to 6; the cumulative frequency ends at 1 with probits before it.
TEST(Percentiles, R0GroupsPrecisionAndCumulativeFrequency) {
  test::TempDir dir;
  auto S = HandStore(dir, 10, 2);
  const double r0[10] = {3, 1, 1 + 5e-11, 1 + 1e-10, 1 + 1.5e-10, 0, 2, 2, 3, 0};
  for (long b = 1; b <= 10; ++b) S->boot.BootR0(b) = r0[b - 1];
  S->boot.BootNormalCurves = "Yes";
  ListPrompts P;
  for (const char* a : {"7", "1.5", "1"}) P.Answer("Each precision level =?", a);
  BootPercentiles(*S, P).SortBootstrapNetR0();
  EXPECT_EQ(P.met.size(), 3u);
  const SortStore& s = S->boot.sort;
  // 0 0 | 1, 1+5e-11, 1+1e-10, 1+1.5e-10 (a chain of steps of 5e-11) | 2 2 | 3 3
  ASSERT_EQ(s.R0Groups.Count, 4);
  EXPECT_EQ(s.R0Groups.Members(2), 4);
  EXPECT_EQ(s.R0Groups.Value(2), 1);
  EXPECT_EQ(s.R0025Sample, 0);  // index round(0.25) = 0 holds no sample
  EXPECT_EQ(s.R0500Sample, 4);  // index 5: 1 + 1e-10
  EXPECT_EQ(S->boot.BootR0(s.R0975Sample), 3);
  EXPECT_EQ(S->boot.SortedR0(10), 3);
  const auto b = test::Lines(dir.file("t_J1b_Boot_Sorted R0_grouped_counts.txt"));
  EXPECT_EQ(b[3], "Precision of R0 = 1 . The total observed number of different R0 = 4 .");
  EXPECT_EQ(b[4], "Sum of counts = 10 ");
  const auto d = test::Lines(dir.file("t_J1d_Boot_R0_Cumu Freq.txt"));
  ASSERT_EQ(d.size(), 3u + 1 + 4);
  EXPECT_EQ(s.R0CumulativeFrequency(1), 0.2);
  EXPECT_NEAR(s.R0Probit(1), 5 - 0.8416, 5e-4);  // the normal quantile of 0.2
  EXPECT_EQ(s.R0CumulativeFrequency(4), 1);
  EXPECT_EQ(d.back().find("Probit"), std::string::npos);

  // Exact grouping splits the chain; a precision outside the table halts.
  S->boot.R0Precision = 0;
  BootPercentiles(*S, P).SortBootstrapNetR0();
  EXPECT_EQ(s.R0Groups.Count, 7);
  S->boot.R0Precision = 9;
  EXPECT_THROW(BootPercentiles(*S, P).SortBootstrapNetR0(), ProgramEnd);
}

// The samples at the lambda percentiles, their life tables (read back as data files), their
// sample records, and the command that turns a record into a data file.
TEST(Percentiles, LambdaSamplesLifeTablesAndRecords) {
  test::TempDir dir;
  auto S = HandStore(dir, 40, 3);
  BootstrapRecord& R = S->boot;
  for (long b = 1; b <= 40; ++b) {
    R.BootLambda(b) = 1 + (41 - b) / 100.0;  // sample 40 is the smallest
    R.BootR0(b) = b;
    R.BootR(b) = 0.01 * b;
  }
  R.BootR0(3) = 0;  // the smallest R0: the 0.025 sample of R0 (index 1)
  R.PercentileTables025975 = "Yes";
  R.PercentileTables15 = "Yes";
  R.BootFastRun = "Yes";
  ListPrompts P;
  BootPercentiles(*S, P).SortAndWritePercentileTables();
  const SortStore& s = R.sort;
  EXPECT_EQ(s.Lambda025Sample, 40);  // index 1
  EXPECT_EQ(s.Lambda975Sample, 2);   // index 39
  EXPECT_EQ(s.PercentileSample(3), 35);  // 0.15866 * 40 = 6.35: index 6
  EXPECT_EQ(s.Percentile100Sample(50), 21);
  EXPECT_EQ(test::Lines(dir.file("t_J2a_Boot_Sorted lambda.txt")).size(), 3u + 1 + 40);
  // An R0 of 0 at the 0.025 percentile: no rates, yet its life table is written.
  EXPECT_EQ(s.R0025Sample, 3);
  EXPECT_TRUE(std::filesystem::exists(dir.file("t_Kf_Life Table_0.025 R0-sample_3.txt")));
  EXPECT_NE(test::ReadFile(dir.file("t_J1c_Boot_0.025 and 0.975 percentile-R0.txt"))
                .find("Because the 0.025 percentile of Ro is zero, intrinsic rate and finite rate do not exist."),
            std::string::npos);
  const auto all = test::Lines(dir.file("t_0Aa_All spec boot percentile sample.txt"));
  ASSERT_EQ(all.size(), 15u);
  EXPECT_EQ(all[0], "\"Percentile \",0.025,40,40");

  // The life table of the 0.025 lambda sample reads back as a cohort of its three drawn
  // individuals (individuals 2, 3, 4 of the pool, by (b + p) % 4 + 1).
  const std::string table = dir.file("t_Kd_Life Table_0.025 lambda-sample_40.txt");
  ASSERT_TRUE(std::filesystem::exists(table));
  EXPECT_EQ(test::Lines(table)[0], "\"Project: Test. 0.025 lambda\"");
  EXPECT_EQ(test::Lines(table)[2], "\"0.025 lambda-Control\"");
  auto T = std::make_unique<Session>();
  T->StartUp();
  T->identity.DataFilePath = table;
  T->header.RegularLifeTable = "Yes";
  DataFileReader(*T, P).InputData();
  ASSERT_EQ(T->ws.cohort.CohortSize, 3);
  for (int p = 1; p <= 3; ++p) {
    const int k = R.BootIndividuals(p, 40);
    EXPECT_EQ(T->ws.cohort.IndividualSex(p), S->pool.OriginalSex(k));
    EXPECT_EQ(T->ws.cohort.StageDuration(p, 1), S->pool.OriginalStageDuration(k, 1));
  }

  // Its record, and the data file the command makes of it, with the individuals of the sample.
  const std::string record = dir.file("t_Ka_boot_0.025 lambda-sample_40.txt");
  const auto rec = test::Lines(record);
  EXPECT_EQ(rec[7], "\"Next line is the specific bootstrap sample number:\"");
  EXPECT_EQ(rec[8], "40");
  EXPECT_EQ(rec[11], " 40 ");
  P.Answer("Write life table data for specific bootstrap sample?", "Yes");
  P.Answer("Open specific bootstrap sample and prepare its life table", record);
  P.Answer("", "OK");
  SpecBootSampleCommand(*S, P).cmdWriteSpeLifeTable_Click();
  const auto made = test::Lines(dir.file("t_0_data of spec bootsample_40.txt"));
  const auto kd = test::Lines(table);
  ASSERT_EQ(made.size(), kd.size());
  EXPECT_TRUE(std::equal(made.begin() + 3, made.end(), kd.begin() + 3));

  // A record of another cohort, with an individual beyond the pool, is refused with a message.
  std::string bad;
  for (std::size_t i = 0; i < rec.size(); ++i) bad += (i == 9 ? std::string(" 9 , 1 , 2 ") : rec[i]) + "\n";
  test::WriteFile(record, bad);
  P.Answer("Write life table data for specific bootstrap sample?", "Yes");
  P.Answer("Open specific bootstrap sample and prepare its life table", record);
  P.Answer("Open specific bootstrap sample and prepare its life table", "OK");
  SpecBootSampleCommand(*S, P).cmdWriteSpeLifeTable_Click();
  EXPECT_NE(P.met.back().text.find("Individual 9 of this sample is not in the cohort of 4 individuals."),
            std::string::npos);
}

}  // namespace
}  // namespace korvan
