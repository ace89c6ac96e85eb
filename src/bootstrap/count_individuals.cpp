#include "bootstrap/count_individuals.h"

#include "bootstrap/column_file.h"
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
  ColumnHead head;
  head.line3 = head.nIn6 = static_cast<double>(n);
  head.line4 = "Next line is total Bootstrap number (B). Each individual is counted once for every time it was drawn.";
  head.line5 = head.cohortValue = static_cast<double>(B);
  head.name = "Ind. no.";
  WriteColumnHead(out, S.identity.TreatmentName, head);
  for (int i = 1; i <= N; ++i) out.Write(i, IndividualDraws(i));
}

}  // namespace korvan
