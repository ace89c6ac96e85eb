#pragma once
// What a chart shows, as plain data: rows (ages, classes, stages), one series per column, the
// title with its font, the legend and the two axes. The figures of the console are built into
// a ChartPanel here; a front end draws it with the means it has.
#include <string>
#include <vector>

namespace korvan {

struct ChartFont {
  std::string family = "Times New Roman";
  int size = 12;
  bool bold = false;
};

struct ChartAxis {
  std::string title;
  ChartFont font;
  bool automatic = true;  // the scale follows the data; else min..max
  double min = 0, max = 0;
  int divisions = 0;      // of a fixed scale; 0 leaves it to the front end
  int labelEvery = 1;     // a tick label at every n-th row (the X axis of the figures by age)
};

enum class ChartKind { Line, Bar };

struct ChartSeries {
  std::string label;
  int lineWidth = 1;
  std::vector<double> values;  // one per row
  bool markers = false;        // points only, no line (observed values of a regression)
};

struct ChartPanel {
  std::string figure;             // the Show procedure that built it: "ShowSxj"
  std::string chart = "MSChart1"; // where it is shown: the console's chart or "MSChart2"
  ChartKind kind = ChartKind::Line;
  double barWidth = 1.0;  // share of a row's place a bar takes: 1 leaves no gap between bars
  std::vector<std::string> title;  // lines of the title
  ChartFont titleFont;
  bool legend = true;
  ChartFont legendFont{"Times New Roman", 14, false};
  ChartAxis x, y;
  std::vector<std::string> rowLabels;
  std::vector<ChartSeries> series;
  // The X value of each row when the X axis is a scale of numbers (a regression); empty when
  // the rows are spaced evenly under their labels.
  std::vector<double> xValues;

  int Rows() const { return static_cast<int>(rowLabels.size()); }
  int Columns() const { return static_cast<int>(series.size()); }
  // The title as one text, its lines joined by line feeds.
  std::string TitleText() const;
  // Whether it shows nothing at all (no rows or no series).
  bool Empty() const { return rowLabels.empty() || series.empty(); }
  // The series by label, nullptr when none.
  const ChartSeries* Find(const std::string& label) const;
};

// The label of the row of age a (in time units): the age in days, a/3, a/6, a/5, a/4, a/2
// for the exact time units 0.3, 0.16, 0.2, 0.25, 0.5, else a itself; a whole number.
std::string AgeRowLabel(int a, double timeUnit);

}  // namespace korvan
