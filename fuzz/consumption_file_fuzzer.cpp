// libFuzzer target: an arbitrary consumption file of a fixed predator cohort through "A1. Read
// data" and "A2. Basic Run" (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunConsumptionFile(bench, data, size);
  return 0;
}
