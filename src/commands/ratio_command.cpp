#include "commands/ratio_command.h"

#include <string>

#include "bootstrap/ratio.h"
#include "text/numbers.h"

namespace korvan {

void RatioCommand::cmdCalculateRatio_Click() {
  Flow("cmdCalculateRatio_Click");
  // A box without a title: its answer is keyed by its text.
  P.MsgBox("Attention!  You have to use the same bootstrap samples to get correct answer.", "", kOKOnly);
  BootstrapRatio ratio(S, P, W);
  const double t = NumberOfText(
      P.InputBox("0: No transformation, 1: Arcsine, or 2: logit transformation.", "Transformation?", "0"));
  ratio.Transformation = t == 1 ? "Arcsine" : t == 2 ? "Logit" : "No";
  P.MsgBox(
      "You can use this function to calculate the hatch rate, the proportion of Ro of different reproductive type "
      "(parthenogentic and bisexual, winged and wingless, etc.)\n"
      "Select the numerator (partial) first, then select the the denominator (total).",
      "Select files to calculate the ratio!", kOKOnly);
  ratio.NumeratorPath = P.ChooseFile("Select the numerator file (partial)");
  if (ratio.NumeratorPath.empty()) return;
  ratio.DenominatorPath = P.ChooseFile("Select the denominator file (total)");
  if (ratio.DenominatorPath.empty()) return;
  if (!ratio.CalculateRatio()) return;
  P.Status("lblBootMsg", "Ratio: mean = " + FullPrecision(ratio.Mean) + ", SE = " + FullPrecision(ratio.SE) +
                             "\n" + ratio.OutputPath);
  P.MsgBox("Your results are in file no. 26.", "Task completed!", kOKOnly);
}

}  // namespace korvan
