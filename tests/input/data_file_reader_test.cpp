#include <gtest/gtest.h>

#include <string>

#include "input/data_file_reader.h"
#include "run/run_context.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::DataPath;
using test::TempDir;
using test::WriteFile;

// The readers ask nothing: a dialogue throws, which fails the test.
struct Bench {
  Session S;
  test::FakePrompts P;
  DataFileReader reader{S, P};
  Cohort& c = S.ws.cohort;
  CohortHeader& h = S.header;

  void Read(const std::string& path) {
    S.identity.DataFilePath = path;
    reader.InputData();
  }
  void ReadBoot(const std::string& path) {
    S.identity.DataFilePath = path;
    reader.InputdataBoot();
  }
};

// A cohort of two stages and sexes: the head, then the records as given.
std::string TwoStageFile(const std::string& records, int n, const std::string& project = "\"Project: P\"") {
  return project + "\n\"U\"\n\"T\"\n" + std::to_string(n) + "\n2,2\nF,Nymph,Female\nM,Nymph,Male\nNymph,Female\n" +
         records;
}

ProgramEnd ReadExpectingEnd(Bench& s, const std::string& path) {
  try {
    s.Read(path);
  } catch (const ProgramEnd& e) {
    return e;
  }
  ADD_FAILURE() << "the reading did not end the program";
  return {};
}

TEST(DataFileReader, ReadsEveryFieldOfASmallCohort) {
  Bench s;
  s.S.settings.CriticalFemaleAge = 5;
  s.Read(DataPath("reader_small.txt"));

  // The stamp behind the project stays part of the name; only the prefix goes.
  EXPECT_EQ(s.S.identity.ProjectName, "Aphid Ver. 5/7/2024");
  EXPECT_EQ(s.S.identity.UserName, "Lab team");
  EXPECT_EQ(s.S.identity.TreatmentName, "Leaf disc 20 C");
  EXPECT_EQ(s.c.CohortSize, 5);
  EXPECT_EQ(s.h.CohortSizeRead, 5);
  EXPECT_EQ(s.h.TypeCount, 2);
  EXPECT_EQ(s.h.StageCount, 3);
  EXPECT_EQ(s.h.TypeCode(1), "F");
  EXPECT_EQ(s.h.TypeCode(2), "M");
  EXPECT_EQ(s.h.StageName(1, 1), "Egg");
  EXPECT_EQ(s.h.StageName(1, 3), "Female");
  EXPECT_EQ(s.h.StageName(1, 4), "Male");  // the second adult stage on row 1
  EXPECT_EQ(s.h.StageName(2, 3), "Male");
  EXPECT_EQ(s.h.SpecialGroup(1), "Egg");
  EXPECT_EQ(s.h.SpecialGroup(2), "Nymph");

  const char* sexes[] = {"", "F", "M", "N", "F", "N"};
  for (int i = 1; i <= 5; ++i) {
    EXPECT_EQ(s.c.IndividualNo(i), i);
    EXPECT_EQ(s.c.IndividualSex(i), sexes[i]);
  }
  EXPECT_EQ(s.c.StageDuration(1, 3), 4);
  EXPECT_EQ(s.c.StageDuration(3, 2), -2);
  EXPECT_EQ(s.c.StageDuration(5, 1), -1);

  // Female 1: adult 4 days, list 2,0,7,-1 read on day 4: day 4 becomes 0, -1 moves to day 5.
  double f1[] = {0, 2, 0, 7, 0, -1};
  for (int x = 1; x <= 5; ++x) EXPECT_EQ(s.c.Fecundity(1, x), f1[x]) << "day " << x;
  // Female 4: adult 6 days and no eggs at all.
  for (int x = 1; x <= 6; ++x) EXPECT_EQ(s.c.Fecundity(4, x), 0) << "day " << x;
  EXPECT_EQ(s.c.Fecundity(4, 7), -1);

  int longevity[] = {0, 12, 11, 5, 14, 1};
  for (int i = 1; i <= 5; ++i) EXPECT_EQ(s.c.TotalLongevity(i), longevity[i]) << "individual " << i;
  EXPECT_EQ(s.c.MaxLongevity, 14);

  EXPECT_EQ(s.h.TypeCounts(1), 2);
  EXPECT_EQ(s.h.TypeCounts(2), 1);
  EXPECT_EQ(s.h.TypeCounts(3), 2);
  EXPECT_EQ(s.h.MaleCount, 1);
  EXPECT_EQ(s.h.NTypeCount, 2);
  EXPECT_EQ(s.h.OldFemaleCount, 1);  // only female 4 reaches 5 adult days
}

TEST(DataFileReader, CutsOnlyTheKnownProjectPrefixes) {
  struct Case {
    const char* field;
    const char* name;
  } cases[] = {
      {"\"Project: Aphid\"", "Aphid"},     {"\"Project:Aphid\"", "Aphid"},
      {"\"project: Aphid\"", "Aphid"},     {"\"project:Aphid\"", "project:Aphid"},
      {"\"PROJECT: Aphid\"", "PROJECT: Aphid"}, {"\"Project:  Aphid\"", " Aphid"},
      {"Project: Aphid", "Aphid"},         {"\"Aphid\"", "Aphid"},
      {"\"Project: \"", ""},
  };
  TempDir dir;
  for (const Case& k : cases) {
    Bench s;
    WriteFile(dir.file("p.txt"), TwoStageFile(" 1 ,M, 1, 1\n", 1, k.field));
    s.Read(dir.file("p.txt"));
    EXPECT_EQ(s.S.identity.ProjectName, k.name) << k.field;
  }
  // An unquoted head line with a comma is cut there, and its tail is the next field.
  Bench s;
  WriteFile(dir.file("p.txt"), "Project: Aphid, cotton\nUser\n1\n2,2\nF,Nymph,Female\nM,Nymph,Male\nNymph,Female\n"
                               " 1 ,M, 1, 1\n");
  s.Read(dir.file("p.txt"));
  EXPECT_EQ(s.S.identity.ProjectName, "Aphid");
  EXPECT_EQ(s.S.identity.UserName, "cotton");
  EXPECT_EQ(s.S.identity.TreatmentName, "User");
}

TEST(DataFileReader, PadsShortFecundityListsAndAppliesTheFactor) {
  TempDir dir;
  const std::string records =
      " 1 ,F, 2, 5\n 0, 3,-1\n"            // ends early: 0,3,0,0,0 and -1 on day 6
      " 2 ,F, 2, 5\n 1, 2, 3, 4, 5,-1\n"   // full list
      " 3 ,F, 2, 3\n-1\n"                  // no offspring at all
      " 4 ,F, 2, 1\n 4,-1\n";
  WriteFile(dir.file("f.txt"), TwoStageFile(records, 4));

  Bench s;
  s.Read(dir.file("f.txt"));
  double padded[] = {0, 0, 3, 0, 0, 0, -1};
  for (int x = 1; x <= 6; ++x) EXPECT_EQ(s.c.Fecundity(1, x), padded[x]) << "day " << x;
  for (int x = 1; x <= 5; ++x) EXPECT_EQ(s.c.Fecundity(2, x), x);
  EXPECT_EQ(s.c.Fecundity(2, 6), -1);
  EXPECT_EQ(s.c.Fecundity(3, 1), 0);
  EXPECT_EQ(s.c.Fecundity(3, 3), 0);
  EXPECT_EQ(s.c.Fecundity(3, 4), -1);
  EXPECT_EQ(s.c.Fecundity(4, 2), -1);

  // Every value but the closing -1 is multiplied as it is read; a value of exactly -1 always
  // closes the list.
  Bench half;
  half.S.settings.FecundityFactor = 0.5;
  half.Read(dir.file("f.txt"));
  EXPECT_EQ(half.c.Fecundity(1, 2), 1.5);
  EXPECT_EQ(half.c.Fecundity(1, 6), -1);
  EXPECT_EQ(half.c.Fecundity(2, 5), 2.5);
  EXPECT_EQ(half.c.Fecundity(2, 6), -1);

  // A stale day from an earlier cohort is overwritten by the padding.
  Bench again;
  again.c.Fecundity(1, 4) = 99;
  again.Read(dir.file("f.txt"));
  EXPECT_EQ(again.c.Fecundity(1, 4), 0);
}

TEST(DataFileReader, TurnsAMaleFirstFileRound) {
  Bench s;
  s.Read(DataPath("reader_male_first.txt"));
  EXPECT_EQ(s.h.TypeCode(1), "F");
  EXPECT_EQ(s.h.TypeCode(2), "M");
  EXPECT_EQ(s.h.StageName(1, 3), "Female");
  EXPECT_EQ(s.h.StageName(1, 4), "Male");
  EXPECT_EQ(s.h.StageName(2, 3), "Male");
  // The preadult names stay where they were.
  EXPECT_EQ(s.h.StageName(1, 2), "Larva");
  EXPECT_EQ(s.h.StageName(2, 2), "Larva");
  EXPECT_EQ(s.c.IndividualSex(1), "M");
  EXPECT_EQ(s.c.Fecundity(2, 1), 5);
  EXPECT_EQ(s.c.Fecundity(2, 3), -1);

  // The pool's reader turns the same names, keeping the codes as read in a list of its own.
  Bench b;
  b.ReadBoot(DataPath("reader_male_first.txt"));
  EXPECT_EQ(b.S.pool.OriginalTypeCode(1), "M");
  EXPECT_EQ(b.S.pool.OriginalTypeCode(2), "F");
  EXPECT_EQ(b.h.TypeCode(1), "F");
  EXPECT_EQ(b.h.TypeCode(2), "M");
  EXPECT_EQ(b.h.StageName(1, 3), "Female");
}

TEST(DataFileReader, TwoStagesAlwaysEndTheSpanWithAdult) {
  TempDir dir;
  WriteFile(dir.file("two.txt"), TwoStageFile(" 1 ,F, 3, 2\n 4, 5,-1\n 2 ,N,-2\n", 2));
  Bench s;
  s.Read(dir.file("two.txt"));
  EXPECT_EQ(s.h.SpecialGroup(1), "Nymph");
  EXPECT_EQ(s.h.SpecialGroup(2), "Adult");  // the file says "Female"
  EXPECT_EQ(s.h.StageName(1, 1), "Nymph");
  EXPECT_EQ(s.h.StageName(1, 2), "Female");
  EXPECT_EQ(s.h.StageName(1, 3), "Male");
  EXPECT_EQ(s.c.TotalLongevity(1), 5);
  EXPECT_EQ(s.c.TotalLongevity(2), 2);
}

TEST(DataFileReader, DataFaultsEndTheProgramWithTheirTexts) {
  TempDir dir;
  Bench s;
  // A record number out of place names it and the one before.
  WriteFile(dir.file("a.txt"), TwoStageFile(" 1 ,M, 1, 1\n 3 ,M, 1, 1\n", 2));
  ProgramEnd e = ReadExpectingEnd(s, dir.file("a.txt"));
  EXPECT_EQ(e.message, "Error in data file.\nCheck data of individual no. 1 or 2.");
  EXPECT_EQ(e.title, "Error in data file");

  // An "N" individual without a negative duration before the adult stage: the same fault.
  WriteFile(dir.file("b.txt"), TwoStageFile(" 1 ,N, 4, 3\n", 1));
  e = ReadExpectingEnd(s, dir.file("b.txt"));
  EXPECT_EQ(e.message, "Error in data file.\nCheck data of individual no. 0 or 1.");
  EXPECT_EQ(e.title, "Error in data file");

  // A missing record shifts the fields: the fecundity of female 1 runs into record 2.
  WriteFile(dir.file("c.txt"), TwoStageFile(" 1 ,F, 1, 2\n 5, 5\n 2 ,M, 1, 1\n", 2));
  e = ReadExpectingEnd(s, dir.file("c.txt"));
  EXPECT_EQ(e.message, "Error in data file.\nCheck data of individual no. 1 or 2.");

  // A developmental time that isn't whole.
  WriteFile(dir.file("d.txt"), TwoStageFile(" 1 ,M, 1, 1\n 2 ,M, 2.5, 1\n", 2));
  e = ReadExpectingEnd(s, dir.file("d.txt"));
  EXPECT_EQ(e.message, "Check data of individual no. 2. Developmental time is not integer.");
  EXPECT_EQ(e.title, "Error in data file");

  // ... which the time-unit command may allow.
  Bench allowed;
  allowed.S.options.AcceptNonIntegerRead = "Yes";
  allowed.Read(dir.file("d.txt"));
  EXPECT_EQ(allowed.c.StageDuration(2, 1), 2.5);
  // Rounded after each addition: 2.5 goes to 2 (a tie to the even), then 2 + 1; not 3.5 -> 4.
  EXPECT_EQ(allowed.c.TotalLongevity(2), 3);

  // The pool's reader stops on the same faults without a message, and knows no integer test.
  Bench b;
  try {
    b.ReadBoot(dir.file("a.txt"));
    ADD_FAILURE() << "no stop";
  } catch (const ProgramEnd& stop) {
    EXPECT_EQ(stop.message, "");
  }
  EXPECT_THROW(b.ReadBoot(dir.file("b.txt")), ProgramEnd);
  EXPECT_NO_THROW(b.ReadBoot(dir.file("d.txt")));

  // A file that ends inside a record fails in the reading itself.
  WriteFile(dir.file("e.txt"), TwoStageFile(" 1 ,F, 1, 3\n 5, 5\n", 1));
  EXPECT_THROW(s.Read(dir.file("e.txt")), ProgramEnd);
}

TEST(DataFileReader, ARecordSpreadOverAThousandLinesReadsAsTheWritersLayout) {
  // 60 females of 12 adult days each: with one field a line, over 1,000 lines.
  std::string tidy, spread;
  int lines = 0;
  for (int i = 1; i <= 60; ++i) {
    tidy += " " + std::to_string(i) + " ,F, 2, 12\n";
    spread += std::to_string(i) + "\n  F\n2\n12\n";
    lines += 4;
    for (int x = 1; x <= 12; ++x) {
      std::string v = std::to_string((i * x) % 9);
      tidy += " " + v + (x < 12 ? "," : ",-1\n");
      spread += v + "\n";
      ++lines;
    }
    spread += "-1\n";
    ++lines;
  }
  EXPECT_GE(lines, 1000);
  TempDir dir;
  WriteFile(dir.file("tidy.txt"), TwoStageFile(tidy, 60));
  WriteFile(dir.file("spread.txt"), TwoStageFile(spread, 60));
  Bench a, b;
  a.Read(dir.file("tidy.txt"));
  b.Read(dir.file("spread.txt"));
  for (int i = 1; i <= 60; ++i) {
    EXPECT_EQ(b.c.IndividualSex(i), "F");
    EXPECT_EQ(b.c.StageDuration(i, 2), 12);
    for (int x = 1; x <= 13; ++x) ASSERT_EQ(a.c.Fecundity(i, x), b.c.Fecundity(i, x)) << i << " day " << x;
  }
  EXPECT_EQ(b.c.Fecundity(60, 13), -1);
  EXPECT_EQ(b.c.MaxLongevity, 14);
  // Records may as well share one line.
  std::string oneLine;
  for (char ch : tidy) oneLine += ch == '\n' ? ',' : ch;
  WriteFile(dir.file("line.txt"), TwoStageFile(oneLine, 60));
  Bench c;
  c.Read(dir.file("line.txt"));
  EXPECT_EQ(c.c.Fecundity(60, 12), a.c.Fecundity(60, 12));
}

TEST(DataFileReader, LimitsAreFaultsOfTheStoreNotDataMessages) {
  TempDir dir;
  std::string records;
  for (int i = 1; i <= 391; ++i) records += " " + std::to_string(i) + " ,M, 1, 1\n";
  WriteFile(dir.file("391.txt"), TwoStageFile(records, 391));
  Bench s;
  EXPECT_THROW(s.Read(dir.file("391.txt")), SubscriptFault);
  EXPECT_EQ(s.c.IndividualSex(390), "M");  // all 390 before it were read
  Bench b;
  EXPECT_THROW(b.ReadBoot(dir.file("391.txt")), SubscriptFault);

  // 16-bit fields: a count beyond 32767 is an overflow, not a wrapped number.
  WriteFile(dir.file("big.txt"), TwoStageFile("", 40000));
  EXPECT_THROW(s.Read(dir.file("big.txt")), OverflowFault);
  // ... and so is a total longevity beyond it.
  WriteFile(dir.file("long.txt"), TwoStageFile(" 1 ,M, 30000, 3000\n", 1));
  EXPECT_THROW(s.Read(dir.file("long.txt")), OverflowFault);

  // An adult list longer than the days kept fails at the first day beyond them.
  WriteFile(dir.file("old.txt"), TwoStageFile(" 1 ,F, 1, 600\n-1\n", 1));
  EXPECT_THROW(s.Read(dir.file("old.txt")), SubscriptFault);

  // Thirteen stages still read: the second adult stage name sits at 14.
  std::string head = "\"P\"\n\"U\"\n\"T\"\n1\n2,13\n";
  for (const char* code : {"F", "M"}) {
    head += code;
    for (int j = 1; j <= 12; ++j) head += ",S" + std::to_string(j);
    head += std::string(",") + (code[0] == 'F' ? "Female" : "Male") + "\n";
  }
  head += "S1,S2\n 1 ,M";
  for (int j = 1; j <= 13; ++j) head += ", 1";
  WriteFile(dir.file("13.txt"), head + "\n");
  Bench t;
  t.Read(dir.file("13.txt"));
  EXPECT_EQ(t.h.StageName(1, 14), "Male");
  EXPECT_EQ(t.c.TotalLongevity(1), 13);
}

TEST(DataFileReader, SexCountsGoOnFromWhatStands) {
  Bench s;
  s.Read(DataPath("reader_small.txt"));
  s.Read(DataPath("reader_small.txt"));
  EXPECT_EQ(s.h.TypeCounts(1), 4);
  EXPECT_EQ(s.h.TypeCounts(3), 4);
  EXPECT_EQ(s.h.MaleCount, 2);
  EXPECT_EQ(s.h.OldFemaleCount, 2);  // every female with the default critical age of 0
  // An unknown sex is counted nowhere and read on like a male.
  TempDir dir;
  WriteFile(dir.file("x.txt"), TwoStageFile(" 1 ,f, 1, 2\n 2 ,M, 1, 1\n", 2));
  Bench x;
  x.Read(dir.file("x.txt"));
  EXPECT_EQ(x.h.TypeCounts(1) + x.h.TypeCounts(2) + x.h.TypeCounts(3), 1);
  EXPECT_EQ(x.c.IndividualSex(1), "f");
  EXPECT_EQ(x.c.IndividualSex(2), "M");
}

TEST(DataFileReader, PoolTakesTheCohortWithTotalsAndLeavesTheCountsAlone) {
  Bench s;
  s.S.settings.FecundityFactor = 2;
  s.ReadBoot(DataPath("reader_small.txt"));
  EXPECT_EQ(s.S.pool.OriginalCohortSize, 5);
  EXPECT_EQ(s.c.CohortSize, 5);
  EXPECT_EQ(s.h.CohortSizeRead, 5);
  EXPECT_EQ(s.S.pool.OriginalSex(3), "N");
  EXPECT_EQ(s.S.pool.OriginalStageDuration(3, 2), -2);
  EXPECT_EQ(s.S.pool.OriginalFecundity(1, 3), 14);
  EXPECT_EQ(s.S.pool.OriginalFecundity(1, 5), -1);
  EXPECT_EQ(s.S.pool.OriginalTotalFecundity(1), 18);  // (2 + 0 + 7) x 2, without the -1
  EXPECT_EQ(s.S.pool.OriginalTotalFecundity(4), 0);
  EXPECT_EQ(s.S.pool.OriginalTypeCode(1), "F");
  EXPECT_EQ(s.h.TypeCounts(1), 0);
  EXPECT_EQ(s.h.OldFemaleCount, 0);
  EXPECT_EQ(s.c.IndividualSex(1), "");  // the working cohort isn't touched
  // Read twice, the totals don't add up.
  s.ReadBoot(DataPath("reader_small.txt"));
  EXPECT_EQ(s.S.pool.OriginalTotalFecundity(1), 18);
}

TEST(DataFileReader, ReadsRearingCostsOnlyWhenTheFileHasThem) {
  TempDir dir;
  WriteFile(dir.file("cost.txt"),
            "\"P\"\n\"U\"\n\"T\"\n1\n2,2\nF,Nymph,Female\nM,Nymph,Male\n1.5, 2.25, 3\nNymph,Female\n 1 ,M, 1, 1\n");
  Bench s;
  s.h.RegularLifeTable = "No";
  s.Read(dir.file("cost.txt"));
  EXPECT_EQ(s.h.StageRearingCost(1, 1), 1.5);
  EXPECT_EQ(s.h.StageRearingCost(1, 2), 2.25);
  EXPECT_EQ(s.h.StageRearingCost(2, 2), 3);  // the male adult's cost
  EXPECT_EQ(s.h.SpecialGroup(1), "Nymph");
  EXPECT_EQ(s.c.IndividualSex(1), "M");
  // Read as a regular life table, the costs are taken for the special stages and the
  // records slip out of place.
  Bench r;
  r.h.RegularLifeTable = "Yes";
  EXPECT_THROW(r.Read(dir.file("cost.txt")), ProgramEnd);
  EXPECT_EQ(r.h.SpecialGroup(1), "1.5");
}

TEST(DataFileReader, ReadsTheBundledMiteCohort) {
  Bench s;
  s.Read(std::string(KORVAN_EXAMPLES) + "/mite.txt");
  EXPECT_EQ(s.c.CohortSize, 100);
  EXPECT_EQ(s.h.StageCount, 5);
  EXPECT_EQ(s.h.StageName(1, 5), "Female");
  EXPECT_EQ(s.h.StageName(1, 6), "Male");
  EXPECT_GT(s.h.TypeCounts(1), 0);
  EXPECT_GT(s.h.TypeCounts(2), 0);
  EXPECT_GT(s.h.TypeCounts(3), 0);
  EXPECT_EQ(s.h.TypeCounts(1) + s.h.TypeCounts(2) + s.h.TypeCounts(3), 100);
  for (int i = 1; i <= 100; ++i) {
    if (s.c.IndividualSex(i) != "F") continue;
    const double d = s.c.StageDuration(i, 5);
    EXPECT_GE(d, 10);
    EXPECT_LE(d, 30);
    EXPECT_EQ(s.c.Fecundity(i, static_cast<long>(d) + 1), -1) << "female " << i;
  }
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

TEST(DataFileReader, EntersTheFlowRecordWhenItIsOn) {
  test::TempDir dir;
  Bench s;
  s.S.options.FlowMode = "Yes";
  s.S.channels.Flow.Open(dir.file("flow.txt"));
  s.Read(test::DataPath("reader_small.txt"));
  s.ReadBoot(test::DataPath("reader_small.txt"));
  s.S.options.FlowMode = "No";
  s.Read(test::DataPath("reader_small.txt"));
  s.S.channels.Flow.Close();
  EXPECT_EQ(test::ReadFile(dir.file("flow.txt")), "Sub InputData\nSub InputdataBoot\n");
}

}  // namespace
}  // namespace korvan
