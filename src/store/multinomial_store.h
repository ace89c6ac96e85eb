#pragma once
// The items of a multinomial expansion and the counts of the bootstrap life tables of a run.
//
// Lists come from zero pages of the system (ZeroList, BootList): a session that never counts
// pays nothing, and a count allocates nothing while it runs.
#include <cstdint>
#include <string>

#include "store/bootstrap_store.h"
#include "store/limits.h"
#include "store/sort_store.h"

namespace korvan {

// Room for the items of a cohort of at most 10 (C(19, 10) = 92378).
inline constexpr long kMaxMncItem = 92401;
inline constexpr int kMaxMncCohort = 10;

// Counts of fertile and infertile items under one criterion of a fertile cohort.
struct FertileTally {
  long fertileItems = 0, infertileItems = 0;
  double fertileMNC = 0, infertileMNC = 0;
};

struct MultinomialRecord {
  // --- the expansion (items 1..ItemCount)
  int ItemSize = 0;    // n
  long ItemCount = 0;  // C(2n - 1, n)
  double NFactorial = 0, NPowerN = 0;
  double MNCSum = 0;      // running sum of the MNC read
  long OriginalItem = 0;  // the item of all individuals once: the cohort itself
  ZeroList<std::int32_t, kMaxMncItem> ItemSerial{"ItemSerial"};
  ZeroList<double, kMaxMncItem> ItemMNC{"ItemMNC"}, ItemEggs{"ItemEggs"}, ItemMeanFecundity{"ItemMeanFecundity"},
      ItemR0{"ItemR0"}, ItemProbability{"ItemProbability"};
  ZeroList<std::int8_t, kMaxMncItem> ItemFemales{"ItemFemales"}, ItemMales{"ItemMales"},
      ItemReproductiveFemales{"ItemReproductiveFemales"}, ItemFertile{"ItemFertile"};
  // The individuals of item k at positions 1..n: ItemIndividuals(k * (kMaxMncCohort + 1) + p).
  ZeroList<std::int16_t, (kMaxMncItem + 1) * (kMaxMncCohort + 1) - 1> ItemIndividuals{"ItemIndividuals"};
  std::int16_t& Individual(long item, int position) {
    if (position < 0 || position > kMaxMncCohort) throw SubscriptFault("ItemIndividuals");
    return ItemIndividuals(item * (kMaxMncCohort + 1) + position);
  }
  // Criteria of a fertile cohort: one fertile pair, two pairs, one reproductive female, two.
  FertileTally OnePair, TwoPairs, OneFemale, TwoFemales;
  // The items in ascending order of R0 (the permutation of the sort).
  ZeroList<std::int32_t, kMaxMncItem> SortedItem{"SortedItem"};

  // --- the bootstrap life tables of a run or a record (samples 1..CountM)
  bool CountFromRecord = false;  // R0 and finite rate from a record file (else from the run)
  long CountM = 0;               // m: B when E equals B, else E
  int CountN = 0;                // individuals per sample
  int CountCohort = 0;           // individuals of the cohort (the highest number a sample may hold)
  double CountNFactorial = 0, CountNPowerN = 0;
  BootList<double> SampleMNC{"SampleMNC"}, SampleProbability{"SampleProbability"}, SampleR0{"SampleR0"},
      SampleLambda{"SampleLambda"};
  // The sample's individuals in ascending order (a composition), positions 1..n.
  BootMatList<std::int16_t, kMaxIndividual> SampleSorted{"SampleSorted"};
  // Positions 1..m in ascending order of R0, equal compositions side by side.
  BootList<std::int32_t> SampleOrder{"SampleOrder"};
  // Per position of the order: its group of R0 and its life table (the different ones numbered).
  BootList<std::int32_t> OrderGroup{"OrderGroup"}, OrderLifeTable{"OrderLifeTable"};
  // Per different life table: its first sample (in the order) and its count of samples.
  long LifeTableCount = 0;
  BootList<std::int32_t> LifeTableFirst{"LifeTableFirst"}, LifeTableSamples{"LifeTableSamples"};
  // Per group of equal R0: R0, samples, life tables, sums of MNC and probability.
  long GroupCount = 0;
  // GroupMNC sums the MNC of the group's samples, GroupLifeTableMNC that of its different
  // life tables.
  BootList<double> GroupR0{"GroupR0"}, GroupMNC{"GroupMNC"}, GroupProbability{"GroupProbability"},
      GroupLifeTableMNC{"GroupLifeTableMNC"};
  double SampleMNCSum = 0;  // over samples 1..m
  BootList<std::int32_t> GroupSamples{"GroupSamples"}, GroupLifeTables{"GroupLifeTables"};
  // Groups of equal R0 for the cumulative frequency.
  ValueGroups R0Groups{"CountR0GroupValue", "CountR0GroupMembers"};
};

}  // namespace korvan
