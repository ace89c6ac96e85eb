// libFuzzer target: an arbitrary record of bootstrap samples (file no. 11) counted by "M. Count LT" after Basic Run of a small cohort (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunRecordCount(bench, data, size);
  return 0;
}
