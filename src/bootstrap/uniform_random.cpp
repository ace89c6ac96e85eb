#include "bootstrap/uniform_random.h"

#include <chrono>

namespace korvan {
namespace {

std::uint64_t SplitMix64(std::uint64_t& x) {
  std::uint64_t z = (x += 0x9E3779B97F4A7C15ULL);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  return z ^ (z >> 31);
}

std::uint64_t Rotl(std::uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }

}  // namespace

void SampleGenerator::SeedSample(std::uint64_t runSeed, std::int64_t sample) {
  std::uint64_t x = runSeed;
  std::uint64_t mixed = SplitMix64(x) ^ static_cast<std::uint64_t>(sample);
  std::uint64_t y = mixed;
  for (auto& s : s_) s = SplitMix64(y);
}

double SampleGenerator::Next() {
  const std::uint64_t result = Rotl(s_[1] * 5, 7) * 9;
  const std::uint64_t t = s_[1] << 17;
  s_[2] ^= s_[0];
  s_[3] ^= s_[1];
  s_[1] ^= s_[2];
  s_[0] ^= s_[3];
  s_[2] ^= t;
  s_[3] = Rotl(s_[3], 45);
  // 53 bits onto [0, 1): the largest value is 1 - 2^-53.
  return static_cast<double>(result >> 11) * 0x1.0p-53;
}

std::uint64_t SeedFromClock() {
  return static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

}  // namespace korvan
