#include <gtest/gtest.h>

#include "bootstrap/bootstrap_run_fixture.h"
#include "bootstrap/resampling.h"
#include "bootstrap/sample_records.h"
#include "store/faults.h"

namespace korvan {
namespace {

using boottest::ListPrompts;

// A record of samples in the layout of file no. 11: head, then per sample its label, its
// individuals twenty to a line, its R0 and finite rate, then 16 lines of summary.
std::string RecordText(const std::string& condition, const std::vector<std::vector<int>>& samples) {
  const int n = static_cast<int>(samples.front().size());
  std::string t = "\"Project: Test Ver. 5/7/2024\"\n\"From the record\"\n\"" + condition + "\"\n";
  t += "\"Total number of effective bootstrap =\"," + std::to_string(samples.size()) + "\n" +
       std::to_string(samples.size()) + "\n";
  t += "\"Bootstrap sample size =\"," + std::to_string(n) + "\n" + std::to_string(n) + "\n";
  for (std::size_t s = 0; s < samples.size(); ++s) {
    t += "\"Bootstrap Sample: \"," + std::to_string(s + 1) + "\n";
    for (int p = 0; p < n; ++p) {
      t += " " + std::to_string(samples[s][static_cast<std::size_t>(p)]) + " ";
      t += (p + 1) % 20 == 0 || p + 1 == n ? "\n" : ",";
    }
    t += "\"Net reproductive rate \"," + std::to_string(s + 1) + "\n 12.5 \n";
    t += "\"Finite rate \"," + std::to_string(s + 1) + "\n 1.25 \n";
  }
  for (int k = 0; k < 8; ++k) t += "\"Summary\"\n 1 \n";
  return t;
}

// A repeated sample that fails the test of its record's condition ends the run with the
// message of that condition; an old third line asks which condition to take.
TEST(SameSamples, ConditionsOfTheRecord) {
  const std::vector<boottest::PoolIndividual> pool = {
      {"F", {2, 3}, {4, 0, 1}}, {"M", {2, 4}, {}}, {"F", {3, 2}, {0, 0}}, {"N", {-1}, {}}};
  auto run = [&](const std::string& condition, const std::vector<std::vector<int>>& samples,
                 const std::string& oldAnswer) {
    test::TempDir dir;
    const std::string path = dir.file("rec.txt");
    test::WriteFile(path, RecordText(condition, samples));
    auto S = boottest::MakePoolStore(2, pool, 2);
    S->boot.SameBootstrap = "Yes";
    S->boot.BootSessionFlag = "Yes";
    ListPrompts P;
    P.Answer("Open bootstrap record file (In general, it is file no. 11).", path);
    if (!oldAnswer.empty())
      P.Answer("Is the file no. 11 or 11A (bootstrap samples) from an old version KORVAN?", oldAnswer);
    SampleRecords(*S, P).ReadSameBootstrapData();
    boottest::ListGenerator unused({});
    for (long b = 1; b <= S->boot.BootB; ++b) {
      S->ws.run.Boot = b;
      Resampling(*S, P, S->ws, unused).cmdBoot03();
    }
    GatherSampleLists(*S);
    return S;
  };
  // Two-sex, effective only: sample 2 has a female with eggs but no male.
  try {
    run("EffectBoot-Yes and KorvanMating-Yes", {{1, 2}, {1, 3}}, "");
    FAIL() << "no end";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.title, "Error in bootstrap. (Perhaps you cannot use the same bootstrap samples.)");
    EXPECT_EQ(e.message,
              "You selected \"Effective bootstrap\" and \"Two-sex mating\".\nBut the bootstrap sample 2 was a wrong "
              "sample for that.");
  }
  // One-sex: the same sample passes (eggs), a sample without eggs does not.
  try {
    run("EffectBoot-Yes and KorvanMating-No", {{1, 3}, {3, 2}}, "");
    FAIL() << "no end";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "You selected \"Effective bootstrap\".\nBut the bootstrap sample 2 was a wrong sample for that.");
  }
  // All samples kept: one without eggs goes to both lists and is labelled ineffective; a
  // sample without any female ends the run at its preparation.
  auto S = run("AllBoot-Yes and KorvanMating-Yes", {{1, 2}, {3, 2}, {1, 1}}, "");
  EXPECT_EQ(S->boot.EffectiveOnly, "No");
  EXPECT_EQ(S->boot.EffectiveCount, 3);
  EXPECT_EQ(S->boot.IneffectiveCount, 1);
  EXPECT_EQ(S->boot.IneffectiveList(1), 2);
  EXPECT_EQ(S->boot.BootEffectLabel(1), kLabelEffective);
  EXPECT_EQ(S->boot.BootEffectLabel(2), kLabelIneffective);
  EXPECT_EQ(S->boot.BootEffectLabel(3), kLabelIneffective);  // two-sex: no male
  try {
    run("AllBoot-Yes and KorvanMating-No", {{1, 3}, {2, 4}}, "");
    FAIL() << "no end";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.title, "No female in this bootstrapped sample.");
    EXPECT_EQ(e.message, "Error in bootstrap 2. No female in sample (R0 = 0).\nRe-run program by using larger n.");
  }
  // An old third line: "No" takes the one-sex condition of effective samples.
  auto O = run("Bootstrap samples", {{1, 2}}, "No");
  EXPECT_EQ(O->boot.EffectiveOnly, "Yes");
  EXPECT_EQ(O->options.MatingMode, "No");
  EXPECT_EQ(O->boot.BootConditionLine, "EffectBoot-Yes and KorvanMating-No");
  EXPECT_THROW(run("Bootstrap samples", {{1, 2}}, "Cancel"), ProgramEnd);
  // An individual number beyond the pool is a fault of the bounds.
  EXPECT_THROW(run("EffectBoot-Yes and KorvanMating-No", {{1, 5}}, ""), SubscriptFault);
}

}  // namespace
}  // namespace korvan
