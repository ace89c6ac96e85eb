// The steps of the result files that follow the loop.
#include "bootstrap/bootstrap_driver.h"
#include "bootstrap/count_individuals.h"
#include "bootstrap/percentile.h"
#include "bootstrap/result_files.h"
#include "bootstrap/sample_records.h"

namespace korvan {

void BootstrapDriver::WriteSampleRecord() {
  WriteMajorPercentileLxMx();
  SampleRecords(S, P, W).WriteSampleRecord();
  if (S.boot.SameBootstrap == "Yes") BootPercentiles(S, P, W).WriteSpecificSampleLifeTables();
}
void BootstrapDriver::SortAndWritePercentiles() { BootPercentiles(S, P, W).SortAndWritePercentileTables(); }
void BootstrapDriver::WriteColumnFiles() { BootResultFiles(S, P, W).WriteColumnFiles(); }
void BootstrapDriver::WriteNormalCurveFiles() { BootResultFiles(S, P, W).WriteNormalCurveFiles(); }
void BootstrapDriver::CountIndividualFrequencies() { BootIndividualCounts(S, P, W).CountBootstrapIndFreq(); }

}  // namespace korvan
