#include <gtest/gtest.h>

#include <memory>

#include "store/bounded.h"
#include "run/run_context.h"

namespace korvan {
namespace {

TEST(Bounded, IndexBeyondEitherBoundIsASubscriptFaultNamingTheArray) {
  Vec<int, 1, 3> v("TypeCounts");
  v(1) = 5;
  v(3) = 7;
  EXPECT_EQ(v(1), 5);
  EXPECT_EQ(v(3), 7);
  EXPECT_THROW(v(0), SubscriptFault);
  try {
    v(4);
    FAIL();
  } catch (const SubscriptFault& f) {
    EXPECT_STREQ(f.what(), "Subscript out of range: TypeCounts");
  }
  Mat<double, 575, 13> m("Nxj");
  m(575, 13) = 1;
  EXPECT_EQ(m(575, 13), 1);
  EXPECT_THROW(m(576, 0), SubscriptFault);
  EXPECT_THROW(m(0, 14), SubscriptFault);
  EXPECT_THROW(m(-1, 0), SubscriptFault);
}

TEST(Bounded, StoreKeepsTheRealLimits) {
  Session S;
  EXPECT_NO_THROW(S.ws.cohort.Fecundity(390, 575));
  EXPECT_THROW(S.ws.cohort.IndividualSex(391), SubscriptFault);
  EXPECT_THROW(S.ws.tables.Nxj(576, 1), SubscriptFault);
  EXPECT_NO_THROW(S.header.StageName(1, 14));  // the second adult stage of a 13-stage file
  EXPECT_THROW(S.header.StageName(1, 15), SubscriptFault);
  EXPECT_THROW(S.header.TypeCode(4), SubscriptFault);
}

// Workers copy the workspace of Basic Run: a copy holds the values and is a store of its own,
// small and large arrays alike; a fresh array reads zero everywhere.
TEST(Bounded, CopiesAreIndependentAndFreshArraysAreZero) {
  auto a = std::make_unique<Workspace>();
  for (long i : {0L, 200L, 390L})
    for (long x : {0L, 300L, 575L}) EXPECT_EQ(a->cohort.Fecundity(i, x), 0);
  a->cohort.Fecundity(390, 575) = 4;
  a->cohort.TotalLongevity(7) = 11;
  a->cohort.IndividualSex(3) = "F";
  auto b = std::make_unique<Workspace>(*a);
  EXPECT_EQ(b->cohort.Fecundity(390, 575), 4);
  EXPECT_EQ(b->cohort.TotalLongevity(7), 11);
  EXPECT_EQ(b->cohort.IndividualSex(3), "F");
  b->cohort.Fecundity(390, 575) = 9;
  b->cohort.TotalLongevity(7) = 2;
  EXPECT_EQ(a->cohort.Fecundity(390, 575), 4);
  EXPECT_EQ(a->cohort.TotalLongevity(7), 11);
  *a = *b;
  EXPECT_EQ(a->cohort.Fecundity(390, 575), 9);
  a.reset();
  EXPECT_EQ(b->cohort.Fecundity(390, 575), 9);
}

}  // namespace
}  // namespace korvan
