// korvan-gui: the console window.
//
//   korvan-gui [--answers FILE]... [--answer KEY=VALUE]... [--defaults] [--seed N] [--threads N]
//              [--grab IMAGE] [--figures DIR [--format svg|png] [--dpi N]] [COMMAND...]
//
// With commands, the window runs them in order once it is shown, answering dialogues from the
// answer files first and asking the rest; --grab then saves a picture of the window and ends;
// --figures writes the run's figures for a paper into DIR and ends, without a window.
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <cstdio>

#include <cstring>

#include "console_window.h"
#include "figure_export.h"
#include "ui/answer_book.h"

int main(int argc, char** argv) {
  // Figures for a paper need no screen: drawn off screen unless a platform is named.
  for (int i = 1; i < argc; ++i)
    if (std::strcmp(argv[i], "--figures") == 0 && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
      qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setApplicationName("korvan-gui");
  QCommandLineParser parser;
  parser.setApplicationDescription("KORVAN: age-stage, two-sex life table analysis (the console window)");
  parser.addHelpOption();
  const QCommandLineOption answers("answers", "Answer dialogues from FILE first (repeatable).", "FILE");
  const QCommandLineOption answer("answer", "Answer one dialogue: 'KEY=VALUE' (repeatable).", "KEY=VALUE");
  const QCommandLineOption defaults("defaults", "A dialogue with no answer takes its default.");
  const QCommandLineOption seed("seed", "Seed of the random generator (repeatable bootstrap runs).", "N");
  const QCommandLineOption threads("threads", "Threads of the bootstrap (0: all cores).", "N");
  const QCommandLineOption grab("grab", "After the commands, save a picture of the window to IMAGE and end.",
                                "IMAGE");
  const QCommandLineOption figures("figures", "After the commands, write the run's figures into DIR and end.", "DIR");
  const QCommandLineOption format("format", "Figures as svg (default) or png.", "FORMAT", "svg");
  const QCommandLineOption dpi("dpi", "Resolution of png figures (default 300).", "N", "300");
  const QCommandLineOption figure("figure", "With --figures: this figure only, by name, e.g. ShowStageMortality "
                                            "(repeatable; default: the paper's set).", "NAME");
  parser.addOptions({answers, answer, defaults, seed, threads, grab, figures, format, dpi, figure});
  parser.addPositionalArgument("commands", "Console commands to run in order (A1 A2 A3 ...).", "[COMMAND...]");
  parser.process(app);

  korvan::gui::ConsoleOptions options;
  for (const auto& f : parser.values(answers)) options.answerFiles.push_back(f.toStdString());
  for (const auto& a : parser.values(answer)) options.answers.push_back(a.toStdString());
  options.useDefaults = parser.isSet(defaults);
  // With no window a dialogue without an answer can't be asked: the run stops there.
  if (parser.isSet(figures)) options.askWhenMissing = false;
  bool ok = true;
  if (parser.isSet(seed)) {
    options.runControl.hasSeed = true;
    options.runControl.seed = parser.value(seed).toULongLong(&ok);
    if (!ok) {
      std::fprintf(stderr, "korvan-gui: --seed takes a whole number\n");
      return 2;
    }
  }
  if (parser.isSet(threads)) {
    options.runControl.threads = parser.value(threads).toInt(&ok);
    if (!ok || options.runControl.threads < 0) {
      std::fprintf(stderr, "korvan-gui: --threads takes a whole number\n");
      return 2;
    }
  }
  std::vector<std::string> commands;
  for (const auto& c : parser.positionalArguments()) commands.push_back(c.toStdString());
  const QString grabPath = parser.value(grab);

  std::unique_ptr<korvan::gui::ConsoleWindow> window;
  try {
    window = std::make_unique<korvan::gui::ConsoleWindow>(options);
  } catch (const korvan::AnswerError& e) {
    std::fprintf(stderr, "korvan-gui: %s\n", e.what());
    return 2;
  }
  QObject::connect(window.get(), &korvan::gui::ConsoleWindow::programEnded, &app, [](int code) {
    QApplication::exit(code);
  });
  if (!grabPath.isEmpty()) {
    QObject::connect(window.get(), &korvan::gui::ConsoleWindow::scriptFinished, &app, [&](bool done) {
      // Let the window draw what the last command left before it is taken.
      QTimer::singleShot(700, &app, [&, done] {
        const bool saved = window->grab().save(grabPath, "PNG");
        if (!saved) std::fprintf(stderr, "korvan-gui: cannot write %s\n", qPrintable(grabPath));
        if (!done) std::fprintf(stderr, "korvan-gui: stopped: %s\n", qPrintable(window->LastMessage()));
        QApplication::exit(saved && done ? 0 : 1);
      });
    });
  }
  if (parser.isSet(figures)) {
    korvan::gui::FigureExport how;
    how.folder = parser.value(figures);
    how.format = parser.value(format).toLower();
    how.figures = parser.values(figure);
    how.dpi = parser.value(dpi).toInt(&ok);
    if (!ok || how.dpi < 50 || how.dpi > 2400) {
      std::fprintf(stderr, "korvan-gui: --dpi takes a whole number from 50 to 2400\n");
      return 2;
    }
    QObject::connect(window.get(), &korvan::gui::ConsoleWindow::scriptFinished, &app, [&, how](bool done) {
      if (!done) {
        std::fprintf(stderr, "korvan-gui: stopped: %s\n", qPrintable(window->LastMessage()));
        QApplication::exit(1);
        return;
      }
      QString error;
      const QStringList written = korvan::gui::ExportFigures(window->Store(), how, error);
      for (const auto& path : written) std::printf("%s\n", qPrintable(path));
      if (!error.isEmpty()) std::fprintf(stderr, "korvan-gui: %s\n", qPrintable(error));
      QApplication::exit(error.isEmpty() ? 0 : 1);
    });
    QTimer::singleShot(0, window.get(), [&] { window->RunScript(commands); });
    return app.exec();
  }
  window->show();
  if (!commands.empty() || !grabPath.isEmpty()) {
    QTimer::singleShot(0, window.get(), [&] { window->RunScript(commands); });
  }
  return app.exec();
}
