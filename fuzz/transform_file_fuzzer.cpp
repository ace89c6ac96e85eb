// libFuzzer target: an arbitrary file through the transforms of a life table, as a data file,
// as an adult life table ("O. + overwinter") and as an immature life table (see harness.h).
#include <cstddef>
#include <cstdint>

#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static korvan::fuzz::Workbench bench;
  korvan::fuzz::RunTransformsOnDataFile(bench, data, size);
  korvan::fuzz::RunOverwinterOnAdultFile(bench, data, size);
  korvan::fuzz::RunImmatureFile(bench, data, size);
  return 0;
}
