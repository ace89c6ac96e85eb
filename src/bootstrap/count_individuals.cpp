#include "bootstrap/count_individuals.h"

#include "text/text_file.h"

namespace korvan {

void BootIndividualCounts::CountBootstrapIndFreq() {
  Flow("CountBootstrapIndFreq");
  BootstrapRecord& R = S.boot;
  auto& IndividualDraws = R.IndividualDraws;
  const long B = R.BootB, n = R.BootSampleSize;
  const int N = S.pool.OriginalCohortSize;
  IndividualDraws.Fill(0);
  for (long b = 1; b <= B; ++b) {
    for (long p = 1; p <= n; ++p) {
      const int k = R.BootIndividuals(p, b);
      if (k >= 1 && k <= N) ++IndividualDraws(k);
    }
  }
  TextFile out(OutputName(S, "_0H_Boot individual counts.txt"));
  out.Write(S.identity.TreatmentName);
  out.Write("Next line is Bootstrap sample size (n)");
  out.Write(n);
  out.Write("Next line is total Bootstrap number (B). Each individual is counted once for every time it was drawn.");
  out.Write(B);
  out.Write("Ind. no.", n, B);
  for (int i = 1; i <= N; ++i) out.Write(i, IndividualDraws(i));
}

}  // namespace korvan
