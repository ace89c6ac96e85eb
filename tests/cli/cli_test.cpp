// The built command line: help, exit codes, answer files and transcripts.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>

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

  const CliResult unbuilt = RunKorvan(folder, "q");
  EXPECT_EQ(unbuilt.code, 2);
  EXPECT_NE(unbuilt.err.find("Q. CartesianPT: not available yet"), std::string::npos) << unbuilt.err;

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

}  // namespace
}  // namespace korvan
