// libFuzzer target: an arbitrary list of values through "G. Gen. boot" and "L. Sort+count"
// (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunListFile(bench, data, size);
  return 0;
}
