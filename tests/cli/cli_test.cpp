// The built command line: help, exit codes, answer files and transcripts.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "support/test_support.h"
#include "ui/command_table.h"

namespace korvan {
namespace {

struct CliResult {
  int code = -1;
  std::string out, err;
};

// Runs korvan with the given arguments (shell syntax) in folder, with no terminal.
CliResult RunKorvan(const test::TempDir& folder, const std::string& arguments) {
  const std::string command = "cd '" + folder.path().string() + "' && '" KORVAN_CLI "' " + arguments +
                              " </dev/null >stdout.txt 2>stderr.txt";
  const int status = std::system(command.c_str());
  CliResult result;
  result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.out = test::ReadFile(folder.file("stdout.txt"));
  result.err = test::ReadFile(folder.file("stderr.txt"));
  return result;
}

TEST(CommandLine, HelpListsEveryCommand) {
  test::TempDir folder;
  const CliResult help = RunKorvan(folder, "--help");
  EXPECT_EQ(help.code, 0);
  for (const auto& c : CommandTable()) {
    const std::string caption = "\"" + std::string(c.caption) + "\"";
    const auto at = help.out.find(caption);
    ASSERT_NE(at, std::string::npos) << c.control;
    // Code, control name, caption and tool tip stand on one line.
    const auto begin = help.out.rfind('\n', at) + 1;
    const std::string line = help.out.substr(begin, help.out.find('\n', at) - begin);
    EXPECT_NE(line.find(std::string(c.control)), std::string::npos) << line;
    EXPECT_NE(line.find(std::string(c.toolTip)), std::string::npos) << line;
    EXPECT_EQ(line.substr(0, 2 + c.code.size()), "  " + std::string(c.code)) << line;
  }
  for (const char* option : {"--answers", "--answer", "--defaults", "--transcript", "--seed",
                             "--threads", "--quiet"}) {
    EXPECT_NE(help.out.find(option), std::string::npos) << option;
  }
}

TEST(CommandLine, UsageErrorsEndWithCodeTwo) {
  test::TempDir folder;
  const CliResult unknown = RunKorvan(folder, "Z");
  EXPECT_EQ(unknown.code, 2);
  EXPECT_NE(unknown.err.find("unknown command \"Z\""), std::string::npos) << unknown.err;

  const CliResult closed = RunKorvan(folder, "cmdBasicRunA2");
  EXPECT_EQ(closed.code, 2);
  EXPECT_NE(closed.err.find("A2. Basic Run is closed: it opens after A1. Read data."), std::string::npos)
      << closed.err;

  EXPECT_EQ(RunKorvan(folder, "").code, 2);
  EXPECT_EQ(RunKorvan(folder, "--no-such-option A1").code, 2);
  EXPECT_EQ(RunKorvan(folder, "--threads -1 Command1").code, 2);
  EXPECT_EQ(RunKorvan(folder, "--answers missing.answers Command1").code, 2);
  EXPECT_EQ(RunKorvan(folder, "--answer 'no equals' Command1").code, 2);
  EXPECT_EQ(RunKorvan(folder, "--transcript no/such/folder/t.answers Command1").code, 2);

  test::WriteFile(folder.file("bad.answers"), "# fine\nTitle = Yes\nnot an answer\n");
  const CliResult bad = RunKorvan(folder, "--answers bad.answers Command1");
  EXPECT_EQ(bad.code, 2);
  EXPECT_NE(bad.err.find("bad.answers:3:"), std::string::npos) << bad.err;
}

TEST(CommandLine, QuitEndsTheSessionNormally) {
  test::TempDir folder;
  test::WriteFile(folder.file("run.answers"), "Some dialogue = Yes\n");
  // Nothing after Quit runs, not even a closed command; an answer never asked for is told.
  const CliResult quit = RunKorvan(folder, "--answers run.answers --seed 7 --threads 2 Command1 A2");
  EXPECT_EQ(quit.code, 0) << quit.err;
  EXPECT_NE(quit.err.find("answer not used: Some dialogue = Yes"), std::string::npos) << quit.err;
  const CliResult quiet = RunKorvan(folder, "--quiet --answers run.answers --transcript t.answers Command1");
  EXPECT_EQ(quiet.code, 0);
  EXPECT_EQ(quiet.err, "");
  // The transcript's head tells how to repeat the run; no dialogue was met.
  EXPECT_EQ(test::ReadFile(folder.file("t.answers")).find("# Repeat with: korvan --answers t.answers Command1\n"),
            test::ReadFile(folder.file("t.answers")).find('\n') + 1);
}

// The answers of a Fast Run of the example, with the data file in the test's folder.
std::string FastRunAnswers() {
  return "--answers '" KORVAN_EXAMPLES "/mite_fast.answers' --answer 'Open life table data file=mite.txt'";
}

// The lines of a text without those that begin with one of the marks given.
std::string LinesWithout(const std::string& text, std::initializer_list<const char*> marks) {
  std::string kept;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    bool drop = false;
    for (const char* mark : marks) drop = drop || line.rfind(mark, 0) == 0;
    if (!drop) kept += line + "\n";
  }
  return kept;
}

TEST(CommandLine, MissingAnswersAndTheProgramsEnd) {
  test::TempDir folder;
  std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", folder.file("mite.txt"));
  const std::string missing = "no answer for dialogue \"Open life table data file\"";
  const CliResult none = RunKorvan(folder, "A1");
  EXPECT_EQ(none.code, 2);
  EXPECT_NE(none.err.find(missing), std::string::npos) << none.err;
  // A file chooser has no default to take.
  const CliResult defaults = RunKorvan(folder, "--defaults A1");
  EXPECT_EQ(defaults.code, 2);
  EXPECT_NE(defaults.err.find(missing), std::string::npos) << defaults.err;
  // The run stops at the first dialogue left without an answer, the files so far kept.
  const CliResult stopped = RunKorvan(folder, "--answer 'Open life table data file=mite.txt' A1");
  EXPECT_EQ(stopped.code, 2);
  EXPECT_NE(stopped.err.find("no answer for dialogue \"Do you need only the basic output (0A) and figure files?\""),
            std::string::npos) << stopped.err;
  EXPECT_EQ(test::ReadFile(folder.file("mite.txt")), test::ReadFile(KORVAN_EXAMPLES "/mite.txt"));
  // An answer the box doesn't offer is a usage error, not a guess.
  EXPECT_EQ(RunKorvan(folder, "--answer 'Open life table data file=mite.txt' "
                              "--answer 'Do you need only the basic output (0A) and figure files?=Maybe' A1").code, 2);
  // "Cancel: End the program." ends it as the program ends: code 1, the title on stderr.
  const CliResult ended = RunKorvan(folder, "--answer 'Open life table data file=mite.txt' "
                                            "--answer 'Do you need only the basic output (0A) and figure files?=Cancel' A1");
  EXPECT_EQ(ended.code, 1);
  EXPECT_NE(ended.err.find("Do you need only the basic output (0A) and figure files?\n"), std::string::npos)
      << ended.err;
}

TEST(CommandLine, FastRunAndTheRepeatOfItsTranscript) {
  test::TempDir folder;
  std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", folder.file("mite.txt"));
  const CliResult first = RunKorvan(folder, FastRunAnswers() + " --quiet --seed 5 --transcript first.answers A1");
  ASSERT_EQ(first.code, 0) << first.err;
  EXPECT_NE(first.out.find("Population parameters"), std::string::npos) << first.out;
  EXPECT_NE(first.out.find("  mite_0A_Life Table_Output.txt\n"), std::string::npos) << first.out;
  const std::string transcript = test::ReadFile(folder.file("first.answers"));
  EXPECT_NE(transcript.find("Open life table data file = mite.txt\n"), std::string::npos) << transcript;
  EXPECT_NE(transcript.find("Fast run for two-sex or parthenogenetic population? = Yes\n"), std::string::npos);

  // The transcript alone repeats the run: the same dialogues, the same answers, the same report.
  const std::string report = test::ReadFile(folder.file("mite_0A_Life Table_Output.txt"));
  std::filesystem::remove(folder.file("mite_0A_Life Table_Output.txt"));
  const CliResult again = RunKorvan(folder, "--answers first.answers --transcript second.answers A1");
  ASSERT_EQ(again.code, 0) << again.err;
  EXPECT_EQ(again.err.find("answer not used"), std::string::npos) << again.err;
  EXPECT_EQ(LinesWithout(test::ReadFile(folder.file("second.answers")), {"#"}), LinesWithout(transcript, {"#"}));
  EXPECT_EQ(LinesWithout(test::ReadFile(folder.file("mite_0A_Life Table_Output.txt")), {"Date:", "Time:", "Time used"}),
            LinesWithout(report, {"Date:", "Time:", "Time used"}));

  // A Fast Run closes A1 and A2 behind it.
  const CliResult twice = RunKorvan(folder, FastRunAnswers() + " A1 A2");
  EXPECT_EQ(twice.code, 2);
  EXPECT_NE(twice.err.find("A2. Basic Run is closed at this point of the session."), std::string::npos)
      << twice.err;
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// The files of folder but those named, by name.
std::map<std::string, std::string> FilesOf(const test::TempDir& folder, const std::set<std::string>& leaveOut) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
    const std::string name = entry.path().filename().string();
    if (!leaveOut.count(name) && !entry.is_symlink()) files[name] = test::ReadFile(entry.path().string());
  }
  return files;
}

// A file that can't be written (a full disk, here one file led to /dev/full) ends the run as a
// data fault does, naming the file; the files written before it stand whole.
TEST(CommandLine, AFileThatCannotBeWrittenEndsTheRun) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  const std::string run = FastRunAnswers() + " --answers '" KORVAN_EXAMPLES "/mite_boot.answers' --seed 3 A1 A3";
  test::TempDir whole;
  std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", whole.file("mite.txt"));
  ASSERT_EQ(RunKorvan(whole, run).code, 0);
  const std::set<std::string> notOutput = {"stdout.txt", "stderr.txt"};
  const auto reference = FilesOf(whole, notOutput);

  // The first file opened, a figure file while the main report is open (which it cuts short),
  // one in the middle of the bootstrap's files, the last one.
  for (const char* name : {"mite_0A_Life Table_Output.txt", "mite_1_Fig_Sxj.txt", "mite_Effect Boot-A2a-r.txt",
                           "mite_0H_Boot individual counts.txt"}) {
    test::TempDir folder;
    std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", folder.file("mite.txt"));
    std::filesystem::create_symlink("/dev/full", folder.file(name));
    const CliResult failed = RunKorvan(folder, run);
    EXPECT_EQ(failed.code, 1) << name;
    EXPECT_NE(failed.err.find("Error in writing file\nThe file " + std::string(name) +
                              " could not be written: No space left on device."),
              std::string::npos)
        << failed.err;
    EXPECT_NE(failed.out.find("not written whole: " + std::string(name) + "\n"), std::string::npos) << failed.out;
    EXPECT_EQ(failed.out.find("Population parameters"), std::string::npos) << failed.out;
    const bool cutsReport = std::string(name) == "mite_1_Fig_Sxj.txt";
    EXPECT_EQ(failed.out.find("not written whole: mite_0A_Life Table_Output.txt\n") != std::string::npos,
              cutsReport || std::string(name) == "mite_0A_Life Table_Output.txt")
        << failed.out;
    // Every file the run says it wrote is the file of the whole run; no file of the reports after it.
    const auto written = FilesOf(folder, notOutput);
    EXPECT_LT(written.size(), reference.size()) << name;
    for (const auto& [file, text] : written) {
      if (file.find("_11_Bootstrap samples-") != std::string::npos) continue;  // named by the clock
      if (failed.out.find("not written whole: " + file + "\n") != std::string::npos) continue;
      ASSERT_TRUE(reference.count(file)) << file;
      const auto clock = {"Date:", "Time:", "Time used", "Analyzed on:", "Bootstrap began:"};
      EXPECT_TRUE(LinesWithout(text, clock) == LinesWithout(reference.at(file), clock))
          << name << " left " << file << " not whole";
    }
  }
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// The rows of summary.csv by treatment, each a map of column name to cell.
std::vector<std::map<std::string, std::string>> CsvRows(const std::string& path) {
  std::istringstream in(test::ReadFile(path));
  std::string line;
  auto split = [](const std::string& s) {
    std::vector<std::string> cells;
    std::string cell;
    bool quoted = false;
    for (char c : s) {
      if (c == '"') quoted = !quoted;
      else if (c == ',' && !quoted) cells.push_back(std::exchange(cell, ""));
      else cell += c;
    }
    cells.push_back(cell);
    return cells;
  };
  std::getline(in, line);
  const auto head = split(line);
  std::vector<std::map<std::string, std::string>> rows;
  while (std::getline(in, line)) {
    const auto cells = split(line);
    EXPECT_EQ(cells.size(), head.size()) << line;
    std::map<std::string, std::string> row;
    for (std::size_t k = 0; k < head.size() && k < cells.size(); ++k) row[head[k]] = cells[k];
    rows.push_back(row);
  }
  return rows;
}

// What follows `label` on the first line that holds it.
std::string After(const std::string& text, const std::string& label) {
  const auto at = text.find(label);
  if (at == std::string::npos) return "";
  const auto end = text.find('\n', at);
  return text.substr(at + label.size(), end - at - label.size());
}

TEST(CommandLine, AnalyzeSummarisesTreatmentsWithTheirTestsLetters) {
  test::TempDir folder;
  std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", folder.file("mite.txt"));
  std::filesystem::copy_file(KORVAN_EXAMPLES "/../bench/beetle.txt", folder.file("beetle.txt"));
  std::filesystem::create_directory(folder.file("second"));
  std::filesystem::copy_file(KORVAN_EXAMPLES "/mite.txt", folder.file("second/mite.txt"));
  const CliResult run =
      RunKorvan(folder, "analyze mite.txt beetle.txt second/mite.txt --bootstrap 300 --seed 9 --quiet --out results");
  ASSERT_EQ(run.code, 0) << run.err;
  const auto rows = CsvRows(folder.file("results/summary.csv"));
  ASSERT_EQ(rows.size(), 3u);
  // Each treatment's r and R0 with their SEs as its own bootstrap report gives them (the third
  // is the first cohort again, copied to the results folder under a name of its own).
  const std::string bases[] = {"results/mite", "results/beetle", "results/mite-2"};
  for (int t : {0, 1, 2}) {
    const std::string report = test::ReadFile(folder.file(bases[t] + "_0B_Bootstrap_Output.txt"));
    // Read back from the column file, the SE may differ in its last digit.
    const double reportedSE = std::stod(After(report, "SE of boot-r calculated again = "));
    EXPECT_NEAR(std::stod(rows[t].at("r_SE")), reportedSE, 1e-13);
    std::istringstream original(After(report, "ORIGINAL")), se(After(report, "S.E."));
    double r = 0, lambda = 0, R0 = 0, rSE = 0, lambdaSE = 0, R0SE = 0;
    original >> r >> lambda >> R0;
    se >> rSE >> lambdaSE >> R0SE;
    EXPECT_NEAR(std::stod(rows[t].at("r")), r, 1e-6);
    EXPECT_NEAR(std::stod(rows[t].at("R0")), R0, 0.005);
    EXPECT_NEAR(std::stod(rows[t].at("R0_SE")), R0SE, 1e-5);
  }
  EXPECT_EQ(rows[0].at("r"), rows[2].at("r"));
  EXPECT_NE(rows[0].at("r_SE"), rows[2].at("r_SE"));  // a stream of its own for each treatment
  // The letters of r as the paired test's letter table gives them, row by row (the row names
  // the treatment's SE).
  const std::string test = test::ReadFile(folder.file("results/24-Paired boot test results-r.txt"));
  const std::string table = test.substr(test.find("Preliminary table"));
  for (const auto& row : rows) {
    const auto at = table.find(row.at("r_SE").substr(0, 12));
    ASSERT_NE(at, std::string::npos) << row.at("r_SE");
    const auto end = table.find('\n', at);
    std::string letters = table.substr(at, end - at);
    letters = letters.substr(letters.find_last_of(' ') + 1);
    EXPECT_EQ(row.at("r_letters"), letters);
  }
  EXPECT_NE(rows[0].at("r_letters"), rows[1].at("r_letters"));
  EXPECT_NE(run.out.find("| Treatment | n |"), std::string::npos);
  EXPECT_NE(test::ReadFile(folder.file("results/summary.md")).find("Seed 9 "), std::string::npos);

  // A different file of the same name in the results folder is not overwritten.
  std::filesystem::create_directory(folder.file("other"));
  test::WriteFile(folder.file("other/mite.txt"), "not the cohort");
  const CliResult clash = RunKorvan(folder, "analyze mite.txt --bootstrap 300 --seed 9 --quiet --out other");
  EXPECT_EQ(clash.code, 2);
  EXPECT_EQ(test::ReadFile(folder.file("other/mite.txt")), "not the cohort");
}

}  // namespace
}  // namespace korvan

namespace korvan {
namespace {

// "Multinomial" by its control name: the No route writes the expansion of the cohort of six,
// a second session reads it back on the Yes route and writes the five "_0_MNT_" files.
TEST(CommandLine, MultinomialWritesTheExpansionAndReadsItBack) {
  test::TempDir folder;
  std::filesystem::copy_file(test::DataPath("multinomial_six.txt"), folder.file("six.txt"));
  const std::string head =
      "Open life table data file = six.txt\n"
      "Do you need only the basic output (0A) and figure files? = No\n"
      "Fast run for two-sex or parthenogenetic population? = Yes\n"
      "Do you need the contribution of this life table to intrinsic rate? = No\n";
  test::WriteFile(folder.file("no.answers"), head + "Read the file with all MNC or create the file of MNC? = No\n");
  ASSERT_EQ(RunKorvan(folder, "--quiet --answers no.answers A1 Command2").code, 0);
  EXPECT_EQ(test::Lines(folder.file("six_0_MN expans-new.txt")).size(), 2u + 462u);
  test::WriteFile(folder.file("yes.answers"), head +
                                                  "Read the file with all MNC or create the file of MNC? = Yes\n"
                                                  "Open multinomial expansion data file = six_0_MN expans-new.txt\n");
  const CliResult yes = RunKorvan(folder, "--quiet --answers yes.answers A1 Command2");
  ASSERT_EQ(yes.code, 0) << yes.err;
  for (const char* file : {"1-Expansion", "2-R0_Sorted", "3-Expansion_Sorted_Table", "4-R0_Grouped",
                           "5-R0_Grouped_Table"})
    EXPECT_TRUE(std::filesystem::exists(folder.file(std::string("six_0_MN expans-new_0_MNT_") + file + ".txt")))
        << file;
}

}  // namespace
}  // namespace korvan
