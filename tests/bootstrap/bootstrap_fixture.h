#pragma once
// Helpers of the bootstrap tests: the cohorts and prompts of tests/support under the names
// these tests use, and a generator that returns given values.
#include <stdexcept>
#include <vector>

#include "bootstrap/uniform_random.h"
#include "support/cohort.h"
#include "support/fake_prompts.h"

namespace korvan::boottest {

using ListPrompts = test::FakePrompts;
using PoolIndividual = test::Individual;
using test::DataFileText;
using test::MakePoolStore;

// Returns the values given, in turn; SeedSample is noted and changes nothing.
class ListGenerator : public UniformGenerator {
 public:
  explicit ListGenerator(std::vector<double> u) : u_(std::move(u)) {}
  void SeedSample(std::uint64_t, std::int64_t sample) override { seeded.push_back(sample); }
  double Next() override {
    if (next_ >= u_.size()) throw std::runtime_error("the list of u ran out");
    return u_[next_++];
  }
  std::size_t used() const { return next_; }
  std::vector<std::int64_t> seeded;

 private:
  std::vector<double> u_;
  std::size_t next_ = 0;
};

}  // namespace korvan::boottest
