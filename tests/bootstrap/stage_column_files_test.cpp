// The stage column files of a bootstrap: the share of each sample that reaches each stage and
// adulthood, checked against the samples' individuals; the paired test on two runs' files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>

#include "bootstrap/bootstrap_run_fixture.h"
#include "bootstrap/column_file.h"
#include "commands/paired_test_commands.h"
#include "support/fake_prompts.h"

namespace korvan {
namespace {

TEST(StageColumnFiles, SurvivalToEachStageOfEverySample) {
  test::TempDir dir;
  const auto cohort = boottest::SmallCohort();  // stages S1, S2, Female / Male
  std::vector<std::string> w4;
  for (int run = 0; run < 2; ++run) {
    const std::string folder = dir.file("run" + std::to_string(run));
    std::filesystem::create_directory(folder);
    // The second run's data file names both adult stages "Adult": the files still part them.
    std::string text = DataFileText(3, cohort);
    for (const char* sex : {",Female\n", ",Male\n"})
      for (auto at = text.find(sex); run == 1 && at != std::string::npos; at = text.find(sex))
        text.replace(at, std::strlen(sex), ",Adult\n");
    test::WriteFile(folder + "/c.txt", text);
    boottest::ListPrompts P;
    auto S = boottest::BasicRunOf(folder + "/c.txt", P);
    S->runControl.hasSeed = true;
    S->runControl.seed = 11 + static_cast<unsigned>(run);
    boottest::AnswerDetailedRun(P, 30, 24, true);
    BootstrapDriver(*S, P).cmdBootstrap_Click();
    const BootstrapRecord& R = S->boot;

    // The share that reaches stage S2, the female and the male stage, adulthood; and of those
    // that reach S1 (all) and S2, the share that become adults.
    struct File {
      const char* name;
      double cohort;
    };
    const File files[] = {{"S2", 20.0 / 24},      {"Female", 9.0 / 24},  {"Male", 7.0 / 24},
                          {"Preadult", 16.0 / 24}, {"S1_Adult", 16.0 / 24}, {"S2_Adult", 16.0 / 20}};
    for (const auto& f : files) {
      const ColumnFile c =
          ReadColumnFile(folder + "/c_Effect Boot-W4_Surv Prob to " + f.name + ".txt", false, "test");
      EXPECT_NEAR(c.cohort, f.cohort, 1e-12) << f.name;
      ASSERT_EQ(static_cast<long>(c.values.size()), R.EffectiveCount) << f.name;
      for (long i = 1; i <= 3; ++i) {
        const long b = R.EffectiveList(i);
        double toS2 = 0, females = 0, males = 0;
        for (long p = 1; p <= R.BootSampleSize; ++p) {
          const test::Individual& ind = cohort[static_cast<std::size_t>(R.BootIndividuals(p, b) - 1)];
          toS2 += ind.durations[0] > 0;
          females += ind.sex == "F";
          males += ind.sex == "M";
        }
        const double n = R.BootSampleSize;
        const std::string name = f.name;
        const double expected = name == "S2"         ? toS2 / n
                                : name == "Female"   ? females / n
                                : name == "Male"     ? males / n
                                : name == "S2_Adult" ? (toS2 > 0 ? (females + males) / toS2 : 0)
                                                     : (females + males) / n;
        EXPECT_NEAR(c.values[static_cast<std::size_t>(i - 1)], expected, 1e-12) << f.name << " sample " << b;
      }
    }
    EXPECT_TRUE(std::filesystem::exists(folder + "/c_Effect Boot-S2_Stage mortality_Male.txt"));
    w4.push_back(folder + "/c_Effect Boot-W4_Surv Prob to Female.txt");
  }

  // The paired test compares the share of females of the two runs.
  Session S;
  test::FakePrompts P;
  P.Answer("Fast paired bootstrap test?", "Yes")
      .Answer("Read data file one by one for multiple comparison", "2")
      .Answer("Input treatment 1", w4[0])
      .Answer("Input treatment 2", w4[1])
      .Answer("Task completed", "OK")
      .Answer("Task completed!", "Yes");
  const auto here = std::filesystem::current_path();
  std::filesystem::current_path(dir.path());
  PairedTestCommands(S, P).cmdPairedBootTest_Click();
  std::filesystem::current_path(here);
  EXPECT_EQ(S.comparison.BootCount(1), S.comparison.BootCount(2));
  EXPECT_GT(S.comparison.PairP(1, 2), 0.05);  // one cohort twice: no difference
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// A table that is the whole pooled population: its part of the pooled Euler-Lotka equation is
// 1 in every sample (the same samples, by the seed), so its contribution to r is r itself.
TEST(StageColumnFiles, ContributionOfTheWholePopulationIsItsR) {
  test::TempDir dir;
  const auto cohort = boottest::SmallCohort();
  std::string pooled;
  for (int run = 0; run < 2; ++run) {
    const std::string folder = dir.file("run" + std::to_string(run));
    std::filesystem::create_directory(folder);
    test::WriteFile(folder + "/c.txt", DataFileText(3, cohort));
    boottest::ListPrompts P;
    auto S = std::make_unique<Session>();
    S->StartUp();
    if (run == 1) {
      const ColumnFile r = ReadColumnFile(pooled, false, "test");
      auto& d = S->readData;
      d.ContributionRLoaded = "Yes";
      d.ContributionPooledR = r.cohort;
      d.ContributionBootCount = static_cast<long>(r.values.size());
      for (std::size_t k = 0; k < r.values.size(); ++k) d.ContributionBootR(static_cast<long>(k + 1)) = r.values[k];
    }
    S->identity.DataFilePath = folder + "/c.txt";
    S->identity.DataFileBase = folder + "/c";
    S->header.RegularLifeTable = "Yes";
    S->options.MatingMode = S->options.FastRun = "Yes";
    S->options.OutputLevel = "No";
    BasicRunDriver(*S, P).cmdBasicRunA2_Click();
    S->runControl.hasSeed = true;
    S->runControl.seed = 5;
    boottest::AnswerDetailedRun(P, 30, 24, true);
    BootstrapDriver(*S, P).cmdBootstrap_Click();
    if (run == 0) {
      pooled = folder + "/c_Effect Boot-A2a-r.txt";
      EXPECT_FALSE(std::filesystem::exists(folder + "/c_Effect Boot-A2c_r-Contribution.txt"));
      continue;
    }
    const ColumnFile r = ReadColumnFile(pooled, false, "test");
    const ColumnFile toR = ReadColumnFile(folder + "/c_Effect Boot-A2c_r-Contribution.txt", false, "test");
    const ColumnFile toLambda = ReadColumnFile(folder + "/c_Effect Boot-A3c_lambda-Contrib.txt", false, "test");
    EXPECT_NEAR(toR.cohort, r.cohort, 1e-6);
    ASSERT_EQ(toR.values.size(), r.values.size());
    for (std::size_t k = 0; k < r.values.size(); ++k) {
      EXPECT_NEAR(toR.values[k], r.values[k], 1e-6) << k;
      EXPECT_NEAR(toLambda.values[k], std::exp(r.values[k]), 1e-5) << k;
    }
  }
}

}  // namespace
}  // namespace korvan
