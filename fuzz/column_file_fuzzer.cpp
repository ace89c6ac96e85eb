// libFuzzer target: an arbitrary "_Effect Boot-..." column file as one treatment of the paired
// bootstrap test "C. Paired BT", then as one of the two files of "J. Cal. ratio" (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunColumnFile(bench, data, size);
  korvan::fuzz::RunRatioFile(bench, data, size);
  return 0;
}
