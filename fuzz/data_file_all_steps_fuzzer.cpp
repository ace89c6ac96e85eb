// libFuzzer target: an arbitrary life-table data file with rearing costs through every step of
// "A1. Read data", the check and "A2. Basic Run" (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunDataFileAllSteps(bench, data, size);
  return 0;
}
