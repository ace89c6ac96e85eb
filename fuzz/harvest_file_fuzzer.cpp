// libFuzzer target: an arbitrary file as the R0 and SE file of the harvest analysis and as the
// pooled parameters of the contribution of offspring types (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunHarvestAndContributionFiles(bench, data, size);
  return 0;
}
