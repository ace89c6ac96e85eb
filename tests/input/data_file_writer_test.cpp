#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "input/data_file_reader.h"
#include "input/data_file_writer.h"
#include "run/run_context.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::DataPath;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

// Answers input boxes in order and records every message shown.
class Answers : public PromptService {
 public:
  std::deque<std::string> inputs;
  std::string lastInputTitle, lastInputDefault, lastInputText, messages;
  int MsgBox(const std::string& text, const std::string&, int, int) override {
    messages += text + "|";
    return kOK;
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override {
    lastInputText = text;
    lastInputTitle = title;
    lastInputDefault = def;
    if (inputs.empty()) return "";
    std::string a = inputs.front();
    inputs.pop_front();
    return a;
  }
  std::string ChooseFile(const std::string&) override { return ""; }
};

struct Bench {
  Session S;
  Answers P;
  DataFileReader reader{S, P};
  LifeTableWriter writer{S, P};

  void Read(const std::string& path) {
    S.identity.DataFilePath = path;
    S.identity.DataFileBase = path.substr(0, path.size() - 4);
    reader.InputData();
  }
  // Writes the cohort in hand through the modified-fecundity writer; returns the file's path.
  std::string WriteModified(const std::string& dataFileBase, const std::string& coefficient) {
    S.identity.DataFileBase = dataFileBase;
    P.inputs.push_back(coefficient);
    writer.WriteLifeTableForModifiedFxj();
    return S.identity.OutputFileName;
  }
};

void ExpectSameCohort(Bench& a, Bench& b) {
  const Cohort &x = a.S.ws.cohort, &y = b.S.ws.cohort;
  ASSERT_EQ(x.CohortSize, y.CohortSize);
  EXPECT_EQ(a.S.header.StageCount, b.S.header.StageCount);
  EXPECT_EQ(a.S.identity.UserName, b.S.identity.UserName);
  EXPECT_EQ(a.S.identity.TreatmentName, b.S.identity.TreatmentName);
  EXPECT_EQ(a.S.header.SpecialGroup(1), b.S.header.SpecialGroup(1));
  for (int t = 1; t <= a.S.header.TypeCount; ++t)
    for (int j = 1; j <= a.S.header.StageCount + 1; ++j) EXPECT_EQ(a.S.header.StageName(t, j), b.S.header.StageName(t, j));
  for (long i = 1; i <= x.CohortSize; ++i) {
    EXPECT_EQ(x.IndividualSex(i), y.IndividualSex(i));
    EXPECT_EQ(x.TotalLongevity(i), y.TotalLongevity(i));
    for (int j = 1; j <= a.S.header.StageCount; ++j) EXPECT_EQ(x.StageDuration(i, j), y.StageDuration(i, j));
    if (x.IndividualSex(i) != "F") continue;
    const long last = static_cast<long>(x.StageDuration(i, a.S.header.StageCount)) + 1;
    for (long d = 1; d <= last; ++d) ASSERT_EQ(x.Fecundity(i, d), y.Fecundity(i, d)) << i << " day " << d;
  }
}

TEST(DataFileWriter, WritesTheSystemsLayoutAndReadsItBack) {
  TempDir dir;
  Bench s;
  s.Read(DataPath("reader_small.txt"));
  const std::string path = s.WriteModified(dir.file("small"), "1");
  EXPECT_EQ(path, dir.file("small_0A2_life table-modified fxj-1.txt"));
  // Each generation adds one more stamp behind the project; the padding is written out.
  EXPECT_EQ(ReadFile(path),
            "\"Project: Aphid Ver. 5/7/2024 Ver. 5/7/2024\"\n"
            "\"Lab team\"\n"
            "\"Leaf disc 20 C\"\n"
            "5\n"
            "2,3\n"
            "F,Egg,Nymph,Female\n"
            "M,Egg,Nymph,Male\n"
            "Egg,Nymph\n"
            " 1 ,F, 3, 5, 4\n"
            " 2, 0, 7, 0,-1\n"
            " 2 ,M, 2, 6, 3\n"
            " 3 ,N, 3,-2\n"
            " 4 ,F, 4, 4, 6\n"
            " 0, 0, 0, 0, 0, 0,-1\n"
            " 5 ,N,-1\n");
  Bench back;
  back.Read(path);
  ExpectSameCohort(s, back);
  EXPECT_EQ(back.S.identity.ProjectName, "Aphid Ver. 5/7/2024 Ver. 5/7/2024");
}

TEST(DataFileWriter, TheBundledExampleIsInTheWritersOwnLayout) {
  TempDir dir;
  Bench s;
  const std::string mite = std::string(KORVAN_EXAMPLES) + "/mite.txt";
  s.Read(mite);
  const std::string written = ReadFile(s.WriteModified(dir.file("mite"), "1"));
  std::string original = ReadFile(mite);
  const std::size_t lineEnd = original.find('\n');
  // The same bytes but for the one more stamp of line 1.
  EXPECT_EQ(written, original.substr(0, lineEnd - 1) + " Ver. 5/7/2024\"" + original.substr(lineEnd));
  Bench back;
  back.Read(dir.file("mite_0A2_life table-modified fxj-1.txt"));
  ExpectSameCohort(s, back);
}

TEST(DataFileWriter, CutsFecundityIntoLinesOfTwentyValues) {
  TempDir dir;
  std::string days19, days20;
  for (int x = 1; x <= 19; ++x) days19 += std::to_string(x) + ",";
  days20 = days19 + "20,";
  WriteFile(dir.file("long.txt"),
            "\"P\"\n\"U\"\n\"T\"\n3\n1,2\nF,Nymph,Female\nNymph,Female\n"
            " 1 ,F, 1, 19\n" + days19 + "-1\n"
            " 2 ,F, 1, 20\n" + days20 + "-1\n"
            " 3 ,F, 1, 41\n-1\n");
  Bench s;
  s.Read(dir.file("long.txt"));
  const std::string text = ReadFile(s.WriteModified(dir.file("long"), "1"));
  std::string expect19, expect20;
  for (int x = 1; x <= 19; ++x) expect19 += " " + std::to_string(x) + ",";
  expect20 = expect19 + " 20\n-1\n";  // the twentieth value closes its line without a comma
  expect19 += "-1\n";
  EXPECT_NE(text.find(" 1 ,F, 1, 19\n" + expect19), std::string::npos) << text;
  EXPECT_NE(text.find(" 2 ,F, 1, 20\n" + expect20), std::string::npos) << text;
  std::string zeros;
  for (int x = 1; x <= 41; ++x) zeros += std::string(" 0") + (x % 20 == 0 ? "\n" : ",");
  EXPECT_NE(text.find(" 3 ,F, 1, 41\n" + zeros + "-1\n"), std::string::npos) << text;
  // A single type line stays single; two stages end the span with "Adult".
  EXPECT_NE(text.find("\n1,2\nF,Nymph,Female\nNymph,Adult\n"), std::string::npos) << text;
}

TEST(DataFileWriter, ModifiedFecundityAsksForTheCoefficient) {
  TempDir dir;
  Bench s;
  s.Read(DataPath("reader_small.txt"));
  const std::string path = s.WriteModified(dir.file("small"), "0.5");
  EXPECT_EQ(s.P.lastInputTitle, "Fecundity coefficeint");
  EXPECT_EQ(s.P.lastInputText, "Enter a value between 0 and 1 to modify the fecundity");
  EXPECT_EQ(s.P.lastInputDefault, "1");
  EXPECT_EQ(path, dir.file("small_0A2_life table-modified fxj-0.5.txt"));
  const std::string text = ReadFile(path);
  EXPECT_NE(text.find(" 1 ,F, 3, 5, 4\n 1, 0, 3.5, 0,-1\n"), std::string::npos) << text;
  // The cohort in hand keeps its own values.
  EXPECT_EQ(s.S.ws.cohort.Fecundity(1, 3), 7);

  // Cancel writes nothing.
  Bench c;
  c.Read(DataPath("reader_small.txt"));
  c.S.identity.OutputFileName.clear();
  c.S.identity.DataFileBase = dir.file("cancel");
  c.writer.WriteLifeTableForModifiedFxj();
  EXPECT_TRUE(c.S.identity.OutputFileName.empty());
  EXPECT_FALSE(std::filesystem::exists(dir.file("cancel_0A2_life table-modified fxj-0.txt")));
}

TEST(DataFileWriter, SampleWritersTakeTheDrawnIndividualsFromThePool) {
  TempDir dir;
  Bench s;
  s.S.identity.DataFilePath = DataPath("reader_small.txt");
  s.reader.InputdataBoot();
  // Sample 7 drew individuals 4, 4, 1 and 3.
  const int drawn[] = {0, 4, 4, 1, 3};
  for (int p = 1; p <= 4; ++p) s.S.boot.BootIndividuals(p, 7) = static_cast<std::int16_t>(drawn[p]);
  s.S.boot.BootSampleSize = 4;
  s.writer.SampleNumber = 7;
  s.writer.PercentileLabel = "0.025 lambda";
  {
    TextFile out(dir.file("sub.txt"));
    s.writer.SubFile = &out;
    s.writer.WriteLifeTableSub();
  }
  const std::string records =
      " 1 ,F, 4, 4, 6\n 0, 0, 0, 0, 0, 0,-1\n"
      " 2 ,F, 4, 4, 6\n 0, 0, 0, 0, 0, 0,-1\n"
      " 3 ,F, 3, 5, 4\n 2, 0, 7, 0,-1\n"
      " 4 ,N, 3,-2\n";
  EXPECT_EQ(ReadFile(dir.file("sub.txt")),
            "\"Project: Aphid Ver. 5/7/2024 Ver. 5/7/2024\"\n\"Lab team\"\n\"Leaf disc 20 C-0.025 lambda\"\n4\n"
            "2,3\nF,Egg,Nymph,Female\nM,Egg,Nymph,Male\nEgg,Nymph\n" + records);

  // A sample of a record file, with the rearing costs of a table that has them.
  s.S.header.RegularLifeTable = "No";
  s.S.header.StageRearingCost(1, 1) = 0.5;
  s.S.header.StageRearingCost(1, 2) = 1;
  s.S.header.StageRearingCost(1, 3) = 2.25;
  s.S.header.StageRearingCost(2, 3) = 1.75;
  s.S.identity.DataFileBase = dir.file("small");
  s.writer.WriteLifeTableForSpecificSampleFile();
  EXPECT_EQ(s.S.identity.OutputFileName, dir.file("small_0_data of spec bootsample_7.txt"));
  EXPECT_EQ(ReadFile(s.S.identity.OutputFileName),
            "\"Project: Aphid Ver. 5/7/2024 Ver. 5/7/2024\"\n\"Lab team\"\n\"Leaf disc 20 C\"\n4\n"
            "2,3\nF,Egg,Nymph,Female\nM,Egg,Nymph,Male\n0.5,1,2.25,1.75\nEgg,Nymph\n" + records);
  EXPECT_EQ(s.P.messages, "Data file ready!|");
  // ... and it reads again as a cohort of its own.
  Bench back;
  back.S.header.RegularLifeTable = "No";
  back.Read(s.S.identity.OutputFileName);
  EXPECT_EQ(back.S.header.StageRearingCost(2, 3), 1.75);
  EXPECT_EQ(back.S.ws.cohort.Fecundity(3, 3), 7);
  EXPECT_EQ(back.S.header.TypeCounts(1), 3);
}

}  // namespace
}  // namespace korvan
