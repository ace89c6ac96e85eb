#include "commands/jackknife_command.h"

#include <memory>

#include "bootstrap/jackknife.h"
#include "engine/stage_statistics.h"
#include "ui/chart_figures.h"
#include "ui/console_rules.h"

namespace korvan {

void JackknifeCommand::Command21_Click() {
  Flow("Command21_Click");
  S.options.AnalysisMethod = "Calculus";
  if (S.basic.BasicRunDone != "yes") {
    P.MsgBox("You must compplete A1 and A2 first.", "Jackknife", kOKOnly);
    return;
  }
  const int fertile = S.ws.lifeTable.ReproductiveCount;
  if (fertile <= 1) {
    P.MsgBox(fertile == 1 ? "There is only one fertile female. Jackknife is impossible."
                          : "There is no fertile female. Jackknife is impossible.",
             "Only one female reproduced.", kOKOnly);
    return;
  }
  P.MsgBox(
      "The jackknife leaves out one individual at a time. Its pseudo-values of r, lambda, R0, T and GRR are "
      "biologically meaningless (a male's pseudo-R0 is 0, a female's is her own eggs), and the method is "
      "inappropriate for the estimation of population parameters and their errors.\n"
      "Use the bootstrap (A3) for the standard errors of your paper.",
      "Note well!", kOKOnly);

  if (S.params.JackknifeDone != "Yes") {
    ApplyConsoleRule(S.console, "Jackknife runs");
    // The passes run on a workspace of their own: the Basic Run's cohort and tables stay.
    auto workspace = std::make_unique<Workspace>(S.ws);
    Jackknife jack(S, P, *workspace);
    jack.RunPasses();
    jack.jack01();
    StageStatsEngine(S, P, *workspace).Life08();
    jack.WriteJackknifeForTtest();
    jack.WriteJackknifeInRow();
  }
  P.ShowChart(ShowFreqR0(S));
  Jackknife(S, P).WriteJackknifeFrequency();
  S.params.JackknifeDone = "Yes";
}

}  // namespace korvan
