#pragma once
// The readers of the life-table data file and of the files that share its head.
//
// InputData reads the file at DataFilePath into the cohort of the workspace in hand (the
// store's own in Basic Run) and into the shared head of the store (identity, stage lists,
// counts). InputdataBoot reads the same file into the pool from which bootstrap samples are
// drawn. A fault in the data ends the program (ProgramEnd); an index beyond a bound of the
// store is a SubscriptFault, as everywhere.
#include <cmath>
#include <cstdint>
#include <string>

#include "run/run_context.h"
#include "store/session_store.h"
#include "text/numbers.h"

namespace korvan {

class FieldReader;

// The project field as kept: a leading "Project: " or "project: " is cut off, failing that a
// leading "Project:". Other spellings stay as they stand.
std::string CleanProjectName(const std::string& field);

// The fault of a record number out of place, or of an "N" individual without a death.
std::string RecordNumberFaultText(long i);
// The fault of a non-integer developmental time of individual i.
std::string NonIntegerFaultText(long i);
inline constexpr const char* kDataFileErrorTitle = "Error in data file";

// Reads the fecundity list of female i, whose adult stage lasted d: days 1..d and the closing
// -1, every value but the -1 multiplied by factor. A list that ends early is padded with zeros
// up to day d, and the -1 goes to day d + 1 whatever day it was read on. Returns the sum of
// the values kept.
double ReadFecundityList(FieldReader& in, Mat<double, kMaxIndividual, kMaxAge>& fecundity, long i, double d,
                         double factor);

// The head of a table read apart from the data file (adult, immature): fields 1 to 6 and 8 of a
// data file, never costs; count is field 4.
void ReadSideTableHead(FieldReader& in, SideTableHead& h, int& count);

// The total longevity of individual i of m stages, durations(i, j): its durations added as
// whole time units (16-bit, the overflow fault beyond) up to and with the stage of its death.
template <class Durations>
std::int32_t TotalLongevityOf(const Durations& durations, long i, int m) {
  std::int32_t total = 0;
  for (int j = 1; j <= m; ++j) {
    const double d = durations(i, j);
    total = CInt16(total + std::fabs(d));
    if (d < 0) break;
  }
  return total;
}
// TotalLongevity of every individual of the cohort, and MaxLongevity.
void FormTotalLongevity(Cohort& C, int m);

class DataFileReader : public Procedures {
 public:
  using Procedures::Procedures;

  void InputData();
  void InputdataBoot();
  // Asks for an adult life table ("Open adult life table") and reads it into S.adult.
  void InputAdultLifeTable();
  // Asks for an immature life table ("Open immature life table") and reads it into S.immature.
  // A fault of the file ends the program with the message that names the individual.
  void InputImmatureLifeTable();
  // Reads the file of several treatments at DataFilePath into S.comparison, in the order of
  // descending means. Fewer than three treatments: a message and nothing more.
  void InputRawData();

 private:
  // Where the records go: the cohort in hand or the bootstrap pool.
  enum class Target { Cohort, Pool };
  void ReadHead(FieldReader& in, Target target);
  void ReadRecords(FieldReader& in, Target target);
  void SetTotalLongevity();
  [[noreturn]] void RecordFault(Target target, long i);
};

}  // namespace korvan
