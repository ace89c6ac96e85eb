// The transform commands on data files: the files they write pass A1's check and give the
// Basic Run what the change implies; the files of "Split LT" match back into the cohort; bad
// answers are asked again, and the file read is never written.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "bootstrap/bootstrap_run_fixture.h"
#include "commands/run_command.h"
#include "input/check_data_file.h"
#include "input/data_file_reader.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/command_table.h"
#include "ui/console_rules.h"

namespace korvan {
namespace {

using Prompts = test::OkPrompts;

struct Params {
  double r, lambda, R0, T, GRR;
};

// A1's check of a file in a Fast Run of two sexes, then Basic Run.
Params Analyse(const std::string& path) {
  Prompts P;
  Session checked;
  checked.identity.DataFilePath = path;
  checked.options.FastRun = "Yes";
  checked.options.MatingMode = "Yes";
  checked.header.RegularLifeTable = "Yes";
  CheckDataFile(checked, P).CheckDataFile2();
  const auto run = boottest::BasicRunOf(path, P);
  const PopulationParameters& p = run->params;
  return {p.R_Basic, p.Lambda_Basic, p.R0_Basic, p.T_Basic, p.GRR_Basic};
}

void ExpectSameParameters(const Params& a, const Params& b, const std::string& file) {
  EXPECT_DOUBLE_EQ(a.r, b.r) << file;
  EXPECT_DOUBLE_EQ(a.lambda, b.lambda) << file;
  EXPECT_DOUBLE_EQ(a.R0, b.R0) << file;
  EXPECT_DOUBLE_EQ(a.T, b.T) << file;
  EXPECT_DOUBLE_EQ(a.GRR, b.GRR) << file;
}

// The hand cohort of support/cohort.h (stages S1, S2 and the adult stage) as a data file.
struct Bench {
  test::TempDir dir;
  const std::string data = dir.file("hand.txt");
  const std::string text;
  Session S;
  Prompts P;
  explicit Bench(std::string fileText = test::DataFileText(3, test::HandCohort())) : text(std::move(fileText)) {
    test::WriteFile(data, text);
    S.StartUp();
    SetStartUpConsole(S.console);
  }
  // As A1 leaves the session once it has checked the file.
  void AfterA1() {
    S.identity.DataFileRead = "Yes";
    S.identity.DataFilePath = data;
    S.identity.DataFileBase = dir.file("hand");
    S.header.RegularLifeTable = "Yes";
    ApplyConsoleRule(S.console, "A1 file checked");
  }
  // Presses a transform as the user does; the file it wrote, or empty.
  std::string Run(const char* command) {
    S.identity.OutputFileName.clear();
    const CommandOutcome out = RunCommand(S, P, command);
    EXPECT_EQ(out.ending, CommandEnding::Ran) << command << ": " << out.title << ": " << out.message;
    return S.identity.OutputFileName;
  }
  std::string LastMessage(const std::string& title) const { return P.With(title).back().text; }
};

TEST(TransformCommands, ChangesThatChangeNothingKeepTheBasicRunsResults) {
  Bench b;
  b.AfterA1();
  b.P.Answer("Grouping stage", "2").Answer("Grouping stage", "2").Answer("Name of the grouped stage", "S2");
  const std::string grouped = b.Run("F");
  b.P.Answer("Time units x =?", "1");
  const std::string sameUnit = b.Run("K");
  b.P.Answer("Stage to lengthen", "1").Answer("Fixed time or share?", "Yes").Answer("Time to add", "0");
  const std::string plusNothing = b.Run("cmdAddDurationToStage");
  // The longest adult life of a female in the hand cohort is 5.
  b.P.Answer("Reduce rep. period", "Yes").Answer("Reproduction period", "5");
  const std::string allEggs = b.Run("cmdReduceReprodPeriod");
  EXPECT_EQ(b.P.Unused(), 0u);
  EXPECT_EQ(test::Lines(grouped).at(2), "\"Control-stages 2-2 grouped as S2\"");
  EXPECT_EQ(test::Lines(allEggs).at(2), "\"Control-eggs of the first 5 adult days\"");

  const Params original = Analyse(b.data);
  EXPECT_GT(original.r, 0);
  for (const std::string& file : {grouped, sameUnit, plusNothing, allEggs}) ExpectSameParameters(Analyse(file), original, file);
  EXPECT_EQ(test::ReadFile(b.data), b.text);
}

TEST(TransformCommands, NetReproductiveRateStaysAndTheIntrinsicRateFallsAsAPreadultStageGrows) {
  Bench b;
  b.AfterA1();
  const Params original = Analyse(b.data);
  b.P.Answer("Time units x =?", "4");
  const Params quarter = Analyse(b.Run("K"));
  EXPECT_NEAR(quarter.R0, original.R0, 1e-9);
  EXPECT_NE(b.LastMessage("K. 1t to xt").find("enter 0.25 at \"Each time unit =?\""), std::string::npos);

  b.P.Answer("Stage to lengthen", "1").Answer("Fixed time or share?", "Yes").Answer("Time to add", "2");
  const Params slower = Analyse(b.Run("cmdAddDurationToStage"));
  EXPECT_NEAR(slower.R0, original.R0, 1e-9);
  EXPECT_LT(slower.r, original.r);
  EXPECT_GT(slower.T, original.T);
  b.P.Answer("Stage to lengthen", "2").Answer("Fixed time or share?", "No").Answer("Share to add", "0.5");
  EXPECT_LT(Analyse(b.Run("cmdAddDurationToStage")).r, original.r);
  b.P.Answer("Position of the new stage", "2").Answer("Name of the new stage", "Prepupa")
      .Answer("Duration of the new stage", "1");
  const Params added = Analyse(b.Run("cmdAddStage"));
  EXPECT_NEAR(added.R0, original.R0, 1e-9);
  EXPECT_LT(added.r, original.r);
}

TEST(TransformCommands, SplitLifeTableMatchedWithItsOriginalPairsIsTheCohortAgain) {
  Bench b;
  // No A1: the file is chosen and checked, and is the session's data file from now on.
  b.P.Answer("Open life table data file", b.data).Answer("Rearing cost for each stage?", "Yes");
  b.Run("cmdSplit");
  EXPECT_EQ(b.S.identity.DataFilePath, b.data);
  EXPECT_EQ(b.P.status["txtDatafile"], b.data);
  const std::string immature = b.dir.file("hand_0-Immature life table.txt");
  const std::string adult = b.dir.file("hand_0-Adult life table.txt");

  Session R;
  b.P.Answer("Open immature life table", immature).Answer("Open adult life table", adult);
  DataFileReader(R, b.P).InputImmatureLifeTable();
  DataFileReader(R, b.P).InputAdultLifeTable();
  Session O;
  O.identity.DataFilePath = b.data;
  O.header.RegularLifeTable = "Yes";
  DataFileReader(O, b.P).InputData();
  const Cohort& c = O.ws.cohort;
  const int m = O.header.StageCount;

  // Immature record i with, when it became adult, the next adult of the adult file.
  ASSERT_EQ(R.immature.ImmatureCount, c.CohortSize);
  long k = 0;
  for (long i = 1; i <= c.CohortSize; ++i) {
    EXPECT_EQ(R.immature.ImmatureSex(i), c.IndividualSex(i));
    for (int j = 1; j < m; ++j) EXPECT_EQ(R.immature.ImmatureDuration(i, j), c.StageDuration(i, j)) << i << " " << j;
    if (c.IndividualSex(i) == "N") continue;
    ++k;
    EXPECT_EQ(R.adult.AdultIndividualSex(k), c.IndividualSex(i));
    const long d = R.adult.AdultLongevity(k);
    EXPECT_EQ(d, c.StageDuration(i, m));
    if (c.IndividualSex(i) != "F") continue;
    for (long x = 1; x <= d + 1; ++x) EXPECT_EQ(R.adult.AdultFecundity(k, x), c.Fecundity(i, x)) << i << " day " << x;
  }
  EXPECT_EQ(k, R.adult.AdultCohortSize);
  EXPECT_EQ(R.immature.head.TreatmentName, R.adult.head.TreatmentName);

  // The adult file overwinters: 3 days without eggs before each adult life.
  b.P.Answer("Open adult life table", adult).Answer("Overwinter duration", "3").Answer("Overwinter mortality", "0");
  const std::string wintered = b.Run("O");
  EXPECT_EQ(wintered, b.dir.file("hand_0-Adult life table_0_Overwinter 3 days.txt"));
  Session W;
  b.P.Answer("Open adult life table", wintered);
  DataFileReader(W, b.P).InputAdultLifeTable();
  EXPECT_EQ(W.adult.head.TreatmentName, R.adult.head.TreatmentName + "-overwinter 3 days");
  for (long a = 1; a <= R.adult.AdultCohortSize; ++a) {
    EXPECT_EQ(W.adult.AdultLongevity(a), R.adult.AdultLongevity(a) + 3);
    if (R.adult.AdultIndividualSex(a) != "F") continue;
    for (long x = 1; x <= 3; ++x) EXPECT_EQ(W.adult.AdultFecundity(a, x), 0);
    for (long x = 1; x <= R.adult.AdultLongevity(a) + 1; ++x)
      EXPECT_EQ(W.adult.AdultFecundity(a, x + 3), R.adult.AdultFecundity(a, x));
  }
}

TEST(TransformCommands, ACostFileChosenKeepsItsCostsAndIsTheSessionsDataFile) {
  Bench b("\"Project: Costs\"\n\"Tester\"\n\"Control\"\n3\n2,3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\n1,2,3,4\n"
          "Egg,Larva\n 1 ,F, 2, 2, 3\n1,1,1,-1\n 2 ,M, 2, 3, 2\n 3 ,N, 1,-1\n");
  b.P.Answer("Open life table data file", b.data).Answer("Rearing cost for each stage?", "No");
  b.P.Answer("Grouping stage", "1").Answer("Grouping stage", "2").Answer("Name of the grouped stage", "Young");
  const std::string grouped = b.Run("Command28");
  Session back;
  back.identity.DataFilePath = grouped;
  back.header.RegularLifeTable = "No";
  DataFileReader(back, b.P).InputData();
  EXPECT_EQ(back.header.StageCount, 2);
  // 5 time units in the egg at 1, 6 in the larva at 2.
  EXPECT_NEAR(back.header.StageRearingCost(1, 1), 17.0 / 11, 1e-12);
  EXPECT_EQ(back.header.StageRearingCost(1, 2), 3);
  EXPECT_EQ(back.header.StageRearingCost(2, 2), 4);
  EXPECT_EQ(back.ws.cohort.StageDuration(2, 1), 5);
  EXPECT_EQ(back.ws.cohort.StageDuration(3, 1), -2);
  EXPECT_EQ(b.S.identity.DataFileBase, b.dir.file("hand"));
}

TEST(TransformCommands, BadAnswersAreAskedAgainAndTheFileReadIsNeverWritten) {
  Bench b;
  b.AfterA1();
  // Three refusals and the command ends with nothing written.
  b.P.Answer("Time units x =?", "0").Answer("Time units x =?", "25").Answer("Time units x =?", "two");
  EXPECT_EQ(b.Run("K"), "");
  ASSERT_EQ(b.P.With("Not accepted").size(), 3u);
  EXPECT_EQ(b.P.With("Not accepted")[0].text, "\"0\" is no whole number from 1 to 24.\nPlease enter it again.");
  EXPECT_NE(b.LastMessage("Not accepted").find("No file was written."), std::string::npos);
  EXPECT_FALSE(b.P.Met("K. 1t to xt"));

  // Each refused answer is asked again: the adult stage, a share of 1, a name the stage line
  // can't hold, a name twice.
  b.P.Answer("Stage to split", "3").Answer("Stage to split", "2");
  b.P.Answer("Share of the first part", "1").Answer("Share of the first part", "0.5");
  b.P.Answer("Name of the first part", "Early, late").Answer("Name of the first part", "Early");
  b.P.Answer("Name of the second part", "Early").Answer("Name of the second part", "S2-2");
  const std::string split = b.Run("cmdSplitStage");
  EXPECT_EQ(b.P.With("Not accepted").size(), 7u);
  EXPECT_EQ(test::Lines(split).at(5), "F,S1,Early,S2-2,Female");
  Analyse(split);

  // A file in the place of the new one that is the file read: refused, nothing written.
  std::filesystem::create_symlink(b.data, b.dir.file("hand_0_Grouped stages 1-1.txt"));
  b.P.Answer("Grouping stage", "1").Answer("Grouping stage", "1").Answer("Name of the grouped stage", "S1");
  EXPECT_EQ(b.Run("F"), "");
  EXPECT_NE(b.LastMessage("No file written").find("would be written over the file read"), std::string::npos);
  EXPECT_EQ(test::ReadFile(b.data), b.text);
  EXPECT_EQ(b.P.Unused(), 0u);
}

}  // namespace
}  // namespace korvan
