#include "cli_run.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <set>
#include <sstream>

#include "store/faults.h"
#include "text/text_file.h"
#include "run/run_context.h"
#include "ui/answer_book.h"
#include "commands/command_handlers.h"
#include "commands/run_command.h"
#include "ui/command_table.h"
#include "ui/console_display.h"
#include "ui/scripted_prompts.h"
#include "ui/terminal_prompts.h"
#include "ui/transcript_prompts.h"

namespace korvan::cli {

namespace fs = std::filesystem;

namespace {

void PrintGroup(std::ostringstream& out, const char* heading, CommandGroup group) {
  out << heading << '\n';
  for (const auto& c : CommandTable()) {
    if (c.group != group) continue;
    std::string line = "  " + std::string(c.code);
    line.resize(7, ' ');
    line += c.control;
    if (line.size() < 38) line.resize(38, ' ');
    line += " \"" + std::string(c.caption) + "\"";
    if (!c.toolTip.empty()) line += ": " + std::string(c.toolTip);
    out << line << '\n';
  }
}

// The files of folder written since the run began, by name: those the run opened for writing
// and any other whose time stamp is not older than the run.
std::vector<std::string> FilesWrittenSince(const fs::path& folder, fs::file_time_type since) {
  std::set<std::string> names;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(folder, ec)) {
    std::error_code e2;
    if (entry.is_regular_file(e2) && entry.last_write_time(e2) >= since && !e2) {
      names.insert(entry.path().filename().string());
    }
  }
  for (const std::string& file : FilesOpenedForWriting()) {
    const fs::path path(file);
    const fs::path parent = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code e2;
    if (fs::is_regular_file(path, e2) && fs::equivalent(parent, folder, e2) && !e2)
      names.insert(path.filename().string());
  }
  return {names.begin(), names.end()};
}

// The main parameters of the Basic Run, with their bootstrap standard errors once a bootstrap
// has run.
void PrintParameters(const SessionStore& S) {
  if (S.basic.BasicRunDone != "yes") return;
  const bool boot = S.boot.EffectiveCount > 0;
  const auto& p = S.params;
  const auto& b = S.boot;
  struct Row {
    const char* name;
    double value;
    const BootSummary& summary;
  };
  const Row rows[] = {{"Intrinsic rate of increase (r)", p.R_Basic, b.R},
                      {"Finite rate (lambda)", p.Lambda_Basic, b.Lambda},
                      {"Net reproductive rate (R0)", p.R0_Basic, b.R0},
                      {"Mean generation time (T)", p.T_Basic, b.T},
                      {"Gross reproduction rate (GRR)", p.GRR_Basic, b.GRR}};
  char line[160];
  std::snprintf(line, sizeof line, "%-32s %14s", "Population parameters", "estimate");
  std::cout << line << (boot ? "    bootstrap SE (" + std::to_string(b.EffectiveCount) + " samples, seed " +
                         std::to_string(b.RunSeed) + ")"
                   : "")
            << '\n';
  for (const auto& row : rows) {
    std::snprintf(line, sizeof line, "  %-30s %14.4f", row.name, row.value);
    std::cout << line;
    if (boot) {
      std::snprintf(line, sizeof line, "  %14.4f", row.summary.se);
      std::cout << line;
    }
    std::cout << '\n';
  }
}

void PrintSummary(const SessionStore& S, const ConsoleDisplay& display, fs::file_time_type started,
                  const std::vector<std::string>& notWhole, bool ranToEnd) {
  // The console's result fields; the parameters stand in the table when Basic Run has run.
  const bool table = S.basic.BasicRunDone == "yes";
  for (const auto& field : ResultFields()) {
    const std::string text = display.Field(std::string(field.control));
    if (text.empty()) continue;
    if (table && field.control != "txtDatafile" && field.control != "txtCohortsize" &&
        field.control != "txtMeanfecundity") {
      continue;
    }
    std::cout << field.label << ": " << text << '\n';
  }
  // After a fault the parameters are not shown: the files that hold them may not be whole.
  if (ranToEnd) PrintParameters(S);
  if (S.identity.DataFilePath.empty()) return;
  fs::path folder = fs::path(S.identity.DataFilePath).parent_path();
  if (folder.empty()) folder = ".";
  auto written = FilesWrittenSince(folder, started);
  // A file that could not be written whole, or that the ending cut short, is not among the
  // files written.
  for (const std::string& file : notWhole) {
    std::erase(written, fs::path(file).filename().string());
    std::cout << "not written whole: " << file << '\n';
  }
  if (written.empty()) return;
  std::error_code ec;
  fs::path shown = fs::weakly_canonical(folder, ec);
  if (ec) shown = folder;
  // Dozens of files: name the reports ("..._0A_...", "..._0B_...") and count the rest.
  const std::string reportMark = fs::path(S.identity.DataFileBase).filename().string() + "_0";
  std::vector<std::string> reports;
  for (const auto& name : written) {
    if (name.rfind(reportMark, 0) == 0) reports.push_back(name);
  }
  std::cout << written.size() << (written.size() == 1 ? " file" : " files") << " written in "
            << shown.string() << (reports.empty() ? "" : ", the reports among them:") << '\n';
  for (const auto& name : reports) std::cout << "  " << name << '\n';
}

}  // namespace

std::string CommandListText() {
  std::ostringstream out;
  out << "Commands (by code or control name; they run in the order given, in one session):\n";
  PrintGroup(out, "Main procedures:", CommandGroup::Main);
  PrintGroup(out, "Further commands:", CommandGroup::Further);
  PrintGroup(out, "Main figures (open after A2. Basic Run):", CommandGroup::Graph);
  out << "Also:\n  demo   runs the main job on the bundled example cohort\n"
      << "  analyze FILE... [--bootstrap B] [--seed N] [--threads N] [--out DIR] [--answer 'T=A']\n"
      << "         each file through the Fast Run and a bootstrap, the paired test of every\n"
      << "         statistic over them, and the summary (summary.csv, summary.md)\n"
      << "  import FILE.csv   the data file of a cohort kept in a spreadsheet, beside it\n\n"
      << "Exit codes: 0 the commands ran; 1 the program ended on a fault or at the user's\n"
      << "request (message and title on standard error); 2 a usage error or a missing answer.\n";
  return out.str();
}

int RunSession(const CliOptions& options, bool demo) {
  auto store = std::make_unique<Session>();
  Session& S = *store;
  S.StartUp();
  SetStartUpConsole(S.console);
  S.runControl.hasSeed = options.hasSeed;
  S.runControl.seed = options.seed;
  S.runControl.threads = options.threads;
  S.runControl.quiet = options.quiet;

  AnswerBook book;
  std::vector<const CommandInfo*> commands;
  try {
    for (const auto& file : options.answerFiles) book.AddFile(file);
    for (const auto& answer : options.answers) book.AddOption(answer);
    for (const auto& name : options.commands) commands.push_back(&ResolveCommand(name));
  } catch (const std::runtime_error& e) {
    std::cerr << "korvan: " << e.what() << '\n';
    return kExitUsage;
  }

  std::ofstream transcriptFile;
  if (!options.transcriptPath.empty()) {
    transcriptFile.open(options.transcriptPath, std::ios::binary | std::ios::trunc);
    if (!transcriptFile) {
      std::cerr << "korvan: cannot write the transcript " << options.transcriptPath << '\n';
      return kExitUsage;
    }
    transcriptFile << "# Dialogues met and answers given in: " << options.commandLine << '\n'
                   << "# Repeat with: korvan --answers " << options.transcriptPath;
    for (const auto* c : commands) transcriptFile << ' ' << c->control;
    transcriptFile << '\n' << std::flush;
  }

  ConsoleDisplay display(std::cerr, options.quiet, ::isatty(2) != 0);
  TerminalPrompts terminal(std::cin, std::cerr);
  ScriptedPrompts scripted(std::move(book), options.useDefaults, ::isatty(0) ? &terminal : nullptr, &display);
  std::optional<TranscriptPrompts> transcript;
  if (transcriptFile.is_open()) transcript.emplace(scripted, transcriptFile, options.transcriptPath);
  PromptService& P = transcript ? static_cast<PromptService&>(*transcript) : scripted;

  const auto started = fs::file_time_type::clock::now();
  int code = kExitDone;
  std::vector<std::string> notWhole;
  for (std::size_t k = 0; k <= commands.size(); ++k) {
    CommandOutcome out;
    if (k < commands.size()) {
      const CommandInfo* command = commands[k];
      // The demo's Basic Run is pressed only when A1 didn't start it itself (a Fast Run does).
      if (demo && command->control == "cmdBasicRunA2" && S.basic.BasicRunDone == "yes") continue;
      out = RunCommand(S, P, command->control);
    } else {
      out = EndSession(S);
    }
    if (out.SessionGoesOn()) continue;
    if (!out.failedFile.empty()) notWhole.push_back(out.failedFile);
    notWhole.insert(notWhole.end(), out.cutShort.begin(), out.cutShort.end());
    display.EndProgress();
    switch (out.ending) {
      case CommandEnding::ProgramEnd:
        if (!out.title.empty()) std::cerr << out.title << '\n';
        std::cerr << out.message << '\n';
        code = kExitProgramEnd;
        break;
      case CommandEnding::SubscriptFault:
      case CommandEnding::OverflowFault:
        std::cerr << out.message << '\n';
        code = kExitProgramEnd;
        break;
      case CommandEnding::Unexpected:
        std::cerr << "korvan: " << out.message << '\n';
        code = kExitProgramEnd;
        break;
      case CommandEnding::MissingAnswer:
      case CommandEnding::Refused:
        if (demo) {
          std::cout << "demo: stopped here: "
                    << (out.ending == CommandEnding::MissingAnswer ? "the example's answers end (" + out.message + ")"
                                                                    : out.message)
                    << '\n';
        } else {
          std::cerr << "korvan: " << out.message << '\n';
          code = kExitUsage;
        }
        break;
      case CommandEnding::Ran:
      case CommandEnding::Quit:
        break;
    }
    break;
  }
  display.EndProgress();
  PrintSummary(S, display, started, notWhole, code != kExitProgramEnd);
  if (!options.quiet && !demo && code != kExitProgramEnd) {
    for (const auto& left : scripted.book().Unused()) std::cerr << "korvan: answer not used: " << left << '\n';
  }
  return code;
}

}  // namespace korvan::cli
