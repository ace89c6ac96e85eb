// l(x) and m(x) of the samples of the major percentiles, in a run of the same samples.
#include <map>

#include "bootstrap/bootstrap_run.h"
#include "bootstrap/replicate_chain.h"
#include "text/text_file.h"

namespace korvan {

void KeepMajorPercentileColumns(SessionStore& S, const Workspace& W) {
  BootstrapRecord& R = S.boot;
  const long b = static_cast<long>(W.run.Boot);
  for (int row = 0; row <= 14; ++row) {
    if (R.MajorPercentileSample(row) != b) continue;
    const int lastAge = W.tables.LastAge;
    R.MajorPercentileLastAge(row) = lastAge;
    for (int x = 0; x <= lastAge; ++x) {
      R.MajorPercentileLx(row, x) = SampleLx(W, x);
      R.MajorPercentileMx(row, x) = SampleMx(W, x);
    }
  }
}

// The columns are written in the order of the samples, as one pass over the samples meets them.
void BootstrapRun::WriteMajorPercentileLxMx() {
  BootstrapRecord& R = S.boot;
  if (R.MajorPercentileLxMx != "Yes") return;
  std::multimap<long, int> bySample;
  for (int row = 0; row <= 14; ++row) {
    const long b = R.MajorPercentileSample(row);
    if (b >= 1 && b <= R.BootB && R.BootEffectLabel(b) == kLabelEffective) bySample.emplace(b, row);
  }
  TextFile out(R.MajorPercentileFile);
  for (const auto& [b, row] : bySample) {
    out.Write("Bootstrap sample =", static_cast<double>(b), R.MajorPercentileP(row));
    out.Write("Age", "l(x)", "m(x)");
    for (int x = 0; x <= R.MajorPercentileLastAge(row); ++x)
      out.Write(static_cast<double>(x), R.MajorPercentileLx(row, x), R.MajorPercentileMx(row, x));
  }
}

}  // namespace korvan
