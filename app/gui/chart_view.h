#pragma once
// A chart of the console drawn from ChartPanel data with Qt Charts: lines or bars, the title's
// lines and fonts, the legend, the axes with their titles and scales. A click on it is passed
// on (the console's click cycle); it saves itself as a PNG or SVG file.
#include <QChartView>
#include <QString>

#include "ui/chart_panel.h"

namespace korvan::gui {

class ChartView : public QChartView {
  Q_OBJECT

 public:
  explicit ChartView(QWidget* parent = nullptr);

  void SetPanel(const ChartPanel& panel);
  const ChartPanel& Panel() const { return panel_; }

  // Saves the chart as drawn: an SVG drawing for a path ending in ".svg", else a PNG image.
  // Returns false when the file can't be written.
  bool Save(const QString& path);
  // The SVG drawing of the chart at its size, its physical size at this many dots an inch.
  bool SaveSvg(const QString& path, int dotsPerInch);
  // Asks for a file name and saves; shows a message when that fails.
  void SaveWithDialog();

 signals:
  void clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  ChartPanel panel_;
};

}  // namespace korvan::gui
