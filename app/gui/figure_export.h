#pragma once
// The figures of a finished run written as files for a paper, drawn by the console's own chart
// code at the size of a journal page (16 x 12 cm, type of 10 and 11 points): s(x,j), l(x), f(x,female) with m(x) and
// l(x)m(x), e(x,j), v(x,j), and after a bootstrap the frequencies of r and R0. SVG drawings, or
// PNG images at the given resolution.
#include <QString>
#include <QStringList>

#include "store/session_store.h"

namespace korvan::gui {

struct FigureExport {
  QString folder;
  QString format = "svg";  // "svg" or "png"
  int dpi = 300;           // of a PNG image
  QStringList figures;     // by the names of their Show procedures; empty: the paper's set
};

// Writes "<data file's name>_fig_<figure>.<format>" into the folder for each figure the run has;
// returns the paths written, or an error (the first file that could not be written).
QStringList ExportFigures(const SessionStore& S, const FigureExport& how, QString& error);

}  // namespace korvan::gui
