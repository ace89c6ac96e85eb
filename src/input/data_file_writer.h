#pragma once
// Writers of the life-table data file. They all share one layout (WriteLifeTableLayout) and
// differ only in where the cohort comes from, the head lines and the output name.
//
// The layout: the head in the write form (project line, user and treatment quoted, N bare,
// "T,m"), the type lines bare (code and stage names), the costs when asked for, the two
// special stages, then one line per individual (" 1 ,F, 3, 2, 4, 5, 20": the number with its
// print blanks, the sex, the durations each with the blank a non-negative number carries, an
// "N" line stopping at its negative duration) and, for a female, her daily fecundity on the
// lines below, at most 20 values a line, closed by -1. Every file the system reads back.
#include <functional>
#include <string>
#include <vector>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

// The three head lines as written (line 1 in full, with its prefix).
struct LifeTableHead {
  std::string projectLine, user, treatment;
  bool withCosts = false;
};

// The records to write: position p = 1..count takes the record of row rowOf(p) of the arrays
// (the row itself when rowOf is empty). Every fecundity value but the closing -1 is written
// multiplied by fecundityFactor. The files of a matching of preadult and adult tables hold
// part of each record: the immature file stages 1..m-1 and no eggs, the adult life table
// stage m and the eggs (firstStage and lastStage, 0 for m; withEggs).
struct LifeTableRecords {
  const IndStrVec& sex;
  const Mat<double, kMaxIndividual, kMaxStage>& duration;
  const Mat<double, kMaxIndividual, kMaxAge>& fecundity;
  long count = 0;
  std::function<long(long)> rowOf;
  double fecundityFactor = 1;
  int firstStage = 1, lastStage = 0;
  bool withEggs = true;
  // Females (by row) whose list is "-1" alone, whatever their adult days: no eggs at all.
  std::function<bool(long)> eggless = nullptr;
};

// Line 1 of a file written by the system: "Project: " + project + a blank + version stamp.
std::string StampedProjectLine(const SessionStore& S);
// A number as the records show it: a leading blank when not negative, no trailing blank.
std::string RecordNumber(double v);

// One individual's record: number, sex and durations (up to a negative one) on a line, and,
// when eggDays is 0 or more, the eggs of adult days 1..eggDays below it, closed by -1.
void WriteIndividualRecord(TextFile& out, long number, const std::string& sex, const std::vector<double>& durations,
                           long eggDays, const std::function<double(long)>& eggsOfDay);

// Writes the whole file: head, stage list and records, with the stage list of S.header.
void WriteLifeTableLayout(TextFile& out, const SessionStore& S, const LifeTableHead& head,
                          const LifeTableRecords& records);

class LifeTableWriter : public Procedures {
 public:
  using Procedures::Procedures;

  // What WriteLifeTableSub and WriteLifeTableForSpecificSampleFile write: the sample of the
  // bootstrap record (positions 1..BootSampleSize, individuals taken from the pool), its
  // percentile label and, for WriteLifeTableSub, the file the caller has opened.
  TextFile* SubFile = nullptr;
  long SampleNumber = 0;
  std::string PercentileLabel;
  bool FromSavedSamples = false;  // take the individuals of SavedBootIndividuals

  // One bootstrap sample, plain title line, no costs; the treatment line carries the label.
  void WriteLifeTableSub();
  // One sample of a sample record as "_0_data of spec bootsample_<k>.txt", with the costs when
  // the table has them, closed by the message "Data file ready!".
  void WriteLifeTableForSpecificSampleFile();
  // The cohort in hand with every fecundity multiplied by a coefficient the user enters.
  void WriteLifeTableForModifiedFxj();

 private:
  LifeTableRecords SampleRecords() const;
};

}  // namespace korvan
