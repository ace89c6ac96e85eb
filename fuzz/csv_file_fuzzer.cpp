// libFuzzer target: an arbitrary CSV file as a cohort kept in a spreadsheet, through "A1. Read
// data" and Basic Run (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunCsvFile(bench, data, size);
  return 0;
}
