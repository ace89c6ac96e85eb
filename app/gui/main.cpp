// korvan-gui: the console window.
//
//   korvan-gui [--answers FILE]... [--answer KEY=VALUE]... [--defaults] [--seed N] [--threads N]
//              [--grab IMAGE] [COMMAND...]
//
// With commands, the window runs them in order once it is shown, answering dialogues from the
// answer files first and asking the rest; --grab then saves a picture of the window and ends.
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <cstdio>

#include "console_window.h"
#include "ui/answer_book.h"

int main(int argc, char** argv) {
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
  parser.addOptions({answers, answer, defaults, seed, threads, grab});
  parser.addPositionalArgument("commands", "Console commands to run in order (A1 A2 A3 ...).", "[COMMAND...]");
  parser.process(app);

  korvan::gui::ConsoleOptions options;
  for (const auto& f : parser.values(answers)) options.answerFiles.push_back(f.toStdString());
  for (const auto& a : parser.values(answer)) options.answers.push_back(a.toStdString());
  options.useDefaults = parser.isSet(defaults);
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
  window->show();
  if (!commands.empty() || !grabPath.isEmpty()) {
    QTimer::singleShot(0, window.get(), [&] { window->RunScript(commands); });
  }
  return app.exec();
}
