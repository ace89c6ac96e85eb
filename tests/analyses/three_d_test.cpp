#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analyses/three_d.h"
#include "commands/match_commands.h"
#include "commands/run_command.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/command_table.h"

namespace korvan {
namespace {

// The five Basic Runs of the example 3D study, each in a session of its own, leave their
// matrix files in one folder.
struct ThreeDStudy {
  test::TempDir dir;
  std::map<std::string, double> r0;  // the Basic Run's R0 of each file
  std::string File(const std::string& kind) const {
    const std::string base = dir.file("mite_" + kind);
    if (kind == "male") return base + "_20_For_3D_matrices for_Sex_M.txt";
    if (kind == "ntype") return base + "_20_For_3D_matrices for_Sex_N.txt";
    return base + "_20_3D_matrices for_Sex_F_" + kind + ".txt";
  }
  ThreeDStudy() {
    for (const char* kind : {"daughter", "son", "infertile", "male", "ntype"}) {
      const std::string data = dir.file(std::string("mite_") + kind + ".txt");
      std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/3d/mite_" + kind + ".txt", data);
      auto S = std::make_unique<Session>();
      S->StartUp();
      SetStartUpConsole(S->console);
      test::FakePrompts P;
      P.Answer("Open life table data file", data);
      P.Answer("Do you need only the basic output (0A) and figure files?", "No");
      P.Answer("Fast run for two-sex or parthenogenetic population?", std::string(kind) == "male" ? "Yes" : "No");
      P.Answer("Do you need the contribution of this life table to intrinsic rate?", "No");
      P.Answer("Net reproductive rate = 0!", "OK");
      EXPECT_EQ(RunCommand(*S, P, "cmdReadDataA1").ending, CommandEnding::Ran) << kind;
      r0[kind] = S->params.R0_Basic;
    }
  }
  // Command E on the files; nType "No" leaves the N-type files out.
  void RunE(Session& S, test::FakePrompts& P, const char* nType = "Yes", const std::string& son = "") const {
    for (const char* t : {"Read matrices for female cohort and female offspring", "Read matrices of male cohort.",
                          "Read matrices of female cohort and male offspring.",
                          "Read matrices of female cohort and N-type offspring.", "3D analysis completed"})
      for (int i = 0; i < 2; ++i) P.Answer(t, "OK");
    P.Answer("Do you need flow record?", "No");
    P.Answer("Did you analyze your life table for three type offspring?", "Yes");
    P.Answer("Open female data file (female offspring)", File("daughter"));
    P.Answer("Open female data file (male offspring)", son.empty() ? File("son") : son);
    P.Answer("If there are N-type offspring, click on Yes.", nType);
    P.Answer("Open female data file (N-type offspring)", File("infertile"));
    P.Answer("Open male data file", File("male"));
    P.Answer("Open N-type data file", File("ntype"));
    MatchCommands(S, P).FMNmatrices_Click();
  }
};

TEST(ThreeDLifeTable, SharesAreTheDominantEigenvectorOfTheWholePopulation) {
  ThreeDStudy study;
  auto S = std::make_unique<Session>();
  test::FakePrompts P;
  study.RunE(*S, P);
  const ThreeDRecord& D = S->threeD;
  ASSERT_TRUE(std::filesystem::exists(study.dir.file("mite_daughter_20_3D_matrices for_Sex_F_daughter-3D output.txt")));

  // The projection of all three cohorts from the g, d and offspring f read: a newborn of type t
  // comes from the female cohort's adults through f_t(x). Power iteration gives the dominant
  // eigenvalue and eigenvector.
  const int ages = 60, stages = 6;
  auto at = [&](int t, int x, int j) { return static_cast<std::size_t>(((t - 1) * ages + x) * stages + j); };
  std::vector<double> n(static_cast<std::size_t>(3 * ages * stages), 0), next(n.size());
  n[at(1, 0, 1)] = 1;
  double lambda = 0;
  const int f = D.FemaleStage3D;
  for (int step = 0; step < 3000; ++step) {
    std::fill(next.begin(), next.end(), 0);
    for (int t = 1; t <= 3; ++t) {
      const int m = D.CohortStageCount(t);
      for (int x = 0; x + 1 < ages; ++x)
        for (int j = 1; j <= m; ++j) {
          const double here = n[at(t, x, j)];
          if (here == 0) continue;
          next[at(t, x + 1, j)] += D.CohortGxj(t, x, j) * here;
          if (j < m) next[at(t, x + 1, j + 1)] += D.CohortDxj(t, x, j) * here;
          if (t == 1 && j == f)
            for (int o = 1; o <= 3; ++o) next[at(o, 0, 1)] += D.OffspringFxj(o, x) * here;
        }
    }
    double sum = 0, before = 0;
    for (std::size_t i = 0; i < n.size(); ++i) sum += next[i], before += n[i];
    lambda = sum / before;
    for (std::size_t i = 0; i < n.size(); ++i) n[i] = next[i] / sum;
  }
  EXPECT_NEAR(lambda, D.FiniteRate3D, 1e-6);
  double byType[4] = {0, 0, 0, 0}, byStage[stages] = {0, 0, 0, 0, 0, 0};
  for (int t = 1; t <= 3; ++t)
    for (int x = 0; x < ages; ++x)
      for (int j = 1; j < stages; ++j) {
        byType[t] += n[at(t, x, j)];
        byStage[j] += n[at(t, x, j)];
      }
  for (int t = 1; t <= 3; ++t) EXPECT_NEAR(D.ProportionByType(t), byType[t], 1e-6) << t;
  for (int j = 1; j <= D.CohortStageCount(1); ++j) EXPECT_NEAR(D.ProportionByStage(j), byStage[j], 1e-6) << j;
  // Alpha: newborn sons (infertile) per newborn daughter in the stable population.
  EXPECT_NEAR(D.Alpha(2), n[at(2, 0, 1)] / n[at(1, 0, 1)], 1e-6);
  EXPECT_NEAR(D.Alpha(3), n[at(3, 0, 1)] / n[at(1, 0, 1)], 1e-6);
  // R0 by type: the net reproductive rate of each file's own Basic Run.
  EXPECT_NEAR(D.R0ByType(1), study.r0["daughter"], 1e-9);
  EXPECT_NEAR(D.R0ByType(2), study.r0["son"], 1e-9);
  EXPECT_NEAR(D.R0ByType(3), study.r0["infertile"], 1e-9);
  EXPECT_NEAR(D.R0Total3D, study.r0["daughter"] + study.r0["son"] + study.r0["infertile"], 1e-9);
}

TEST(ThreeDLifeTable, NoNTypeAndAFecundityClosedEarly) {
  ThreeDStudy study;
  {
    auto S = std::make_unique<Session>();
    test::FakePrompts P;
    study.RunE(*S, P, "No");
    EXPECT_EQ(S->threeD.Alpha(3), 0);
    EXPECT_EQ(S->threeD.ProportionByType(3), 0);
    EXPECT_NEAR(S->threeD.ProportionByType(1) + S->threeD.ProportionByType(2), 1, 1e-12);
    EXPECT_FALSE(P.Met("Open N-type data file"));
  }
  // A -1 in the sons' fecundity ends that file: the later ages read as 0.
  const std::string cut = study.dir.file("cut_son.txt");
  std::string text = test::ReadFile(study.File("son"));
  const std::size_t at = text.find("fecundity data for female\"\n") + 27;
  text.insert(text.find(',', text.find(',', at) + 1) + 1, "-1,");
  test::WriteFile(cut, text);
  auto S = std::make_unique<Session>();
  test::FakePrompts P;
  study.RunE(*S, P, "Yes", cut);
  const ThreeDRecord& D = S->threeD;
  const int first = D.CohortStageFirstAge(1, D.FemaleStage3D);
  for (int x = first + 2; x <= D.CohortStageLastAge(1, D.FemaleStage3D); ++x) EXPECT_EQ(D.OffspringFxj(2, x), 0) << x;
  // A -1 in the daughters' file leaves it without its finite rate: refused with a message.
  const std::string cutDaughter = study.dir.file("cut_daughter.txt");
  text = test::ReadFile(study.File("daughter"));
  text.insert(text.find("fecundity data for female\"\n") + 27, "-1,");
  test::WriteFile(cutDaughter, text);
  auto S2 = std::make_unique<Session>();
  test::FakePrompts P2;
  P2.Answer("Open female data file (female offspring)", cutDaughter);
  EXPECT_THROW(ThreeDMatrices(*S2, P2).ReadFMNofFemaleOffspring(), ProgramEnd);
}

}  // namespace
}  // namespace korvan
