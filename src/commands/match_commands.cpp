#include "commands/match_commands.h"

#include <cmath>
#include <string>

#include "analyses/matching.h"
#include "analyses/three_d.h"
#include "commands/basic_run_driver.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"

namespace korvan {

namespace {

using namespace match_titles;

// A number of a form's box; text that is not a number ends the run with a message naming the box.
double BoxNumber(PromptService& P, const std::string& text, const std::string& caption, const std::string& def) {
  const std::string answer = P.InputBox(text, caption, def);
  const auto value = NumberAnswer(answer);
  if (!value) throw ProgramEnd{"\"" + answer + "\" is not a number (" + caption + ").", caption};
  return *value;
}

}  // namespace

void MatchCommands::cmdMatchedLifeTable_Click() {
  Flow("cmdMatchedLifeTable_Click");
  MatchedLifeTables match(S, P);
  MatchRecord& M = S.match;
  match.InputImmatureData();
  match.InputAdultData();
  match.CheckDataFileOfImmmature();
  match.CheckDatafileOfAdult();
  match.WriteImmatureDataForGenBoot();
  match.WriteDataForGenBoot();
  const double n = BoxNumber(P, "Enter the number of individuals of each matched life table.", kSampleSize,
                             std::to_string(S.immature.ImmatureCount));
  if (n != std::floor(n) || n < 1 || n > kMaxIndividual)
    throw ProgramEnd{"The sample size must be a whole number from 1 to " + std::to_string(kMaxIndividual) + ".",
                     kSampleSize};
  M.MatchSampleSize = static_cast<int>(n);
  M.MatchB = BoxNumber(P, "Enter the number of random matches (B).", kBootB, "1000");
  const double winter = BoxNumber(P, "Enter the overwinter duration of adults (0 = no overwintering).",
                                  kWinter, "0");
  if (winter != std::floor(winter) || winter < 0 || winter > kMaxAge / 2)
    throw ProgramEnd{"The overwinter duration must be a whole number from 0 to " + std::to_string(kMaxAge / 2) + ".",
                     kWinter};
  M.OverwinterDuration = static_cast<int>(winter);
  M.OverwinterMortality = BoxNumber(P, kWinterMortalityTip, kWinterMortality, "0");
  match.ShowMatch = [this](long b, const Workspace& ws) {
    P.ShowChart(ShowSxj(S, ws, "Match no. = " + std::to_string(b)));
  };
  match.Command7_Click();
  if (P.MsgBox("Do you want to write the life table of a specific match from a match record?", kSameMatch,
               kYesNo, 2) == kYes)
    cmdSameMatch_Click();
}

void MatchCommands::cmdSameMatch_Click() {
  Flow("cmdSameMatch_Click");
  MatchRecord& M = S.match;
  MatchedLifeTables match(S, P);
  const std::string path = P.ChooseFile("Read match record (file no. 2C).");
  if (path.empty()) throw ProgramEnd{"No match record was chosen.", "Read match record (file no. 2C)."};
  M.RecordPath = path;
  if (M.ImmatureRead != "Yes" || M.AdultRead != "Yes")
    throw ProgramEnd{"Open the immature data (A1) and the adult data (A2) before reading a match record.",
                     kSameMatch};
  if (!match.ReadSameBootstrapData()) return;
  if (M.Seed == 0) M.Seed = S.runControl.hasSeed ? S.runControl.seed : 1;
  for (;;) {
    const std::string answer =
        P.InputBox("Enter the bootstrap sample no.", "Write life table data for specific bootstrap sample?", "1");
    const auto number = NumberAnswer(answer);
    const long available = M.RecordMatches;
    if (!number || *number != std::floor(*number) || *number < 1 || *number > static_cast<double>(available)) {
      P.MsgBox("Total available bootstrap sampe is " + std::to_string(available) +
                   "\nRe-enter the required sample number.",
               "Attention!");
      const int again = P.MsgBox("The specific bootstrap sample you asked is " + answer +
                                     "\nHowever, current bootstrap sample is " + std::to_string(available) +
                                     "\nClick \"Yes\" to re-enter your number.\nClick \"No\" to end this procedure.",
                                 "Attention!", kYesNo);
      if (again == kYes) continue;
      return;
    }
    const long b = static_cast<long>(*number);
    const std::string code = P.InputBox("Enter the percentile code (e.g., 0.025 Ro, 0.5 lambda, 0.975, etc.)",
                                        "Which percentile is this life table?", "");
    if (M.MatchEffective[static_cast<std::size_t>(b)] == kMatchIneffective) {
      P.MsgBox("Match " + std::to_string(b) + " of the record is ineffective: it has no life table.", "Attention!");
    } else {
      const std::string no = std::to_string(b);
      match.WriteMatchLifeTable(b, M.MatchBase + "_0_Life Table_" + no + "-" + code + ".txt",
                                "Project: " + S.immature.head.ProjectName + ". Match no. =" + no,
                                M.RunLabel + "-" + no + " " + code);
    }
    if (P.MsgBox("Life table data file ready!\nClick \"Yes\" to create next life table.\nClick \"No\" to end.",
                 "Congratulation!", kYesNo, 2) != kYes)
      return;
  }
}

// Both the step of a Basic Run (the 3D question, and a run marked by its user field) and the
// command below sit with the 3D life table.
void BasicRunDriver::StepWriteDataFileFor3Dmatrices() { ThreeDMatrices(S, P).WriteDataFileFor3Dmatrices(); }

void MatchCommands::FMNmatrices_Click() {
  Flow("FMNmatrices_Click");
  if (P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes)
    OpenFlowRecord(S, S.identity.DataFileBase);
  if (P.MsgBox("Have you analyzed your life table data for three types of offspring?  If yes, click on Yes. If No, "
               "please do it before you run this function.",
               "Did you analyze your life table for three type offspring?", kYesNo) != kYes)
    return;
  S.console.Disable("cmdReadNandF");
  S.console.Disable("cmdReadDataA1");
  S.console.Show("Frame1", false);
  ThreeDMatrices three(S, P);
  ThreeDRecord& D = S.threeD;
  P.MsgBox("Read matrices of female cohort and female offspring (file no. 20).",
           "Read matrices for female cohort and female offspring");
  three.ReadFMNofFemaleOffspring();
  P.MsgBox("Read matrices of female cohort and male offspring (file no. 20).",
           "Read matrices of female cohort and male offspring.");
  three.ReadFMNofMaleOffspring();
  if (P.MsgBox("Are there N-type offspring?", "If there are N-type offspring, click on Yes.", kYesNo) == kYes) {
    P.MsgBox("Read matrices of female cohort and N-type offspring (file no. 20).",
             "Read matrices of female cohort and N-type offspring.");
    three.ReadFMNofNtypeOffspring();
  } else {
    D.NTypeAbsent = "Yes";
  }
  P.MsgBox("Read matrices of male cohort (file no. 20).", "Read matrices of male cohort.");
  three.ReadFMNofMale();
  if (D.NTypeAbsent != "Yes") {
    P.MsgBox("Read matrices of N-type cohort (file no. 20).", "Read matrices of male cohort.");
    three.ReadFMNofNType();
  }
  three.CalculateP3DforMandN();
  three.Write3DReport();
  P.Status("txtFiniteRate", FullPrecision(RoundDisplayOrWhole(D.FiniteRate3D, 8)));
  P.Status("txtFiniteRate.BackColor", "Cyan");
  P.Status("txtIntrinsicrate", FullPrecision(RoundDisplayOrWhole(D.IntrinsicRate3D, 8)));
  P.Status("txtIntrinsicrate.BackColor", "Cyan");
  P.Status("txtNetreproductiverate", FullPrecision(RoundDisplayOrWhole(D.R0Total3D, 4)));
  P.Status("txtNetreproductiverate.BackColor", "Yellow");
  P.MsgBox("3D analysis completed! Congratulation!", "3D analysis completed");
}

}  // namespace korvan
