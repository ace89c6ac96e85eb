#include <gtest/gtest.h>

#include <cmath>

#include "store/rules.h"
#include "run/run_context.h"

namespace korvan {
namespace {

TEST(TimeUnitRule, FourExactValuesAreFractionsAndAllOthersFactors) {
  // 12 time units of 8 h, 4 h, 4.8 h and 6 h make 4, 2, 2.4 and 3 days.
  EXPECT_EQ(TimeUnitToDays(12, 0.3), 4);
  EXPECT_EQ(TimeUnitToDays(12, 0.16), 2);
  EXPECT_EQ(TimeUnitToDays(12, 0.2), 12.0 / 5);
  EXPECT_EQ(TimeUnitToDays(12, 0.25), 3);
  // Everything else multiplies: 0.33 is not 0.3, and 0.5 has no branch of its own here.
  EXPECT_EQ(TimeUnitToDays(12, 0.33), 12 * 0.33);
  EXPECT_NE(TimeUnitToDays(12, 0.33), 4);
  EXPECT_EQ(TimeUnitToDays(12, 0.5), 6);
  EXPECT_EQ(TimeUnitToDays(12, 1), 12);
  EXPECT_EQ(TimeUnitToDays(3, 2), 6);
  // Only the exact double counts: a value computed to near 0.3 is a factor.
  const double nearly = 0.1 + 0.2;  // 0.30000000000000004
  EXPECT_EQ(TimeUnitToDays(10, nearly), 10 * nearly);
  // 0.3 as a fraction and as a factor differ: 10 / 3 against 10 x 0.3.
  EXPECT_NE(TimeUnitToDays(10, 0.3), 10 * 0.3);

  // The variant with the branch for one half divides by 2, the others as above.
  EXPECT_EQ(TimeUnitToDaysWithHalf(7, 0.5), 3.5);
  EXPECT_EQ(TimeUnitToDaysWithHalf(12, 0.3), 4);
  EXPECT_EQ(TimeUnitToDaysWithHalf(12, 0.16), 2);
  EXPECT_EQ(TimeUnitToDaysWithHalf(12, 0.33), 12 * 0.33);
  EXPECT_EQ(TimeUnitToDaysWithHalf(12, 4), 48);
}

TEST(StatisticsRule, OnePassMeanVarianceAndStandardError) {
  // 2, 4, 4, 4, 5, 5, 7, 9: mean 5, sum of squared deviations 32, variance 32/7.
  const double values[] = {2, 4, 4, 4, 5, 5, 7, 9};
  double s = 0, q = 0;
  for (double v : values) {
    s += v;
    q += v * v;
  }
  StatResult r = StatisticsRule(s, q, 8);
  EXPECT_DOUBLE_EQ(r.mean, 5);
  EXPECT_DOUBLE_EQ(r.variance, 32.0 / 7);
  EXPECT_DOUBLE_EQ(r.sd, std::sqrt(32.0 / 7));
  EXPECT_DOUBLE_EQ(r.se, std::sqrt(32.0 / 7) / std::sqrt(8.0));

  // Equal values whose one-pass variance comes out a hair below zero are set to zero.
  s = q = 0;
  for (int k = 0; k < 3; ++k) {
    s += 0.1;
    q += 0.1 * 0.1;
  }
  ASSERT_LT(q - s * s / 3, 0);  // the rounding that the rule guards against
  r = StatisticsRule(s, q, 3);
  EXPECT_EQ(r.variance, 0);
  EXPECT_EQ(r.sd, 0);
  EXPECT_EQ(r.se, 0);
  EXPECT_DOUBLE_EQ(r.mean, 0.1);
}

TEST(OutputName, IsTheBaseWithASuffix) {
  Session S;
  S.identity.DataFilePath = "/data/aphid.txt";
  S.identity.DataFileBase = "/data/aphid";
  EXPECT_EQ(OutputName(S, "_0A_Life Table_Output.txt"), "/data/aphid_0A_Life Table_Output.txt");
  S.StartUp();
  EXPECT_EQ(S.identity.ProgramName, "KORVAN");
  EXPECT_EQ(S.identity.VersionStamp, "Ver. 5/7/2024");
  EXPECT_EQ(S.settings.TimeUnit, 1);
}

}  // namespace
}  // namespace korvan
