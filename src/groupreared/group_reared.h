#pragma once
// Group-reared life tables: the file of counts N(j, x) by stage and age with the eggs F(x) of
// the female group, the age-stage tables derived from them, and the rebuilding of a plausible
// individually reared data file from the counts.
//
// Reading (read_n_and_f.cpp): InputMatricesNandF reads and checks the file and fills the
// record S.group and the engine's tables (s(x,j), f(x,j), l(x), m(x)) so that the engine's
// ...ForNandF procedures run on them. Rebuilding (rebuild_individuals.cpp): a fall in a stage's
// count from x to x+1 is a death at x+1, a rise in the female or male row an emergence; the
// individuals are listed first in, first out. Estimates (gd_estimates.cpp): the growth and
// development rates G and D by the rule of stay, move and die.
#include <string>

#include "run/run_context.h"

namespace korvan {

class GroupReared : public Procedures {
 public:
  using Procedures::Procedures;

  // Reads S.identity.DataFilePath; every fault of the file ends the run with its message.
  void InputMatricesNandF();
  // s(x,j), f(x,j), the predation rates, l(x) and m(x) of the counts read, into the workspace.
  void DerivedValuesNandF();
  // The head of the main output.
  void PrintGroupLifeTableTitle();
  // "<base>_0A3_Group-reared Life Table_2 Stages.txt": the preadult rows summed into one.
  void Write2StagesNewLifeTableBasedOnNF();
  // The dialogue of grouping consecutive stages, and the file of the grouped stages.
  void GroupNFlifetable();
  void GroupingStagesNF(int first, int last, const std::string& name);

  // Rebuilding. Each returns false when a guard or the user stopped it (no file is written).
  bool FindNandFOverlapType();
  void FindNandFOverlapDeath();
  void FindNandFOverlapDeathCase2();
  bool FindIndSexLongFecundCase0();
  void FindIndSexLongFecundCase3();
  void FindIndividualData();
  void FindFemaleDeathAgeNF();
  void FindFemaleEmergenceAgeNF();
  void FindMaleDeathAgeNF();
  void FindMaleEmergenceAgeNF();
  void FindNtypePreadultDuration();
  void FindIndividualDevelopmentDurationNF();
  void WriteIndividualLifeTableFromNFCase0();
  void WriteIndividualLifeTableGeneral();
  // The case box and what the case chosen does; a refusal ends the program.
  void RebuildIndividualsByCase();

  // Optional estimates.
  void CalculateGDbasedonNF();
  void CalculateSxjFromGDfromNF();
  void CalculateNfFromDandN();
  void CalculateStageNumberBasedonNandF();
  void CalculateStageMeanBasedonNandF();

  // Counts with every age beyond a stage's row (and beyond the table) read as 0.
  double Count(int x, int j) const;
  double NAgeNF(int x) const;  // the number alive at age x, all stages

 private:
  int StageCount() const { return S.group.StageCountNF; }
  // The title, description and third line, cohort size and stage list of a written file.
  void WriteGroupHead(TextFile& out) const;
  void ListDeaths(int j, GroupRearedRecord::ListInt& ages, int& count) const;
  void ListEmergences(int j, GroupRearedRecord::ListInt& ages, int& count) const;
  void AddIndividual(const std::string& sex, int longevity, int adultDuration, int development);
  void WriteIndividualFile(const std::string& suffix, bool fromList);
};

}  // namespace korvan
