// libFuzzer target: an arbitrary file as the immature table, the adult table and the match
// record of "D. Boot. match" (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunMatchFiles(bench, data, size);
  return 0;
}
