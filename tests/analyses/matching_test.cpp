#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

#include "analyses/matching.h"
#include "commands/match_commands.h"
#include "commands/run_command.h"
#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/command_table.h"

namespace korvan {
namespace {

// Two stages: egg, then the adult. One female whose egg stage lasts 2 days; as an adult she
// lives 2 days and lays 4 eggs on her second day (age 3).
constexpr const char* kOneFemaleImmature =
    "\"Hand\"\n\"team\"\n\"lab\"\n1\n1,2\nF,Egg,Female\nEgg,Female\n1,F,2\n";
constexpr const char* kOneFemaleAdult =
    "\"Hand adult\"\n\"team\"\n\"lab\"\n1\n1,2\nF,Egg,Female\nEgg,Female\n1,F,2\n0,4\n";

struct MatchRun {
  test::TempDir dir;
  std::unique_ptr<Session> S = std::make_unique<Session>();
  test::FakePrompts P;
  std::string immature, adult;

  MatchRun(const std::string& immatureText, const std::string& adultText) {
    immature = dir.file("cohort_0-Immature.txt");
    adult = dir.file("cohort_0-Adult.txt");
    test::WriteFile(immature, immatureText);
    test::WriteFile(adult, adultText);
    S->StartUp();
  }
  MatchRun(bool mite) : MatchRun("", "") {
    (void)mite;
    std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite_0-Immature.txt", immature,
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::copy_file(std::string(KORVAN_EXAMPLES) + "/mite_0-Adult.txt", adult,
                               std::filesystem::copy_options::overwrite_existing);
  }
  // The form's buttons A1 to A7 of a first run.
  void Run(int n, int B, int winter, double mortality, const char* mating = "No", std::uint64_t seed = 7,
           int threads = 0, const char* teaching = "No") {
    S->runControl.hasSeed = true;
    S->runControl.seed = seed;
    S->runControl.threads = threads;
    P.Answer("Open immature life table", immature).Answer("Do you need flow record?", "No");
    P.Answer("Open adult life table", adult);
    P.Answer("A3. Sample size", std::to_string(n)).Answer("A4. Bootstrap B", std::to_string(B));
    P.Answer("A5. Overwinter duration", std::to_string(winter));
    P.Answer("A6. Ow ran. max. mortality", std::to_string(mortality));
    P.Answer("SameBootstrapMatch", "No").Answer("Teaching demo?", teaching);
    P.Answer("Only effective match?", "Yes").Answer("Two-sex mating?", mating);
    P.Answer("Task completed", "OK");
    P.Answer("B. Read data and match record to write specific life table", "No");
    MatchCommands(*S, P).cmdMatchedLifeTable_Click();
  }
};

TEST(MatchedLifeTables, HandWorkedFemaleWithAndWithoutWinter) {
  // No winter: l(x) m(x) = 4 at age 3, so e^{-4r} 4 = 1 and R0 = 4.
  MatchRun plain(kOneFemaleImmature, kOneFemaleAdult);
  plain.Run(1, 3, 0, 0);
  const MatchRecord& M = plain.S->match;
  for (int b = 1; b <= 3; ++b) {
    EXPECT_NEAR(M.MatchR[b], std::log(4.0) / 4, 1e-6);
    EXPECT_NEAR(M.MatchR0[b], 4, 1e-12);
    EXPECT_NEAR(M.MatchFecundity[b], 4, 1e-12);
  }
  // Three days of winter that all survive: the eggs move to age 6.
  MatchRun winter(kOneFemaleImmature, kOneFemaleAdult);
  winter.Run(1, 3, 3, 0);
  EXPECT_NEAR(winter.S->match.MatchR[2], std::log(4.0) / 7, 1e-6);
  EXPECT_NEAR(winter.S->match.MatchLambda[2], std::pow(4.0, 1.0 / 7), 1e-6);
  // Mortality 1: no adult reaches spring, nobody lays.
  MatchRun dead(kOneFemaleImmature, kOneFemaleAdult);
  dead.Run(1, 3, 3, 1);
  EXPECT_EQ(dead.S->match.MatchR0[1], 0);
  EXPECT_EQ(dead.S->match.MatchFecundity[3], 0);
  // Her record in the first match's table: "-1" alone; the basic output holds the means.
  const std::string table = test::ReadFile(dead.dir.file("cohort-life table-1.txt"));
  EXPECT_TRUE(table.size() > 4 && table.compare(table.size() - 4, 4, "\n-1\n") == 0) << table;
  EXPECT_NE(test::ReadFile(dead.dir.file("cohort_2A_Basic_output.txt")).find("Means of 3 matches"), std::string::npos);
}

TEST(MatchedLifeTables, RecordRebuildsEveryMatchAndFirstTableReadsBack) {
  MatchRun first(true);
  first.Run(40, 30, 2, 0, "Yes", 11, 2);
  const MatchRecord M = first.S->match;
  ASSERT_EQ(M.EffectiveMatches, 30);
  const std::string record = M.RecordPath;
  const std::string firstRecord = test::ReadFile(record);

  // One thread, the same seed: the same record.
  MatchRun one(true);
  one.Run(40, 30, 2, 0, "Yes", 11, 1);
  EXPECT_EQ(test::ReadFile(one.S->match.RecordPath), firstRecord);
  // The teaching demo goes match by match and shows each one's s(x,j): the same record again.
  MatchRun demo(true);
  demo.Run(40, 30, 2, 0, "Yes", 11, 2, "Yes");
  EXPECT_EQ(test::ReadFile(demo.S->match.RecordPath), firstRecord);
  ASSERT_EQ(demo.P.charts.size(), 30u);
  EXPECT_EQ(demo.P.charts.back().title.back(), "Match no. = 30");
  EXPECT_EQ(demo.P.charts.back().series.front().values.front(), 1);  // s(0,1): every egg alive

  // The same matches from the record in a second session (the winter drawn from the same seed).
  MatchRun again(true);
  again.S->runControl = {true, 11, 2, false};
  again.S->match.OverwinterDuration = 2;
  again.P.Answer("Open immature life table", again.immature).Answer("Open adult life table", again.adult);
  again.P.Answer("Do you need flow record?", "No").Answer("Only effective match?", "Yes");
  again.P.Answer("Two-sex mating?", "Yes");
  again.P.Answer("Read match record (file no. 2C).", record).Answer("Task completed", "OK");
  MatchedLifeTables form(*again.S, again.P);
  form.InputImmatureData();
  form.InputAdultData();
  again.S->match.RecordPath = record;
  ASSERT_TRUE(form.ReadSameBootstrapData());
  EXPECT_EQ(again.S->match.Seed, 11u);  // the record's own seed
  form.RunSameBootstrapRandomMatch();
  for (int b = 1; b <= 30; ++b) {
    EXPECT_EQ(again.S->match.MatchR[b], M.MatchR[b]) << b;
    EXPECT_EQ(again.S->match.MatchLambda[b], M.MatchLambda[b]) << b;
    EXPECT_EQ(again.S->match.MatchR0[b], M.MatchR0[b]) << b;
  }

  // The life table of match 1 read and analysed as any data file.
  auto session = std::make_unique<Session>();
  session->StartUp();
  SetStartUpConsole(session->console);
  test::FakePrompts p;
  p.Answer("Open life table data file", first.dir.file("cohort-life table-1.txt"));
  p.Answer("Do you need only the basic output (0A) and figure files?", "No");
  p.Answer("Fast run for two-sex or parthenogenetic population?", "Yes");
  p.Answer("Do you need the contribution of this life table to intrinsic rate?", "No");
  ASSERT_EQ(RunCommand(*session, p, "cmdReadDataA1").ending, CommandEnding::Ran);
  EXPECT_NEAR(session->params.R_Basic, M.MatchR[1], 1e-12);
  EXPECT_NEAR(session->params.Lambda_Basic, M.MatchLambda[1], 1e-12);
  EXPECT_NEAR(session->params.R0_Basic, M.MatchR0[1], 1e-12);
}

TEST(MatchedLifeTables, FaultsAndBaseNames) {
  EXPECT_EQ(MatchFileBase("/d/aphid_0-Immature life table.txt", "Immature"), "/d/aphid");
  EXPECT_EQ(MatchFileBase("/d/aphid0_immature.txt", "Immature"), "/d/aphid");
  EXPECT_EQ(MatchFileBase("/d/aphid-Adult.txt", "Adult"), "/d/aphid");
  EXPECT_EQ(MatchFileBase("/d/aphid.dat", "Adult"), "/d/aphid");

  // Males to match but no male adult: refused before the run, not an endless redraw.
  MatchRun noMale("\"H\"\n\"t\"\n\"l\"\n2\n2,2\nF,Egg,Female\nM,Egg,Male\nEgg,Female\n1,F,2\n2,M,3\n",
                  kOneFemaleAdult);
  try {
    noMale.Run(2, 5, 0, 0);
    FAIL();
  } catch (const ProgramEnd& e) {
    EXPECT_NE(e.message.find("no male adult"), std::string::npos);
  }
  // A zero adult duration is named by the check.
  MatchRun zero(kOneFemaleImmature, "\"A\"\n\"t\"\n\"l\"\n1\n1,2\nF,Egg,Female\nEgg,Female\n1,F,0\n");
  try {
    zero.Run(1, 1, 0, 0);
    FAIL();
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "Developmental time of individual no.1 is ZERO.");
  }
  // An adult record shorter than its duration.
  MatchRun shortAdult(kOneFemaleImmature, "\"A\"\n\"t\"\n\"l\"\n1\n1,2\nF,Egg,Female\nEgg,Female\n1,F,5\n0,4\n");
  EXPECT_THROW(shortAdult.Run(1, 1, 0, 0), ProgramEnd);
  // A garbled record: a clear message naming the record.
  MatchRun garbled(kOneFemaleImmature, kOneFemaleAdult);
  garbled.Run(1, 2, 0, 0);
  const std::string bad = garbled.dir.file("bad.txt");
  std::string text = test::ReadFile(garbled.S->match.RecordPath);
  text.replace(text.find("1,\"F\",1,1"), 9, "1,\"F\",9,1");
  test::WriteFile(bad, text);
  garbled.S->match.RecordPath = bad;
  try {
    MatchedLifeTables(*garbled.S, garbled.P).ReadSameBootstrapData();
    FAIL();
  } catch (const ProgramEnd& e) {
    EXPECT_NE(e.message.find("immature number"), std::string::npos) << e.message;
  }
}

}  // namespace
}  // namespace korvan
