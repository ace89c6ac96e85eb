#include "figure_export.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

#include "chart_view.h"
#include "ui/chart_figures.h"

namespace korvan::gui {

namespace {

// 16 x 12 cm in the screen's logical units (96 a inch), where the charts' point sizes hold.
constexpr int kWidth = 605, kHeight = 454;

bool Write(ChartView& view, const QString& path, const FigureExport& how) {
  // Drawn at the screen's 96 dots an inch, the drawing has the page's size.
  if (how.format == "svg") return view.SaveSvg(path, 96);
  // The image has the page's size at the resolution asked; the drawing is scaled to it, fonts
  // and lines with it.
  const double scale = how.dpi / 96.0;
  QImage image(static_cast<int>(kWidth * scale), static_cast<int>(kHeight * scale), QImage::Format_ARGB32);
  image.fill(Qt::white);
  image.setDotsPerMeterX(static_cast<int>(how.dpi / 0.0254));
  image.setDotsPerMeterY(static_cast<int>(how.dpi / 0.0254));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  view.render(&painter, QRectF(0, 0, image.width(), image.height()), view.rect());
  painter.end();
  return image.save(path, "PNG");
}

}  // namespace

QStringList ExportFigures(const SessionStore& S, const FigureExport& how, QString& error) {
  QStringList written;
  if (S.basic.BasicRunDone != "yes") {
    error = "No finished Basic Run: the figures need A1 and A2 (and A3 for the frequencies).";
    return written;
  }
  if (how.format != "svg" && how.format != "png") {
    error = "The format is svg or png.";
    return written;
  }
#ifndef KORVAN_HAVE_SVG
  if (how.format == "svg") {
    error = "This build has no SVG writer (Qt's SVG module); use --format png.";
    return written;
  }
#endif
  if (!QDir().mkpath(how.folder)) {
    error = "Cannot make the folder " + how.folder + ".";
    return written;
  }
  std::vector<std::string> figures = {"ShowSxj", "ShowLx", "ShowFxjMxLxMx", "ShowExj", "ShowVxj"};
  if (S.boot.BootstrapCompleted == "yes") {
    figures.push_back("ShowFreqr");
    figures.push_back("ShowFreqR0");
  }
  if (!how.figures.isEmpty()) {
    figures.clear();
    for (const QString& name : how.figures) {
      if (!IsFigureBuilt(name.toStdString())) {
        error = "No figure " + name + " (the names are those of the large graph's list).";
        return written;
      }
      figures.push_back(name.toStdString());
    }
  }
  const QString stem = QFileInfo(QString::fromStdString(S.identity.DataFilePath)).completeBaseName();
  ChartView view;
  view.resize(kWidth, kHeight);
  for (const auto& figure : figures) {
    ChartPanel panel = BuildFigure(S, figure);
    panel.chart = "MSChart1";
    // The console's large type would crowd a figure of a page's width.
    panel.titleFont.size = 11;
    panel.legendFont.size = 10;
    panel.x.font.size = 11;
    panel.y.font.size = 11;
    view.SetPanel(panel);
    const QString path = QDir(how.folder).filePath(stem + "_fig_" + QString::fromStdString(figure) + "." + how.format);
    if (!Write(view, path, how)) {
      error = "Cannot write " + path + ".";
      return written;
    }
    written << path;
  }
  return written;
}

}  // namespace korvan::gui
