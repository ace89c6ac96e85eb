#pragma once
// The multinomial expansion of a very small cohort: every composition of n draws from its n
// individuals, with the number of sampling sequences that give it (its MNC), its fertility
// and its R0. The exact bootstrap distribution of R0 follows from it.
//
// The members of the cohort are read from the pool (S.pool): sex and total eggs.
#include <string>

#include "run/run_context.h"

namespace korvan {

class MultinomialExpansion : public Procedures {
 public:
  using Procedures::Procedures;

  // The Yes/No/Cancel dialogue: read a prepared expansion and analyse it, or write one.
  void AllMNCitems();
  // Write "<base>_0_MN expans-new.txt" for the cohort's n (5, and any other n up to 6).
  void PrepareMNCExpansion5Ind();
  void PrepareMNCExpansionData();
  // Asks for an expansion file and reads its items into S.multinomial (ItemCount stays 0 when
  // the user chose none). A file that isn't the expansion of the cohort's n ends the run.
  void ReadMultinomialExpansionData();
  // Per item: females, males, eggs, fertility, mean fecundity and R0; and the tallies of the
  // four criteria of a fertile cohort.
  void CalcuFMpairLessthan2();
  // The items in ascending order of R0, through the sort of the bootstrap lists.
  void AllMNCitemsSortedonRo();
  void WriteAllitem1();
  void WriteAllitem2SortedMN();
  void WriteAllitem3R0MNC();
  void WriteAllitem4R0MNCgrouped();

 private:
  void WriteItemTable(TextFile& out, bool sorted) const;
  void WriteCriterion(TextFile& out, const char* head, const struct FertileTally& t) const;
};

// Writes the expansion of n draws (1 <= n <= 10) to path: a title line, the line
// "Number of individuals =", n, then one line per composition (serial number, MNC, the n
// individual numbers in ascending order), the compositions of one pattern of counts together.
void WriteExpansionFile(const std::string& path, int n);

}  // namespace korvan
