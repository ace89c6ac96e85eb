#pragma once
// Matching of preadult and adult life tables reared apart: every match draws a sample of
// immature individuals and pairs each with a drawn adult of its sex (an optional winter adds a
// fixed duration and a random mortality to the adults); the engine then solves the matched
// table as it solves a bootstrap sample. Matches are seeded from (run seed, match number) and
// spread over the cores, so a run is repeatable from its seed on any number of threads.
#include <cstdint>
#include <functional>
#include <string>

#include "run/run_context.h"

namespace korvan {

// The output base of an immature ("Immature") or adult ("Adult") file: the path less the first
// of its known endings it ends with, with a capital or a small first letter, else less its last
// four characters.
std::string MatchFileBase(const std::string& path, const std::string& kind);

class MatchedLifeTables : public Procedures {
 public:
  using Procedures::Procedures;

  // The teaching demo: called after each match that was solved, with the workspace holding its
  // table. The run then goes match by match on the thread that started it.
  std::function<void(long match, const Workspace& ws)> ShowMatch;

  // "A1. Open immature data", "A2. Open adult data": choose and read the two files. An
  // immature record holds the durations of stages 1..m-1 (an N-type's up to its negative
  // one); an adult record its duration and as many eggs values, a male's too.
  void InputImmatureData();
  void InputAdultData();
  // "Check immature data", "Check adult data".
  void CheckDataFileOfImmmature();
  void CheckDatafileOfAdult();
  // The checked durations (and the adults' eggs) as lists of "number, value" under a treatment
  // and a variable line, the form "G. Gen. boot" reads: one file per preadult stage (the
  // individuals that completed it), "_GB_Adult duration.txt" and "_GB_Fecundity.txt".
  void WriteImmatureDataForGenBoot();
  void WriteDataForGenBoot();

  // "A7. Run random match": the question of the same samples, the teaching demo, the run.
  void Command7_Click();
  void RunFirstTimeRunRandomMatch();
  void RunSameBootstrapRandomMatch();
  // Reads the match record at S.match.RecordPath into the record arrays; false (the user told)
  // when it does not fit the tables in hand.
  bool ReadSameBootstrapData();

  // The matched table of match b of the record in hand written as a life-table data file.
  void WriteMatchLifeTable(long b, const std::string& path, const std::string& titleLine,
                           const std::string& treatmentLine);

  // After a run: the record file, the first match's life table, the report and column files.
  void WriteMatchRecord();
  void Boot01New();
  void WriteEffectiveBootstrapInColumn();

 private:
  // The head of the session set up from the immature file, so that the engine can solve a
  // matched table as a cohort.
  void PrepareSessionForMatches();
  // A sex of the immature table without adults, or a run that could never find an effective
  // match, is refused before the run.
  void RefuseImpossibleRun();
  void AllocateMatches(long B);
  void RunMatchLoop(bool fromRecord);
  // The run of a first time or of a record's matches, its means, files and closing message.
  void RunAndReport(bool fromRecord);
  void MatchMeans();
};

}  // namespace korvan
