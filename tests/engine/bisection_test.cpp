// The root search shared by r, lambda and the curtailed rates.
#include "engine/bisection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace korvan {
namespace {

TEST(Bisection, HalvesTowardTheRootAndStopsAtTheFiveHundredthMidpoint) {
  // x^3 - 2 on [0, 2]: the midpoints 1, 1.5, 1.25, ... close in on the cube root of 2.
  std::vector<double> tried;
  int iterations = -1;
  const Bisection b = Bisect(0, 2, 1e-9, iterations, [&](double x) {
    tried.push_back(x);
    return x * x * x - 2;
  });
  ASSERT_TRUE(b.found);
  EXPECT_NEAR(b.root, std::cbrt(2.0), 1e-9);
  ASSERT_GE(tried.size(), 5u);
  EXPECT_EQ(std::vector<double>(tried.begin(), tried.begin() + 5), (std::vector<double>{0, 2, 1, 1.5, 1.25}));
  EXPECT_EQ(iterations, static_cast<int>(tried.size()) - 2);
  // A falling residual: 2 - x on [0, 4] has its root at the first midpoint.
  EXPECT_EQ(Bisect(0, 4, 1e-12, iterations, [](double x) { return 2 - x; }).root, 2);
  EXPECT_EQ(iterations, 1);
  // A residual that never comes within the precision ends at the 500th midpoint, unfound.
  const Bisection never = Bisect(0, 1, 1e-9, iterations, [](double) { return 1.0; });
  EXPECT_FALSE(never.found);
  EXPECT_EQ(iterations, 500);
}

}  // namespace
}  // namespace korvan
