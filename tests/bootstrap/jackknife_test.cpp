// The jackknife: pseudo-values against cohorts less one individual run by a Basic Run of their
// own, the refusals, and the second press.
#include "bootstrap/jackknife.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "bootstrap/bootstrap_run_fixture.h"
#include "commands/jackknife_command.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using boottest::PoolIndividual;

double EggsOf(const PoolIndividual& a) {
  double sum = 0;
  for (double e : a.eggs) sum += e;
  return sum;
}

TEST(Jackknife, PseudoValuesAreThoseOfTheCohortsLessOneIndividual) {
  test::TempDir dir;
  const auto cohort = boottest::SmallCohort();
  test::FakePrompts basic;
  auto S = boottest::BasicRunOf(dir.file("c.txt"), 3, cohort, basic);
  const double r = S->params.R_Basic, lx5 = S->basic.OriginalLx(5);
  const int N = static_cast<int>(cohort.size());

  test::FakePrompts P;
  P.Answer("Note well!", "OK").Answer("Note well!", "OK");
  JackknifeCommand(*S, P).Command21_Click();
  const auto& p = S->params;
  ASSERT_EQ(p.JackCohortSize, N);
  for (int i = 1; i <= N; ++i) {
    const auto& a = cohort[static_cast<std::size_t>(i - 1)];
    // N R0 - (N - 1) R0(i) leaves exactly the eggs of the one left out.
    EXPECT_NEAR(p.JackPseudoR0(i), a.sex == "F" ? EggsOf(a) : 0, 1e-9) << i;
    EXPECT_NEAR(p.JackPseudoR(i), N * r - (N - 1) * p.JackR(i), 1e-12) << i;
  }
  // A female and a male left out: their cohorts' own Basic Runs give the same r, lambda, T.
  for (int left : {2, 12}) {
    auto less = cohort;
    less.erase(less.begin() + (left - 1));
    test::FakePrompts q;
    auto L = boottest::BasicRunOf(dir.file("less" + std::to_string(left) + ".txt"), 3, less, q);
    EXPECT_DOUBLE_EQ(p.JackR(left), L->params.R_Basic) << left;
    EXPECT_DOUBLE_EQ(p.JackLambda(left), L->params.Lambda_Basic) << left;
    EXPECT_DOUBLE_EQ(p.JackT(left), L->params.T_Basic) << left;
  }
  // The Basic Run's records and cohort stand.
  EXPECT_EQ(S->params.R_Basic, r);
  EXPECT_EQ(S->basic.OriginalLx(5), lx5);
  EXPECT_EQ(S->ws.cohort.CohortSize, N);
  EXPECT_EQ(P.charts.size(), 1u);
  EXPECT_EQ(test::Lines(dir.file("c_7_Jackknif-results.txt")).size(), static_cast<std::size_t>(N) + 1);

  // A second press shows the chart again and computes nothing.
  std::filesystem::remove(dir.file("c_0_Output-Jackknife.txt"));
  JackknifeCommand(*S, P).Command21_Click();
  EXPECT_EQ(P.charts.size(), 2u);
  EXPECT_FALSE(std::filesystem::exists(dir.file("c_0_Output-Jackknife.txt")));
}

TEST(Jackknife, OneOrNoFertileFemaleIsRefused) {
  test::TempDir dir;
  for (int fertile : {1, 0}) {
    std::vector<PoolIndividual> cohort = {{"F", {2, 3}, {}}, {"M", {2, 4}, {}}, {"F", {3, 2}, {}}};
    if (fertile == 1) cohort[0].eggs = {4, 5};
    test::OrderedPrompts basic;  // a cohort without offspring says so in the Basic Run
    auto S = boottest::BasicRunOf(dir.file("f" + std::to_string(fertile) + ".txt"), 2, cohort, basic);
    test::FakePrompts P;
    P.Answer("Only one female reproduced.", "OK");
    JackknifeCommand(*S, P).Command21_Click();
    ASSERT_TRUE(P.Met("Only one female reproduced."));
    EXPECT_EQ(P.With("Only one female reproduced.").front().text,
              fertile == 1 ? "There is only one fertile female. Jackknife is impossible."
                           : "There is no fertile female. Jackknife is impossible.");
    EXPECT_FALSE(P.Met("Note well!"));
    EXPECT_EQ(S->params.JackknifeDone, "");
  }
}

}  // namespace
}  // namespace korvan
