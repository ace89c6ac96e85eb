// Whole runs: the record of samples read back by a run of the same samples, and the column
// files of a run that keeps ineffective samples.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "bootstrap/bootstrap_run_fixture.h"

namespace korvan {
namespace {

using boottest::ListPrompts;

// The one file of the folder whose name begins with prefix.
std::string FileStarting(const test::TempDir& dir, const std::string& prefix) {
  std::string found;
  for (const auto& e : std::filesystem::directory_iterator(dir.path())) {
    const std::string name = e.path().filename().string();
    if (name.rfind(prefix, 0) == 0) {
      EXPECT_TRUE(found.empty()) << "two files " << found << " and " << name;
      found = e.path().string();
    }
  }
  EXPECT_FALSE(found.empty()) << "no file " << prefix;
  return found;
}

TEST(SampleRecords, RecordElevenRepeatsTheRunAndItsR0Column) {
  test::TempDir first;
  ListPrompts P;
  auto S = boottest::BasicRunOf(first.file("cohort.txt"), 3, boottest::SmallCohort(), P);
  boottest::AnswerDetailedRun(P, 30, 24, true);
  BootstrapDriver(*S, P).cmdBootstrap_Click();
  const std::string record = FileStarting(first, "cohort_11_Bootstrap samples-");
  EXPECT_EQ(S->boot.RecordFilePath, record);

  // Head, then per sample: label, individuals (20 and 4 on two lines), R0 and finite rate.
  const auto rec = test::Lines(record);
  ASSERT_EQ(rec.size(), 7u + 30 * 7 + 16);
  EXPECT_EQ(rec[0], "\"Project: Test Ver. 5/7/2024\"");
  EXPECT_EQ(rec[2], "\"EffectBoot-Yes and KorvanMating-Yes\"");
  EXPECT_EQ(rec[3], "\"Total number of effective bootstrap =\",30");
  EXPECT_EQ(rec[6], "24");
  EXPECT_EQ(rec[7], "\"Bootstrap Sample: \",1");
  EXPECT_EQ(rec[8].substr(0, 1 + std::to_string(S->boot.BootIndividuals(1, 1)).size() + 2),
            " " + std::to_string(S->boot.BootIndividuals(1, 1)) + " ,");
  EXPECT_EQ(std::count(rec[8].begin(), rec[8].end(), ','), 19);
  EXPECT_EQ(std::count(rec[9].begin(), rec[9].end(), ','), 3);
  EXPECT_EQ(rec[10], "\"Net reproductive rate \",1");
  EXPECT_EQ(rec[rec.size() - 16], "\"Mean of R0\"");

  // The life table of the median R0 sample, read back by a Basic Run, gives that sample's R0
  // and r.
  const long k = S->boot.sort.R0500Sample;
  ListPrompts none;
  const auto K = boottest::BasicRunOf(first.file("cohort_Kf_Life Table_0.5 R0-sample_" + std::to_string(k) + ".txt"), none);
  EXPECT_EQ(K->ws.cohort.CohortSize, 24);
  EXPECT_NEAR(K->params.R0_Basic, S->boot.BootR0(k), 1e-12);
  EXPECT_NEAR(K->params.R_Basic, S->boot.BootR(k), 1e-9);

  // The same samples again, from the record: the R0 column holds the same values.
  test::TempDir second;
  ListPrompts Q;
  auto T = boottest::BasicRunOf(second.file("cohort.txt"), 3, boottest::SmallCohort(), Q);
  Q.Answer("Cumulative (or additive) bootstrapping?", "1");
  Q.Answer("Set the criterion of infertile sample?", "1");
  Q.Answer("Fast run for bootstrap?", "Cancel");
  Q.Answer("Same bootstrap samples?", "Yes");
  Q.Answer("Fast run for the rest steps?", "No");
  Q.Answer("Save bootstrap samples?", "No");
  Q.Answer("Open bootstrap record file (In general, it is file no. 11).", record);
  Q.Answer("Specific bootstrap sample =?", "3");
  Q.Answer("Prepare another life table data file?", "No");
  Q.Answer("Prepare l(x) and m(x) for major percentiles?", "No");
  Q.Answer("Detailed bootstrap results?", "No");
  Q.Answer("More bars for histogram chart?", "Yes");
  Q.Answer("Normal density curve?", "No");
  Q.Answer("Fast steps?", "Yes");
  Q.Answer("Task completed", "OK");
  BootstrapDriver(*T, Q).cmdBootstrap_Click();
  const auto a = test::Lines(first.file("cohort_Effect Boot-A1a-R0.txt"));
  const auto b = test::Lines(second.file("cohort_Effect Boot-A1a-R0.txt"));
  ASSERT_EQ(a.size(), 36u);
  EXPECT_EQ(a, b);
  EXPECT_EQ(a[0], "\"Control-R0\"");
  EXPECT_EQ(a[3], "\"Next line is total effective Bootstrap number (B). All bootstrap sample are effective for Ro.\"");
  EXPECT_EQ(a[4], "30");
  for (long k = 1; k <= 30; ++k) EXPECT_EQ(a[static_cast<std::size_t>(5 + k)], FullPrecision(S->boot.BootR0(k)));
  for (long k = 1; k <= 30; ++k) EXPECT_NEAR(T->boot.RecordR0(k), S->boot.BootR0(k), 1e-6 * S->boot.BootR0(k));
  // The closing message names the record read; the sample asked for by number is written as
  // a life table of its own.
  EXPECT_NE(Q.met.back().text.find("Record of bootstrap samples are saved in " + record + "."), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(second.file("cohort_000K_Life Table_boot-sample_3.txt")));
}

// With ineffective samples kept, R0 has a row for every sample, r one for each effective one;
// the record no. 11A and the "_All Boot" files hold every sample and mark the ineffective.
TEST(SampleRecords, KeptIneffectiveSamplesInColumnsAndRecord) {
  test::TempDir dir;
  ListPrompts P;
  auto S = boottest::BasicRunOf(dir.file("cohort.txt"), 3, boottest::SmallCohort(), P);
  boottest::AnswerDetailedRun(P, 60, 3, false);
  BootstrapDriver(*S, P).cmdBootstrap_Click();
  const BootstrapRecord& R = S->boot;
  const long B = 60, E = R.EffectiveCount;
  ASSERT_LT(E, B);
  ASSERT_EQ(E + R.IneffectiveCount, B);
  EXPECT_EQ(test::Lines(dir.file("cohort_Effect Boot-A1a-R0.txt")).size(), static_cast<std::size_t>(6 + B));
  EXPECT_EQ(test::Lines(dir.file("cohort_Effect Boot-A2a-r.txt")).size(), static_cast<std::size_t>(6 + E));
  const auto sn = test::Lines(dir.file("cohort_Effect Boot-A2b-r-with SN.txt"));
  EXPECT_EQ(sn[6], std::to_string(R.EffectiveList(1)) + "," + FullPrecision(R.BootR(R.EffectiveList(1))));

  const auto all = test::Lines(dir.file("cohort_All Boot-r.txt"));
  ASSERT_EQ(all.size(), static_cast<std::size_t>(6 + B));
  EXPECT_EQ(std::count(all.begin(), all.end(), "\"Ineffective bootstrap sample\""), R.IneffectiveCount);
  EXPECT_EQ(all[5], "\"r (only effective ones)\"");

  const auto rec = test::Lines(FileStarting(dir, "cohort_11A_Bootstrap samples-"));
  ASSERT_EQ(rec.size(), 7u + B * 6 + 16);  // three numbers a sample fit one line
  const long k = R.IneffectiveList(1);
  const std::size_t at = 7 + static_cast<std::size_t>(k - 1) * 6;
  EXPECT_EQ(rec[at], "\"Bootstrap Sample: \"," + std::to_string(k));
  EXPECT_EQ(rec[at + 2], "\"Net reproductive rate for bootstrap sample no.\"," + std::to_string(k));
  EXPECT_EQ(rec[at + 3], " 0 ");
  EXPECT_EQ(rec[at + 4], "\"Finite rate for bootstrap sample no.\"," + std::to_string(k) +
                                     ",\" ***(ineffective)***\"");
  EXPECT_EQ(rec[3], "\"Total assigned number of bootstrap =\",60,\". Total effective bootstrap =\"," +
                        std::to_string(E));
  const auto none = test::Lines(dir.file("cohort_6X_NonEffective Boots sampled individuals.txt"));
  EXPECT_EQ(none.size(), 7u + 2 * static_cast<std::size_t>(R.IneffectiveCount));
}

}  // namespace
}  // namespace korvan
