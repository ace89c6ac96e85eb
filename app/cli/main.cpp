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

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int code = app.exit(e);
    return code == 0 ? kExitDone : kExitUsage;
  }
  options.hasSeed = seed->count() > 0;

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
