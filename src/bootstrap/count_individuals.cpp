#include "bootstrap/count_individuals.h"

#include <vector>

#include "bootstrap/column_file.h"
#include "text/side_by_side_rows.h"
#include "text/text_file.h"

namespace korvan {

void BootIndividualCounts::CountBootstrapIndFreq() {
  Flow("CountBootstrapIndFreq");
  BootstrapRecord& R = S.boot;
  auto& IndividualDraws = R.IndividualDraws;
  const long B = R.BootB, n = R.BootSampleSize;
  const int N = S.pool.OriginalCohortSize;
  IndividualDraws.Fill(0);
  // Whole counts: each thread counts a stretch of samples of its own, and the sums do not
  // depend on how the samples were shared out.
  const int threads = ThreadsForPieces(S.runControl.threads, B / 1000);
  std::vector<std::vector<long>> counts(static_cast<std::size_t>(threads), std::vector<long>(N + 1, 0));
  RunSideBySide(threads, [&](int t) {
    std::vector<long>& c = counts[static_cast<std::size_t>(t)];
    for (long b = 1 + t * B / threads, last = (t + 1) * B / threads; b <= last; ++b)
      for (long p = 1; p <= n; ++p) {
        const int k = R.BootIndividuals(p, b);
        if (k >= 1 && k <= N) ++c[static_cast<std::size_t>(k)];
      }
  });
  for (const std::vector<long>& c : counts)
    for (int k = 1; k <= N; ++k) IndividualDraws(k) += c[static_cast<std::size_t>(k)];
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
