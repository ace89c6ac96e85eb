#include "chart_view.h"

#include <QBarSeries>
#include <QBarSet>
#include <QCategoryAxis>
#include <QChart>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineSeries>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QScatterSeries>
#include <QSet>
#include <QValueAxis>
#include <algorithm>
#include <cmath>
#include <iterator>

#ifdef KORVAN_HAVE_SVG
#include <QSvgGenerator>
#endif

namespace korvan::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Colours of the series in order: distinct for the 14 stages a file can have.
const char* const kSeriesColours[] = {"#1f77b4", "#d62728", "#2ca02c", "#ff7f0e", "#9467bd", "#8c564b", "#e377c2",
                                      "#17becf", "#bcbd22", "#7f7f7f", "#000080", "#808000", "#800000", "#008080"};

QColor SeriesColour(std::size_t i) { return QColor(kSeriesColours[i % std::size(kSeriesColours)]); }

// The chart's point sizes are those of a larger page: the window's charts use five sixths.
QFont FontOf(const ChartFont& f) {
  QFont font(Q(f.family), std::max(7, (f.size * 5 + 3) / 6));
  font.setBold(f.bold);
  return font;
}

// The X axis of a chart by rows: a label at every n-th row, n a multiple of the panel's step
// that keeps the labels readable. Bars stand on the rows' places, half a place wide each side.
QCategoryAxis* RowAxis(const ChartPanel& p, bool bars = false) {
  auto* axis = new QCategoryAxis;
  axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
  axis->setStartValue(-1);
  const int rows = p.Rows();
  int every = std::max(1, p.x.labelEvery);
  while (rows / every > 16) every += std::max(1, p.x.labelEvery);
  QSet<QString> used;
  for (int r = 0; r < rows; r += every) {
    const QString label = Q(p.rowLabels[static_cast<std::size_t>(r)]);
    if (used.contains(label)) continue;
    used.insert(label);
    axis->append(label, r);
  }
  if (bars)
    axis->setRange(-0.5, rows - 0.5);
  else
    axis->setRange(0, std::max(1, rows - 1));
  return axis;
}

QValueAxis* ValueAxis(const ChartPanel& p) {
  auto* axis = new QValueAxis;
  if (!p.y.automatic) {
    axis->setRange(p.y.min, p.y.max);
    if (p.y.divisions > 0) axis->setTickCount(p.y.divisions + 1);
    return axis;
  }
  double lo = 0, hi = 0;
  bool any = false;
  for (const auto& s : p.series) {
    for (double v : s.values) {
      if (!std::isfinite(v)) continue;
      lo = any ? std::min(lo, v) : v;
      hi = any ? std::max(hi, v) : v;
      any = true;
    }
  }
  lo = std::min(lo, 0.0);
  if (hi <= lo) hi = lo + 1;
  axis->setRange(lo, hi);
  axis->applyNiceNumbers();
  return axis;
}

}  // namespace

ChartView::ChartView(QWidget* parent) : QChartView(parent) {
  setRenderHint(QPainter::Antialiasing);
  setMinimumSize(320, 240);
  SetPanel(ChartPanel{});
}

void ChartView::SetPanel(const ChartPanel& p) {
  panel_ = p;
  auto* chart = new QChart;
  // A long line of the title is broken between words: the chart would cut it short.
  QStringList lines;
  for (const auto& line : p.title) {
    QString rest = Q(line);
    while (rest.size() > 90) {
      int cut = rest.lastIndexOf(' ', 90);
      if (cut <= 0) cut = 90;
      lines << rest.left(cut).toHtmlEscaped();
      rest = rest.mid(cut).trimmed();
    }
    lines << rest.toHtmlEscaped();
  }
  chart->setTitle(lines.join("<br>"));
  chart->setTitleFont(FontOf(p.titleFont));
  chart->legend()->setVisible(p.legend && !p.series.empty());
  chart->legend()->setAlignment(Qt::AlignRight);
  chart->legend()->setFont(FontOf(p.legendFont));

  if (!p.Empty()) {
    QAbstractAxis* xAxis = nullptr;
    QValueAxis* yAxis = ValueAxis(p);
    if (p.kind == ChartKind::Bar) {
      auto* bars = new QBarSeries;
      for (const auto& s : p.series) {
        auto* set = new QBarSet(Q(s.label));
        set->setColor(SeriesColour(static_cast<std::size_t>(bars->count())));
        for (int r = 0; r < p.Rows(); ++r) {
          const auto i = static_cast<std::size_t>(r);
          set->append(i < s.values.size() ? s.values[i] : 0);
        }
        bars->append(set);
      }
      bars->setBarWidth(p.barWidth);
      chart->addSeries(bars);
      // Class limits under every few bars: a label under each of fifty narrow bars would be
      // cut to dots.
      xAxis = RowAxis(p, true);
      xAxis->setLabelsAngle(-90);
      chart->addAxis(xAxis, Qt::AlignBottom);
      chart->addAxis(yAxis, Qt::AlignLeft);
      bars->attachAxis(xAxis);
      bars->attachAxis(yAxis);
    } else if (!p.xValues.empty()) {
      // A scale of numbers: observed points and the fitted line.
      auto* axis = new QValueAxis;
      const auto [lo, hi] = std::minmax_element(p.xValues.begin(), p.xValues.end());
      axis->setRange(*lo, *hi > *lo ? *hi : *lo + 1);
      axis->applyNiceNumbers();
      xAxis = axis;
      chart->addAxis(xAxis, Qt::AlignBottom);
      chart->addAxis(yAxis, Qt::AlignLeft);
      for (const auto& s : p.series) {
        QXYSeries* xy = nullptr;
        if (s.markers) {
          auto* points = new QScatterSeries;
          points->setMarkerSize(8);
          xy = points;
        } else {
          xy = new QLineSeries;
        }
        xy->setName(Q(s.label));
        for (std::size_t i = 0; i < p.xValues.size() && i < s.values.size(); ++i) xy->append(p.xValues[i], s.values[i]);
        chart->addSeries(xy);
        QPen pen = xy->pen();
        pen.setColor(SeriesColour(static_cast<std::size_t>(chart->series().size() - 1)));
        pen.setWidth(s.lineWidth);
        xy->setPen(pen);
        if (s.markers) xy->setBrush(pen.color());
        xy->attachAxis(xAxis);
        xy->attachAxis(yAxis);
      }
    } else {
      xAxis = RowAxis(p);
      chart->addAxis(xAxis, Qt::AlignBottom);
      chart->addAxis(yAxis, Qt::AlignLeft);
      for (const auto& s : p.series) {
        auto* line = new QLineSeries;
        line->setName(Q(s.label));
        for (int r = 0; r < p.Rows(); ++r) {
          const auto i = static_cast<std::size_t>(r);
          line->append(r, i < s.values.size() ? s.values[i] : 0);
        }
        chart->addSeries(line);
        QPen pen = line->pen();
        pen.setColor(SeriesColour(static_cast<std::size_t>(chart->series().size() - 1)));
        pen.setWidth(s.lineWidth);
        line->setPen(pen);
        line->attachAxis(xAxis);
        line->attachAxis(yAxis);
      }
    }
    xAxis->setTitleText(Q(p.x.title));
    xAxis->setTitleFont(FontOf(p.x.font));
    yAxis->setTitleText(Q(p.y.title));
    yAxis->setTitleFont(FontOf(p.y.font));
  }
  QChart* old = this->chart();
  setChart(chart);
  delete old;
}

bool ChartView::SaveSvg(const QString& path, int dotsPerInch) {
#ifdef KORVAN_HAVE_SVG
  QSvgGenerator svg;
  svg.setFileName(path);
  svg.setSize(size());
  svg.setViewBox(rect());
  svg.setResolution(dotsPerInch);
  svg.setTitle(Q(panel_.TitleText()));
  QPainter painter;
  if (!painter.begin(&svg)) return false;
  render(&painter);
  return painter.end();
#else
  (void)path;
  (void)dotsPerInch;
  return false;
#endif
}

bool ChartView::Save(const QString& path) {
  // 72 dots an inch: the drawing generator's own default.
  if (path.endsWith(".svg", Qt::CaseInsensitive)) return SaveSvg(path, 72);
  return grab().save(path, "PNG");
}

void ChartView::SaveWithDialog() {
  QString chosen;
  QString path = QFileDialog::getSaveFileName(this, "Save chart", Q(panel_.figure.empty() ? "chart" : panel_.figure),
                                              "PNG image (*.png);;SVG drawing (*.svg)", &chosen);
  if (path.isEmpty()) return;
  if (!path.endsWith(".png", Qt::CaseInsensitive) && !path.endsWith(".svg", Qt::CaseInsensitive)) {
    path += chosen.contains("svg") ? ".svg" : ".png";
  }
  if (!Save(path)) {
    // The image writer gives no reason of its own.
    const QFileInfo folder(QFileInfo(path).absolutePath());
    const QString reason = !folder.exists()       ? QString("the folder does not exist")
                           : !folder.isWritable() ? QString("the folder can't be written")
                                                  : QString("the image could not be written whole");
    QMessageBox::warning(this, "Error in writing file", "The chart could not be saved as " + path + ": " + reason + ".");
  }
}

void ChartView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) emit clicked();
  QChartView::mouseReleaseEvent(event);
}

}  // namespace korvan::gui
