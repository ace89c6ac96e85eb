#include <gtest/gtest.h>

#include "run/run_context.h"

namespace korvan {
namespace {

// The per-sample lists start at zero, hold what is written at any sample index up to 100003,
// and refuse an index beyond their bounds with the array's name.
TEST(BootstrapStore, ListsAreZeroCheckedAndIndependent) {
  auto S = std::make_unique<Session>();
  BootstrapRecord& b = S->boot;
  EXPECT_EQ(b.BootR(0), 0.0);
  EXPECT_EQ(b.BootR(100003), 0.0);
  b.BootR(100003) = 1.5;
  b.BootLambda(100003) = 2.5;
  EXPECT_EQ(b.BootR(100003), 1.5);
  EXPECT_EQ(b.BootLambda(100003), 2.5);
  EXPECT_EQ(b.BootR(100002), 0.0);
  try {
    b.BootR(100004) = 1;
    FAIL() << "no fault";
  } catch (const SubscriptFault& f) {
    EXPECT_EQ(f.array, "BootR");
  }
  EXPECT_THROW(b.BootR(-1), SubscriptFault);

  // Positions and samples of the individuals do not overlap.
  b.BootIndividuals(390, 7) = 11;
  b.BootIndividuals(0, 8) = 12;
  b.BootIndividuals(1, 7) = 13;
  EXPECT_EQ(b.BootIndividuals(390, 7), 11);
  EXPECT_EQ(b.BootIndividuals(0, 8), 12);
  EXPECT_EQ(b.BootIndividuals(1, 7), 13);
  EXPECT_THROW(b.BootIndividuals(391, 7), SubscriptFault);

  BootTypeStageList<double> cube("cube");
  cube(3, 13, 100003) = 4;
  cube(0, 0, 100003) = 5;
  EXPECT_EQ(cube(3, 13, 100003), 4);
  EXPECT_EQ(cube(0, 0, 100003), 5);
  EXPECT_THROW(cube(4, 0, 1), SubscriptFault);
  EXPECT_THROW(cube(0, 14, 1), SubscriptFault);
  b.BootR.Clear();
  EXPECT_EQ(b.BootR(100003), 0.0);
}

}  // namespace
}  // namespace korvan
