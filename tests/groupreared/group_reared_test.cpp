// "B. Read N, F" on hand-made group-reared files: the counts and eggs read back, the engine's r
// and R0 against a second route over the rebuilt individuals, the rebuilding of each case
// against the cohort the counts were made from, and every check and guard with its text.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "commands/read_n_and_f_command.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

// Five individuals, stages Preadult, Female (and Male):
//   F1  preadult 2, adult 3, eggs 1 2 3     alive 0..4
//   F2  preadult 4, adult 2, eggs 4 0       alive 0..5
//   M3  preadult 2, adult 2                 alive 0..3
//   N4  dies in the preadult stage at 1     alive 0
//   N5  dies in the preadult stage at 3     alive 0..2
// Counts: P = 5 4 2 1 (ages 0..3), Nf = 1 1 2 1 (ages 2..5), Nm = 1 1 (ages 2..3); eggs of the
// group 1 2 7 0 (ages 2..5). The pupae overlap the adults, and N5 dies in the overlap.
const char* kOverlapFile =
    "\"Project: hand\",\"team\",\"25 C\"\n5\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
    "Preadult,0,3,5,4,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\nFemale,2,5,1,2,7,0\n";

struct Record {
  std::string sex;
  std::vector<double> values;  // durations (an N: its negative age at death)
  std::vector<double> eggs;
};

// The individual records of a written data file (the head has nine lines).
std::vector<Record> ReadRecords(const std::string& path) {
  const auto lines = test::Lines(path);
  std::vector<Record> out;
  auto fields = [](const std::string& line) {
    std::vector<std::string> f;
    std::stringstream ss(line);
    for (std::string item; std::getline(ss, item, ',');) f.push_back(item);
    return f;
  };
  for (std::size_t k = 9; k < lines.size(); ++k) {
    const auto f = fields(lines[k]);
    Record r{f.at(1), {}, {}};
    for (std::size_t i = 2; i < f.size(); ++i) r.values.push_back(std::stod(f[i]));
    if (r.sex == "F") {
      for (bool closed = false; !closed;) {
        for (const auto& v : fields(lines.at(++k))) {
          if (std::stod(v) == -1) closed = true;
          else r.eggs.push_back(std::stod(v));
        }
      }
    }
    out.push_back(r);
  }
  return out;
}

struct GroupRun {
  std::unique_ptr<Session> S = std::make_unique<Session>();
  test::FakePrompts P;
  test::TempDir dir;
  std::string path = dir.file("group.txt");
  explicit GroupRun(const std::string& text, const std::string& chosenCase = "", const std::string& goOn = "Yes") {
    test::WriteFile(path, text);
    S->StartUp();
    P.Answer("Group reared life table with predation rate?", "No")
        .Answer("Open group-reared life table data", path)
        .Answer("Do you need flow record?", "No")
        .Answer("Each time unit =?", "1")
        .Answer("Estimate matrices G and D?", "Yes")
        .Answer("Double check matrix S based on N and F?", "Yes")
        .Answer("Stop here or continue?", goOn)
        .Answer("Which case is good for your data =?", chosenCase)
        .Answer("Individual data ready.", "OK")
        .Answer("Do you want to group stages?", "No");
  }
  void Press() { ReadNandFCommand(*S, P).cmdReadNandF_Click(); }
  // The message and title the run ended with; empty when it ran through.
  std::pair<std::string, std::string> Ending() {
    try {
      Press();
    } catch (const ProgramEnd& e) {
      return {e.message, e.title};
    }
    return {};
  }
  std::string Out(const std::string& suffix) const { return dir.file("group" + suffix); }
};

// r of a cohort of records by its own route: l(x) and m(x) counted day by day from the
// individuals, the root of sum l(x) m(x) exp(-r(x+1)) = 1 by bisection.
double IntrinsicRate(const std::vector<Record>& cohort, double& R0) {
  std::vector<double> alive(600, 0), eggs(600, 0);
  for (const auto& r : cohort) {
    const int life = r.sex == "N" ? static_cast<int>(-r.values[0]) : static_cast<int>(r.values[0] + r.values[1]);
    for (int x = 0; x < life; ++x) alive[x] += 1;
    for (std::size_t d = 0; d < r.eggs.size(); ++d) eggs[static_cast<int>(r.values[0]) + d] += r.eggs[d];
  }
  const double n = static_cast<double>(cohort.size());
  auto sum = [&](double r) {
    double s = 0;
    for (int x = 0; x < 600; ++x) s += eggs[x] / n * std::exp(-r * (x + 1));
    return s;
  };
  R0 = sum(0);
  double lo = -1, hi = 2;
  for (int k = 0; k < 200; ++k) ((sum((lo + hi) / 2) > 1) ? lo : hi) = (lo + hi) / 2;
  return (lo + hi) / 2;
}

TEST(ReadNandF, CountsAndEggsReadBackToTheTablesOfTheCohort) {
  GroupRun run(kOverlapFile, "", "No");
  run.Press();
  const auto& t = run.S->ws.tables;
  const double n[4][6] = {{5, 4, 2, 1, 0, 0}, {0, 0, 1, 1, 2, 1}, {0, 0, 1, 1, 0, 0}};
  for (int j = 1; j <= 3; ++j)
    for (int x = 0; x <= 5; ++x) EXPECT_EQ(t.Nxj(x, j), n[j - 1][x]) << "x=" << x << " j=" << j;
  const double f[] = {0, 0, 1, 2, 3.5, 0};  // eggs of the group over the females alive
  for (int x = 0; x <= 5; ++x) EXPECT_DOUBLE_EQ(t.Fxj(x, 2), f[x]) << x;
  const double alive[] = {5, 4, 4, 3, 2, 1};
  for (int x = 0; x <= 5; ++x) EXPECT_DOUBLE_EQ(t.Lx(x), alive[x] / 5) << x;
  EXPECT_EQ(t.LastAge, 5);
  // R0 = eggs / cohort = 10/5; r against the cohort's own Euler-Lotka root.
  std::vector<Record> cohort = {{"F", {2, 3}, {1, 2, 3}}, {"F", {4, 2}, {4, 0}}, {"M", {2, 2}, {}},
                                {"N", {-1}, {}},          {"N", {-3}, {}}};
  double R0 = 0;
  const double r = IntrinsicRate(cohort, R0);
  EXPECT_NEAR(run.S->ws.params.R0, 2.0, 1e-12);
  EXPECT_NEAR(run.S->ws.params.r, r, 1e-6);
  EXPECT_NE(test::ReadFile(run.Out("_0A_Life Table_Output_NF.txt")).find("No. individuals = 5 ."), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(run.Out("_1_Fig_Sxj.txt")));
  EXPECT_TRUE(std::filesystem::exists(run.Out("_Fig_Lx.txt")));
  EXPECT_TRUE(std::filesystem::exists(run.Out("_Fig_Mx.txt")));
  // G and D by stay, move and die: of the 2 pupae at age 2 one emerged and one died.
  EXPECT_DOUBLE_EQ(run.S->group.G(2, 1), 0.5);
  EXPECT_DOUBLE_EQ(run.S->group.D(2, 1), 0.0);
  EXPECT_DOUBLE_EQ(run.S->group.D(3, 1), 1.0);  // the last pupa became a female
}

TEST(ReadNandF, Case2RebuildsTheCohortFirstInFirstOut) {
  GroupRun run(kOverlapFile, "2");
  run.Press();
  EXPECT_EQ(run.S->group.NandFOverlapType, "OverlapMaleAndFemaleSameAge");
  EXPECT_EQ(run.S->group.OverlapDeaths, 1);
  EXPECT_EQ(run.P.With("Which case is good for your data =?").at(0).defaultText, "");
  const auto rebuilt = ReadRecords(run.Out("_0A2_Individual Life Table.txt"));
  ASSERT_EQ(rebuilt.size(), 5u);
  // Females first in the order they emerged, each paired with the earliest death left; every
  // female lays the group's eggs per female of each day she lives.
  EXPECT_EQ(rebuilt[0].sex, "F");
  EXPECT_EQ(rebuilt[0].values, (std::vector<double>{2, 3}));
  EXPECT_EQ(rebuilt[0].eggs, (std::vector<double>{1, 2, 3.5}));
  EXPECT_EQ(rebuilt[1].values, (std::vector<double>{4, 2}));
  EXPECT_EQ(rebuilt[1].eggs, (std::vector<double>{3.5, 0}));
  EXPECT_EQ(rebuilt[2].sex, "M");
  EXPECT_EQ(rebuilt[2].values, (std::vector<double>{2, 2}));
  EXPECT_EQ(rebuilt[3].values, (std::vector<double>{-1}));
  EXPECT_EQ(rebuilt[4].values, (std::vector<double>{-3}));  // the death in the overlap
  // The rebuilt cohort keeps R0 and r of the counts.
  double R0 = 0;
  EXPECT_NEAR(IntrinsicRate(rebuilt, R0), run.S->ws.params.r, 1e-6);
  EXPECT_NEAR(R0, run.S->ws.params.R0, 1e-12);
}

TEST(ReadNandF, Case1WithoutPreadultDeathsWritesNoNRecordAndTiesKeepTheirOrder) {
  // Two females emerge at 2 and die at 4 and 6; a male emerges at 3; nobody dies young.
  const char* file =
      "\"t\",\"u\",\"v\"\n3\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
      "Preadult,0,2,3,3,1\nFemale,2,5,2,2,1,1\nMale,3,4,1,1\nFemale,2,5,2,4,1,0\n";
  GroupRun run(file, "1");
  run.Press();
  EXPECT_EQ(run.S->group.OverlapDeaths, 0);
  const auto rebuilt = ReadRecords(run.Out("_0A2_Individual Life Table.txt"));
  ASSERT_EQ(rebuilt.size(), 3u);
  EXPECT_EQ(rebuilt[0].values, (std::vector<double>{2, 2}));
  EXPECT_EQ(rebuilt[0].eggs, (std::vector<double>{1, 2}));
  EXPECT_EQ(rebuilt[1].values, (std::vector<double>{2, 4}));
  EXPECT_EQ(rebuilt[1].eggs, (std::vector<double>{1, 2, 1, 0}));
  EXPECT_EQ(rebuilt[2].sex, "M");
  EXPECT_EQ(rebuilt[2].values, (std::vector<double>{3, 2}));
  EXPECT_EQ(test::ReadFile(run.Out("_0A2_Individual Life Table.txt")).find(",N,"), std::string::npos);
}

TEST(ReadNandF, Case0KeepsSurvivalR0AndR) {
  // The adults all appear at 4, after the last preadult at 3: no overlap.
  const char* file =
      "\"t\",\"u\",\"v\"\n6\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
      "Preadult,0,3,6,6,5,4\nFemale,4,6,2,2,1\nMale,4,5,2,1\nFemale,4,6,2,6,3\n";
  GroupRun run(file, "0");
  run.Press();
  EXPECT_EQ(run.S->group.NandFOverlapType, "NoOverlap");
  EXPECT_EQ(run.P.With("Which case is good for your data =?").at(0).defaultText, "0");
  const auto rebuilt = ReadRecords(run.Out("_0_Individual LifeTable.txt"));
  ASSERT_EQ(rebuilt.size(), 6u);
  std::vector<double> alive(10, 0);
  for (const auto& r : rebuilt) {
    const int life = r.sex == "N" ? static_cast<int>(-r.values[0]) : static_cast<int>(r.values[0] + r.values[1]);
    for (int x = 0; x < life; ++x) alive[x] += 1;
    if (r.sex != "N") {
      EXPECT_EQ(r.values[0], 4);  // every adult emerges at the first age of eggs
    }
  }
  for (int x = 0; x <= run.S->ws.tables.LastAge + 1; ++x) EXPECT_DOUBLE_EQ(alive[x] / 6, run.S->ws.tables.Lx(x)) << x;
  double R0 = 0;
  EXPECT_NEAR(IntrinsicRate(rebuilt, R0), run.S->ws.params.r, 1e-6);
  EXPECT_NEAR(R0, run.S->ws.params.R0, 1e-12);
}

TEST(ReadNandF, EveryCheckOfTheFileEndsWithItsMessage) {
  const std::string head = "\"t\",\"u\",\"v\"\n5\n2,2\nF,Preadult,Female\nM,Preadult,Male\n";
  const std::string rows = "Preadult,0,3,5,4,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n";
  const std::string eggs = "Female,2,5,1,2,7,0\n";
  struct Case {
    std::string text, title, message;
  } cases[] = {
      {head + "Preadult,1,3,5,4,2\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs,
       "The first age of the first stage must be zero (age indexed from 0).", "First age <>0?  "},
      {head + "Larva,0,3,5,4,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs, "Error in data file",
       "You have assigned the code for stage 1 as Preadult.\nBut you wrote code of stage 1 as Larva in the data line "
       "of stage 1.\nPlease use the same code. (Or you may missed some data in stage 0.)"},
      {head + "Preadult,0,3,5,4,2,1\nAdult,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs, "Error in data file",
       "You assigned the code for stage 2 as Female."},
      {head + "Preadult,0,3,6,4,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs, "Error in data file",
       "The cohort size is 5\nBut N(0,1) is 6\nPlease check your data."},
      {head + "Preadult,0,3,5,1,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs, "Error in data file",
       "There were 1 pupae at time 1\nBut there were 1 females and 1 males at time 2\n2 adults emerged from 1 pupae?"},
      {head + rows + "Adult,2,5,1,2,7,0\n", "Check your data!", "Female stage is Adult?\nChange it to Female."},
      {head + rows + "Female,3,5,2,7,0\n", "Error in data file", "Female stage begins from 3."},
      {head + rows + "Female,2,4,1,2,7\n", "Error in data file", "Female stage ends at 4."},
      {head + "Preadult,0,3,5,4,2,3\nFemale,2,5,1,1,2,1\nMale,2,3,1,1\n" + eggs, "Error!",
       "Error in data file!  \nAt age 2, n =2, while at age 3, n = 3"},
      {head + "Preadult,0,1,5,4\nFemale,3,5,1,1,1\nMale,4,4,1\nFemale,3,5,2,7,0\n", "Error in data file",
       "At age 2 no individual is alive in any stage, but there are individuals at age 5."},
      {head + "Preadult,0,3,5,4,2,1\nFemale,2,5,1,1,0,1\nMale,2,3,1,1\n" + eggs, "Run-time error '11'",
       "Division by zero: 7"},
  };
  for (const auto& c : cases) {
    GroupRun run(c.text);
    const auto [message, title] = run.Ending();
    EXPECT_EQ(title, c.title) << c.text;
    EXPECT_EQ(message.substr(0, c.message.size()), c.message) << c.text;
  }
  // A -1 as the first eggs value leaves the whole row at 0; "0" as the code stands for Female.
  GroupRun zero(head + rows + "0,2,5,-1\n", "", "No");
  EXPECT_EQ(zero.Ending().first, "");
  EXPECT_EQ(zero.S->ws.params.R0, 0);
  // Beyond the bounds: 13 preadult stages, or ages past 575.
  GroupRun stages("\"t\",\"u\",\"v\"\n5\n2,14\n");
  EXPECT_THROW(stages.Press(), SubscriptFault);
  std::string longRow = head + "Preadult,0,576";
  for (int x = 0; x <= 576; ++x) longRow += ",5";
  GroupRun ages(longRow + "\n");
  EXPECT_THROW(ages.Press(), SubscriptFault);
}

TEST(ReadNandF, EveryGuardOfTheRebuildingEndsWithItsText) {
  const std::string noOverlap =
      "\"t\",\"u\",\"v\"\n6\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
      "Preadult,0,3,6,6,5,4\nFemale,4,6,2,2,1\nMale,4,5,2,1\nFemale,4,6,2,6,3\n";
  const std::string noDeathInOverlap =
      "\"t\",\"u\",\"v\"\n3\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
      "Preadult,0,2,3,3,1\nFemale,2,5,2,2,1,1\nMale,3,4,1,1\nFemale,2,5,2,4,1,0\n";
  struct Case {
    std::string file, answer, message;
  } cases[] = {
      {kOverlapFile, "0", "There is overlap between preadult and adult stages. Wrong selection."},
      {kOverlapFile, "1", "There is overlap or there are death in overlap period.  Wrong selection."},
      {noOverlap, "1", "There is overlap or there are death in overlap period.  Wrong selection."},
      {noDeathInOverlap, "2", "There is overlap or there is no death in overlap period.  Wrong selection."},
      {noOverlap, "3", "There is no overlap or there is no death in overlap.  Wrong selection."},
  };
  for (const auto& c : cases) {
    GroupRun run(c.file, c.answer);
    const auto [message, title] = run.Ending();
    EXPECT_EQ(title, "Wrong selection!") << c.answer;
    EXPECT_EQ(message, c.message) << c.answer;
    EXPECT_FALSE(std::filesystem::exists(run.Out("_0A2_Individual Life Table.txt")));
  }
  // Another number writes nothing and asks nothing more.
  GroupRun other(kOverlapFile, "7");
  EXPECT_EQ(other.Ending().first, "");
  EXPECT_FALSE(other.P.Met("Individual data ready."));
  // A rise of the females after the preadults have gone.
  GroupRun rise("\"t\",\"u\",\"v\"\n5\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
           "Preadult,0,3,5,4,2,1\nFemale,2,6,1,1,2,1,2\nMale,2,3,1,1\nFemale,2,6,1,2,7,0,0\n",
           "2");
  EXPECT_EQ(rise.Ending(), std::make_pair(std::string("There is error: There were no preadult individuals on day t, but "
                                                      "the female increased on day t+1."),
                                          std::string("Error!")));
  // Males that come from nowhere rebuild another cohort: no file.
  GroupRun more("\"t\",\"u\",\"v\"\n5\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
                "Preadult,0,3,5,4,2,1\nFemale,2,5,1,1,2,1\nMale,2,3,1,3\nFemale,2,5,1,2,7,0\n",
                "2");
  EXPECT_EQ(more.Ending().first.substr(0, 56), "The counts give 6 individuals, but the cohort size is 5.");
  EXPECT_FALSE(std::filesystem::exists(more.Out("_0A2_Individual Life Table.txt")));
  // No overlap, and adults that don't add up with the preadult deaths to the cohort.
  GroupRun sum("\"t\",\"u\",\"v\"\n6\n2,2\nF,Preadult,Female\nM,Preadult,Male\n"
          "Preadult,0,3,6,6,5,4\nFemale,5,6,1,1\nMale,4,5,3,3\nFemale,5,6,2,6\n",
          "0");
  EXPECT_EQ(sum.Ending().second, "Error!");
}

// The command line on the group form of the bundled example: B writes the two-stage form, B on
// it rebuilds the individuals, and A1's Basic Run of those gives the r and R0 of the counts.
// B is closed once A1 has run, and A1 and A2 once B has.
TEST(ReadNandF, CommandLineRebuildsTheExampleThatA1ReadsBack) {
  test::TempDir dir;
  auto korvan = [&](const std::string& arguments) {
    const std::string command = "cd '" + dir.path().string() + "' && '" KORVAN_CLI "' --quiet " + arguments +
                                " </dev/null >stdout.txt 2>stderr.txt";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  const std::string examples = KORVAN_EXAMPLES;
  std::filesystem::copy_file(examples + "/mite_group.txt", dir.file("mite_group.txt"));
  ASSERT_EQ(korvan("--answers '" + examples + "/mite_group.answers' --answer 'Open group-reared life table data=mite_group.txt' B"), 0);
  const std::string twoStages = "mite_group_0A3_Group-reared Life Table_2 Stages";
  ASSERT_TRUE(std::filesystem::exists(dir.file(twoStages + ".txt")));
  ASSERT_EQ(korvan("--answers '" + examples + "/mite_group_2stages.answers' B"), 0);
  std::filesystem::copy_file(dir.file(twoStages + "_0A2_Individual Life Table.txt"), dir.file("rebuilt.txt"));
  ASSERT_EQ(korvan("--defaults --answers '" + examples + "/mite_fast.answers' --answer 'Open life table data file=rebuilt.txt' A1"), 0);
  auto line = [&](const std::string& file, const std::string& head) {
    for (const auto& l : test::Lines(dir.file(file)))
      if (l.rfind(head, 0) == 0) return l;
    return std::string("none in " + file);
  };
  for (const char* head : {" The intrinsic rate of increase (r) =", " The net reproductive rate (R0) ="}) {
    EXPECT_EQ(line("rebuilt_0A_Life Table_Output.txt", head), line(twoStages + "_0A_Life Table_Output_NF.txt", head));
    EXPECT_EQ(line("rebuilt_0A_Life Table_Output.txt", head), line("mite_group_0A_Life Table_Output_NF.txt", head));
  }
  std::filesystem::copy_file(examples + "/mite.txt", dir.file("mite.txt"));
  EXPECT_EQ(korvan("--defaults --answers '" + examples + "/mite_fast.answers' --answer 'Open life table data file=mite.txt' A1 B"), 2);
  EXPECT_NE(test::ReadFile(dir.file("stderr.txt")).find("B. Read N, F is closed"), std::string::npos);
  EXPECT_EQ(korvan("--answers '" + examples + "/mite_group.answers' --answer 'Open group-reared life table data=mite_group.txt' B A1"), 2);
  EXPECT_NE(test::ReadFile(dir.file("stderr.txt")).find("A1. Read data is closed"), std::string::npos);
}

}  // namespace
}  // namespace korvan
