#pragma once
// The result files of a bootstrap run: the column files ("_Effect Boot-...", "_All Boot-..."),
// which the comparisons read by line number, and the frequency, density, interval and l(x)
// figure files.
#include <string>

#include "bootstrap/column_file.h"
#include "run/run_context.h"
#include "text/side_by_side_rows.h"
#include "text/text_file.h"

namespace korvan {

class BootResultFiles : public Procedures {
 public:
  using Procedures::Procedures;

  // The steps of the driver: the column files (step 16) and the curves (step 18).
  void WriteColumnFiles();
  void WriteNormalCurveFiles();

  void WriteEffectiveBootstrapInColumn();
  void WriteAllBootstrapInColumns();
  void WriteHarvestFile();  // "_Z-R0 and boot SE for harvest.txt"

  void WriteBootReproducingFemales();
  void WriteBootStageSurvivalRateInColumn();
  void WriteBootStageSpecificMortality();
  void WriteBootC0andOmegaInColumn();
  void WriteBootC0andOmegaInRow();
  void WriteBootSexStageMeaninColumn();
  void WriteBootstageMeaninColumn();
  void WriteBootSurvProbToStageJinColumn();
  void WriteBootSurvProbToAdult();
  void WriteBootStageMortalityinColumn();
  void WriteBootContributionToR();
  void WriteBootAdultMortalityinColumn();

  void WriteBootstrapFrequency();
  void WriteBootNormalCurves();
  void WriteNormalDensityCurveBegin();
  void Write95CI();
  void WriteCumuBootLxMx();
  void WriteBootLxMxandCI();
  void PrintNonEffectiveBootRecord();

  // A column file of value(k) over the effective samples k = EffectiveList(1..E), each row
  // "serial, value" when withSerial; closeLine (e.g. "-1") behind the last row.
  template <class ValueOf>
  void WriteColumnFile(const std::string& suffix, const ColumnHead& head, ValueOf value, bool withSerial = false,
                       const std::string& closeLine = "");
  // The head of a file over the effective samples: n, E, and line 6 name, n, cohortValue.
  ColumnHead Head(const std::string& tag, const std::string& name, double cohortValue) const;

 private:
  void ColumnHeadLines(TextFile& out, const ColumnHead& head) const;
  // " from <f> to <last>" in the names of a cumulative run, else nothing.
  std::string RangeInName() const;
  // Project, user, treatment and the count lines of the figure files.
  void FigureHead(TextFile& out) const;
  // One normal density curve of 201 points around mean with sd.
  void DensityCurve(const std::string& suffix, const std::string& what, const std::string& xName, double mean,
                    double se) const;
};

template <class ValueOf>
void BootResultFiles::WriteColumnFile(const std::string& suffix, const ColumnHead& head, ValueOf value,
                                      bool withSerial, const std::string& closeLine) {
  const BootstrapRecord& R = S.boot;
  TextFile out(OutputName(S, suffix));
  ColumnHeadLines(out, head);
  const long offset = R.FirstBootNumber - 1;
  WriteRowsSideBySide(out, 1, R.EffectiveCount, RunThreads(S.runControl.threads), [&](long i, TextFile& rows) {
    const long k = R.EffectiveList(i);
    if (withSerial)
      rows.Write(k + offset, value(k));
    else
      rows.Write(value(k));
  });
  if (!closeLine.empty()) {
    out.RawText(closeLine);
    out.NewLine();
  }
}

}  // namespace korvan
