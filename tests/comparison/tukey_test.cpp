// Tukey-Kramer table of a pooled file: the q table, the analysis against sums done here, the
// places of the table and the run's ending.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "commands/tukey_command.h"
#include "comparison/tukey.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"
#include "ui/multi_ci_table.h"

namespace korvan {
namespace {

using test::FakePrompts;
using test::ReadFile;
using test::TempDir;

struct Treatment {
  std::string title;
  int n;
  std::vector<double> values;
};

std::string PooledFile(const TempDir& dir, const std::vector<Treatment>& treatments) {
  std::string text = "\"Aphids\"\n\"Hosts\"\n\"r\"\n" + std::to_string(treatments.size()) + "\n";
  for (const auto& t : treatments) {
    text += "\"" + t.title + "\"," + std::to_string(t.n) + "\n";
    for (double v : t.values) text += std::to_string(v) + "\n";
    text += "-1\n";
  }
  const std::string path = dir.file("pool.txt");
  test::WriteFile(path, text);
  return path;
}

// The command on the file; the closing note needs an open main output, given when `note`.
struct TukeyRun {
  Session S;
  FakePrompts P;
  void Command(const std::string& path, const std::string& note = "") {
    P.Answer("Open Tukey Q5 table", path);
    if (!note.empty()) S.channels.MainOutput.Open(note);
    TukeyCommand(S, P).TukeyQ5TableInput();
  }
};

TEST(TukeyTable, PrintedPointsAndTheStraightLinesBetween) {
  Session S;
  ComparisonRecord& c = S.comparison;
  FillTukeyQTable(c);
  EXPECT_EQ(c.TukeyQ(2, 1), 18.0);
  EXPECT_EQ(c.TukeyQ(3, 1), 27.0);
  EXPECT_EQ(c.TukeyQ(10, 1), 49.1);
  EXPECT_EQ(c.TukeyQ(2, 121), 2.77);
  EXPECT_EQ(c.TukeyQ(10, 121), 4.47);
  EXPECT_EQ(c.TukeyQ(3, 10), 3.88);
  EXPECT_EQ(c.TukeyQ(4, 20), 3.96);
  // df 21 a quarter of the way from 20 to 24; 97 is 37/60 of the way from 60 to 120.
  EXPECT_NEAR(c.TukeyQ(2, 21), 2.95 + (2.92 - 2.95) / 4, 1e-12);
  EXPECT_NEAR(c.TukeyQ(5, 97), 3.98 + (3.92 - 3.98) * 37 / 60, 1e-12);
  EXPECT_EQ(c.TukeyQ(6, 120), 4.1);
  // Outside the table: k = 11 and df 0 stay 0.
  EXPECT_EQ(c.TukeyQ(11, 30), 0);
  EXPECT_EQ(c.TukeyQ(2, 0), 0);
}

TEST(TukeyTable, AnalysisOfThePooledFileAndItsTable) {
  TempDir dir;
  // Means 5, 3, 1 (read in another order); B 4, 3, 3; n of the file 20, 10, 40.
  const auto path = PooledFile(dir, {{"Mid", 10, {2, 3, 4}}, {"High", 20, {4, 5, 5, 6}}, {"Low", 40, {0, 1, 2}}});
  TukeyRun run;
  const std::string note = dir.file("main.txt");
  run.Command(path, note);
  const auto& c = run.S.comparison;
  ASSERT_EQ(c.TreatmentTitle(1), "High");
  EXPECT_EQ(c.BootCount(1), 4);
  EXPECT_DOUBLE_EQ(c.BootVar2(1), 2.0 / 3);
  // Within: (2 + 2 + 2) over 3 + 2 + 2 df; dfW = 10 - 3.
  EXPECT_DOUBLE_EQ(c.MSE, 6.0 / 7);
  EXPECT_EQ(c.dfW, 7);
  // n of the file, not B.
  EXPECT_DOUBLE_EQ(c.TukeySE(1, 3), std::sqrt((1.0 / 20 + 1.0 / 40) * (6.0 / 7) / 2));
  // Neighbours take k = 2, the ends k = 3, at df 7.
  EXPECT_DOUBLE_EQ(c.MSD(1, 2), c.TukeySE(1, 2) * 3.34);
  EXPECT_DOUBLE_EQ(c.MSD(1, 3), c.TukeySE(1, 3) * 4.16);
  EXPECT_EQ(c.TukeyDiff(1, 3), 4);
  // Total 10 values, sum 32: C = 102.4; squares 102 + 29 + 5; among: 400/4 + 81/3 + 9/3.
  EXPECT_DOUBLE_EQ(c.SSTotal, 136 - 102.4);
  EXPECT_DOUBLE_EQ(c.SSAmong, 130 - 102.4);
  EXPECT_DOUBLE_EQ(c.FValue, (27.6 / 2) / (6.0 / 7));

  const std::string out = ReadFile(dir.file("pool-Tukey-bootstrap-output.txt"));
  EXPECT_NE(out.find("Table 1.  Basic Analysis of Original Data in File " + path), std::string::npos);
  EXPECT_NE(out.find("Samp. size (n)   20         10         40 "), std::string::npos);
  EXPECT_NE(out.find("Table 2.  Differences between means (Tukey-Kramer procedure)"), std::string::npos);
  EXPECT_NE(out.find(" Low             4 *        2 *        ----"), std::string::npos) << out;
  EXPECT_NE(out.find("\n 5 %.\n"), std::string::npos);
  run.S.channels.MainOutput.Close();
  EXPECT_NE(ReadFile(note).find(" *: Significant at 5% significance level."), std::string::npos);
  const MultiCITable grid = ShowTukeyBootstrapResult(run.S);
  EXPECT_EQ(grid.Cell(3, 1), "*4");
  EXPECT_EQ(grid.Cell(1, 3), "0.746");  // 4.16 sqrt(0.075 * 6/7 / 2) = 0.7458
}

TEST(TukeyTable, ElevenTreatmentsManyValuesAndTheEnds) {
  TempDir dir;
  // Eleven treatments of 12 values each: dfW = 132 - 11 = 121, the row of infinity; the pair
  // of the ends has k = 11, beyond the table: MSD 0 and a star.
  std::vector<Treatment> t;
  for (int i = 0; i < 11; ++i) {
    std::vector<double> v;
    for (int k = 0; k < 12; ++k) v.push_back(10 * i + k % 3);
    t.push_back({"T" + std::to_string(i), 30, v});
  }
  TukeyRun run;
  run.Command(PooledFile(dir, t), dir.file("main.txt"));
  const auto& c = run.S.comparison;
  EXPECT_EQ(c.dfW, 121);
  EXPECT_DOUBLE_EQ(c.MSD(1, 2), c.TukeySE(1, 2) * 2.77);
  EXPECT_EQ(c.MSD(1, 11), 0);
  const std::string out = ReadFile(dir.file("pool-Tukey-bootstrap-output.txt"));
  EXPECT_NE(out.find(" T0              100 *"), std::string::npos) << out;

  // Fewer than three treatments: told, and no table written.
  std::filesystem::remove(dir.file("pool-Tukey-bootstrap-output.txt"));
  TukeyRun two;
  two.P.Answer("Treatments <3", "OK");
  two.Command(PooledFile(dir, {t[0], t[1]}));
  EXPECT_TRUE(two.P.Met("Treatments <3"));
  EXPECT_FALSE(std::filesystem::exists(dir.file("pool-Tukey-bootstrap-output.txt")));

  // No main output open: the table is whole, then the run ends with the reason.
  TukeyRun closed;
  EXPECT_THROW(closed.Command(PooledFile(dir, {t[0], t[1], t[2]})), ProgramEnd);
  const std::string whole = ReadFile(dir.file("pool-Tukey-bootstrap-output.txt"));
  EXPECT_EQ(whole.substr(whole.size() - 6), " 5 %.\n");
}

}  // namespace
}  // namespace korvan
