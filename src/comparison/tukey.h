#pragma once
// The Tukey-Kramer table of bootstrap (or other) results of three or more treatments in one
// pooled file: a one-way analysis of the values, and for every pair the minimum significant
// difference from the studentized range q(0.05; k, df), k the span of the two treatments'
// places in the order of their means.
#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

// q(0.05; k, df) into c.TukeyQ: the upper 5% points of the studentized range for k = 2..10 as
// printed tables give them (three significant figures) at df = 1..20, 24, 30, 40, 60, 120 and
// infinity (slot 121), the df between filled by straight lines.
void FillTukeyQTable(ComparisonRecord& c);

class TukeyKramer : public Procedures {
 public:
  using Procedures::Procedures;

  // Reads the file (S.identity.DataFilePath) and, for three or more treatments, writes the two
  // tables to `outputPath`. False when the file holds fewer than three (the reader told so).
  bool RunTukey(const std::string& outputPath);

  void BasicAnalysis();
  void PrintBasicData();
  void PrintTukeyTableForBootstrap();

 private:
  TextFile out_;
};

}  // namespace korvan
