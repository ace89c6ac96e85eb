#pragma once
// The uniform generator of the bootstrap: 0 <= u < 1.
//
// A run has one seed (given, or taken from the clock). Each sample is drawn from a stream
// seeded anew from (run seed, sample number), so a sample does not depend on which worker
// draws it or on what was drawn before it: a run is repeatable from its seed and the same on
// any number of threads.
#include <cstdint>

namespace korvan {

class UniformGenerator {
 public:
  virtual ~UniformGenerator() = default;
  // Seeds the stream of one sample.
  virtual void SeedSample(std::uint64_t runSeed, std::int64_t sample) = 0;
  // The next u, 0 <= u < 1.
  virtual double Next() = 0;
};

// splitmix64 to mix (run seed, sample) into a state, xoshiro256** for the stream.
class SampleGenerator final : public UniformGenerator {
 public:
  void SeedSample(std::uint64_t runSeed, std::int64_t sample) override;
  double Next() override;

 private:
  std::uint64_t s_[4] = {1, 2, 3, 4};
};

// A seed from the clock, for a run that was given none.
std::uint64_t SeedFromClock();

}  // namespace korvan
