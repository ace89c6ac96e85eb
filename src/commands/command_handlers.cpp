#include "commands/command_handlers.h"

#include "ui/console_rules.h"

// One include per family of built commands.
#include "commands/basic_run_driver.h"
#include "commands/bootstrap_driver.h"
#include "commands/curtailed_r_command.h"
#include "commands/general_bootstrap_command.h"
#include "commands/harvest_command.h"
#include "commands/jackknife_command.h"
#include "commands/multinomial_commands.h"
#include "commands/match_commands.h"
#include "commands/paired_test_commands.h"
#include "commands/tukey_command.h"
#include "commands/ratio_command.h"
#include "commands/read_n_and_f_command.h"
#include "commands/read_data_a1.h"
#include "commands/sort_count_commands.h"
#include "commands/spec_boot_sample.h"
#include "commands/transform_commands.h"

namespace korvan {

namespace {

// A command's click procedure: a member function of a family of procedures.
template <class Family, void (Family::*Click)()>
void Run(Session& S, PromptService& P) {
  Family family(S, P);
  (family.*Click)();
}

void Quit(Session&, PromptService&) { throw SessionQuit{}; }

}  // namespace

const std::map<std::string, CommandHandler, std::less<>>& CommandHandlers() {
  // One line per built command: {"control name", Run<Family, &Family::control_Click>},
  static const std::map<std::string, CommandHandler, std::less<>> handlers = {
      {"Command1", Quit},
      {"cmdReadDataA1", Run<ReadDataA1, &ReadDataA1::cmdReadDataA1_Click>},
      {"cmdReadNandF", Run<ReadNandFCommand, &ReadNandFCommand::cmdReadNandF_Click>},
      {"cmdBasicRunA2", Run<BasicRunDriver, &BasicRunDriver::cmdBasicRunA2_Click>},
      {"cmdBootstrap", Run<BootstrapDriver, &BootstrapDriver::cmdBootstrap_Click>},
      {"cmdPairedBootTest", Run<PairedTestCommands, &PairedTestCommands::cmdPairedBootTest_Click>},
      {"cmdPBTPooled", Run<PairedTestCommands, &PairedTestCommands::cmdPBTPooled_Click>},
      {"cmdCartesianDifference", Run<PairedTestCommands, &PairedTestCommands::cmdCartesianDifference_Click>},
      {"TukeyQ5TableInput", Run<TukeyCommand, &TukeyCommand::TukeyQ5TableInput>},
      {"Command21", Run<JackknifeCommand, &JackknifeCommand::Command21_Click>},
      {"cmdCalculateRatio", Run<RatioCommand, &RatioCommand::cmdCalculateRatio_Click>},
      {"cmdGeneralBootstrap", Run<GeneralBootstrapCommand, &GeneralBootstrapCommand::cmdGeneralBootstrap_Click>},
      {"cmdSortandCount", Run<SortCountCommands, &SortCountCommands::cmdSortandCount_Click>},
      {"cmdGeneralNormalTest", Run<SortCountCommands, &SortCountCommands::cmdGeneralNormalTest_Click>},
      {"cmdShowCumuFreqinProbit", Run<SortCountCommands, &SortCountCommands::cmdShowCumuFreqinProbit_Click>},
      {"cmdCurtailedR", Run<CurtailedRCommand, &CurtailedRCommand::cmdCurtailedR_Click>},
      {"cmdWriteSpeLifeTable", Run<SpecBootSampleCommand, &SpecBootSampleCommand::cmdWriteSpeLifeTable_Click>},
      {"Command28", Run<TransformCommands, &TransformCommands::Command28_Click>},
      {"Command44", Run<TransformCommands, &TransformCommands::Command44_Click>},
      {"cmdAddDuration", Run<TransformCommands, &TransformCommands::cmdAddDuration_Click>},
      {"cmdAddStage", Run<TransformCommands, &TransformCommands::cmdAddStage_Click>},
      {"cmdAddDurationToStage", Run<TransformCommands, &TransformCommands::cmdAddDurationToStage_Click>},
      {"cmdSplitStage", Run<TransformCommands, &TransformCommands::cmdSplitStage_Click>},
      {"cmdSplit", Run<TransformCommands, &TransformCommands::cmdSplit_Click>},
      {"cmdReduceReprodPeriod", Run<TransformCommands, &TransformCommands::cmdReduceReprodPeriod_Click>},
      {"cmdHarvest", Run<FurtherAnalysisForms, &FurtherAnalysisForms::cmdHarvest_Click>},
      {"ContributionPartition", Run<FurtherAnalysisForms, &FurtherAnalysisForms::ContributionPartition_Click>},
      {"Command2", Run<MultinomialCommands, &MultinomialCommands::Command2_Click>},
      {"cmdSortAndCountLT", Run<MultinomialCommands, &MultinomialCommands::cmdSortAndCountLT_Click>},
      {"cmdCountBootLifeTable", Run<MultinomialCommands, &MultinomialCommands::cmdCountBootLifeTable_Click>},
      {"cmdCalMNCforSpecR0", Run<MultinomialCommands, &MultinomialCommands::cmdCalMNCforSpecR0_Click>},
      {"cmdCountBootIndNr", Run<MultinomialCommands, &MultinomialCommands::cmdCountBootIndNr_Click>},
      {"cmdMatchedLifeTable", Run<MatchCommands, &MatchCommands::cmdMatchedLifeTable_Click>},
      {"FMNmatrices", Run<MatchCommands, &MatchCommands::FMNmatrices_Click>},
  };
  return handlers;
}

bool IsCommandBuilt(std::string_view control) {
  return CommandHandlers().find(control) != CommandHandlers().end();
}

const CommandInfo& ResolveCommand(std::string_view codeOrControl) {
  const CommandInfo* command = FindCommand(codeOrControl);
  if (!command) {
    throw CommandRefused("unknown command \"" + std::string(codeOrControl) +
                         "\" (korvan --help lists the commands)");
  }
  return *command;
}

std::string ClosedCommandMessage(const ConsoleState& console, const CommandInfo& command) {
  const std::string caption(command.caption);
  if (command.control == "cmdReadDataA1") {
    return caption + " is closed: a data file has been read in this session; another one needs a new start of the program.";
  }
  if (!command.frame.empty() && console.IsEnabled(std::string(command.control)) &&
      !console.IsVisible(std::string(command.frame))) {
    if (command.frame == "Frame1") return caption + " is closed: the figures are shown after A2. Basic Run.";
    return caption + " is closed: the main procedures are hidden after this run.";
  }
  const std::string_view opener = OpenedBy(command.control);
  if (!opener.empty()) {
    const CommandInfo* before = FindCommand(opener);
    // Only a predecessor still waiting to be run explains the refusal; once it has run
    // (a Fast Run closes A2 behind A1, for one) the command is simply closed.
    if (before && IsCommandOpen(console, *before)) {
      return caption + " is closed: it opens after " + std::string(before->caption) + ".";
    }
  }
  return caption + " is closed at this point of the session.";
}

void PressCommand(Session& S, PromptService& P, const CommandInfo& command) {
  if (!IsCommandOpen(S.console, command)) throw CommandRefused(ClosedCommandMessage(S.console, command));
  PressByProgram(S, P, command.control);
}

void PressByProgram(Session& S, PromptService& P, std::string_view control) {
  auto it = CommandHandlers().find(control);
  if (it == CommandHandlers().end()) {
    const CommandInfo* command = FindCommand(control);
    throw CommandRefused((command ? std::string(command->caption) : std::string(control)) +
                         ": not available yet");
  }
  it->second(S, P);
}

}  // namespace korvan
