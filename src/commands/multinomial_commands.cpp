#include "commands/multinomial_commands.h"

#include <string>
#include <vector>

#include "bootstrap/count_individuals.h"
#include "input/data_file_reader.h"
#include "multinomial/expansion.h"
#include "multinomial/life_table_count.h"
#include "multinomial/spec_r0.h"
#include "store/faults.h"
#include "ui/chart_figures.h"
#include "ui/command_table.h"

namespace korvan {

namespace {

// A record read for a count sets E to its B for the count's passes only: the session's
// bootstrap (none, or that of A3) keeps its count of effective samples, which the summaries of
// a run report.
struct KeepEffectiveCount {
  explicit KeepEffectiveCount(BootstrapRecord& r) : R(r), E(r.EffectiveCount) {}
  ~KeepEffectiveCount() { R.EffectiveCount = E; }
  KeepEffectiveCount(const KeepEffectiveCount&) = delete;
  KeepEffectiveCount& operator=(const KeepEffectiveCount&) = delete;
  BootstrapRecord& R;
  std::int32_t E;
};

}  // namespace

void MultinomialCommands::Command2_Click() {
  Flow("Command2_Click");
  if (S.basic.BasicRunDone != "yes") {
    P.MsgBox("You must compplete A1 and A2 first.\nPlease complete the Basic Run.", "Multinomial", kOKOnly);
    return;
  }
  // The members of the cohort with their total eggs, as a bootstrap draws them.
  DataFileReader(S, P, W).InputdataBoot();
  for (int i = 1; i <= S.pool.OriginalCohortSize; ++i) {
    if (S.pool.OriginalSex(i) == "F" && S.pool.OriginalTotalFecundity(i) == 0)
      throw ProgramEnd{"To use the multinomial expansion, non-reproductive female must be changed to N-type.",
                       "There is non-reproductive female."};
  }
  MultinomialExpansion(S, P, W).AllMNCitems();
}

void MultinomialCommands::cmdSortAndCountLT_Click() {
  Flow("cmdSortAndCountLT_Click");
  const BootstrapRecord& R = S.boot;
  if (R.BootstrapCompleted != "yes" || R.ResampleKind != "b") {
    P.MsgBox(
        "A4 sorts the samples of a bootstrap (A3) of this session. Run A3 first, or use \"M. Count LT\" on a "
        "record of samples (file no. 11).",
        "A4. Sort LT", kOKOnly);
    return;
  }
  S.multinomial.CountFromRecord = false;
  LifeTableCount(S, P, W).SortAndCountLifeTableBase();
}

void MultinomialCommands::cmdCountBootLifeTable_Click() {
  Flow("cmdCountBootLifeTable_Click");
  KeepEffectiveCount keep(S.boot);
  LifeTableCount count(S, P, W);
  if (!count.ReadFileNo11ToSortandCount()) return;
  count.SortAndCountLifeTableBase();
}

void MultinomialCommands::cmdCalMNCforSpecR0_Click() {
  Flow("cmdCalMNCforSpecR0_Click");
  DisableAllButtonsForA5(S.console);
  KeepEffectiveCount keep(S.boot);
  const int a = P.MsgBox(
      "You can run A5 using following options.\n"
      "Yes: Read file no. 11 and find all bootstrap life tables giving specific Ro. Then the multinomial "
      "coefficients and expected counts these life tables are calculated. \n"
      "No: Read file no. 11 and find bootstrap life tables giving specific finite rate (lambda). Then the "
      "multinomial coefficients and expected counts of these life tables are calculated. This is not ready yet.\n"
      "Cancel: Calculate the multinomial coefficient of a specific bootstrap life table.",
      "How do you want to run A5?", kYesNoCancel);
  MncForSpecR0 a5(S, P, W);
  if (a == kYes)
    a5.CalculateMNCforSpecRo();
  else if (a == kNo)
    a5.CalculateMNCforSpecLambda();
  else
    a5.CalculateMNCforSpecBootSample();
}

void MultinomialCommands::cmdCountBootIndNr_Click() {
  Flow("cmdCountBootIndNr_Click");
  BootstrapRecord& R = S.boot;
  KeepEffectiveCount keep(R);
  // The record goes to the lists a run draws into, which the count reads.
  const std::string same = R.SameBootstrap;
  R.SameBootstrap = "No";
  const bool read = LifeTableCount(S, P, W).ReadFileNo11ToSortandCount();
  R.SameBootstrap = same;
  if (!read) return;
  SetUpComposition(S);
  const int pooled = S.pool.OriginalCohortSize;
  S.pool.OriginalCohortSize = S.multinomial.CountCohort;
  BootIndividualCounts(S, P, W).CountBootstrapIndFreq();
  S.pool.OriginalCohortSize = pooled;
  std::vector<double> individuals, draws;
  for (int i = 1; i <= S.multinomial.CountCohort; ++i) {
    individuals.push_back(i);
    draws.push_back(static_cast<double>(R.IndividualDraws(i)));
  }
  P.Status("lblBootMsg", OutputName(S, "_0H_Boot individual counts.txt"));
  P.ShowChart(ShowFreqForm("Frequency of bootstrap individuals (B = " + std::to_string(R.BootB) + ")", "Ind. no.",
                           individuals, draws));
}

}  // namespace korvan
