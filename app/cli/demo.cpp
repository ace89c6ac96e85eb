// `korvan demo`: the main job on the bundled example cohort, from any current folder.
#include <unistd.h>

#include <system_error>

#include "cli_run.h"

namespace korvan::cli {

namespace fs = std::filesystem;

namespace {

fs::path ProgramFolder(const char* argv0) {
  std::error_code ec;
  fs::path self = fs::read_symlink("/proc/self/exe", ec);
  if (ec || self.empty()) self = fs::absolute(argv0, ec);
  return self.parent_path();
}

}  // namespace

fs::path FindExamples(const char* argv0) {
  const fs::path program = ProgramFolder(argv0);
  // build/korvan sits one level under the source tree; the sources know where they are.
  const fs::path candidates[] = {program / ".." / "examples", program / "examples",
                                 program / ".." / ".." / "examples",
                                 fs::path(__FILE__).parent_path() / ".." / ".." / "examples"};
  for (const auto& candidate : candidates) {
    std::error_code ec;
    if (fs::is_directory(candidate, ec)) return fs::weakly_canonical(candidate, ec);
  }
  return {};
}

bool PrepareDemo(const char* argv0, CliOptions& options, std::vector<std::string>& notes) {
  const fs::path examples = FindExamples(argv0);
  const fs::path cohort = examples / "mite.txt";
  const fs::path answers = examples / "mite_fast.answers";
  std::error_code ec;
  if (examples.empty() || !fs::is_regular_file(cohort, ec)) {
    notes.push_back("demo: the example cohort examples/mite.txt isn't there yet; nothing to run.");
    return false;
  }
  // The run writes its files beside the data file: work on a copy beside the program.
  const fs::path work = ProgramFolder(argv0) / "demo";
  fs::create_directories(work, ec);
  const fs::path copy = work / "mite.txt";
  fs::copy_file(cohort, copy, fs::copy_options::overwrite_existing, ec);
  if (ec) {
    notes.push_back("demo: cannot copy the example to " + work.string() + ": " + ec.message());
    return false;
  }
  notes.push_back("demo: example cohort " + cohort.string() + ", run in " + work.string());
  if (fs::is_regular_file(answers, ec)) {
    options.answerFiles.insert(options.answerFiles.begin(), answers.string());
  } else {
    notes.push_back("demo: no answer file examples/mite_fast.answers yet; dialogues take their defaults.");
    options.useDefaults = true;
  }
  const fs::path bootAnswers = examples / "mite_boot.answers";
  if (fs::is_regular_file(bootAnswers, ec)) options.answerFiles.push_back(bootAnswers.string());
  options.answers.insert(options.answers.begin(), "Open life table data file=" + copy.string());
  options.commands = {"cmdReadDataA1", "cmdBasicRunA2", "cmdBootstrap"};
  return true;
}

}  // namespace korvan::cli
