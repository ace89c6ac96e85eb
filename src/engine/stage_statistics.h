#pragma once
// Statistics over the individuals of a cohort: stage durations, longevity, fecundity,
// oviposition days and period, the pre-oviposition periods APOP and TPOP; the report tables
// built on them; the adult-age life tables; the figure and raw-data files that close a run.
//
// The procedures named ...Boot / ...boot / ...forBoot run once per bootstrap replicate on the
// workspace in hand and allocate nothing.
#include <string>

#include "run/run_context.h"

namespace korvan {

class StageStatsEngine : public EngineProcedures {
 public:
  using EngineProcedures::EngineProcedures;

  // Statistics (Basic Run and replicates).
  void Life10();
  void Life10boot();
  void PreadultMean();
  void CountOvipositionDays();
  void AgeFecundityFromBirth();
  void AgeFecundityFromBirthBoot();
  void WriteSDandSEofMx();
  void CountOvipositionPeriod();
  void CountOvipositionPeriodBoot();
  void APOPandTPOP();
  void APOPandTPOPforBoot();

  // Tables of the main output.
  void Life11();
  void Life12();
  void Life12PrintAgeFecundityFromBirth();
  void PrintAPOPandTPOP();
  void Life06();
  void Life06Gosub150();
  void Life06Gosub280();
  void Life06Gosub680();
  void Life06Gosub470();
  void Life06Gosub900();
  void Life06Gosub1130();
  void Life06Gosub1310();
  void Life06Gosub1520();
  void Life06Gosub1660();
  void Life06Gosub1771();
  void Life06PrintFMNRatio();
  void Life06Gosub1835();

  // Adult-age life tables.
  void CalculateAdultLifeTable();
  void WriteAdultAgeSpecificLifeTable();
  void WriteAdultAgeSpecificLifeTableB();
  void WriteFemaleLifeTableBasedOnPreAandSa();

  // Closing files of a run.
  void Life07();
  void Life08();
  void WriteStageRawDataInColumns();
  void WriteRawDataInRow();
  void WriteEachStageRawDataInColumn();
  void WriteStageRawDataInColumnForStatistics();
  void WriteIndivFecundityForAnalysis();
  void WriteAPOPandTPOPforTtest();
  void Write1stOviAgeAndLastOviAge();
  void WriteGroupedLifeTableFromIndividualData();

  // Writers of the files for the sibling simulators: named steps, not built here.
  void WriteDataFileForZeltom1Control() {}
  void WriteDataFileForZeltom1Control2ETs() {}
  void WriteDataFileForZeltom1Control3ETs() {}
  void WriteDataFileForZeltom2Controls() {}
  void WriteDataFileForZeltom3Controls() {}
  void WriteDataFileForZeltomWithHarvest() {}
  void WriteDataFileForZeltomWithCxj() {}
  void WriteDataFileForZeltomWithCxj2ETs() {}
  void WriteDataFileForZeltomWithCxj3ETs() {}
  void WriteDatafileFor2SexCompet() {}
  void WritePredatorDataFile() {}
  void WritePreyDataFile() {}
  void WriteDataFileForSASD10ARx() {}
  void WriteDataFileForSASD10() {}

 private:
  // Shared steps of the twins.
  void AgeFecundityFromBirthCore(bool wholeCohort);
  void CountOvipositionPeriodCore();
  void PreadultDurations();
  void CountAdultFemales();

  // Main-output helpers.
  void NewPage();
  int NextTable();
  void Life06Row(const std::string& label, const std::string& sex, const RoutineStat& s);

  int m() const;
  double FormLongevity(long i);
  DurationSums* KeptDurations(long i);
  double TimeUnit() const;
};

// A number of a report table: four decimals, whole beyond plus or minus 10,000.
double ReportNumber(double v);

// 1 for "F", 2 for "M", 3 for "N", 0 for anything else.
long SexIndex(const std::string& sex);

// The statistics rule into a RoutineStat: n = 0 leaves mean and spread as they stand, n = 1
// sets the mean only.
void ApplyStatisticsRule(RoutineStat& s, double sum, double sumSquares, double n);

}  // namespace korvan
