// libFuzzer target: an arbitrary pooled file of treatments through the pooled paired bootstrap
// test (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunPooledFile(bench, data, size);
  return 0;
}
