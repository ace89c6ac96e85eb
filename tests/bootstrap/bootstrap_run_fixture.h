#pragma once
// A whole session for the bootstrap's tests: a data file written by the test, a Basic Run on
// it, and a bootstrap run with the answers of a detailed run.
#include <memory>
#include <string>
#include <vector>

#include "commands/bootstrap_driver.h"
#include "bootstrap/bootstrap_fixture.h"
#include "commands/basic_run_driver.h"
#include "support/test_support.h"

namespace korvan::boottest {

// A three-stage cohort of 24 with females, males and deaths in both preadult stages.
inline std::vector<PoolIndividual> SmallCohort() {
  std::vector<PoolIndividual> c;
  for (int i = 0; i < 9; ++i) {
    std::vector<double> eggs;
    for (int d = 0; d < 6 + i % 4; ++d) eggs.push_back((d + i) % 5 == 0 ? 0 : (d * 3 + i) % 7 + 1);
    c.push_back({"F", {3.0 + i % 2, 4.0 + i % 3, 6.0 + i % 4}, eggs});
  }
  for (int i = 0; i < 7; ++i) c.push_back({"M", {3.0 + i % 3, 5.0 - i % 2, 4.0 + i % 5}, {}});
  for (int i = 0; i < 4; ++i) c.push_back({"N", {-(1.0 + i % 3)}, {}});
  for (int i = 0; i < 4; ++i) c.push_back({"N", {3, -(2.0 + i)}, {}});
  return c;
}

// A store after the Fast Basic Run of a data file.
inline std::unique_ptr<Session> BasicRunOf(const std::string& path, PromptService& P) {
  auto S = std::make_unique<Session>();
  S->StartUp();
  S->identity.DataFilePath = path;
  S->identity.DataFileBase = path.substr(0, path.size() - 4);
  S->header.RegularLifeTable = "Yes";
  S->options.MatingMode = "Yes";
  S->options.FastRun = "Yes";
  S->options.OutputLevel = "No";
  BasicRunDriver(*S, P).cmdBasicRunA2_Click();
  return S;
}

// The same of a data file of these individuals (stages "S1".."S<m-1>").
inline std::unique_ptr<Session> BasicRunOf(const std::string& path, int m, const std::vector<PoolIndividual>& pool,
                                                 PromptService& P) {
  test::WriteFile(path, DataFileText(m, pool));
  return BasicRunOf(path, P);
}

// The answers of a detailed run of B samples of size n with only effective samples or not.
inline void AnswerDetailedRun(ListPrompts& P, int B, int n, bool effectiveOnly) {
  P.Answer("Cumulative (or additive) bootstrapping?", "1");
  P.Answer("Set the criterion of infertile sample?", "1");
  P.Answer("Fast run for bootstrap?", "Cancel");
  P.Answer("Same bootstrap samples?", "No");
  P.Answer("Detailed bootstrap results?", "Yes");
  P.Answer("Only effective bootstraps?", effectiveOnly ? "Yes" : "No");
  P.Answer("More bars for histogram chart?", "Yes");
  P.Answer("Normal density curve?", "No");
  P.Answer("Number of bootstrap resamplings (B)=?", std::to_string(B));
  P.Answer("Bootstrap sample size (n) =?", std::to_string(n));
  P.Answer("Fast steps?", "Yes");
  P.Answer("Task completed", "OK");
}

}  // namespace korvan::boottest
