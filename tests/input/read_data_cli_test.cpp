// "A1. Read data" from the command line: the bundled example's Fast Run, and a data fault
// that ends the program with its message, its title and exit code 1.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/test_support.h"

namespace korvan {
namespace {

struct CliRun {
  int code = -1;
  std::string out, err;
};

CliRun Korvan(const test::TempDir& folder, const std::string& arguments) {
  const std::string command = "cd '" + folder.path().string() + "' && '" KORVAN_CLI "' " + arguments +
                              " </dev/null >stdout.txt 2>stderr.txt";
  const int status = std::system(command.c_str());
  CliRun run;
  run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.out = test::ReadFile(folder.file("stdout.txt"));
  run.err = test::ReadFile(folder.file("stderr.txt"));
  return run;
}

// A folder laid out like the top of the sources: examples/mite.txt and the answer file.
void CopyExample(const test::TempDir& folder) {
  std::filesystem::create_directories(folder.path() / "examples");
  for (const char* name : {"mite.txt", "mite_fast.answers"})
    test::WriteFile(folder.file(std::string("examples/") + name),
                    test::ReadFile(std::string(KORVAN_EXAMPLES) + "/" + name));
}

TEST(ReadDataCommandLine, BundledExampleRunsFastAndAFaultEndsWithCodeOne) {
  test::TempDir folder;
  CopyExample(folder);
  const CliRun fast = Korvan(folder, "--answers examples/mite_fast.answers A1");
  EXPECT_EQ(fast.code, 0) << fast.err;
  // The Fast Run went on to Basic Run by itself.
  EXPECT_TRUE(std::filesystem::exists(folder.file("examples/mite_0A_Life Table_Output.txt")));

  // Individual 2 is given the number 3.
  std::string mite = test::ReadFile(folder.file("examples/mite.txt"));
  const auto at = mite.find("\n 2 ,M,");
  ASSERT_NE(at, std::string::npos);
  mite.replace(at, 7, "\n 3 ,M,");
  test::WriteFile(folder.file("bad.txt"), mite);
  std::string answers = test::ReadFile(folder.file("examples/mite_fast.answers"));
  answers.replace(answers.find("= examples/mite.txt"), 19, "= bad.txt");
  test::WriteFile(folder.file("bad.answers"), answers);
  const CliRun bad = Korvan(folder, "--answers bad.answers A1");
  EXPECT_EQ(bad.code, 1) << bad.err;
  EXPECT_NE(bad.err.find("Check data of individual no. 1 or 2\nPlease correct your data and rerun this program.\n"
                         "(If you need help, please contact korvan-support@example.org)"),
            std::string::npos)
      << bad.err;
  EXPECT_NE(bad.err.find("Error in data file"), std::string::npos) << bad.err;
  // The check leaves no output file behind.
  EXPECT_FALSE(std::filesystem::exists(folder.file("bad_0A_Life Table_Output.txt")));
}

}  // namespace
}  // namespace korvan
