// "B. Read N, F" (cmdReadNandF_Click): the dialogues around the reading of a group-reared file,
// the engine's pass over its tables, and the offer to rebuild individuals.
#include "commands/read_n_and_f_command.h"

#include <optional>
#include <string>

#include "engine/life_table_engine.h"
#include "engine/population_parameters.h"
#include "groupreared/group_reared.h"
#include "run/dialogues.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"
#include "ui/console_rules.h"

namespace korvan {

void ReadNandFCommand::cmdReadNandF_Click() {
  Flow("cmdReadNandF_Click");
  auto& g = S.group;
  const int predation = YesNoOrEnd(P,
                                   "Are there predation data in this group-reared life table file?\n\n"
                                   "Yes: There are predation rates.\nNo: There is no predation rate.\nCancel: Stop.",
                                   "Group reared life table with predation rate?");
  g.NandFwithPredation = predation == kYes ? "Yes" : "No";

  ApplyConsoleRule(S.console, "B begins");
  const std::string path = P.ChooseFile("Open group-reared life table data");
  if (path.empty()) return;
  S.identity.DataFilePath = path;
  S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
  S.identity.OutputFileName = OutputName(S, "_0A_Life Table_Output_NF.txt");
  S.channels.MainOutput.Open(S.identity.OutputFileName);

  GroupReared group(S, P);
  group.InputMatricesNandF();
  const int s = g.StageCountNF;

  // After reading.
  if (P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes)
    OpenFlowRecord(S, S.identity.DataFileBase);
  AskTimeUnit();
  if (s > 2) group.Write2StagesNewLifeTableBasedOnNF();
  if (s <= 4) {
    if (YesNoOrEnd(P,
                   "Do you want to estimate matrices G and D? (You don't need this for the construction of individual "
                   "life table).\nNo: I don't want to construct the individual life table data.\nCancel: End the program.",
                   "Estimate matrices G and D?") == kYes)
      group.CalculateGDbasedonNF();
    if (YesNoOrEnd(P,
                   "Do you want to double check matrix S based on N and F?\n(You don't need this for the construction of "
                   "individual life table).",
                   "Double check matrix S based on N and F?") == kYes)
      group.CalculateSxjFromGDfromNF();
  }

  g.PrintOutputBasedOnNandF = "Yes";
  group.PrintGroupLifeTableTitle();
  RunEngineForNandF();

  const int more = P.MsgBox(
      "Do you want me to try to construct individual-reared life table?\nSelect \"Yes\" to continue. \"No\" to stop here.",
      "Stop here or continue?", kYesNo);
  if (more == kYes && s == 2) {
    if (group.FindNandFOverlapType()) {
      group.FindNandFOverlapDeath();
      group.RebuildIndividualsByCase();
    }
  } else if (more == kYes) {
    P.MsgBox(s > 2 ? "Please run KORVAN using " + OutputName(S, "_0A3_Group-reared Life Table_2 Stages.txt") +
                         " to construct individual life table."
                   : std::string("A table of one stage has no preadult stage to rebuild individuals from."),
             "Message");
  }
  if (s != 2) group.GroupNFlifetable();

  S.channels.MainOutput.Close();
  ApplyConsoleRule(S.console, "B ends");
  if (g.NandFwithPredation == "Yes") ApplyConsoleRule(S.console, "B predation");
  P.ShowChart(ShowSxj(S));
}

void ReadNandFCommand::AskTimeUnit() {
  const std::string text =
      "Enter the time unit of your data (1 = 1 day, 0.5 = 0.5 day, 0.3 = 8h, 0.25 = 6 h, 0.2 = 4.8 h or 0.16 = 4 h).\n"
      "(For any other time unit, enter 1.)";
  const std::string answer = InputOrEnd(P, text, "Each time unit =?", "1");
  const std::optional<double> unit = NumberAnswer(answer);
  if (!unit || *unit <= 0)
    throw ProgramEnd{"The time unit \"" + answer + "\" is no positive number.", "Each time unit =?"};
  S.settings.TimeUnit = *unit;
}

// The engine on the tables of the counts, in the order of the individual-based path.
void ReadNandFCommand::RunEngineForNandF() {
  W.run.Boot = 0;
  W.run.IsResamplingFlag = "n";
  W.run.IsBasicRunFlag = "y";
  W.params.JackNo = 0;
  LifeTableEngine life(S, P, W);
  ParameterEngine parameters(S, P, W);
  parameters.Life05Gosub1370();
  life.Life04Gosub0530();
  parameters.Life05Gosub90ForNandF();
  parameters.Life05aGosub0800ForNandFt();
  life.Life04Gosub2400();
  parameters.Life05aGosub3800();
  parameters.Life05aGosub2610();
  P.Status("txtNetreproductiverate", FullPrecision(RoundDisplay(W.params.R0, 4)));
}

}  // namespace korvan
