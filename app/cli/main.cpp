// korvan: runs the console's commands in order in one session, answering the dialogues from
// answer files, the command line, their defaults or the terminal.
#include <CLI/CLI.hpp>

#include <iostream>
#include <string>

#include "cli_run.h"

using namespace korvan::cli;

int main(int argc, char** argv) {
  CliOptions options;
  for (int i = 0; i < argc; ++i) options.commandLine += (i ? " " : "") + std::string(argv[i]);

  CLI::App app{"KORVAN: age-stage, two-sex life table analysis.\n"
               "Runs console commands in the order given, in one session."};
  app.name("korvan");
  app.add_option("--answers", options.answerFiles,
                 "Answer file: lines \"<dialogue title> = <answer>\" (repeatable)")
      ->type_name("FILE")->allow_extra_args(false);
  app.add_option("--answer", options.answers,
                 "One answer, overriding the answer files for its dialogue (repeatable)")
      ->type_name("'KEY=VALUE'")->allow_extra_args(false);
  app.add_flag("--defaults", options.useDefaults,
               "A dialogue without an answer takes its default button or text");
  app.add_option("--transcript", options.transcriptPath,
                 "Write every dialogue met and the answer given, as an answer file")
      ->type_name("FILE");
  auto* seed = app.add_option("--seed", options.seed, "Seed of the random generator (default: the clock)")
                   ->type_name("N");
  app.add_option("--threads", options.threads, "Bootstrap threads (default 0: all cores)")
      ->type_name("N")->check(CLI::Range(0, 4096));
  app.add_flag("--quiet", options.quiet, "Show no progress or messages, only results and faults");
  app.add_option("COMMAND", options.commands, "Commands by code or control name, or: demo");
  app.footer(CommandListText());

  AnalyzeOptions analyze;
  auto* analyzeCommand = app.add_subcommand(
      "analyze", "Each data file through the Fast Run and a bootstrap, the paired test of every statistic "
                 "over them, and a summary table (summary.csv, summary.md)");
  analyzeCommand->add_option("FILE", analyze.files, "Life-table data files, one per treatment")
      ->required()->type_name("FILE");
  analyzeCommand->add_option("--bootstrap", analyze.bootstrap, "Bootstrap samples per treatment (default 100000)")
      ->type_name("B")->check(CLI::Range(2L, 100000L));
  auto* analyzeSeed = analyzeCommand->add_option("--seed", analyze.seed, "Seed of the random generator")->type_name("N");
  analyzeCommand->add_option("--threads", analyze.threads, "Bootstrap threads (default 0: all cores)")
      ->type_name("N")->check(CLI::Range(0, 4096));
  analyzeCommand->add_option("--out", analyze.outDir, "Folder of the results (default: beside each data file)")
      ->type_name("DIR");
  analyzeCommand->add_flag("--quiet", analyze.quiet, "Show no progress");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int code = app.exit(e);
    return code == 0 ? kExitDone : kExitUsage;
  }
  options.hasSeed = seed->count() > 0;
  if (analyzeCommand->parsed()) {
    analyze.hasSeed = analyzeSeed->count() > 0;
    return RunAnalyze(analyze);
  }

  if (options.commands.size() == 1 && options.commands[0] == "demo") {
    std::vector<std::string> notes;
    const bool ready = PrepareDemo(argv[0], options, notes);
    for (const auto& note : notes) std::cout << note << '\n';
    if (!ready) return kExitDone;
    return RunSession(options, true);
  }
  if (options.commands.empty()) {
    std::cerr << "korvan: no command given (korvan --help lists the commands)\n";
    return kExitUsage;
  }
  return RunSession(options, false);
}
