#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

#include "input/data_file_reader.h"
#include "run/run_context.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::FakePrompts;
using test::TempDir;
using test::WriteFile;

const char* kAdultHead = "\"Project: Aphid adults\"\n\"Lab\"\n\"Cotton 25 C\"\n3\n2,2\nF,Nymph,Female\nM,Nymph,Male\nNymph,Female\n";

TEST(AdultLifeTable, ReadsAdultsWithPaddedFecundityAndKeepsItsOwnHead) {
  TempDir dir;
  WriteFile(dir.file("adult.txt"), std::string(kAdultHead) + " 1 ,F, 5\n 0, 3,-1\n 2 ,M, 7\n 3 ,F, 2\n 4, 6,-1\n");
  Session S;
  FakePrompts P;
  S.identity.ProjectName = "Main cohort";
  S.identity.TreatmentName = "Main treatment";
  P.Answer("Open adult life table", dir.file("adult.txt"));
  DataFileReader(S, P).InputAdultLifeTable();

  const AdultLifeTable& a = S.adult;
  EXPECT_EQ(a.AdultCohortSize, 3);
  EXPECT_EQ(a.head.ProjectName, "Aphid adults");
  EXPECT_EQ(a.head.TreatmentName, "Cotton 25 C");
  EXPECT_EQ(S.identity.TreatmentName, "Cotton 25 C");  // the treatment line is copied ...
  EXPECT_EQ(S.identity.ProjectName, "Main cohort");    // ... the rest of the head is not
  EXPECT_EQ(a.head.SpecialGroup(2), "Adult");
  EXPECT_EQ(a.AdultLongevity(1), 5);
  EXPECT_EQ(a.AdultLongevity(2), 7);
  EXPECT_EQ(a.AdultIndividualSex(2), "M");
  double f1[] = {0, 0, 3, 0, 0, 0, -1};
  for (int x = 1; x <= 6; ++x) EXPECT_EQ(a.AdultFecundity(1, x), f1[x]) << "day " << x;
  EXPECT_EQ(a.AdultFecundity(3, 2), 6);
  EXPECT_EQ(a.AdultFecundity(3, 3), -1);
  EXPECT_EQ(S.ws.cohort.CohortSize, 0);  // the cohort in hand is another one
}

TEST(AdultLifeTable, StopsOnOtherSexesAndRecordsOutOfPlace) {
  TempDir dir;
  Session S;
  FakePrompts P;
  WriteFile(dir.file("n.txt"), std::string(kAdultHead) + " 1 ,F, 1\n-1\n 2 ,N, 3\n 3 ,M, 1\n");
  P.Answer("Open adult life table", dir.file("n.txt"));
  try {
    DataFileReader(S, P).InputAdultLifeTable();
    ADD_FAILURE() << "an N adult was read";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "Sex of individual no. 2 is N?");
    EXPECT_EQ(e.title, "Error in data file");
  }
  WriteFile(dir.file("gap.txt"), std::string(kAdultHead) + " 1 ,M, 1\n 3 ,M, 1\n");
  P.Answer("Open adult life table", dir.file("gap.txt"));
  try {
    DataFileReader(S, P).InputAdultLifeTable();
    ADD_FAILURE() << "a gap was read";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "Error in data file.\nCheck data of individual no. 1 or 2.");
  }
  // No file chosen: nothing read.
  P.Answer("Open adult life table", "");
  S.adult.AdultCohortSize = 0;
  EXPECT_NO_THROW(DataFileReader(S, P).InputAdultLifeTable());
  EXPECT_EQ(S.adult.AdultCohortSize, 0);
}

TEST(ImmatureLifeTable, ReadsThePreadultStagesAndStopsAtAFaultyRecord) {
  TempDir dir;
  const std::string head = "\"Project: Mite\"\n\"Lab\"\n\"25 C\"\n3\n2,4\nF,Egg,Larva,Nymph,Female\n"
                           "M,Egg,Larva,Nymph,Male\nEgg,Nymph\n";
  WriteFile(dir.file("im.txt"), head + " 1 ,F, 3, 2, 2\n 2 ,N, 3,-1\n 3 ,M, 4, 2, 3\n");
  Session S;
  FakePrompts P;
  P.Answer("Open immature life table", dir.file("im.txt"));
  DataFileReader(S, P).InputImmatureLifeTable();
  const ImmatureLifeTable& im = S.immature;
  EXPECT_EQ(im.ImmatureCount, 3);
  EXPECT_EQ(im.head.TreatmentName, "25 C");
  EXPECT_EQ(im.ImmatureDuration(1, 3), 2);
  EXPECT_EQ(im.ImmatureDuration(2, 2), -1);
  EXPECT_EQ(im.ImmatureDuration(2, 3), 0);
  EXPECT_EQ(im.ImmatureSex(3), "M");

  const std::pair<const char*, const char*> faults[] = {
      {" 1 ,N, 3, 2, 2\n", "Individual no.1 is N-type. But the last stage is positive."},
      {" 1 ,F, 3,-2\n", "Individual no.1 is type M or F without adult stage.\n"
                        "If an individual did not develop to adult, it should be type N."},
      {" 1 ,F, 3, 0, 2\n", "Developmental time of individual no.1 is ZERO."},
      {" 2 ,F, 3, 1, 2\n", "Check data of individual no. 0 or 1\nPlease correct your data and rerun this program."}};
  for (const auto& [record, message] : faults) {
    WriteFile(dir.file("bad.txt"), head + record);
    P.Answer("Open immature life table", dir.file("bad.txt"));
    try {
      DataFileReader(S, P).InputImmatureLifeTable();
      ADD_FAILURE() << record;
    } catch (const ProgramEnd& e) {
      EXPECT_EQ(e.message, message);
      EXPECT_EQ(e.title, "Error in data file");
    }
  }
}

// A file of t treatments: each a title, a cohort size and its values closed by -1.
std::string Treatments(int t, const std::string& blocks) {
  return "\"Aphid r\"\n\"Three hosts\"\n\"r\"\n" + std::to_string(t) + "\n" + blocks;
}

TEST(RawDataReader, PutsTreatmentsInDescendingOrderOfTheirMeans) {
  TempDir dir;
  // Means: Bean 2, Cotton 5, Maize 3.5 (values of unequal number).
  WriteFile(dir.file("t.txt"), Treatments(3,
                                          "Bean,40\n1,2,3,-1\n"
                                          "Cotton,35\n4,6,-1\n"
                                          "Maize,50\n3,3,4,4,-1\n"));
  Session S;
  FakePrompts P;
  S.identity.DataFilePath = dir.file("t.txt");
  DataFileReader(S, P).InputRawData();
  const ComparisonRecord& c = S.comparison;
  EXPECT_EQ(c.TreatmentCount, 3);
  EXPECT_EQ(c.ParameterName, "r");
  const char* titles[] = {"", "Cotton", "Maize", "Bean"};
  const int n[] = {0, 35, 50, 40}, b[] = {0, 2, 4, 3}, from[] = {0, 2, 3, 1};
  for (int a = 1; a <= 3; ++a) {
    EXPECT_EQ(c.TreatmentTitle(a), titles[a]);
    EXPECT_EQ(c.SortedTitle(a), titles[a]);
    EXPECT_EQ(c.TreatmentN(a), n[a]);
    EXPECT_EQ(c.TreatmentB(a), b[a]);
    EXPECT_EQ(c.TreatmentOrderIndex(a), from[a]);
    EXPECT_EQ(c.OriginalOrder(a), from[a]);
  }
  EXPECT_EQ(c.BootValue(1, 1), 4);
  EXPECT_EQ(c.BootValue(2, 1), 6);
  EXPECT_EQ(c.BootValueSeen(3, 1), 0);  // Cotton has two values; the first pass left four here
  EXPECT_EQ(c.BootValue(3, 1), 0);
  EXPECT_EQ(c.BootValue(4, 2), 4);
  EXPECT_EQ(c.BootValueSeen(4, 2), 1);
  EXPECT_EQ(c.BootValue(3, 3), 3);
  // The first-pass means stay in file order.
  EXPECT_EQ(c.FirstPassMean(1), 2);
  EXPECT_EQ(c.FirstPassMean(2), 5);
  EXPECT_EQ(c.FirstPassMean(3), 3.5);
  EXPECT_EQ(c.PairCount, 3);
  EXPECT_DOUBLE_EQ(c.PairAlphaSidak, 1 - std::cbrt(0.95));
  EXPECT_EQ(c.RuleWide, std::string(49, '='));
  EXPECT_EQ(c.RuleShortThin, std::string(37, '-'));
  EXPECT_EQ(c.RuleTable, std::string(48, '='));
  EXPECT_TRUE(P.met.empty());

  // A file without its last -1 ends at the end of the file.
  WriteFile(dir.file("open.txt"), Treatments(3, "A,1\n1,-1\nB,1\n2,-1\nC,1\n3,3"));
  S.identity.DataFilePath = dir.file("open.txt");
  DataFileReader(S, P).InputRawData();
  EXPECT_EQ(S.comparison.TreatmentTitle(1), "C");
  EXPECT_EQ(S.comparison.TreatmentB(1), 2);
  EXPECT_EQ(S.comparison.BootValueSeen(1, 3), 1);
  EXPECT_EQ(S.comparison.BootValueSeen(2, 3), 0);  // nothing stays from the file before
}

TEST(RawDataReader, FewerThanThreeTreatmentsOnlyTellSo) {
  TempDir dir;
  WriteFile(dir.file("two.txt"), Treatments(2, "A,1\n1,-1\nB,1\n2,-1\n"));
  Session S;
  FakePrompts P;
  P.Answer("Treatments <3", "OK");
  S.identity.DataFilePath = dir.file("two.txt");
  DataFileReader(S, P).InputRawData();
  ASSERT_TRUE(P.Met("Treatments <3"));
  EXPECT_EQ(P.With("Treatments <3")[0].text, "There are only 2 treatments.");
  EXPECT_EQ(S.comparison.TreatmentCount, 2);
  EXPECT_EQ(S.comparison.TreatmentB(1), 0);

  // Beyond the treatment arrays: the subscript fault.
  std::string blocks;
  for (int k = 1; k <= 12; ++k) blocks += "T" + std::to_string(k) + ",1\n" + std::to_string(k) + ",-1\n";
  WriteFile(dir.file("twelve.txt"), Treatments(12, blocks));
  S.identity.DataFilePath = dir.file("twelve.txt");
  EXPECT_THROW(DataFileReader(S, P).InputRawData(), SubscriptFault);
}

}  // namespace
}  // namespace korvan
