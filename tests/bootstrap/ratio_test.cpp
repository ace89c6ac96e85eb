// "J. Cal. ratio" on crafted column files: the ratios and their transformations worked by hand.
#include "bootstrap/ratio.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "store/faults.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

std::string ColumnText(const std::string& treatment, const std::string& name, double cohort,
                       const std::string& values, int B = 3) {
  return "\"" + treatment + "\"\n\"Next line is Bootstrap sample size (n)\"\n30\n"
         "\"Next line is total effective Bootstrap number (B)\"\n" + std::to_string(B) + "\n\"" + name +
         "\",30," + std::to_string(cohort) + "\n" + values;
}

TEST(BootstrapRatio, SampleBySampleWithItsTransformationsAndRefusals) {
  test::TempDir dir;
  test::WriteFile(dir.file("hatched.txt"), ColumnText("T1-hatched", "hatched", 24, "8\n18\n27\n"));
  test::WriteFile(dir.file("eggs.txt"), ColumnText("T1-eggs", "eggs", 30, "10\n20\n30\n"));
  auto S = std::make_unique<Session>();
  test::FakePrompts P;
  BootstrapRatio ratio(*S, P);
  ratio.NumeratorPath = dir.file("hatched.txt");
  ratio.DenominatorPath = dir.file("eggs.txt");
  ASSERT_TRUE(ratio.CalculateRatio());
  // 0.8, 0.9, 0.9: mean 13/15, variance (2.26 - 2.6^2 / 3) / 2 = 1/300.
  EXPECT_EQ(ratio.OutputPath, dir.file("T1-hatched to T1-eggs.txt"));
  auto lines = test::Lines(ratio.OutputPath);
  ASSERT_EQ(lines.size(), 9u);
  EXPECT_EQ(lines[0], "\"T1-hatched to T1-eggs\"");
  EXPECT_EQ(lines[5], "\"hatched to eggs\",30,0.8");
  EXPECT_EQ(lines[6], "0.8");
  EXPECT_DOUBLE_EQ(ratio.Mean, 2.6 / 3);
  EXPECT_NEAR(ratio.Variance, 1.0 / 300, 1e-15);

  ratio.Transformation = "Arcsine";
  ASSERT_TRUE(ratio.CalculateRatio());
  lines = test::Lines(ratio.OutputPath);
  EXPECT_NEAR(std::stod(lines[6]), std::asin(std::sqrt(0.8)), 1e-14);
  ratio.Transformation = "Logit";
  ASSERT_TRUE(ratio.CalculateRatio());
  EXPECT_NEAR(std::stod(test::Lines(ratio.OutputPath)[7]), std::log(0.9 / 0.1), 1e-13);

  // A ratio above 1 has no logit; files of another B are refused in a box.
  test::WriteFile(dir.file("more.txt"), ColumnText("T1-more", "more", 24, "8\n25\n27\n"));
  ratio.NumeratorPath = dir.file("more.txt");
  EXPECT_THROW(ratio.CalculateRatio(), ProgramEnd);
  test::WriteFile(dir.file("short.txt"), ColumnText("T2", "eggs", 30, "10\n20\n", 2));
  ratio.NumeratorPath = dir.file("hatched.txt");
  ratio.DenominatorPath = dir.file("short.txt");
  P.Answer("Task cannot continue!", "OK");
  EXPECT_FALSE(ratio.CalculateRatio());
  EXPECT_TRUE(P.Met("Task cannot continue!"));
}

}  // namespace
}  // namespace korvan
