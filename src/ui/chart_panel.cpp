#include "ui/chart_panel.h"

#include "text/numbers.h"

namespace korvan {

std::string ChartPanel::TitleText() const {
  std::string text;
  for (std::size_t i = 0; i < title.size(); ++i) {
    if (i > 0) text += '\n';
    text += title[i];
  }
  return text;
}

const ChartSeries* ChartPanel::Find(const std::string& label) const {
  for (const auto& s : series) {
    if (s.label == label) return &s;
  }
  return nullptr;
}

std::string AgeRowLabel(int a, double timeUnit) {
  double days = a;
  if (timeUnit == 0.3) days = a / 3.0;
  else if (timeUnit == 0.16) days = a / 6.0;
  else if (timeUnit == 0.2) days = a / 5.0;
  else if (timeUnit == 0.25) days = a / 4.0;
  else if (timeUnit == 0.5) days = a / 2.0;
  return FullPrecision(CIntValue(days));
}

}  // namespace korvan
