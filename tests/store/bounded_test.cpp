#include <gtest/gtest.h>

#include "store/bounded.h"
#include "store/session_store.h"

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
  SessionStore S;
  EXPECT_NO_THROW(S.ws.cohort.Fecundity(390, 575));
  EXPECT_THROW(S.ws.cohort.IndividualSex(391), SubscriptFault);
  EXPECT_THROW(S.ws.tables.Nxj(576, 1), SubscriptFault);
  EXPECT_NO_THROW(S.header.StageName(1, 14));  // the second adult stage of a 13-stage file
  EXPECT_THROW(S.header.StageName(1, 15), SubscriptFault);
  EXPECT_THROW(S.header.TypeCode(4), SubscriptFault);
}

}  // namespace
}  // namespace korvan
