// The steps of the result files that follow the loop. The record of samples, the sorting with
// its percentile life tables, the column files, the normal curves and the counts of
// individuals belong to the writers of the bootstrap's result files; until they stand these
// steps write nothing, and the sorted lists stay empty (the report's percentile rows read 0).
#include "bootstrap/bootstrap_driver.h"

namespace korvan {

void BootstrapDriver::WriteSampleRecord() { WriteMajorPercentileLxMx(); }
void BootstrapDriver::SortAndWritePercentiles() {}
void BootstrapDriver::WriteColumnFiles() {}
void BootstrapDriver::WriteNormalCurveFiles() {}
void BootstrapDriver::CountIndividualFrequencies() {}

}  // namespace korvan
