#include "bootstrap/ratio.h"

#include <cmath>
#include <filesystem>
#include <vector>

#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/column_file.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

std::error_code ec_;  // equivalent() of a file not there yet is false, not a fault
constexpr const char* kTitle = "Ratio of bootstrap results";

// A column file with all B values its head promises.
ColumnFile ReadColumn(const std::string& path) {
  ColumnFile c = ReadColumnFile(path, false, kTitle);
  if (static_cast<long>(c.values.size()) < c.B)
    throw ProgramEnd{"The file " + path + " holds " + std::to_string(c.values.size()) + " values, not the B = " +
                         std::to_string(c.B) + " its head gives.",
                     kTitle};
  return c;
}

double Ratio(double a, double b, const std::string& what) {
  if (b == 0) throw ProgramEnd{"The denominator of " + what + " is 0: no ratio can be formed.", kTitle};
  return a / b;
}

}  // namespace

bool BootstrapRatio::CalculateRatio() {
  Flow("CalculateRatio");
  const ColumnFile num = ReadColumn(NumeratorPath);
  const ColumnFile den = ReadColumn(DenominatorPath);
  if (num.B != den.B) {
    P.MsgBox("The two files hold different numbers of bootstrap samples (B = " + std::to_string(num.B) + " and " +
                 std::to_string(den.B) + ").\nUse two files of the same bootstrap run.",
             "Task cannot continue!", kOKOnly);
    return false;
  }
  const long B = num.B;
  const double cohort = TransformProportion(Transformation, Ratio(num.cohort, den.cohort, "the cohort"), kTitle);
  std::vector<double> ratios(static_cast<std::size_t>(B));
  double s = 0, q = 0;
  for (long k = 0; k < B; ++k) {
    const double v = TransformProportion(
        Transformation, Ratio(num.values[static_cast<std::size_t>(k)], den.values[static_cast<std::size_t>(k)],
                              "sample " + std::to_string(k + 1)),
        kTitle);
    ratios[static_cast<std::size_t>(k)] = v;
    s += v;
    q += v * v;
  }
  Mean = s / B;
  Variance = B > 1 ? (q - s * s / B) / (B - 1) : 0;
  if (Variance < 0) Variance = 0;
  SE = std::sqrt(Variance);

  const std::string tag = num.treatment + " to " + den.treatment;
  std::string name = tag + ".txt";
  for (char& ch : name)
    if (ch == '/' || ch == '\\') ch = '-';  // a treatment's words, not a folder
  OutputPath = (std::filesystem::path(NumeratorPath).parent_path() / name).string();
  if (std::filesystem::equivalent(NumeratorPath, OutputPath, ec_) || std::filesystem::equivalent(DenominatorPath, OutputPath, ec_))
    throw ProgramEnd{"The ratio would be written over " + OutputPath + ", one of the files it reads.", kTitle};
  TextFile out(OutputPath);
  ColumnHead head;
  head.line3 = num.n;
  head.line5 = static_cast<double>(B);
  head.name = num.name + " to " + den.name;
  head.nIn6 = num.nInLine6;
  head.cohortValue = cohort;
  WriteColumnHead(out, tag, head);
  for (double v : ratios) out.Write(v);
  return true;
}

}  // namespace korvan
