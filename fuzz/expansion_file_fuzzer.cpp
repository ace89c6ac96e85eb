// libFuzzer target: an arbitrary multinomial expansion read by "Multinomial" (Command2) after Basic Run of a small cohort (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunExpansionFile(bench, data, size);
  return 0;
}
