#pragma once
// The command line's run of a session: options, the commands in order, the exit code.
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace korvan::cli {

// Exit codes: the commands ran; the program ended as a run of it ends (a data fault, "End the
// program", a halt, a fault at a bound); a usage error or a missing answer.
enum ExitCode : int { kExitDone = 0, kExitProgramEnd = 1, kExitUsage = 2 };

struct CliOptions {
  std::vector<std::string> answerFiles;
  std::vector<std::string> answers;  // KEY=VALUE
  bool useDefaults = false;
  std::string transcriptPath;
  bool hasSeed = false;
  std::uint64_t seed = 0;
  int threads = 0;
  bool quiet = false;
  std::vector<std::string> commands;
  std::string commandLine;  // as typed, for the transcript's head
};

// Runs the commands of options in one session and returns the exit code. When demo is true,
// a command that isn't built yet, or the end of the example's answers, ends the run with a
// note and exit code 0: the demo shows what exists.
int RunSession(const CliOptions& options, bool demo);

// `korvan analyze`: each data file through the Fast Run and a bootstrap of B samples, the
// paired test of every statistic over the files, and the summary (summary.csv, summary.md)
// in outDir or beside the first file.
struct AnalyzeOptions {
  std::vector<std::string> files;
  long bootstrap = 100000;
  bool hasSeed = false;
  std::uint64_t seed = 0;
  int threads = 0;
  bool quiet = false;
  std::string outDir;
};
int RunAnalyze(const AnalyzeOptions& options);

// The help's list of commands: code, control name, caption and tool tip of each.
std::string CommandListText();

// The examples folder of the source tree, found beside the program or from its sources;
// empty when there is none.
std::filesystem::path FindExamples(const char* argv0);

// Prepares `korvan demo`: copies the example cohort to a work folder beside the program and
// adds the answers. Returns false (with notes) when the example isn't there.
bool PrepareDemo(const char* argv0, CliOptions& options, std::vector<std::string>& notes);

}  // namespace korvan::cli
