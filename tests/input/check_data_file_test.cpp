// The data-file check: every rule's fault with its exact message, the questions it asks, and
// the edge cases of hand-typed files.
#include "input/check_data_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::FakePrompts;

const std::string PL = "Please correct your data and rerun this program.";
const std::string HL = "(If you need help, please contact korvan-support@example.org)";

// The head of a file with two types and m stages; the special span is the first stage and
// the last preadult one ("Adult" with two stages).
std::string Head(int n, int m) {
  const char* names[] = {"Egg", "Larva", "Nymph", "Pupa", "Prepupa"};
  std::string f = "F", male = "M";
  for (int j = 1; j < m; ++j) {
    f += std::string(",") + names[j - 1];
    male += std::string(",") + names[j - 1];
  }
  f += ",Female";
  male += ",Male";
  std::string second = m == 2 ? "Adult" : names[m - 2];
  return "Project: Check\nTester\nLab 25C\n" + std::to_string(n) + "\n2, " + std::to_string(m) + "\n" + f + "\n" +
         male + "\nEgg," + second + "\n";
}

struct Checked {
  std::unique_ptr<Session> S = std::make_unique<Session>();
  FakePrompts P;
  std::optional<ProgramEnd> end;
};

// Runs the check on a file; regular life table and two-sex reproduction unless told otherwise.
std::unique_ptr<Checked> Check(const std::string& text, const std::string& kind = "1",
                               void (*prepare)(Checked&) = nullptr) {
  static int counter = 0;
  test::TempDir dir;
  auto c = std::make_unique<Checked>();
  const std::string path = dir.file("check_" + std::to_string(counter++) + ".txt");
  test::WriteFile(path, text);
  c->S->identity.DataFilePath = path;
  c->P.Answer("Rearing cost for each stage?", "Yes").Answer("General analysis or 3D analysis?", kind);
  if (prepare) prepare(*c);
  try {
    CheckDataFile(*c->S, c->P).CheckDataFile2();
  } catch (const ProgramEnd& e) {
    c->end = e;
  }
  return c;
}

// The message of a fault that ended the check, with the title checked.
std::string Fault(const std::string& text, const std::string& title = "Error in data file",
                  const std::string& kind = "1") {
  auto c = Check(text, kind);
  if (!c->end) return "(passed)";
  EXPECT_EQ(c->end->title, title) << c->end->message;
  return c->end->message;
}

TEST(CheckDataFile, CleanFileIsStoredAsReadWithItsCountsAndQuestions) {
  auto c = Check(test::ReadFile(test::DataPath("check_good.txt")));
  ASSERT_FALSE(c->end) << c->end->message;
  const SessionStore& S = *c->S;
  // Neither the project prefix is cut nor the fecundity multiplied, and lists aren't padded.
  EXPECT_EQ(S.identity.ProjectName, "Project: Check");
  EXPECT_EQ(S.identity.TreatmentName, "Lab 25C");
  EXPECT_EQ(S.ws.cohort.CohortSize, 6);
  EXPECT_EQ(S.header.CohortSizeRead, 6);
  EXPECT_EQ(S.header.StageName(2, 4), "Male");
  EXPECT_EQ(S.header.SpecialGroup(2), "Nymph");
  EXPECT_EQ(S.header.FileFemaleCount, 2);
  EXPECT_EQ(S.header.FileMaleCount, 2);
  EXPECT_EQ(S.header.FileNCount, 2);
  EXPECT_EQ(S.ws.cohort.StageDuration(3, 3), -3);
  EXPECT_EQ(S.ws.cohort.Fecundity(1, 3), 3);
  EXPECT_EQ(S.ws.cohort.Fecundity(1, 4), -1);
  EXPECT_EQ(S.ws.cohort.Fecundity(1, 5), 0);
  EXPECT_EQ(S.header.RegularLifeTable, "Yes");
  EXPECT_EQ(S.options.MatingMode, "Yes");
  EXPECT_EQ(c->P.status.at("txtCohortsize"), "6");

  ASSERT_EQ(c->P.Titles(), (std::vector<std::string>{"Rearing cost for each stage?", "General analysis or 3D analysis?"}));
  EXPECT_EQ(c->P.met[0].text,
            "Regular life table?\nYes: Life table data without rearing cost.\nNo: Life table data with rearing "
            "cost.\nIf there is rearing cost, you must select \"No\".");
  EXPECT_EQ(c->P.met[0].buttons, kYesNo);
  EXPECT_EQ(c->P.met[1].text,
            "Is two-sex mating necessary for a successful reproduction?\nIf there are only females in your data "
            "file, you MUST choose \"2\". \n1: Two-sex reproduction.\n2: Parthenogenetic reproduction.\n3: 3D life "
            "table analysis.\n4: End the program.");
  EXPECT_EQ(c->P.met[1].defaultText, "1");

  // A quiet check doesn't show the cohort size.
  auto quiet = Check(test::ReadFile(test::DataPath("check_good.txt")), "1",
                     [](Checked& q) { q.S->options.QuietCheck = "Yes"; });
  EXPECT_FALSE(quiet->end);
  EXPECT_EQ(quiet->P.status.count("txtCohortsize"), 0u);
}

TEST(CheckDataFile, TypeCodesAndSpecialStages) {
  // Rule 1: a code used twice names both types.
  EXPECT_EQ(Fault("P\nU\nT\n1\n2, 2\nF,Egg,Female\nF,Egg,Male\nEgg,Adult\n1,M,2,3\n"),
            "Check your data file. Don't use the same code for different sex.\nIs type 2 the same as type 1?");
  EXPECT_EQ(Fault("P\nU\nT\n1\n3, 2\nF,Egg,Female\nM,Egg,Male\nF,Egg,Other\nEgg,Adult\n1,M,2,3\n"),
            "Check your data file. Don't use the same code for different sex.\nIs type 3 the same as type 1?");

  // Rule 2: the first special stage must be a stage of the first type.
  EXPECT_EQ(Fault("P\nU\nT\n1\n2, 3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\negg,Larva\n1,M,2,3,4\n"),
            "Check the name of the first stage of special group.\nThe first stage of special group is egg\n" + PL +
                "\nIf there is no rearing cost, you should choose \"Yes\" at the last step.\nIf your data is "
                "group-reared life table, you should use button B. Reand N,F.");

  // Rule 3: so must the second, and "Adult" only passes with two stages.
  const std::string rule3 = "Check the name of the second stage of special group.\nThe second stage of special group is ";
  EXPECT_EQ(Fault("P\nU\nT\n1\n2, 3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\nEgg,Adult\n1,M,2,3,4\n"),
            rule3 + "Adult\n" + PL);
  EXPECT_EQ(Fault("P\nU\nT\n1\n2, 3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\nEgg,Male\n1,M,2,3,4\n"),
            rule3 + "Male\n" + PL);
  for (const char* second : {"Adult", "adult", "Male", "Female"}) {
    auto c = Check(std::string("P\nU\nT\n1\n2, 2\nF,Egg,Female\nM,Egg,Male\nEgg,") + second + "\n1,M,2,3\n");
    EXPECT_FALSE(c->end) << second;
    EXPECT_EQ(c->S->header.SpecialGroup(2), "Adult") << second;
  }
  EXPECT_EQ(Fault("P\nU\nT\n1\n2, 2\nF,Egg,Female\nM,Egg,Male\nEgg,Imago\n1,M,2,3\n"), rule3 + "Imago\n" + PL);
}

TEST(CheckDataFile, NumbersSexesAndDurations) {
  const std::string tail = "\n" + PL + "\n" + HL;
  // Rule 4: the records' order.
  EXPECT_EQ(Fault(Head(3, 3) + "1,M,2,3,4\n3,M,2,3,4\n2,M,2,3,4\n"), "Check data of individual no. 1 or 2" + tail);
  EXPECT_EQ(Fault(Head(2, 3) + "1,M,2,3,4,5\n2,M,2,3,4\n"), "Check data of individual no. 1 or 2" + tail);
  // Rule 5: only capital F, M, N.
  EXPECT_EQ(Fault(Head(3, 3) + "1,M,2,3,4\n2,f,2,3,4\n3,M,2,3,4\n"),
            "Sex of individual no. 2 is f?\nCheck individual no. 1 and no. 2." + tail);
  // Rule 6: no zero duration, also in the adult stage.
  EXPECT_EQ(Fault(Head(1, 3) + "1,M,2,0,4\n"), "Developmental time of individual no. 1 is ZERO." + tail);
  // Rule 8: a male or female that died before the last stage.
  EXPECT_EQ(Fault(Head(2, 3) + "1,N,2,-3\n2,M,-1\n"),
            "Individual no.2 is type M or F without adult stage.\nIf an individual did not develop to adult, it "
            "should be type N." + tail);
  // Rule 9: a negative duration in the last stage, whatever the sex.
  EXPECT_EQ(Fault(Head(1, 3) + "1,M,2,3,-4\n"),
            "Sex of individual no. 1 is type N.\nBut there is adult stage.\nPlease correct your data.");
  // Rule 10: an N that reached the last stage.
  EXPECT_EQ(Fault(Head(1, 3) + "1,N,2,3,4\n"),
            "Individual no.1 should be N. (Type N should end with a negative duration of last stage.)" + tail);
}

TEST(CheckDataFile, RecordsOfDeadAndLivingIndividuals) {
  const std::string tail = "\n" + PL + "\n" + HL;
  const std::string twoOthers = "1,M,2,4,3,5\n2,M,2,4,3,5\n";
  // An N that died in the third of four stages passes; with three stages it died as an adult.
  EXPECT_EQ(Fault(Head(3, 4) + twoOthers + "3,N,2,4,-3\n"), "(passed)");
  EXPECT_EQ(Fault(Head(3, 3) + "1,M,2,4,5\n2,M,2,4,5\n3,N,2,4,-3\n"),
            "Sex of individual no. 3 is type N.\nBut there is adult stage.\nPlease correct your data.");
  EXPECT_EQ(Fault(Head(4, 4) + twoOthers + "3,N,2,4,-3\n4,N,2,4,3,5\n"),
            "Individual no.4 should be N. (Type N should end with a negative duration of last stage.)" + tail);
  EXPECT_EQ(Fault(Head(5, 4) + twoOthers + "3,N,2,4,-3\n4,N,-2\n5,F,2,4,-3\n"),
            "Individual no.5 is type M or F without adult stage.\nIf an individual did not develop to adult, it "
            "should be type N." + tail);
  EXPECT_EQ(Fault(Head(6, 4) + twoOthers + "3,N,2,4,-3\n4,N,-2\n5,N,1,-1\n6,F,2,4,3,0\n"),
            "Developmental time of individual no. 6 is ZERO." + tail);
  // Records may be broken over lines or share one.
  auto c = Check(Head(3, 3) + "1,M,\n2,\n4,5,2,F,2,4,2,\n3,-1\n3,N,\n-2\n");
  EXPECT_FALSE(c->end) << c->end->message;
  EXPECT_EQ(c->S->ws.cohort.Fecundity(2, 1), 3);
  EXPECT_EQ(c->S->ws.cohort.Fecundity(2, 2), -1);
  EXPECT_EQ(c->S->ws.cohort.StageDuration(3, 1), -2);
}

TEST(CheckDataFile, NonIntegerDurationsAreAskedOnceAndOpenAGap) {
  const std::string title = "Non-integer developmental time";
  // No ends the check with the fault of the reader.
  auto no = Check(Head(1, 3) + "1,M,2,3.5,4\n", "1", [](Checked& c) { c.P.Answer("Non-integer developmental time", "No"); });
  ASSERT_TRUE(no->end);
  EXPECT_EQ(no->end->message, "Check data of individual no. 1. Developmental time is not integer.");
  EXPECT_EQ(no->end->title, "Error in data file");
  EXPECT_EQ(no->S->options.AcceptNonIntegerDuration, "No");
  ASSERT_EQ(no->P.With(title).size(), 1u);
  EXPECT_EQ(no->P.With(title)[0].text, "Attention!  Accept non-integer developmental time? (Individual no. 1)\nSelect No to end.");

  // Yes holds for the rest of the file. A non-integer negative duration then doesn't end the
  // record: individual 3 has the stages 2, -2.5 and -3, and the female's list follows her 4.5.
  auto yes = Check(Head(4, 4) + "1,M,2,3.5,4,5\n2,M,2,3,4,5.5\n3,N,2,-2.5,-3\n4,F,2,-1.5,3,4.5\n1,2,3,4,-1\n",
                   "1", [](Checked& c) { c.P.Answer("Non-integer developmental time", "Yes"); });
  EXPECT_FALSE(yes->end) << yes->end->message;
  EXPECT_EQ(yes->P.With(title).size(), 1u);
  EXPECT_EQ(yes->S->options.AcceptNonIntegerDuration, "Yes");
  EXPECT_EQ(yes->S->ws.cohort.StageDuration(3, 3), -3);

  // The gap: after -2.5 an integer negative duration in the last stage is rule 9's fault.
  auto gap = Check(Head(1, 4) + "1,N,2,-2.5,4,-3\n", "1", [](Checked& c) { c.P.Answer("Non-integer developmental time", "Yes"); });
  ASSERT_TRUE(gap->end);
  EXPECT_EQ(gap->end->message, "Sex of individual no. 1 is type N.\nBut there is adult stage.\nPlease correct your data.");
}

TEST(CheckDataFile, FecundityLists) {
  const std::string d3 = Head(2, 3) + "1,M,2,4,5\n2,F,2,4,3\n";
  const std::string rule13 =
      "Error in fecundity of individual no.2\nThis female lived only 3 time units.\nBut the fecunidty data are more "
      "than 3 time units.\nPlease check your data. " + HL;
  const std::string rule14 = "Error in fecundity of individual no.2\n" + PL + "\n" + HL;
  EXPECT_EQ(Fault(d3 + "1,2,3,4,-1\n", "Error in fecundity data"), rule13);
  EXPECT_EQ(Fault(d3 + "1,2,3,0\n"), rule14);
  EXPECT_EQ(Fault(d3 + "1,2,3,-2\n"), rule14);
  EXPECT_EQ(Fault(d3 + "1,2,3,-1\n"), "(passed)");
  EXPECT_EQ(Fault(d3 + "-1\n"), "(passed)");
  // Before day d + 1 a negative value other than -1 passes.
  EXPECT_EQ(Fault(d3 + "1,-5,3,-1\n"), "(passed)");
  // The list is read on into the next record when -1 is missing: its number is then the
  // fourth value.
  EXPECT_EQ(Fault(Head(3, 3) + "1,M,2,4,5\n2,F,2,4,3\n1,2,3\n3,M,2,4,5\n", "Error in fecundity data"), rule13);
}

TEST(CheckDataFile, NonIntegerFecundityIsAskedOnce) {
  const std::string file = Head(3, 3) + "1,M,2,4,5\n2,F,2,4,3\n1,2.5,3,-1\n3,F,2,4,2\n0.5,-1\n";
  auto no = Check(file, "1", [](Checked& c) { c.P.Answer("Non-integer fecundity", "No"); });
  ASSERT_TRUE(no->end);
  EXPECT_EQ(no->end->title, "Error in fecundity data");
  EXPECT_EQ(no->end->message,
            "Error in fecundity of individual no. 2\nThe fecundity must be integer.\nPlease check your data. " + HL);
  EXPECT_EQ(no->P.With("Non-integer fecundity")[0].text,
            "The fecundity of individual no. 2 is non-integer.\nIn general, the fecundity must be integer.\nDo you "
            "accept non-integer fecundity?");

  auto yes = Check(file, "1", [](Checked& c) { c.P.Answer("Non-integer fecundity", "Yes"); });
  EXPECT_FALSE(yes->end) << yes->end->message;
  EXPECT_EQ(yes->P.With("Non-integer fecundity").size(), 1u);
  EXPECT_EQ(yes->S->options.AcceptNonIntegerFecundity, "Yes");
  // An accepted non-integer value on day d + 1 is still rule 13's fault.
  auto late = Check(Head(2, 3) + "1,M,2,4,5\n2,F,2,4,1\n1,0.5\n", "1",
                    [](Checked& c) { c.P.Answer("Non-integer fecundity", "Yes"); });
  ASSERT_TRUE(late->end);
  EXPECT_EQ(late->end->title, "Error in fecundity data");
}

TEST(CheckDataFile, KindOfReproduction) {
  const std::string females = test::ReadFile(test::DataPath("check_only_females.txt"));
  auto two = Check(females, "1");
  ASSERT_TRUE(two->end);
  EXPECT_EQ(two->end->title, "Two-sex mating?");
  EXPECT_EQ(two->end->message, "There are only females in your data.\nTwo-sex mating is impossible.");

  EXPECT_EQ(Check(females, "2")->S->options.MatingMode, "No");
  auto threeD = Check(females, " 3 ");
  EXPECT_FALSE(threeD->end);
  EXPECT_EQ(threeD->S->options.MatingMode, "3D");
  auto stop = Check(test::ReadFile(test::DataPath("check_good.txt")), "4");
  ASSERT_TRUE(stop->end);
  EXPECT_EQ(stop->end->title, "General analysis or 3D analysis?");

  // Any other answer leaves the mode as it was; a "Yes" from before still meets rule 15.
  auto other = Check(females, "", [](Checked& c) { c.S->options.MatingMode = "No"; });
  EXPECT_FALSE(other->end);
  EXPECT_EQ(other->S->options.MatingMode, "No");
  auto kept = Check(females, "7", [](Checked& c) { c.S->options.MatingMode = "Yes"; });
  ASSERT_TRUE(kept->end);
  EXPECT_EQ(kept->end->title, "Two-sex mating?");

  // A Fast Run asks nothing, and its two-sex choice meets rule 15 as well.
  auto fast = Check(females, "1", [](Checked& c) {
    c.S->options.FastRun = "Yes";
    c.S->options.MatingMode = "Yes";
    c.S->header.RegularLifeTable = "Yes";
  });
  ASSERT_TRUE(fast->end);
  EXPECT_EQ(fast->end->title, "Two-sex mating?");
  EXPECT_TRUE(fast->P.met.empty());
}

TEST(CheckDataFile, RearingCosts) {
  auto c = Check(test::ReadFile(test::DataPath("check_costs.txt")), "1",
                 [](Checked& k) { k.P = FakePrompts(); k.P.Answer("Rearing cost for each stage?", "No").Answer("General analysis or 3D analysis?", "1"); });
  ASSERT_FALSE(c->end) << c->end->message;
  EXPECT_EQ(c->S->header.RegularLifeTable, "No");
  EXPECT_EQ(c->S->header.StageRearingCost(1, 1), 0.5);
  EXPECT_EQ(c->S->header.StageRearingCost(1, 3), 2);
  EXPECT_EQ(c->S->header.StageRearingCost(2, 3), 3);
  EXPECT_EQ(c->S->header.SpecialGroup(1), "Egg");

  // One type: no male adult cost.
  auto one = Check("P\nU\nT\n1\n1, 2\nF,Egg,Female\n1,2\nEgg,Adult\n1,F,2,3\n-1\n", "2",
                   [](Checked& k) { k.P = FakePrompts(); k.P.Answer("Rearing cost for each stage?", "No").Answer("General analysis or 3D analysis?", "2"); });
  EXPECT_FALSE(one->end) << one->end->message;
  EXPECT_EQ(one->S->header.StageRearingCost(1, 2), 2);

  // The costs read as stage names when the user says there are none.
  EXPECT_NE(Fault(test::ReadFile(test::DataPath("check_costs.txt"))).find("first stage of special group is 0.5"),
            std::string::npos);
}

TEST(CheckDataFile, EndOfFile) {
  const std::string title = "Are there more data?";
  auto blank = Check(test::ReadFile(test::DataPath("check_blank_line_end.txt")), "1",
                     [](Checked& c) { c.P.Answer("Are there more data?", "Yes"); });
  EXPECT_FALSE(blank->end);
  ASSERT_EQ(blank->P.With(title).size(), 1u);
  EXPECT_EQ(blank->P.With(title)[0].text,
            "The number of individuals you given in the 4th line is 2.\nHowever, it seems there are more data or "
            "empty lines at the end of your data file.\nNext data line is: (empty line)\nDo you want to check your "
            "data?\nYes: Continue with analysis (if you are sure they are empty lines).\nNo: End this program. "
            "Correct your data file. Then re-run the program.");
  EXPECT_EQ(blank->P.With(title)[0].buttons, kYesNo);

  auto more = Check(Head(1, 3) + "1,M,2,4,5\n2,M,2,4,5\n", "1", [](Checked& c) { c.P.Answer("Are there more data?", "No"); });
  ASSERT_TRUE(more->end);
  EXPECT_EQ(more->end->title, title);
  EXPECT_NE(more->P.With(title)[0].text.find("\nNext data line is: 2\n"), std::string::npos);

  // A file closing with the line end of its last record, or with none, asks nothing.
  EXPECT_TRUE(Check(Head(1, 3) + "1,M,2,4,5\n")->P.met.size() == 2);
  EXPECT_TRUE(Check(Head(1, 3) + "1,M,2,4,5")->P.met.size() == 2);
  EXPECT_TRUE(Check(Head(1, 3) + "1,M,2,4,5 \r\n")->P.met.size() == 2);
  EXPECT_TRUE(Check(Head(1, 3) + "1,M,2,4,5\n  ", "1", [](Checked& c) { c.P.Answer("Are there more data?", "Yes"); })
                  ->P.Met(title));
}

TEST(CheckDataFile, BoundsOfTheStore) {
  // The 391st individual is beyond the store: a subscript fault, not a message of the check.
  std::string text = Head(391, 2);
  for (int i = 1; i <= 391; ++i) text += std::to_string(i) + ",M,1,1\n";
  test::TempDir dir;
  test::WriteFile(dir.file("big.txt"), text);
  auto S = std::make_unique<Session>();
  S->identity.DataFilePath = dir.file("big.txt");
  FakePrompts P;
  P.Answer("Rearing cost for each stage?", "Yes");
  EXPECT_THROW(CheckDataFile(*S, P).CheckDataFile2(), SubscriptFault);
  EXPECT_EQ(S->ws.cohort.StageDuration(390, 2), 1);

  // A file that ends before its records: the reader's end-of-file fault.
  auto shortFile = Check(Head(2, 3) + "1,M,2,4,5\n");
  ASSERT_TRUE(shortFile->end);
  EXPECT_NE(shortFile->end->message.find("past end"), std::string::npos);
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// A file beyond one of the fixed bounds keeps the run-time error 9 ending, which now says
// which individual, which field and which bound.
TEST(CheckDataFile, BeyondTheBoundsTheFaultSaysWhere) {
  auto where = [](const std::string& text) -> std::string {
    try {
      Check(text);
    } catch (const SubscriptFault& fault) {
      return fault.what();
    }
    return "(no fault)";
  };
  std::string longLife = Head(1, 2) + "1,F,2,580\n";
  for (int day = 1; day <= 581; ++day) longLife += "1,";
  longLife += "-1\n";
  EXPECT_EQ(where(longLife), "Subscript out of range: Fecundity\nIndividual no. 1: the fecundity list goes beyond "
                             "day 575 of adult life, the last day allowed.");
  std::string many = Head(391, 2);
  for (int i = 1; i <= 391; ++i) many += std::to_string(i) + ",M,2,3\n";
  EXPECT_EQ(where(many), "Subscript out of range: IndividualNo\nIndividual no. 391: the 4th line gives 391 "
                         "individuals; a cohort may have at most 390.");
  std::string stages = "Project: Check\nTester\nLab 25C\n1\n1, 16\nF";
  for (int j = 1; j <= 16; ++j) stages += ",S" + std::to_string(j);
  EXPECT_EQ(where(stages + "\nS1,S2\n"),
            "Subscript out of range: StageName\nThe head of the file has more stages than the 13 allowed.");
}

}  // namespace
}  // namespace korvan
