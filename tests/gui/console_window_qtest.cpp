// The console window driven as a user drives it, under the offscreen platform: the enabling
// rules at start-up, after A1 and after A2; a Basic Run through scripted answers that fills the
// result fields and draws s(x,j); dialogues raised on the worker and answered on the window;
// a bootstrap during which the window keeps turning; a fault that ends the program.
#include <QAbstractButton>
#include <QBarSeries>
#include <QChart>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QGroupBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QScatterSeries>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "chart_view.h"
#include "figure_export.h"
#include "console_window.h"
#include "large_graph.h"
#include "text/numbers.h"
#include "ui/chart_figures.h"
#include "ui/command_table.h"

using korvan::gui::ConsoleOptions;
using korvan::gui::ConsoleWindow;

namespace {

constexpr int kWait = 120000;  // ms a command may take on a busy machine

// A copy of the bundled example in a folder of its own.
QString CopyExample(const QTemporaryDir& dir) {
  const QString path = dir.filePath("mite.txt");
  QFile::copy(QString(KORVAN_EXAMPLES) + "/mite.txt", path);
  return path;
}

// Answers of A1 (no Fast Run) and A2; every other dialogue takes its default.
ConsoleOptions BasicRunOptions(const QString& data) {
  ConsoleOptions o;
  o.answers = {"Open life table data file=" + data.toStdString(),
               "Do you need only the basic output (0A) and figure files?=No",
               "Fast run for two-sex or parthenogenetic population?=Cancel", "Do you need flow record?=No",
               "Do you need the contribution of this life table to intrinsic rate?=No", "Life table only?=Yes"};
  o.useDefaults = true;
  o.askWhenMissing = false;
  return o;
}

QPushButton* Button(const ConsoleWindow& w, const char* control) {
  auto* b = w.findChild<QPushButton*>(control);
  if (!b) qFatal("no button %s", control);
  return b;
}

QString Field(const ConsoleWindow& w, const char* control) { return w.findChild<QLineEdit*>(control)->text(); }

bool FrameShown(const ConsoleWindow& w, const char* frame) {
  for (auto* box : w.findChildren<QGroupBox*>()) {
    if (box->title() == frame) return !box->isHidden();
  }
  return false;
}

// Clicks a command and waits for it to end.
void Run(ConsoleWindow& w, const char* control) {
  QVERIFY2(Button(w, control)->isEnabled(), control);
  QTest::mouseClick(Button(w, control), Qt::LeftButton);
  QTRY_VERIFY_WITH_TIMEOUT(!w.IsRunning(), kWait);
}

// Calls handle on each modal dialogue that comes up while it lives.
class DialogueHandler : public QObject {
 public:
  explicit DialogueHandler(std::function<void(QWidget*)> handle) : handle_(std::move(handle)) {
    timer_.setInterval(30);
    connect(&timer_, &QTimer::timeout, this, [this] {
      if (QWidget* w = QApplication::activeModalWidget(); w && w != last_) {
        last_ = w;
        handle_(w);
      }
    });
    timer_.start();
  }

 private:
  std::function<void(QWidget*)> handle_;
  QTimer timer_;
  QWidget* last_ = nullptr;
};

}  // namespace

class ConsoleWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void startUpRulesAndTheCommandTable();
  void basicRunFillsTheResultsAndDrawsTheSurvivalChart();
  void dialoguesOfTheWorkerAreShownOnTheWindow();
  void bootstrapKeepsTheWindowTurning();
  void faultShowsItsBoxAndEndsTheProgram();
  void contributionFormRunsItsCommand();
  void matchFormRunsTheTeachingDemo();
};

void ConsoleWindowTest::startUpRulesAndTheCommandTable() {
  ConsoleWindow w;
  w.show();
  for (const auto& c : korvan::CommandTable()) {
    const std::string control(c.control);
    auto* b = Button(w, control.c_str());
    QCOMPARE(b->text().toStdString(), std::string(c.caption));
    QCOMPARE(b->toolTip().toStdString(), std::string(c.toolTip));
    if (c.group != korvan::CommandGroup::Graph) QCOMPARE(b->isEnabled(), c.openAtStart);
  }
  QVERIFY(Button(w, "cmdReadDataA1")->isEnabled());
  QVERIFY(Button(w, "cmdBootstrap")->isEnabled());
  QVERIFY(!Button(w, "cmdBasicRunA2")->isEnabled());
  QVERIFY(!Button(w, "Command21")->isEnabled());
  QVERIFY(FrameShown(w, "Main procedures"));
  QVERIFY(!FrameShown(w, "Main figures"));
  QCOMPARE(w.findChild<QLabel*>("Label12")->text(), QString("Age-stage, two-sex life table analysis"));
  QVERIFY(w.findChild<QLabel*>("Limits")->text().startsWith("Number of individuals: 400\nNumber of bootstrap: 100000\n"));
  QCOMPARE(w.findChild<QLabel*>("Label15")->text(), QString("Standard"));
  // The timers keep the date and the greeting.
  QTRY_VERIFY(!w.findChild<QLabel*>("Label6")->text().isEmpty());
  QCOMPARE(w.findChild<QLabel*>("Label13")->text(), QString("How do you do?"));
  // A command still closed is refused with its reason.
  QVERIFY(!w.Press("cmdBasicRunA2"));
  QVERIFY(w.LastMessage().contains("it opens after A1. Read data"));
  QVERIFY(w.MainChart()->Panel().Empty());
}

void ConsoleWindowTest::basicRunFillsTheResultsAndDrawsTheSurvivalChart() {
  QTemporaryDir dir;
  const QString data = CopyExample(dir);
  ConsoleWindow w(BasicRunOptions(data));
  w.show();

  Run(w, "cmdReadDataA1");
  QCOMPARE(Field(w, "txtDatafile"), data);
  QVERIFY(w.findChild<QLineEdit*>("txtDatafile")->styleSheet().contains("#00008b"));
  QVERIFY(w.findChild<QLabel*>("Label4")->isVisible());  // the greeting picture has gone
  QVERIFY(!w.findChild<QLabel*>("Picture1")->isVisible());
  QCOMPARE(Field(w, "txtCohortsize"), QString("100"));
  // After A1: Basic Run opens, reading another file and the analyses of other files close.
  for (const char* open : {"cmdBasicRunA2", "Command42", "Command44", "cmdWriteSpeLifeTable", "cmdAddDuration",
                           "cmdReduceReprodPeriod", "cmdAddDurationToStage", "cmdCreateLectureFile"})
    QVERIFY2(Button(w, open)->isEnabled(), open);
  for (const char* closed : {"cmdReadDataA1", "cmdMatchedLifeTable", "cmdPBTPooled", "cmdPairedBootTest",
                             "cmdGeneralBootstrap", "cmdReadNandF", "FMNmatrices", "Command21"})
    QVERIFY2(!Button(w, closed)->isEnabled(), closed);
  QVERIFY(!FrameShown(w, "Main figures"));
  QVERIFY(w.MainChart()->Panel().Empty());

  Run(w, "cmdBasicRunA2");
  const korvan::SessionStore& S = w.Store();
  QCOMPARE(S.basic.BasicRunDone, std::string("yes"));
  // The result fields hold the run's parameters in their roundings.
  const auto& p = S.params;
  QCOMPARE(Field(w, "txtFiniteRate").toStdString(), korvan::FullPrecision(korvan::RoundDisplay(p.Lambda_Basic, 8)));
  QCOMPARE(Field(w, "txtIntrinsicrate").toStdString(), korvan::FullPrecision(korvan::RoundDisplay(p.R_Basic, 8)));
  QCOMPARE(Field(w, "txtNetreproductiverate").toStdString(), korvan::FullPrecision(korvan::RoundDisplay(p.R0_Basic, 4)));
  QCOMPARE(Field(w, "txtMeangenerationtime").toStdString(), korvan::FullPrecision(korvan::RoundDisplay(p.T_Basic, 2)));
  QVERIFY(!Field(w, "txtMeanfecundity").isEmpty());
  QVERIFY(p.R0_Basic > 1 && p.R_Basic > 0);
  // After A2: the bootstrap, the large graph and the figures open; "K. 1t to xt" closes (A2
  // stays open: a second press writes the raw-data files again).
  for (const char* open : {"cmdBootstrap", "Command4", "Command21", "Command28", "ContributionPartition",
                           "cmdShowFvsTotalLong", "Command42"})
    QVERIFY2(Button(w, open)->isEnabled(), open);
  for (const char* closed : {"Command44", "cmdReadDataA1"})
    QVERIFY2(!Button(w, closed)->isEnabled(), closed);
  QVERIFY(FrameShown(w, "Main procedures"));
  QVERIFY(FrameShown(w, "Main figures"));

  // s(x,j) drawn: one line per stage, named by the stage, over the ages 0..LastAge+1.
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowSxj"));
  QChart* chart = w.MainChart()->chart();
  const auto series = chart->series();
  const int m = S.header.StageCount;
  QCOMPARE(static_cast<int>(series.size()), m + 1);
  for (int j = 1; j <= m + 1; ++j) {
    auto* line = qobject_cast<QLineSeries*>(series[j - 1]);
    QVERIFY(line);
    QCOMPARE(line->name().toStdString(), S.header.StageName(1, j));
    QCOMPARE(line->count(), S.ws.tables.LastAge + 2);
    for (int a = 0; a < line->count(); a += 5) QCOMPARE(line->at(a).y(), S.ws.tables.Sxj(a, j));
  }
  QVERIFY(chart->title().contains("Survival rate to each age-stage group"));

  // A click shows the next figure of the cycle; a graph command its own figure.
  QTest::mouseClick(w.MainChart()->viewport(), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowGxj"));
  QTest::mouseClick(Button(w, "Command3"), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowLx"));
  QCOMPARE(static_cast<int>(w.MainChart()->chart()->series().size()), 1);
  // A regression of fecundity: the females' points and the fitted line, its data in a file.
  QTest::mouseClick(Button(w, "cmdShowFvsTotalLong"), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowFRegOnTotalLong"));
  QVERIFY(qobject_cast<QScatterSeries*>(w.MainChart()->chart()->series().at(0)));
  QVERIFY(QFile::exists(dir.filePath("mite_G_Total longevity and fecundity.txt")));
  // The expected fecundity of females, with its file.
  QTest::mouseClick(Button(w, "cmdShowFemaleFecundExpectancy"), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowFemaleFecundityExpectancy"));
  QVERIFY(QFile::exists(dir.filePath("mite_7_Fig_female fecundity expectancy.txt")));
  // The large graph opens on s(x,j), bigger.
  QTest::mouseClick(Button(w, "Command4"), Qt::LeftButton);
  QVERIFY(w.LargeGraphWindow() && w.LargeGraphWindow()->isVisible());
  QCOMPARE(w.LargeGraphWindow()->View()->Panel().figure, std::string("ShowSxj"));
  QCOMPARE(w.LargeGraphWindow()->View()->Panel().titleFont.size, 16);
  // Its list also offers the figures beyond the click cycle: the stage bars among them.
  w.LargeGraphWindow()->ShowFigure("ShowStageMortality");
  QVERIFY(qobject_cast<QBarSeries*>(w.LargeGraphWindow()->View()->chart()->series().at(0)));

  // Charts are saved as PNG images and SVG drawings.
  const QString png = dir.filePath("chart.png"), svg = dir.filePath("chart.svg");
  QVERIFY(w.MainChart()->Save(png));
  QVERIFY(QImage(png).width() > 100);
  if (w.MainChart()->Save(svg)) {
    QFile f(svg);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QVERIFY(f.readAll().contains("<svg"));
  }
}

void ConsoleWindowTest::dialoguesOfTheWorkerAreShownOnTheWindow() {
  QTemporaryDir dir;
  const QString data = CopyExample(dir);
  ConsoleOptions o;
  // Three dialogues are left to the window: the file chooser, a Yes/No/Cancel box and an input
  // box.
  o.answers = {"Fast run for two-sex or parthenogenetic population?=Cancel", "Do you need flow record?=No",
               "Do you need the contribution of this life table to intrinsic rate?=No",
               "Do you need all output files?=Yes", "Rearing cost for each stage?=Yes"};
  o.askWhenMissing = true;
  ConsoleWindow w(o);
  w.show();
  QStringList seen;
  bool closedWhileAsked = true;
  DialogueHandler handler([&](QWidget* dialogue) {
    for (const char* control : {"cmdReadDataA1", "cmdBootstrap", "cmdPairedBootTest", "Command1"})
      closedWhileAsked = closedWhileAsked && !Button(w, control)->isEnabled();
    QVERIFY(dialogue->thread() == w.thread());
    if (auto* chooser = qobject_cast<QFileDialog*>(dialogue)) {
      seen << chooser->windowTitle();
      // The path typed into the chooser's file name, as a user types it.
      auto* name = chooser->findChild<QLineEdit*>("fileNameEdit");
      QVERIFY(name);
      name->setText(data);
      QTimer::singleShot(0, chooser, [chooser] { static_cast<QDialog*>(chooser)->done(QDialog::Accepted); });
    } else if (auto* box = qobject_cast<QMessageBox*>(dialogue)) {
      seen << box->windowTitle();
      QCOMPARE(static_cast<int>(box->buttons().size()), 3);
      QVERIFY(box->button(QMessageBox::Yes) && box->button(QMessageBox::No) && box->button(QMessageBox::Cancel));
      QVERIFY(box->text().startsWith("Minimal outputs?\n\nYes: Only basic output and figure files."));
      QCOMPARE(box->defaultButton(), box->button(QMessageBox::Yes));
      box->button(QMessageBox::No)->click();
    } else if (auto* input = qobject_cast<QInputDialog*>(dialogue)) {
      seen << input->windowTitle() + ": " + input->textValue();
      input->setTextValue("1");  // a general analysis
      input->accept();
    }
  });
  Run(w, "cmdReadDataA1");
  QCOMPARE(seen, QStringList({"Open life table data file", "Do you need only the basic output (0A) and figure files?",
                               "General analysis or 3D analysis?: 1"}));
  QVERIFY(closedWhileAsked);
  QVERIFY(Button(w, "cmdBasicRunA2")->isEnabled());
  QCOMPARE(QString::fromStdString(w.Store().identity.DataFilePath), data);
  QCOMPARE(w.Store().options.MinimalOutput, std::string(""));
}

void ConsoleWindowTest::bootstrapKeepsTheWindowTurning() {
  QTemporaryDir dir;
  const QString data = CopyExample(dir);
  ConsoleOptions o;
  o.answerFiles = {std::string(KORVAN_EXAMPLES) + "/mite_boot.answers"};
  o.answers = {"Open life table data file=" + data.toStdString(),
               "Do you need only the basic output (0A) and figure files?=No",
               "Fast run for two-sex or parthenogenetic population?=Yes",
               "Do you need the contribution of this life table to intrinsic rate?=No",
               "Number of bootstrap resamplings (B)=?=300"};
  o.askWhenMissing = false;
  o.runControl.hasSeed = true;
  o.runControl.seed = 7;
  o.runControl.threads = 2;
  ConsoleWindow w(o);
  w.show();
  Run(w, "cmdReadDataA1");  // a Fast Run goes on to Basic Run
  QCOMPARE(w.Store().basic.BasicRunDone, std::string("yes"));

  // While the bootstrap runs the window keeps handling its events and every command is closed.
  int turns = 0;
  bool closed = true;
  QTimer tick;
  connect(&tick, &QTimer::timeout, this, [&] {
    if (!w.IsRunning()) return;
    ++turns;
    for (const char* control : {"cmdReadDataA1", "cmdBootstrap", "Command4", "cmdBootLx", "Command1"})
      closed = closed && !Button(w, control)->isEnabled();
  });
  tick.start(5);
  Run(w, "cmdBootstrap");
  tick.stop();
  QVERIFY2(w.LastMessage().isEmpty(), qPrintable(w.LastMessage()));
  QVERIFY(turns > 0);
  QVERIFY(closed);
  QVERIFY(w.Store().boot.EffectiveCount > 250 && w.Store().boot.EffectiveCount <= 300);
  QCOMPARE(w.findChild<QProgressBar*>("Progress")->value(), 1000);
  QVERIFY(w.findChild<QLabel*>("lblBootEnd")->text().contains("Total time ="));

  // The frequency of R0 on the second chart; the bands of l(x) on the first.
  const auto& freq = w.FrequencyChart()->Panel();
  QCOMPARE(freq.figure, std::string("ShowFreqR0"));
  QCOMPARE(freq.Rows(), w.Store().boot.HistogramBarsPlus1 + 2);
  double counted = 0;
  for (double v : freq.series[0].values) counted += v;
  QVERIFY(counted > 200 && counted <= w.Store().boot.EffectiveCount);
  QTest::mouseClick(w.FrequencyChart()->viewport(), Qt::LeftButton);
  QCOMPARE(w.FrequencyChart()->Panel().figure, std::string("ShowFreqr"));
  QVERIFY(Button(w, "cmdBootLx")->isEnabled());
  QTest::mouseClick(Button(w, "cmdBootLx"), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowBootLx"));
  QCOMPARE(static_cast<int>(w.MainChart()->chart()->series().size()), 3);
  // After a bootstrap a click on the chart changes nothing.
  QTest::mouseClick(w.MainChart()->viewport(), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowBootLx"));
  QTest::mouseClick(Button(w, "cmdBootLx"), Qt::LeftButton);
  QCOMPARE(w.MainChart()->Panel().figure, std::string("ShowBootLxCI"));

  // "Boot result": the means and SEs of the run, rounded.
  QTest::mouseClick(Button(w, "showBootandJackResult"), Qt::LeftButton);
  auto* form = w.findChild<QDialog*>("JackBootform");
  QVERIFY(form && form->isVisible());
  QCOMPARE(form->windowTitle(), QString("Bootstrap results (Bootstrap number B: 300)"));
  const auto& boot = w.Store().boot;
  QCOMPARE(form->findChild<QLineEdit*>("R0Mean")->text().toStdString(),
           korvan::FullPrecision(korvan::RoundDisplay(boot.R0.mean, 4)));
  QCOMPARE(form->findChild<QLineEdit*>("TSE")->text().toStdString(),
           korvan::FullPrecision(korvan::RoundDisplay(boot.T.se, 2)));

  // The run label tells the run has ended; the chart's title rounds as the reports do.
  QVERIFY(w.findChild<QLabel*>("lblBootMsg")->text().startsWith("Bootstrap completed (B = 300)"));
  QVERIFY(korvan::ShowFreqR0(w.Store()).title[0].find(
              ". Mean=" + korvan::FullPrecision(korvan::RoundDisplay(boot.R0.mean, 4)) + ". ") != std::string::npos);

  // The frequency form: R0 with "N =", and the draws of each individual (n of them a sample).
  QTest::mouseClick(Button(w, "FreqFormButton"), Qt::LeftButton);
  auto* freqForm = w.findChild<QWidget*>("FreqForm");
  QVERIFY(freqForm && freqForm->isVisible());
  auto* formChart = freqForm->findChild<korvan::gui::ChartView*>("FreqFormChart");
  QVERIFY(formChart->Panel().title[0].rfind("N =100.", 0) == 0);
  for (auto* b : freqForm->findChildren<QPushButton*>())
    if (b->text() == "Cont. bar") QTest::mouseClick(b, Qt::LeftButton);
  QCOMPARE(formChart->Panel().figure, std::string("ShowIndCountsContinuous"));
  double draws = 0;
  for (double v : formChart->Panel().series[0].values) draws += v;
  QCOMPARE(draws, 300.0 * boot.BootSampleSize);

  // The results form: a row per age of the Basic Run.
  QTest::mouseClick(Button(w, "ResultFmButton"), Qt::LeftButton);
  auto* results = w.findChild<QDialog*>("ResultFm");
  QVERIFY(results && results->isVisible());
  QCOMPARE(results->findChild<QTableWidget*>("ResultGrid")->rowCount(), w.Store().ws.tables.LastAge + 2);

  // The figures for a paper: seven drawings, and the same as images of the page's size.
  for (const char* format : {"svg", "png"}) {
    korvan::gui::FigureExport how;
    how.folder = dir.filePath("figures");
    how.format = format;
    how.dpi = 150;
    QString error;
    const QStringList files = korvan::gui::ExportFigures(w.Store(), how, error);
    QVERIFY2(error.isEmpty(), qPrintable(error));
    QCOMPARE(files.size(), 7);
    QFile first(files.front());
    QVERIFY(first.open(QIODevice::ReadOnly));
    const QByteArray head = first.read(512);
    if (how.format == "svg") {
      QVERIFY(head.contains("<svg"));
    } else {
      QVERIFY(head.startsWith("\x89PNG"));
      QCOMPARE(QImage(files.front()).width(), 605 * 150 / 96);
    }
  }
}

void ConsoleWindowTest::faultShowsItsBoxAndEndsTheProgram() {
  QTemporaryDir dir;
  const QString data = dir.filePath("broken.txt");
  QFile f(data);
  QVERIFY(f.open(QIODevice::WriteOnly));
  f.write("\"Project\"\n\"User\"\n\"Treatment\"\n3\n1,2\nF,Egg,Female\n");
  f.close();
  ConsoleOptions o;
  o.answers = {"Open life table data file=" + data.toStdString()};
  o.useDefaults = true;
  o.askWhenMissing = false;
  ConsoleWindow w(o);
  w.show();
  QSignalSpy ended(&w, &ConsoleWindow::programEnded);
  QString faultText;
  DialogueHandler handler([&](QWidget* dialogue) {
    if (auto* box = qobject_cast<QMessageBox*>(dialogue); box && box->objectName() == "FaultBox") {
      faultText = box->windowTitle() + ": " + box->text();
      box->button(QMessageBox::Ok)->click();
    }
  });
  QTest::mouseClick(Button(w, "cmdReadDataA1"), Qt::LeftButton);
  QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, kWait);
  QCOMPARE(ended.at(0).at(0).toInt(), 1);
  QVERIFY2(!faultText.isEmpty(), qPrintable(w.LastMessage()));
  QVERIFY(faultText.contains(w.LastMessage()));
}

// "I. Contribution" opens its form; its fields (the life table's own r and R0 by default)
// answer the command, whose results come back to the form.
void ConsoleWindowTest::contributionFormRunsItsCommand() {
  QTemporaryDir dir;
  const QString data = CopyExample(dir);
  ConsoleWindow w(BasicRunOptions(data));
  w.show();
  Run(w, "cmdReadDataA1");
  Run(w, "cmdBasicRunA2");
  QTest::mouseClick(Button(w, "ContributionPartition"), Qt::LeftButton);
  auto* form = w.findChild<QWidget*>("frmContribution");
  QVERIFY(form && form->isVisible());
  auto* calculate = form->findChild<QPushButton*>("Command1");
  QCOMPARE(calculate->text(), QString("2. Calculate contribution of these offspring"));
  QTest::mouseClick(calculate, Qt::LeftButton);
  QTRY_VERIFY_WITH_TIMEOUT(!w.IsRunning(), kWait);
  QCOMPARE(form->findChild<QLineEdit*>("txtContributionToRo")->text(), QString("1"));
  QVERIFY(QFile::exists(dir.filePath("mite-Contribution table.txt")));
}


void ConsoleWindowTest::matchFormRunsTheTeachingDemo() {
  QTemporaryDir dir;
  for (const char* name : {"mite_0-Immature.txt", "mite_0-Adult.txt"})
    QFile::copy(QString(KORVAN_EXAMPLES) + "/" + name, dir.filePath(name));
  ConsoleOptions o;
  o.answers = {"Teaching demo?=Yes"};
  o.useDefaults = true;
  o.askWhenMissing = false;
  ConsoleWindow w(o);
  w.show();
  QTest::mouseClick(Button(w, "cmdMatchedLifeTable"), Qt::LeftButton);
  auto* form = w.findChild<QWidget*>("Form2");
  QVERIFY(form && form->isVisible());
  form->findChild<QLineEdit*>("ImmatureFile")->setText(dir.filePath("mite_0-Immature.txt"));
  form->findChild<QLineEdit*>("AdultFile")->setText(dir.filePath("mite_0-Adult.txt"));
  form->findChild<QLineEdit*>("txtSampleSize")->setText("30");
  form->findChild<QLineEdit*>("txtBootB")->setText("5");
  QTest::mouseClick(form->findChild<QPushButton*>("Command7"), Qt::LeftButton);
  QTRY_VERIFY_WITH_TIMEOUT(!w.IsRunning(), kWait);
  QVERIFY(form->findChild<QLineEdit*>("lblImmatureNr")->text().startsWith("n ="));
  QVERIFY(!form->findChild<QLineEdit*>("txtMeanBootR0")->text().isEmpty());
  // The demo's last chart is the survival of match 5.
  QCOMPARE(w.MainChart()->Panel().title.back(), std::string("Match no. = 5"));
  QVERIFY(QFile::exists(dir.filePath("mite_2B_Bootstrap_Output.txt")));
}

QTEST_MAIN(ConsoleWindowTest)
#include "console_window_qtest.moc"
