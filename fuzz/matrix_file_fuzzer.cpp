// libFuzzer target: an arbitrary file as each matrix file of "E. 3D life table" (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunMatrixFile(bench, data, size);
  return 0;
}
