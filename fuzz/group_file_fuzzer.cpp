// libFuzzer target: an arbitrary file as a group-reared life table through "B. Read N, F", the
// files it writes read again (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunGroupFile(bench, data, size);
  return 0;
}
