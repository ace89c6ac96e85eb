#include "large_graph.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "chart_view.h"
#include "ui/chart_figures.h"

namespace korvan::gui {

LargeGraph::LargeGraph(std::function<ChartPanel(const std::string&)> build,
                       std::function<std::string(const std::string&, int&)> click, QWidget* parent)
    : QWidget(parent, Qt::Window), build_(std::move(build)), click_(std::move(click)) {
  setObjectName("grafform");
  setWindowTitle("Large graph");
  resize(1100, 760);
  auto* layout = new QVBoxLayout(this);
  auto* bar = new QHBoxLayout;
  bar->addWidget(new QLabel("Figure:"));
  figures_ = new QComboBox;
  figures_->setObjectName("FigureList");
  for (auto name : LargeGraphFigures()) figures_->addItem(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
  // The figures of the click cycle, then the others.
  figures_->insertSeparator(static_cast<int>(kLargeGraphCycleFigures));
  bar->addWidget(figures_, 1);
  auto* save = new QPushButton("Save chart...");
  save->setToolTip("Save the chart as a PNG image or an SVG drawing");
  bar->addWidget(save);
  layout->addLayout(bar);
  view_ = new ChartView;
  view_->setObjectName("MSChart1");
  view_->setToolTip("Click the chart to see the next figure");
  layout->addWidget(view_, 1);

  connect(figures_, &QComboBox::textActivated, this, [this](const QString& name) { ShowFigure(name.toStdString()); });
  connect(save, &QPushButton::clicked, view_, &ChartView::SaveWithDialog);
  connect(view_, &ChartView::clicked, this, [this] {
    const std::string next = click_(view_->Panel().figure, counter_);
    if (!next.empty()) ShowFigure(next);
  });
}

void LargeGraph::ShowFigure(const std::string& figure) {
  ChartPanel panel = build_(figure);
  if (panel.figure.empty()) return;
  // The same figure, bigger.
  panel.titleFont.size += 4;
  panel.legendFont.size += 2;
  panel.x.font.size += 2;
  panel.y.font.size += 2;
  view_->SetPanel(panel);
  const int index = figures_->findText(QString::fromStdString(figure));
  if (index >= 0) figures_->setCurrentIndex(index);
}

}  // namespace korvan::gui
