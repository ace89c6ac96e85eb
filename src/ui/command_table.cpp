#include "ui/command_table.h"

#include <array>
#include <cctype>

namespace korvan {

namespace {

constexpr auto M = CommandGroup::Main;
constexpr auto F = CommandGroup::Further;
constexpr auto G = CommandGroup::Graph;

constexpr std::array kCommands = {
    // Main procedures: every one open at start but Basic Run, which A1 opens (the rules of what
    // opens and closes them are in console_rules.cpp).
    CommandInfo{"A1", "cmdReadDataA1", "A1. Read data", "Read life table data file", M, "Frame4", true},
    CommandInfo{"A2", "cmdBasicRunA2", "A2. Basic Run", "Run basic life table analysis", M, "Frame4", false},
    CommandInfo{"A3", "cmdBootstrap", "A3. Bootstrap", "Run bootstrap", M, "Frame4", true},
    CommandInfo{"A4", "cmdSortAndCountLT", "A4. Sort LT", "Sort and count life table", M, "Frame4", true},
    CommandInfo{"B", "cmdReadNandF", "B. Read N, F", "Read group-reared life table", M, "Frame4", true},
    CommandInfo{"C", "cmdPairedBootTest", "C. Paired BT", "Run paired bootstrap test by picking file 1 by 1", M, "Frame4", true},
    CommandInfo{"D", "cmdMatchedLifeTable", "D. Boot. match", "Bootstrap-random match preadult and adult life tables", M, "Frame4", true},
    CommandInfo{"E", "FMNmatrices", "E. 3D life table", "Run 3D life table analysis", M, "Frame4", true},
    CommandInfo{"F", "Command28", "F. Grouping", "Grouping a few stages to one stage", M, "Frame4", true},
    CommandInfo{"G", "cmdGeneralBootstrap", "G. Gen. boot", "Run general bootstrap", M, "Frame4", true},
    CommandInfo{"H", "cmdHarvest", "H. Harvest", "Harvest analysis (Rearing cost are needed).", M, "Frame4", true},
    CommandInfo{"I", "ContributionPartition", "I. Contribution", "Calculate contribution of different offsprng", M, "Frame4", true},
    CommandInfo{"J", "cmdCalculateRatio", "J. Cal. ratio", "Select bootstrap files to calculate the ratio!", M, "Frame4", true},
    CommandInfo{"K", "Command44", "K. 1t to xt", "Change life table of 1 time unit to x time units", M, "Frame4", true},
    CommandInfo{"L", "cmdSortandCount", "L. Sort+count", "Read, sort, and count bootstrap results", M, "Frame4", true},
    CommandInfo{"M", "cmdCountBootLifeTable", "M. Count LT", "Sort and count bootstrap life tables", M, "Frame4", true},
    CommandInfo{"N", "cmdGeneralNormalTest", "N. Normality", "Read, sort and normality test for general data or bootstrap results", M, "Frame4", true},
    CommandInfo{"O", "cmdAddDuration", "O. + overwinter", "Add overwinter duration", M, "Frame4", true},
    CommandInfo{"P", "cmdWriteSpeLifeTable", "P. Spec. boot", "Write life table for specific bootstrap sample", M, "Frame4", true},
    CommandInfo{"Q", "cmdCartesianDifference", "Q. CartesianPT", "", M, "Frame4", true},

    // Further commands beside the main ones.
    CommandInfo{"A5", "cmdCalMNCforSpecR0", "A5. Spec. Ro", "Find the bootstrap life tables of a specific Ro and their multinomial counts", F, "", true},
    CommandInfo{"", "cmdAddStage", "Add stage+dura.", "Add a stage to life table", F, "", true},
    CommandInfo{"", "cmdAddDurationToStage", "Add time to imma.", "Add duration to immature stage", F, "", false},
    CommandInfo{"", "cmdSplitStage", "Split stage", "Split a stage into 2 stages", F, "", true},
    CommandInfo{"", "cmdSplit", "Split LT", "Split a regular life table data to immature and adult life table", F, "", true},
    CommandInfo{"", "cmdReduceReprodPeriod", "Reduce rep. period", "Reduce the reproduction period", F, "", false},
    CommandInfo{"", "cmdCreateLectureFile", "CF", "Create life table files for participants", F, "", false},
    CommandInfo{"", "cmdCountBootIndNr", "Boot ind. freq.", "Show the freq. of bootstrap individuals (file no. 11)", F, "", true},
    CommandInfo{"", "cmdPBTPooled", "PBT pooled", "PBT Data of different treatments must be pooled)", F, "", true},
    CommandInfo{"", "showBootandJackResult", "Boot result", "Show bootstrap results", F, "", true},
    CommandInfo{"", "cmdShowCumuFreqinProbit", "Normality test", "Normality test of bootstrap Ro", F, "", true},
    CommandInfo{"", "Command2", "Multinomial", "Multinomial expansion (You must complete Basic Run first)", F, "", true},
    CommandInfo{"", "Command21", "Jackknife", "Jackknife: Attention! Jackknife method generates biologically meaningless estimates.", F, "", false},
    CommandInfo{"", "cmdCurtailedR", "Curtailed r", "Intrinsic rates of the curtailed life tables", F, "", false},
    CommandInfo{"", "Command42", "Next quiz", "Go to the next teaching quiz", F, "", false},
    CommandInfo{"", "Command4", "Large graph", "Show the chart in a large window", F, "", false},
    // The Tukey-Kramer table of a pooled file of bootstrap results.
    CommandInfo{"", "TukeyQ5TableInput", "Tukey table", "Tukey-Kramer table of the bootstrap results of three or more treatments (pooled file)", F, "", true},
    CommandInfo{"", "Command1", "Quit", "Quit this program", F, "", true},

    // Main figures: shown once Basic Run has run.
    CommandInfo{"", "Command3", "Age-specific survival rate", "Chart of the age-specific survival rate l(x)", G, "Frame1", true},
    CommandInfo{"", "Command5", "Age-specific fecundity", "Chart of the age-specific fecundity", G, "Frame1", true},
    CommandInfo{"", "Command7", "Age-specific maternity", "Chart of the age-specific maternity l(x)m(x)", G, "Frame1", true},
    CommandInfo{"", "Command6", "Age-specific reproductive value", "Chart of the age-specific reproductive value", G, "Frame1", true},
    CommandInfo{"", "Command9", "Curtailed LT", "Chart of the rates of the curtailed life tables", G, "Frame1", true},
    CommandInfo{"", "cmdShowTailedR", "Tail. r", "Chart of the intrinsic rate of the tailed life tables", G, "Frame1", true},
    CommandInfo{"", "cmdShowTailedRo", "Tail. Ro", "Chart of the net reproductive rate of the tailed life tables", G, "Frame1", true},
    CommandInfo{"", "cmdShowFemaleFecundExpectancy", "Exp. fecundity", "Chart of the expected fecundity of females", G, "Frame1", true},
    CommandInfo{"", "cmdLewontin", "Lewontin", "Chart of the Lewontin check", G, "Frame1", true},
    CommandInfo{"", "cmdBootLx", "Boot. lx range", "Chart of the bootstrap range of l(x)", G, "Frame1", true},
    CommandInfo{"", "cmdBootMx", "Boot. mx  range", "Chart of the bootstrap range of m(x)", G, "Frame1", true},
    CommandInfo{"", "cmdFecundityVsOvidays", "Fecund vs Od", "Regression of fecundity on oviposition days", G, "Frame1", false},
    CommandInfo{"", "cmdShowFvsAdultLong", "Fecund vs AL", "Regression of fecundity on adult longevity", G, "Frame1", false},
    CommandInfo{"", "cmdShowFvsTotalLong", "Fecund vs L", "Regression of fecundity on total longevity", G, "Frame1", false},
    CommandInfo{"", "cmdShowFvsConsumption", "Fecund vs. C", "Regression of fecundity on total consumption", G, "Frame1", false},
};

constexpr std::array kResultFields = {
    ResultField{"txtDatafile", "Data file"},
    ResultField{"txtCohortsize", "Cohort size"},
    ResultField{"txtMeanfecundity", "Mean fecundity"},
    ResultField{"txtFiniteRate", "Finite rate (lambda)"},
    ResultField{"txtIntrinsicrate", "Intrinsic rate (r)"},
    ResultField{"txtNetreproductiverate", "Net reproductive rate (R0)"},
    ResultField{"txtMeangenerationtime", "Mean generation time (T)"},
};

bool SameIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::span<const CommandInfo> CommandTable() { return kCommands; }

std::span<const ResultField> ResultFields() { return kResultFields; }

const CommandInfo* FindCommand(std::string_view codeOrControl) {
  for (const auto& command : kCommands) {
    if (!command.code.empty() && SameIgnoringCase(command.code, codeOrControl)) return &command;
  }
  for (const auto& command : kCommands) {
    if (command.control == codeOrControl) return &command;
  }
  for (const auto& command : kCommands) {
    if (SameIgnoringCase(command.control, codeOrControl)) return &command;
  }
  return nullptr;
}

void SetStartUpConsole(ConsoleState& console) {
  for (const auto& command : kCommands) {
    console.Enable(std::string(command.control), command.openAtStart);
  }
  console.Show("Frame4");
  console.Show("Frame1", false);
}

void EnableAllButtonsForImage(ConsoleState& console) {
  for (const auto& command : kCommands) console.Enable(std::string(command.control));
  for (const char* frame : {"Frame1", "Frame4", "Frame5"}) console.Show(frame);
}

void DisableAllButtonsForCartesian(ConsoleState& console) {
  for (const auto& command : kCommands)
    if (command.control != "cmdCartesianDifference" && command.control != "Command1")
      console.Disable(std::string(command.control));
  console.Show("Frame1", false);
  console.Show("Frame5", false);
  console.Show("Frame4");
  console.Show("Frame6");
}

void DisableAllButtonsForA5(ConsoleState& console) {
  DisableAllButtonsForCartesian(console);
  console.Disable("cmdGeneralNormalTest");
  console.Enable("cmdCalMNCforSpecR0");
}

bool IsCommandOpen(const ConsoleState& console, const CommandInfo& command) {
  if (!console.IsEnabled(std::string(command.control))) return false;
  return command.frame.empty() || console.IsVisible(std::string(command.frame));
}

}  // namespace korvan
