// The text console: status fields and the progress bar's estimate.
#include <gtest/gtest.h>

#include <sstream>

#include "ui/console_display.h"

namespace korvan {
namespace {

TEST(ConsoleDisplay, BarEstimateAndFields) {
  EXPECT_EQ(ConsoleDisplay::FormatBar(450, 1000, 9.0, 20),
            "[#########...........]  45%  450/1000  about 11 s left");
  EXPECT_EQ(ConsoleDisplay::FormatBar(0, 2000, 0.0, 4), "[....]   0%  0/2000");
  EXPECT_EQ(ConsoleDisplay::FormatBar(2000, 2000, 125.0, 4), "[####] 100%  2000/2000  done in 2 min 05 s");
  EXPECT_EQ(ConsoleDisplay::FormatBar(1, 3, 100.0, 3), "[#..]  33%  1/3  about 3 min 20 s left");
  EXPECT_EQ(ConsoleDisplay::FormatDuration(7322), "2 h 02 min");
  EXPECT_EQ(ConsoleDisplay::FormatBar(999, 1000, 0.2, 2), "[#.]  99%  999/1000  under 1 s left");
  EXPECT_EQ(ConsoleDisplay::FormatBar(5, 0, 1.0, 2), "[##] 100%  5/1  done in 1 s");  // no total

  std::ostringstream out;
  ConsoleDisplay display(out, false, false);
  display.Status("txtCohortsize", "100");
  display.Status("txtIntrinsicrate", "0.1");
  display.Status("txtCohortsize", "99");
  ASSERT_EQ(display.Fields().size(), 2u);
  EXPECT_EQ(display.Fields()[0], (std::pair<std::string, std::string>{"txtCohortsize", "99"}));
  EXPECT_EQ(display.Field("txtFiniteRate"), "");

  // Away from a terminal a line is written at each tenth of the way, not per step.
  for (long i = 0; i <= 1000; ++i) display.Progress(i, 1000);
  std::istringstream lines(out.str());
  int count = 0;
  for (std::string line; std::getline(lines, line);) ++count;
  EXPECT_EQ(count, 11);
  std::ostringstream silent;
  ConsoleDisplay quiet(silent, true, true);
  quiet.Progress(1, 2);
  quiet.Message("Title", "text");
  EXPECT_EQ(silent.str(), "");
}

}  // namespace
}  // namespace korvan
