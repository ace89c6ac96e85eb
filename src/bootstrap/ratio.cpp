#include "bootstrap/ratio.h"

#include <cmath>
#include <filesystem>
#include <vector>

#include "bootstrap/bootstrap_statistics.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

std::error_code ec_;  // equivalent() of a file not there yet is false, not a fault
constexpr const char* kTitle = "Ratio of bootstrap results";

// A column file of a bootstrap result: its head and its values up to B (fewer when the file
// ends first or closes its list with -1).
struct Column {
  std::string treatment, name;
  double n = 0, nInLine6 = 0, cohort = 0;
  long B = 0;
  std::vector<double> values;
};

Column ReadColumn(const std::string& path) {
  FieldReader in(path);
  Column c;
  c.treatment = in.ReadString();
  in.ReadString();
  c.n = in.ReadNumber();
  in.ReadString();
  const double B = in.ReadNumber();
  if (!(B >= 1 && B <= 1e7) || B != std::floor(B))
    throw ProgramEnd{"The file " + path + " gives no number of bootstrap samples (B) in its 5th line.", kTitle};
  c.B = static_cast<long>(B);
  c.name = in.ReadString();
  c.nInLine6 = in.ReadNumber();
  c.cohort = in.ReadNumber();
  while (static_cast<long>(c.values.size()) < c.B && in.HasMoreData()) {
    const double v = in.ReadNumber();
    if (v == -1) break;
    c.values.push_back(v);
  }
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
  const Column num = ReadColumn(NumeratorPath);
  const Column den = ReadColumn(DenominatorPath);
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
  out.Write(tag);
  out.Write("Next line is Bootstrap sample size (n)");
  out.Write(num.n);
  out.Write("Next line is total effective Bootstrap number (B)");
  out.Write(static_cast<double>(B));
  out.Write(num.name + " to " + den.name, num.nInLine6, cohort);
  for (double v : ratios) out.Write(v);
  return true;
}

}  // namespace korvan
