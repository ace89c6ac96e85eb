#pragma once
// "Large graph" (grafform): the figures of the Basic Run in a window of their own, bigger, with
// the same click cycle as the console's chart and a list of every figure it offers.
#include <QWidget>
#include <functional>
#include <string>

#include "ui/chart_panel.h"

class QComboBox;

namespace korvan::gui {

class ChartView;

class LargeGraph : public QWidget {
 public:
  // build makes a figure from the store by name (an empty panel when the store is busy);
  // click gives the figure of the next click, empty when the click changes nothing.
  LargeGraph(std::function<ChartPanel(const std::string&)> build,
             std::function<std::string(const std::string& shown, int& counter)> click, QWidget* parent = nullptr);

  void ShowFigure(const std::string& figure);
  ChartView* View() const { return view_; }

 private:
  std::function<ChartPanel(const std::string&)> build_;
  std::function<std::string(const std::string&, int&)> click_;
  ChartView* view_;
  QComboBox* figures_;
  int counter_ = 0;
};

}  // namespace korvan::gui
