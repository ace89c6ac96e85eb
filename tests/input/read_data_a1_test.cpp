// "A1. Read data": the row of dialogues, the Fast Run's settings, the flow record, the
// contribution file, the console's enabling, and the count of samples that can't mate.
#include "commands/read_data_a1.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::FakePrompts;

const char* kChooser = "Open life table data file";
const char* kMinimal = "Do you need only the basic output (0A) and figure files?";
const char* kFast = "Fast run for two-sex or parthenogenetic population?";
const char* kFlow = "Do you need flow record?";
const char* kContribution = "Do you need the contribution of this life table to intrinsic rate?";
const char* kExtent = "Do you need all output files?";
const char* kRearing = "Rearing cost for each stage?";
const char* kKind = "General analysis or 3D analysis?";

// A session with the good test file copied into a fresh folder, so that flow files land there.
struct Bench {
  test::TempDir dir;
  std::unique_ptr<Session> S = std::make_unique<Session>();
  FakePrompts P;
  std::string data;
  std::optional<ProgramEnd> end;

  Bench() {
    data = dir.file("good.txt");
    test::WriteFile(data, test::ReadFile(test::DataPath("check_good.txt")));
    S->StartUp();
    P.Answer(kChooser, data);
  }
  void Run() {
    try {
      ReadDataA1(*S, P).cmdReadDataA1_Click();
    } catch (const ProgramEnd& e) {
      end = e;
    }
  }
  std::vector<std::string> Files() const {
    std::vector<std::string> out;
    for (const auto& e : std::filesystem::directory_iterator(dir.path())) out.push_back(e.path().filename().string());
    return out;
  }
};

TEST(ReadDataA1, FastRunSetsItsTableAndAsksNothingElse) {
  for (const char* answer : {"Yes", "No"}) {
    Bench s;
    Session& S = *s.S;
    // Values an earlier run could have left, all of which a Fast Run resets.
    S.settings.FecundityFactor = 0.5;
    S.settings.TimeUnit = 0.25;
    S.settings.PrecisionCalculus = 1e-3;
    S.options.AnalysisMethod = "Matrix";
    S.options.MoreOptions = S.options.EffectOfFxjFlag = S.options.WriteSubMatrix = "Yes";
    S.options.ConsumptionRead = S.options.CountOldFemales = "Yes";
    S.options.AgeConvention = "x";
    S.options.SubMatrixAge = 7;
    S.options.SubMatrixStage = 3;
    S.options.OutputLevel = "No";
    S.options.FlowMode = "Yes";  // an earlier run had a flow record
    S.header.RegularLifeTable = "No";
    s.P.Answer(kMinimal, "No").Answer(kFast, answer).Answer(kContribution, "No");
    s.Run();
    ASSERT_FALSE(s.end) << s.end->message;

    EXPECT_EQ(s.P.Titles(), (std::vector<std::string>{kChooser, kMinimal, kFast, kContribution})) << answer;
    EXPECT_EQ(S.options.FastRun, "Yes");
    EXPECT_EQ(S.options.MatingMode, answer == std::string("Yes") ? "Yes" : "No");
    EXPECT_EQ(S.settings.FecundityFactor, 1);
    EXPECT_EQ(S.settings.TimeUnit, 1);
    EXPECT_EQ(S.settings.PrecisionCalculus, 1e-07);
    EXPECT_EQ(S.options.AnalysisMethod, "Calculus");
    for (const std::string* o : {&S.options.MoreOptions, &S.options.EffectOfFxjFlag, &S.options.WriteSubMatrix,
                                 &S.options.ConsumptionRead, &S.options.CountOldFemales, &S.options.FlowMode})
      EXPECT_EQ(*o, "No");
    EXPECT_EQ(S.options.AgeConvention, "x+1");
    EXPECT_EQ(S.options.SubMatrixAge, 0);
    EXPECT_EQ(S.options.SubMatrixStage, 1);
    EXPECT_EQ(S.header.RegularLifeTable, "Yes");
    EXPECT_EQ(S.options.OutputLevel, "Yes");
    EXPECT_EQ(S.options.ContributionWanted, "No");
    // No flow file, though the earlier run had one.
    for (const std::string& f : s.Files()) EXPECT_EQ(f.find("_0_Flow_"), std::string::npos) << f;
    EXPECT_FALSE(S.channels.Flow.IsOpen());
    // Basic Run was pressed by program and closed behind it.
    EXPECT_TRUE(std::filesystem::exists(s.dir.file("good_0A_Life Table_Output.txt")));
    EXPECT_EQ(S.basic.BasicRunDone, "yes");
    EXPECT_FALSE(S.console.IsEnabled("cmdBasicRunA2"));
    EXPECT_EQ(S.identity.DataFilePath, s.data);
    EXPECT_EQ(S.identity.DataFileBase, s.dir.file("good"));
    EXPECT_EQ(S.identity.DataFileRead, "Yes");
    EXPECT_EQ(s.P.status.at("txtDatafile"), s.data);
    EXPECT_EQ(s.P.status.at("Caption"), " (Treatment: Lab 25C)");
  }
}

TEST(ReadDataA1, DialogueTexts) {
  Bench s;
  s.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "No");
  s.Run();
  ASSERT_FALSE(s.end);
  const auto minimal = s.P.With(kMinimal).at(0);
  EXPECT_EQ(minimal.text,
            "Minimal outputs?\n\nYes: Only basic output and figure files. (For test program and MNT)\nNo: Regular "
            "run.\nCancel: End the program.");
  EXPECT_EQ(minimal.buttons, kYesNoCancel);
  const std::string fast = s.P.With(kFast).at(0).text;
  EXPECT_TRUE(fast.starts_with("Do you want to run Fast Run?\nIf you don't want do Fast Run, click \"Cancel\".\n"));
  EXPECT_NE(fast.find("teaching.\n\n##### To use the button \"M\", clcik \"Cancel.\", then complete BASIC RUN.\n\nIf "),
            std::string::npos);
  EXPECT_NE(fast.find("\n   5. No curtailed life table will be calculated\n   6. No rearing cost"), std::string::npos);
  EXPECT_NE(fast.find("3D life table.\n\nYes: Fast run for two-sex reproduction.\n"), std::string::npos);
  EXPECT_TRUE(fast.ends_with("\nCancel: Go through all steps. (Choose this for 3D life table.)"));
  const std::string contribution = s.P.With(kContribution).at(0).text;
  EXPECT_TRUE(contribution.starts_with("##### Cancel: Print MNT output files only.\n\nDo you want"));
  EXPECT_TRUE(contribution.ends_with("analysis.\n##### Cancel: Print MNT output files only."));
  EXPECT_NE(contribution.find("contribution of different offspring to the population parameters.\nYou have"),
            std::string::npos);
  EXPECT_NE(contribution.find("pooled fecundity,you can use this option"), std::string::npos);
  EXPECT_NE(contribution.find("(or wingless aphds).\n\nIf"), std::string::npos);
}

TEST(ReadDataA1, RegularRunWithFlowRecord) {
  Bench s;
  s.P.Answer(kMinimal, "No").Answer(kFast, "Cancel").Answer(kFlow, "Yes").Answer(kContribution, "No");
  s.P.Answer(kExtent, "Cancel").Answer(kRearing, "Yes").Answer(kKind, "2");
  s.Run();
  ASSERT_FALSE(s.end) << s.end->message;
  const Session& S = *s.S;
  EXPECT_EQ(s.P.Titles(), (std::vector<std::string>{kChooser, kMinimal, kFast, kFlow, kContribution, kExtent,
                                                    kRearing, kKind}));
  EXPECT_EQ(S.options.FastRun, "No");
  EXPECT_EQ(S.options.FlowMode, "Yes");
  EXPECT_EQ(S.options.QuietCheck, "Yes");
  EXPECT_EQ(S.options.OutputLevel, "Yes");  // left as it stood
  EXPECT_EQ(S.options.MatingMode, "No");
  EXPECT_EQ(s.P.status.count("txtCohortsize"), 0u);

  // The flow record's name carries the time; it stays open and records the procedures met.
  ASSERT_TRUE(S.channels.Flow.IsOpen());
  const std::string name = std::filesystem::path(S.identity.FlowFileName).filename().string();
  EXPECT_TRUE(std::regex_match(name, std::regex(R"(good_0_Flow_20\d{2}[1-9]\d?[1-9]\d?-time_\d{1,6}\.txt)"))) << name;
  s.S->channels.Flow.Close();
  EXPECT_EQ(test::ReadFile(S.identity.FlowFileName), "Sub CheckDataFile2\nSub CalcuFMpairLessthan2\n");

  // Cancel at the flow question records for the bootstrap: the file is made and stays open.
  Bench boot;
  boot.P.Answer(kMinimal, "No").Answer(kFast, "Cancel").Answer(kFlow, "Cancel").Answer(kContribution, "No");
  boot.P.Answer(kExtent, "No").Answer(kRearing, "Yes").Answer(kKind, "1");
  boot.Run();
  ASSERT_FALSE(boot.end);
  EXPECT_EQ(boot.S->options.FlowMode, "Boot");
  EXPECT_EQ(boot.S->options.OutputLevel, "No");
  EXPECT_TRUE(boot.S->channels.Flow.IsOpen());
  EXPECT_EQ(boot.Files().size(), 2u);
}

TEST(ReadDataA1, FlowFileNameHasNoLeadingZeros) {
  std::tm t{};
  t.tm_year = 2024 - 1900;
  t.tm_mon = 4;
  t.tm_mday = 7;
  t.tm_hour = 9;
  t.tm_min = 3;
  t.tm_sec = 5;
  EXPECT_EQ(FlowFileNameFor("/d/aphid", t), "/d/aphid_0_Flow_202457-time_935.txt");
  t.tm_mon = 11;
  t.tm_mday = 31;
  t.tm_hour = 23;
  t.tm_min = 59;
  t.tm_sec = 0;
  EXPECT_EQ(FlowFileNameFor("x", t), "x_0_Flow_20241231-time_23590.txt");
}

TEST(ReadDataA1, MinimalOutputAndCancelledChoices) {
  // Yes at "Minimal outputs?" leaves only the questions of the check.
  Bench minimal;
  minimal.S->options.FlowMode = "Yes";
  minimal.P.Answer(kMinimal, "Yes").Answer(kRearing, "Yes").Answer(kKind, "1");
  minimal.Run();
  ASSERT_FALSE(minimal.end);
  EXPECT_EQ(minimal.P.Titles(), (std::vector<std::string>{kChooser, kMinimal, kRearing, kKind}));
  const Options& o = minimal.S->options;
  EXPECT_EQ(o.MinimalOutput, "Yes");
  EXPECT_EQ(o.OutputLevel, "Nooutput");
  EXPECT_EQ(o.MntOutputOnly, "Yes");
  EXPECT_EQ(o.FlowMode, "No");
  EXPECT_EQ(o.FastRun, "No");
  EXPECT_TRUE(minimal.S->console.IsEnabled("cmdBasicRunA2"));

  // Cancel there ends the program.
  Bench cancel;
  cancel.P.Answer(kMinimal, "Cancel");
  cancel.Run();
  ASSERT_TRUE(cancel.end);
  EXPECT_EQ(cancel.end->title, kMinimal);

  // Cancel at the contribution: MNT output only.
  Bench mnt;
  mnt.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "Cancel");
  mnt.Run();
  EXPECT_EQ(mnt.S->options.OutputLevel, "Nooutput");
  EXPECT_EQ(mnt.S->options.MntOutputOnly, "Yes");

  // No file chosen: the console stays as it was but for DataFileRead and Command44.
  Bench none;
  none.P = FakePrompts();
  none.P.Answer(kChooser, "");
  none.S->console.Enable("cmdReadDataA1");
  none.Run();
  ASSERT_FALSE(none.end);
  EXPECT_EQ(none.P.Titles(), std::vector<std::string>{kChooser});
  EXPECT_EQ(none.S->identity.DataFileRead, "Yes");
  EXPECT_TRUE(none.S->console.IsEnabled("Command44"));
  EXPECT_TRUE(none.S->console.IsEnabled("cmdReadDataA1"));
  EXPECT_FALSE(none.S->console.IsEnabled("cmdBasicRunA2"));
  EXPECT_EQ(none.S->identity.DataFilePath, "");
}

TEST(ReadDataA1, ConsoleAfterTheStep) {
  Bench s;
  ConsoleState& c = s.S->console;
  for (const char* on : {"cmdReadDataA1", "cmdMatchedLifeTable", "cmdPBTPooled", "cmdPairedBootTest",
                         "cmdGeneralBootstrap", "cmdReadNandF", "FMNmatrices", "Command21"})
    c.Enable(on);
  s.P.Answer(kMinimal, "No").Answer(kFast, "Cancel").Answer(kFlow, "No").Answer(kContribution, "No");
  s.P.Answer(kExtent, "Yes").Answer(kRearing, "Yes").Answer(kKind, "1");
  s.Run();
  ASSERT_FALSE(s.end);
  for (const char* on : {"cmdBasicRunA2", "Command42", "Command44", "cmdWriteSpeLifeTable", "cmdAddDuration",
                         "cmdReduceReprodPeriod", "cmdAddDurationToStage", "cmdCreateLectureFile"})
    EXPECT_TRUE(c.IsEnabled(on)) << on;
  for (const char* off : {"cmdReadDataA1", "cmdMatchedLifeTable", "cmdPBTPooled", "cmdPairedBootTest",
                          "cmdGeneralBootstrap", "cmdReadNandF", "FMNmatrices", "Command21"})
    EXPECT_FALSE(c.IsEnabled(off)) << off;
  EXPECT_FALSE(c.IsVisible("Image1"));
  EXPECT_TRUE(c.IsVisible("Label4"));
  EXPECT_EQ(s.S->options.GroupRearedFlag, "No");
  EXPECT_FALSE(s.S->channels.Flow.IsOpen());

  // A data fault after the enabling: the program ends with the check's message.
  Bench bad;
  test::WriteFile(bad.data, "P\nU\nT\n1\n2, 2\nF,Egg,Female\nM,Egg,Male\nEgg,Adult\n2,M,1,1\n");
  bad.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "No");
  bad.Run();
  ASSERT_TRUE(bad.end);
  EXPECT_EQ(bad.end->title, "Error in data file");
  EXPECT_TRUE(bad.end->message.starts_with("Check data of individual no. 0 or 1\n")) << bad.end->message;
}

TEST(ReadDataA1, ContributionReadsThePooledRValues) {
  Bench s;
  const std::string a2a = s.dir.file("pooled_Effect Boot-A2a-r.txt");
  test::WriteFile(a2a,
                  "\"Lab 25C-r\"\n\"Next line is Bootstrap sample size (n)\"\n 6 \n\"Next line is total effective "
                  "Bootstrap number (B)\"\n 3 \n\"r\",6,.2125\n .21\n .2 \n .25\n");
  s.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "Yes").Answer(kContributionFileTitle, a2a);
  s.Run();
  ASSERT_FALSE(s.end) << s.end->message;
  const ReadDataRecord& R = s.S->readData;
  EXPECT_EQ(s.S->options.ContributionWanted, "Yes");
  EXPECT_EQ(R.ContributionRLoaded, "Yes");
  EXPECT_EQ(R.ContributionSampleSize, 6);
  EXPECT_EQ(R.ContributionPooledR, 0.2125);
  EXPECT_EQ(R.ContributionBootCount, 3);
  EXPECT_EQ(R.ContributionBootR(1), 0.21);
  EXPECT_EQ(R.ContributionBootR(3), 0.25);

  // No file chosen: the contribution is off.
  Bench none;
  none.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "Yes").Answer(kContributionFileTitle, "");
  none.Run();
  ASSERT_FALSE(none.end);
  EXPECT_EQ(none.S->options.ContributionWanted, "No");
  EXPECT_EQ(none.S->readData.ContributionRLoaded, "");

  // A file typed by hand: an n beyond the integers of the store is the overflow fault, a list
  // shorter than its B ends at the end of the file.
  for (const auto& [n, B] : {std::pair{"3000000000", "3"}, std::pair{"6", "5"}}) {
    Bench bad;
    test::WriteFile(a2a, std::string("\"x\"\n\"n\"\n") + n + "\n\"B\"\n" + B + "\n\"r\",6,.2\n.21\n.2\n.25\n");
    bad.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "Yes").Answer(kContributionFileTitle, a2a);
    if (std::string(B) == "3") {
      EXPECT_THROW(bad.Run(), OverflowFault);
    } else {
      bad.Run();
      ASSERT_TRUE(bad.end);
      EXPECT_NE(bad.end->message.find("Input past end of file"), std::string::npos) << bad.end->message;
    }
  }
}

// Brute force: every one of the N^N ordered samples, by its counts of females and males.
struct Counts {
  double all = 0, femaleLt2 = 0, maleLt2 = 0, bothLt2 = 0, pairs = 0;
};
Counts CountSamples(int a, int b, int c) {
  const int n = a + b + c;
  Counts k;
  std::vector<int> pick(n, 0);
  while (true) {
    int f = 0, m = 0;
    for (int p : pick) {
      if (p < a) ++f;
      else if (p < a + b) ++m;
    }
    k.all += 1;
    k.femaleLt2 += f < 2;
    k.maleLt2 += m < 2;
    k.bothLt2 += f < 2 && m < 2;
    k.pairs += f >= 2 && m >= 2;
    int pos = 0;
    while (pos < n && ++pick[pos] == n) pick[pos++] = 0;
    if (pos == n) break;
  }
  return k;
}

TEST(ReadDataA1, SamplesThatCannotMateAgainstEveryDrawnSample) {
  FakePrompts P;
  for (int n = 1; n <= 6; ++n) {
    for (int a = 0; a <= n; ++a) {
      for (int b = 0; a + b <= n; ++b) {
        const int c = n - a - b;
        auto S = std::make_unique<Session>();
        S->ws.cohort.CohortSize = n;
        S->header.FileFemaleCount = a;
        S->header.FileMaleCount = b;
        S->header.FileNCount = c;
        ReadDataA1(*S, P).CalcuFMpairLessthan2();
        const ReadDataRecord& R = S->readData;
        const Counts k = CountSamples(a, b, c);
        SCOPED_TRACE(testing::Message() << "a=" << a << " b=" << b << " c=" << c);
        EXPECT_EQ(R.SamplesAll, k.all);
        EXPECT_EQ(R.SamplesFemaleLessthan2, k.femaleLt2);
        EXPECT_EQ(R.SamplesMaleLessthan2, k.maleLt2);
        if (n == 2 && a == 1 && b == 1) {
          // The pair term is taken as 0 when there are no N-types, so the two samples of one
          // female and one male aren't added back: the count comes out at 4 - 3 - 3 + 0.
          EXPECT_EQ(R.SamplesBothLessthan2, 0);
          EXPECT_EQ(R.FMpairSamples, -2);
          continue;
        }
        EXPECT_EQ(R.SamplesBothLessthan2, k.bothLt2);
        EXPECT_EQ(R.FMpairSamples, k.pairs);
      }
    }
  }
}

TEST(ReadDataA1, SampleCountOnlyBelow72Individuals) {
  for (int n : {71, 72}) {
    Bench s;
    std::string text = "P\nU\nT\n" + std::to_string(n) + "\n2, 2\nF,Egg,Female\nM,Egg,Male\nEgg,Adult\n";
    for (int i = 1; i <= n; ++i) text += std::to_string(i) + (i % 2 ? ",F,1,1\n-1\n" : ",M,1,1\n");
    test::WriteFile(s.data, text);
    s.P.Answer(kMinimal, "No").Answer(kFast, "Yes").Answer(kContribution, "No");
    s.P.Answer("Net reproductive rate = 0!", "OK");  // the Basic Run that follows: no eggs laid
    s.Run();
    ASSERT_FALSE(s.end) << s.end->message;
    if (n == 71) {
      EXPECT_DOUBLE_EQ(s.S->readData.SamplesAll, std::pow(71.0, 71.0));
      EXPECT_GT(s.S->readData.FMpairSamples, 0);
    } else {
      EXPECT_EQ(s.S->readData.SamplesAll, 0);
    }
  }
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// The bundled example's answer file, read as the command line reads it (key = value, split at
// the last " = ", paths from the top of the source tree), passes the check as a Fast Run.
TEST(ReadDataA1, BundledExampleFastRunAnswers) {
  // The run writes beside the data file: a copy in a fresh folder keeps the sources clean.
  test::TempDir dir;
  std::filesystem::create_directories(dir.path() / "examples");
  test::WriteFile(dir.file("examples/mite.txt"), test::ReadFile(std::string(KORVAN_EXAMPLES) + "/mite.txt"));
  const std::string top = dir.path().string();
  std::istringstream lines(test::ReadFile(std::string(KORVAN_EXAMPLES) + "/mite_fast.answers"));
  auto S = std::make_unique<Session>();
  S->StartUp();
  FakePrompts P;
  std::string line;
  int answers = 0;
  while (std::getline(lines, line)) {
    if (line.empty() || line[0] == '#') continue;
    const auto at = line.rfind(" = ");
    ASSERT_NE(at, std::string::npos) << line;
    std::string key = line.substr(0, at), value = line.substr(at + 3);
    if (key == kChooser) value = top + "/" + value;
    P.Answer(key, value);
    ++answers;
  }
  EXPECT_EQ(answers, 4);
  ReadDataA1(*S, P).cmdReadDataA1_Click();
  EXPECT_EQ(P.Unused(), 0u);
  EXPECT_EQ(S->options.FastRun, "Yes");
  EXPECT_EQ(S->options.MatingMode, "Yes");
  EXPECT_EQ(S->ws.cohort.CohortSize, 100);
  EXPECT_GT(S->header.FileMaleCount, 0);
  EXPECT_EQ(S->header.FileFemaleCount + S->header.FileMaleCount + S->header.FileNCount, 100);
  EXPECT_EQ(S->readData.SamplesAll, 0);  // 100 individuals: no count of samples
  EXPECT_EQ(S->basic.BasicRunDone, "yes");
}

}  // namespace
}  // namespace korvan
