#include "console_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRandomGenerator>
#include <QStatusBar>
#include <QHeaderView>
#include <QTabWidget>
#include <QTableWidget>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

#include "analysis_forms.h"
#include "chart_view.h"
#include "large_graph.h"
#include "store/faults.h"
#include "store/limits.h"
#include "ui/answer_book.h"
#include "ui/chart_figures.h"
#include "ui/chart_regression.h"
#include "commands/command_handlers.h"
#include "commands/run_command.h"
#include "ui/console_display.h"
#include "ui/console_texts.h"
#include "ui/multi_ci_table.h"
#include "ui/result_form.h"

namespace korvan::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }
QString Q(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<int>(s.size())); }

// A label that answers a click or a double click.
class ClickLabel : public QLabel {
 public:
  explicit ClickLabel(const QString& text) : QLabel(text) {}
  std::function<void()> onClick, onDoubleClick;

 protected:
  void mouseReleaseEvent(QMouseEvent* e) override {
    if (e->button() == Qt::LeftButton && onClick) onClick();
    QLabel::mouseReleaseEvent(e);
  }
  void mouseDoubleClickEvent(QMouseEvent* e) override {
    if (onDoubleClick) onDoubleClick();
    QLabel::mouseDoubleClickEvent(e);
  }
};

// What the result fields hold, shown as their tool tips.
const char* Definition(std::string_view control) {
  if (control == "txtDatafile") return "The life table data file of this session";
  if (control == "txtCohortsize") return "Number of individuals at the start of the cohort";
  if (control == "txtMeanfecundity") return "Mean fecundity of the females";
  if (control == "txtFiniteRate") return "Finite rate of increase (lambda): the growth of the population per time unit";
  if (control == "txtIntrinsicrate") return "Intrinsic rate of increase (r): ln(lambda)";
  if (control == "txtNetreproductiverate") return "Net reproductive rate (R0): offspring of an individual over its life";
  if (control == "txtMeangenerationtime") return "Mean generation time (T): ln(R0)/r";
  return "";
}

QString BackColour(const std::string& name) {
  if (name == "Red") return "#ff4040";
  if (name == "Yellow") return "#ffff00";
  if (name == "Green") return "#40c040";
  if (name == "White") return "#ffffff";
  return Q(name);
}

const char* kBlink[] = {"#c00000", "#c06000", "#008000", "#0060c0", "#6000c0", "#c000a0"};

}  // namespace

ConsoleWindow::ConsoleWindow(const ConsoleOptions& options)
    : store_(std::make_unique<Session>()), qtPrompts_(this, this), prompts_(&qtPrompts_) {
  Session& S = *store_;
  S.StartUp();
  SetStartUpConsole(S.console);
  S.runControl = options.runControl;
  if (!options.answerFiles.empty() || !options.answers.empty() || options.useDefaults || !options.askWhenMissing) {
    AnswerBook book;
    for (const auto& file : options.answerFiles) book.AddFile(file);
    for (const auto& answer : options.answers) book.AddOption(answer);
    answered_ = std::make_unique<AnsweredPrompts>(std::move(book), options.useDefaults, options.askWhenMissing,
                                                   qtPrompts_);
    prompts_ = answered_.get();
  }
  setObjectName("Form1");
  setWindowTitle(Q(S.identity.ProgramName));

  auto* central = new QWidget;
  auto* layout = new QGridLayout(central);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->setSpacing(6);

  auto* title = new QLabel(kConsoleTitle);
  title->setObjectName("Label12");
  title->setAlignment(Qt::AlignCenter);
  title->setStyleSheet("font-family: Century, 'Century Schoolbook', serif; font-size: 18pt; color: white; "
                       "background: blue; padding: 6px;");
  layout->addWidget(title, 0, 0, 1, 2);

  layout->addWidget(BuildResults(), 1, 0);
  layout->addWidget(BuildCharts(), 1, 1);
  layout->setColumnStretch(1, 1);
  layout->setRowStretch(1, 1);

  layout->addWidget(frames_["Frame4"] = CommandFrame("Main procedures", CommandGroup::Main, 10), 2, 0, 1, 2);
  layout->addWidget(CommandFrame("Further commands", CommandGroup::Further, 9), 3, 0, 1, 2);
  layout->addWidget(frames_["Frame1"] = CommandFrame("Main figures", CommandGroup::Graph, 8), 4, 0, 1, 2);
  layout->addWidget(BuildRunStatus(), 5, 0, 1, 2);

  setCentralWidget(central);
  statusBar()->showMessage(Q(S.identity.VersionStamp));
  resize(1280, 900);

  timer1_ = new QTimer(this);
  connect(timer1_, &QTimer::timeout, this, &ConsoleWindow::Tick1);
  timer1_->start(1000);
  timer2_ = new QTimer(this);
  connect(timer2_, &QTimer::timeout, this, &ConsoleWindow::Tick2);
  timer2_->start(200);
  Tick1();
  Refresh();
}

ConsoleWindow::~ConsoleWindow() = default;

QWidget* ConsoleWindow::BuildResults() {
  auto* panel = new QWidget;
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);

  auto* results = new QGroupBox("Results");
  auto* form = new QFormLayout(results);
  for (const auto& field : ResultFields()) {
    auto* box = new QLineEdit;
    box->setReadOnly(true);
    box->setObjectName(Q(field.control));
    box->setToolTip(Definition(field.control));
    if (field.control == "txtMeanfecundity") box->setStyleSheet("background: yellow;");
    if (field.control == "txtDatafile") box->setMinimumWidth(260);
    form->addRow(Q(field.label), box);
    fields_[std::string(field.control)] = box;
  }
  column->addWidget(results);

  auto* limitsBox = new QGroupBox("Limits");
  auto* limitsLayout = new QHBoxLayout(limitsBox);
  auto* limits = new QLabel(kLimitsText);
  limits->setObjectName("Limits");
  limitsLayout->addWidget(limits, 1);
  auto* edition = new QLabel(kEditionWord);
  edition->setObjectName("Label15");
  edition->setAlignment(Qt::AlignTop | Qt::AlignRight);
  edition->setStyleSheet("font-weight: bold;");
  labels_["Label15"] = edition;
  limitsLayout->addWidget(edition);
  column->addWidget(limitsBox);

  column->addWidget(BuildGreeting());
  column->addStretch(1);
  return panel;
}

QWidget* ConsoleWindow::BuildGreeting() {
  auto* box = new QGroupBox;
  auto* layout = new QVBoxLayout(box);
  auto* greeting = new QLabel("How do you do?");
  greeting->setObjectName("Label13");
  greeting->setStyleSheet("font-size: 13pt; color: #000080;");
  labels_["Label13"] = greeting;
  layout->addWidget(greeting);

  auto* date = new ClickLabel("");
  date->setObjectName("Label6");
  date->onDoubleClick = [this] { EnableAllForImage(); };
  labels_["Label6"] = date;
  layout->addWidget(date);

  // The greeting picture, until the wisdom labels take its place.
  auto* picture = new QLabel(Q(store_->identity.ProgramName) + "\nage-stage, two-sex life tables");
  picture->setObjectName("Picture1");
  picture->setAlignment(Qt::AlignCenter);
  picture->setMinimumHeight(70);
  picture->setStyleSheet("background: qlineargradient(x1:0, y1:0, x2:1, y2:1, stop:0 #1e5a1e, stop:1 #6fbf4f); "
                         "color: white; font-size: 14pt; font-weight: bold;");
  greetingPicture_ = picture;
  layout->addWidget(picture);

  auto* wisdom = new ClickLabel("Click here for a word of wisdom.");
  wisdom->setObjectName("Label4");
  wisdom->setWordWrap(true);
  wisdom->setCursor(Qt::PointingHandCursor);
  wisdom->onClick = [this] { ShowWisdom(); };
  wisdom->hide();
  labels_["Label4"] = wisdom;
  layout->addWidget(wisdom);
  auto* stamp = new QLabel(Q(store_->identity.ProgramName + " " + store_->identity.VersionStamp));
  stamp->setObjectName("Label14");
  stamp->hide();
  labels_["Label14"] = stamp;
  layout->addWidget(stamp);
  return box;
}

QWidget* ConsoleWindow::BuildCharts() {
  chartTabs_ = new QTabWidget;
  chartTabs_->setMinimumSize(700, 500);
  mainChart_ = new ChartView;
  mainChart_->setObjectName("MSChart1");
  mainChart_->setToolTip("Click the chart to see the next figure");
  freqChart_ = new ChartView;
  freqChart_->setObjectName("MSChart2");
  chartTabs_->addTab(mainChart_, "Figures");
  chartTabs_->addTab(freqChart_, "Frequency");
  // The grid of a comparison of treatments (C, Q, the Tukey table).
  comparisonGrid_ = new QTableWidget;
  comparisonGrid_->setObjectName("MSFlexGrid1");
  comparisonGrid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  comparisonGrid_->horizontalHeader()->hide();
  comparisonGrid_->verticalHeader()->hide();
  connect(mainChart_, &ChartView::clicked, this, &ConsoleWindow::MainChartClicked);
  freqChart_->setToolTip("Click the chart to see the frequency of R0 or of r");
  connect(freqChart_, &ChartView::clicked, this, [this] {
    if (running_) return;
    const std::string figure = FrequencyClickFigure(*store_, freqChart_->Panel().figure);
    if (!figure.empty()) freqChart_->SetPanel(BuildFigure(*store_, figure));
  });

  auto* area = new QWidget;
  auto* layout = new QVBoxLayout(area);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(chartTabs_, 1);
  auto* save = new QPushButton("Save chart...");
  save->setObjectName("SaveChart");
  save->setToolTip("Save the chart shown as a PNG image or an SVG drawing");
  connect(save, &QPushButton::clicked, this, [this] {
    if (auto* view = qobject_cast<ChartView*>(chartTabs_->currentWidget())) view->SaveWithDialog();
  });
  auto* table = new QPushButton("Life table by age...");
  table->setObjectName("ResultFmButton");
  table->setToolTip("l(x), m(x), l(x)m(x), the Euler-Lotka terms, SAD, E(x) and R(x) by age (after Basic Run)");
  connect(table, &QPushButton::clicked, this, &ConsoleWindow::ShowResultForm);
  auto* frequency = new QPushButton("Frequency form...");
  frequency->setObjectName("FreqFormButton");
  frequency->setToolTip("Frequencies of bootstrap R0 and r, and how often each individual was drawn");
  connect(frequency, &QPushButton::clicked, this, &ConsoleWindow::ShowFrequencyForm);
  auto* row = new QHBoxLayout;
  row->addStretch(1);
  row->addWidget(table);
  row->addWidget(frequency);
  row->addWidget(save);
  layout->addLayout(row);
  return area;
}

void ConsoleWindow::ShowResultForm() {
  if (running_) return;
  const MultiCITable t = ResultFmTable(*store_);
  auto* dialog = new QDialog(this);
  dialog->setObjectName("ResultFm");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle("Life table by age");
  auto* layout = new QVBoxLayout(dialog);
  auto* grid = new QTableWidget(t.rows - 1, t.columns);
  grid->setObjectName("ResultGrid");
  grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid->verticalHeader()->hide();
  QStringList heads;
  for (const auto& h : t.cells[0]) heads << Q(h);
  grid->setHorizontalHeaderLabels(heads);
  for (int r = 1; r < t.rows; ++r)
    for (int c = 0; c < t.columns; ++c) grid->setItem(r - 1, c, new QTableWidgetItem(Q(t.Cell(r, c))));
  grid->resizeColumnsToContents();
  layout->addWidget(grid);
  dialog->resize(900, 600);
  dialog->show();
}

void ConsoleWindow::ShowFrequencyForm() {
  if (running_) return;
  const BootstrapRecord& R = store_->boot;
  if (R.BootstrapCompleted != "yes") {
    Note("The frequency form shows the samples of a bootstrap: run A3 first.");
    return;
  }
  auto* form = new QWidget(this, Qt::Window);
  form->setObjectName("FreqForm");
  form->setAttribute(Qt::WA_DeleteOnClose);
  form->setWindowTitle("Frequency distribution of bootstrap samples");
  auto* layout = new QVBoxLayout(form);
  auto* view = new ChartView;
  view->setObjectName("FreqFormChart");
  layout->addWidget(view, 1);
  auto* buttons = new QHBoxLayout;
  auto add = [&](const QString& caption, std::function<ChartPanel()> build) {
    auto* b = new QPushButton(caption);
    connect(b, &QPushButton::clicked, view, [view, build] { view->SetPanel(build()); });
    buttons->addWidget(b);
  };
  const Session& S = *store_;
  add(R.ResampleKind == "j" ? "Jackknife Ro" : "Bootstrap Ro", [&S] { return FreqFormR0(S); });
  add("Bootstrap r", [&S] { return FreqFormr(S); });
  add("Bar", [&S] { return IndividualCounts(S, IndividualCountsForm::Bars); });
  add("Cont. bar", [&S] { return IndividualCounts(S, IndividualCountsForm::ContinuousBars); });
  add("Freq. line", [&S] { return IndividualCounts(S, IndividualCountsForm::Line); });
  add("Cont. line", [&S] { return IndividualCounts(S, IndividualCountsForm::ContinuousLine); });
  auto* save = new QPushButton("Save chart...");
  connect(save, &QPushButton::clicked, view, &ChartView::SaveWithDialog);
  buttons->addStretch(1);
  buttons->addWidget(save);
  layout->addLayout(buttons);
  view->SetPanel(FreqFormR0(S));
  form->resize(1000, 700);
  form->show();
}

QWidget* ConsoleWindow::BuildRunStatus() {
  auto* box = new QGroupBox("Run");
  auto* layout = new QGridLayout(box);
  int column = 0;
  for (const char* name : {"lblBootMsg", "lblBootBegin", "lblBootEnd"}) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setMinimumHeight(24);
    if (std::string_view(name) == "lblBootMsg") label->setStyleSheet("font-size: 12pt; font-weight: bold; color: #800000;");
    labels_[name] = label;
    layout->addWidget(label, 0, column++);
  }
  progress_ = new QProgressBar;
  progress_->setObjectName("Progress");
  progress_->setRange(0, 1);
  progress_->setValue(0);
  progress_->setFormat("");
  progress_->setTextVisible(true);
  layout->addWidget(progress_, 1, 0, 1, 2);
  progressText_ = new QLabel;
  progressText_->setObjectName("ProgressText");
  layout->addWidget(progressText_, 1, 2);
  for (int c = 0; c < 3; ++c) layout->setColumnStretch(c, 1);
  return box;
}

QGroupBox* ConsoleWindow::CommandFrame(const char* title, CommandGroup group, int columns) {
  auto* frame = new QGroupBox(title);
  auto* grid = new QGridLayout(frame);
  grid->setSpacing(3);
  int n = 0;
  for (const auto& command : CommandTable()) {
    if (command.group != group) continue;
    const std::string control(command.control);
    auto* button = new QPushButton(Q(command.caption));
    button->setObjectName(Q(control));
    button->setToolTip(Q(command.toolTip));
    connect(button, &QPushButton::clicked, this, [this, control] { Press(control); });
    grid->addWidget(button, n / columns, n % columns);
    buttons_[control] = button;
    ++n;
  }
  return frame;
}

// ---------------------------------------------------------------------------------------
// Commands

bool ConsoleWindow::Press(const std::string& control) {
  if (running_) {
    lastMessage_ = "A command is running.";
    return false;
  }
  const CommandInfo* command = FindCommand(control);
  if (!command) {
    lastMessage_ = Q("Unknown command " + control);
    return false;
  }
  Session& S = *store_;
  if (!IsCommandOpen(S.console, *command)) {
    Note(Q(ClosedCommandMessage(S.console, *command)));
    return false;
  }
  if (command->control == "Command4") {
    OpenLargeGraph();
    return true;
  }
  if (command->group == CommandGroup::Graph) {
    if (FigureOfCommand(command->control, mainChart_->Panel().figure).empty()) {
      Note(Q(command->caption) + ": not available yet");
      return false;
    }
    ShowGraphCommand(*command);
    return true;
  }
  if (command->control == "showBootandJackResult") {
    ShowBootResultForm();
    return true;
  }
  if (!IsCommandBuilt(command->control)) {
    Note(Q(command->caption) + ": not available yet");
    return false;
  }
  if (command->control == "Command1") {
    emit programEnded(0);
    return true;
  }
  // The harvest, contribution and matching forms: their fields answer the command's dialogues.
  // A script answers them itself.
  if (!scriptActive_ && (command->control == "cmdHarvest" || command->control == "ContributionPartition" ||
                         command->control == "cmdMatchedLifeTable")) {
    ShowAnalysisForm(*command);
    return true;
  }
  StartCommand(*command);
  return true;
}

void ConsoleWindow::ShowAnalysisForm(const CommandInfo& command) {
  const CommandInfo* info = &command;
  auto calculate = [this, info](const FormAnswers& answers) {
    if (running_) return;
    qtPrompts_.Preset(answers);
    StartCommand(*info);
  };
  auto add = [this](const std::string& name, QLineEdit* field) { formFields_[name] = field; };
  QWidget* form = command.control == "cmdHarvest"            ? HarvestForm(this, *store_, calculate, add)
                 : command.control == "cmdMatchedLifeTable" ? MatchForm(this, calculate, add)
                                                            : ContributionForm(this, *store_, calculate, add);
  form->show();
}

void ConsoleWindow::StartCommand(const CommandInfo& command) {
  running_ = true;
  outcome_ = Outcome{};
  lastMessage_.clear();
  Refresh();
  const std::string control(command.control);
  statusBar()->showMessage(Q(command.caption) + " is running...");
  QThread* worker = QThread::create([this, control] { RunOnWorker(control); });
  worker->setObjectName("analysis");
  connect(worker, &QThread::finished, this, [this, worker, control] {
    worker->deleteLater();
    CommandEnded(control);
  });
  worker->start();
}

void ConsoleWindow::RunOnWorker(std::string control) {
  const CommandOutcome run = RunCommand(*store_, *prompts_, control);
  Outcome out;
  switch (run.ending) {
    case CommandEnding::Ran:
      break;
    case CommandEnding::Quit:
      out = {Outcome::Quit, "", ""};
      break;
    case CommandEnding::Refused:
    case CommandEnding::MissingAnswer:
      out = {Outcome::Refused, "", run.message};
      break;
    default:
      out = {Outcome::Fault, run.title, run.message};
      break;
  }
  outcome_ = out;  // read on the window's thread once the worker has finished
}

void ConsoleWindow::CommandEnded(const std::string& control) {
  qtPrompts_.Flush();
  running_ = false;
  Refresh();
  ShowComparisonGrid(control);
  statusBar()->showMessage(Q(store_->identity.VersionStamp));
  const Outcome out = outcome_;
  switch (out.kind) {
    case Outcome::Done:
      emit commandFinished(Q(control), true);
      if (closeWhenDone_) close();
      if (scriptActive_) NextScriptStep();
      return;
    case Outcome::Refused:
      Note(Q(out.message));
      emit commandFinished(Q(control), false);
      if (scriptActive_) {
        scriptActive_ = false;
        emit scriptFinished(false);
      }
      if (closeWhenDone_) close();
      return;
    case Outcome::Quit:
      emit commandFinished(Q(control), true);
      emit programEnded(0);
      return;
    case Outcome::Fault:
      emit commandFinished(Q(control), false);
      ShowFault(out);
      return;
  }
}

void ConsoleWindow::ShowFault(const Outcome& out) {
  // The program ends here, as a run of it ends: its files are closed already.
  lastMessage_ = Q(out.message);
  if (!out.message.empty() || !out.title.empty()) {
    QMessageBox box(QMessageBox::Critical, Q(out.title.empty() ? store_->identity.ProgramName : out.title),
                    Q(out.message), QMessageBox::Ok, this);
    box.setObjectName("FaultBox");
    box.exec();
  }
  scriptActive_ = false;
  emit programEnded(1);
}

void ConsoleWindow::RunScript(std::vector<std::string> controls) {
  script_ = std::move(controls);
  scriptStep_ = 0;
  scriptActive_ = true;
  NextScriptStep();
}

void ConsoleWindow::NextScriptStep() {
  // A Fast Run's A1 runs Basic Run itself: a Basic Run asked for after it is then passed by.
  while (scriptStep_ < script_.size()) {
    const std::string name = script_[scriptStep_++];
    const CommandInfo* command = FindCommand(name);
    if (command && command->control == "cmdBasicRunA2" && store_->basic.BasicRunDone == "yes") continue;
    if (!command || !Press(std::string(command->control))) {
      if (!command) Note(Q("Unknown command " + name));
      scriptActive_ = false;
      emit scriptFinished(false);
      return;
    }
    if (running_) return;  // the next step follows when this one has ended
  }
  scriptActive_ = false;
  emit scriptFinished(true);
}

void ConsoleWindow::Note(const QString& text) {
  lastMessage_ = text;
  statusBar()->showMessage(text, 10000);
  auto* box = new QMessageBox(QMessageBox::Information, Q(store_->identity.ProgramName), text, QMessageBox::Ok, this);
  box->setObjectName("NoteBox");
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

void ConsoleWindow::ShowGraphCommand(const CommandInfo& command) {
  const std::string figure = FigureOfCommand(command.control, mainChart_->Panel().figure);
  if (figure == "ShowFRegOnConsumption" && !HasConsumptionData(*store_)) {
    Note("No consumption was read with this data file: the regression of fecundity on total consumption needs "
         "the consumption of each individual.");
    return;
  }
  try {
    // A regression and the expected fecundity also leave their data beside the data file.
    WriteFigureFile(*store_, figure);
    mainChart_->SetPanel(BuildFigure(*store_, figure));
  } catch (const ProgramEnd& e) {
    ShowFault({Outcome::Fault, e.title, e.message});
    return;
  } catch (const std::exception& e) {
    ShowFault({Outcome::Fault, store_->identity.ProgramName, e.what()});
    return;
  }
  chartTabs_->setCurrentWidget(mainChart_);
}

void ConsoleWindow::ShowBootResultForm() {
  const BootResultForm form = JackBootForm(*store_);
  auto* dialog = new QDialog(this);
  dialog->setObjectName("JackBootform");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(Q(form.caption));
  auto* grid = new QGridLayout(dialog);
  grid->addWidget(new QLabel("Mean"), 0, 1);
  grid->addWidget(new QLabel("SE"), 0, 2);
  int row = 1;
  for (const auto& r : form.rows) {
    grid->addWidget(new QLabel(Q(r.name)), row, 0);
    for (int column = 1; column <= 2; ++column) {
      auto* box = new QLineEdit(Q(column == 1 ? r.mean : r.se));
      box->setReadOnly(true);
      box->setObjectName(Q(r.name + (column == 1 ? "Mean" : "SE")));
      grid->addWidget(box, row, column);
    }
    ++row;
  }
  auto* close = new QPushButton("Close");
  connect(close, &QPushButton::clicked, dialog, &QDialog::close);
  grid->addWidget(close, row, 2);
  dialog->show();
}

void ConsoleWindow::OpenLargeGraph() {
  if (!largeGraph_) {
    largeGraph_ = new LargeGraph(
        [this](const std::string& figure) { return running_ ? ChartPanel{} : BuildFigure(*store_, figure); },
        [this](const std::string& shown, int& counter) {
          return running_ ? std::string() : ChartClickFigure(*store_, shown, counter);
        },
        this);
  }
  largeGraph_->ShowFigure("ShowSxj");
  largeGraph_->show();
  largeGraph_->raise();
}

void ConsoleWindow::ShowComparisonGrid(const std::string& control) {
  const auto& c = store_->comparison;
  MultiCITable table;
  if (control == "TukeyQ5TableInput") {
    // The Tukey table is shown once its table of differences is written, even when the run
    // ended on its closing note.
    if (c.TreatmentCount < 3 || c.TableNumber < 2) return;
    table = ShowTukeyBootstrapResult(*store_);
  } else if (control == "cmdPairedBootTest" || control == "cmdPBTPooled" || control == "cmdCartesianDifference") {
    if (outcome_.kind != Outcome::Done || c.TreatmentCount < 2) return;
    table = ShowMultiCIofDifference(*store_);
  } else {
    return;
  }
  comparisonGrid_->clear();
  comparisonGrid_->setRowCount(table.rows);
  comparisonGrid_->setColumnCount(table.columns);
  for (int r = 0; r < table.rows; ++r)
    for (int col = 0; col < table.columns; ++col) {
      auto* item = new QTableWidgetItem(Q(table.Cell(r, col)));
      if (table.centred) item->setTextAlignment(Qt::AlignCenter);
      comparisonGrid_->setItem(r, col, item);
    }
  // The grid's widths are in twips (1/15 of a pixel at the usual 96 dpi).
  for (int col = 1; col < table.columns; ++col) comparisonGrid_->setColumnWidth(col, table.dataColumnWidth * 2 / 15 + 30);
  comparisonGrid_->resizeColumnToContents(0);
  if (chartTabs_->indexOf(comparisonGrid_) < 0) chartTabs_->addTab(comparisonGrid_, "Comparison");
  chartTabs_->setCurrentWidget(comparisonGrid_);
}

void ConsoleWindow::MainChartClicked() {
  if (running_) return;
  const std::string figure = ChartClickFigure(*store_, mainChart_->Panel().figure, clickCounter_);
  if (!figure.empty() && IsFigureBuilt(figure)) mainChart_->SetPanel(BuildFigure(*store_, figure));
}

void ConsoleWindow::Refresh() {
  for (const auto& command : CommandTable()) {
    auto it = buttons_.find(std::string(command.control));
    if (it == buttons_.end()) continue;
    it->second->setEnabled(!running_ && store_->console.IsEnabled(std::string(command.control)));
  }
  if (running_) return;
  for (const auto& [name, frame] : frames_) frame->setVisible(store_->console.IsVisible(name));
}

void ConsoleWindow::EnableAllForImage() {
  if (running_) return;
  EnableAllButtonsForImage(store_->console);
  Refresh();
}

void ConsoleWindow::closeEvent(QCloseEvent* event) {
  if (running_) {
    // The analysis can't be stopped halfway: the window closes when the command ends.
    closeWhenDone_ = true;
    statusBar()->showMessage("The program ends when the command running has ended.");
    event->ignore();
    return;
  }
  if (largeGraph_) largeGraph_->close();
  // The files the session kept open (the flow record) are closed now: one that could not be
  // written whole is told before the window goes.
  const CommandOutcome closed = EndSession(*store_);
  if (closed.EndsAsOnFault()) {
    QMessageBox box(QMessageBox::Critical, Q(closed.title), Q(closed.message), QMessageBox::Ok, this);
    box.setObjectName("FaultBox");
    box.exec();
  }
  event->accept();
}

// ---------------------------------------------------------------------------------------
// Labels, progress and charts

void ConsoleWindow::ShowStatus(const std::string& label, const std::string& text) {
  const std::string colourMark = ".BackColor";
  if (label.size() > colourMark.size() && label.compare(label.size() - colourMark.size(), colourMark.size(), colourMark) == 0) {
    auto it = fields_.find(label.substr(0, label.size() - colourMark.size()));
    if (it != fields_.end()) it->second->setStyleSheet("background: " + BackColour(text) + ";");
    return;
  }
  if (auto it = formFields_.find(label); it != formFields_.end() && it->second) {
    it->second->setText(Q(text));
    return;
  }
  if (auto it = fields_.find(label); it != fields_.end()) {
    it->second->setText(Q(text));
    it->second->setCursorPosition(0);
    if (label == "txtDatafile") {
      it->second->setStyleSheet("color: white; background: #00008b;");
      HideAllPicture();  // reading a file clears the greeting picture
    }
    return;
  }
  if (auto it = labels_.find(label); it != labels_.end()) {
    it->second->setText(Q(text));
    return;
  }
  if (auto it = buttons_.find(label); it != buttons_.end()) {
    it->second->setText(Q(text));
    return;
  }
  if (label == "Caption") {
    setWindowTitle(Q(store_->identity.ProgramName + text));
    return;
  }
  statusBar()->showMessage(Q(text));
}

void ConsoleWindow::ShowProgress(long done, long total) {
  if (total <= 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (total != lastTotal_ || done < lastDone_) progressStart_ = now;
  lastDone_ = done;
  lastTotal_ = total;
  // The bar counts in thousandths: its range is an int, the samples may be many.
  progress_->setRange(0, 1000);
  progress_->setValue(static_cast<int>(1000 * std::min(done, total) / total));
  progress_->setFormat(QString("%1 / %2").arg(done).arg(total));
  const double elapsed = std::chrono::duration<double>(now - progressStart_).count();
  QString text;
  if (done >= total) {
    text = "done in " + Q(ConsoleDisplay::FormatDuration(elapsed));
  } else if (done > 0 && elapsed > 0) {
    const double left = elapsed * static_cast<double>(total - done) / static_cast<double>(done);
    text = left < 0.5 ? QString("under 1 s left") : "about " + Q(ConsoleDisplay::FormatDuration(left)) + " left";
  }
  progressText_->setText(text);
}

void ConsoleWindow::ShowPanel(const ChartPanel& panel) {
  ChartView* view = panel.chart == "MSChart2" ? freqChart_ : mainChart_;
  if (view == freqChart_) HideAllPicture();
  view->SetPanel(panel);
  chartTabs_->setCurrentWidget(view);
  if (view == mainChart_) clickCounter_ = 0;
}

// ---------------------------------------------------------------------------------------
// Timers

void ConsoleWindow::HideAllPicture() {
  greetingPicture_->hide();
  labels_["Label4"]->show();
  labels_["Label14"]->show();
}

void ConsoleWindow::Tick1() {
  labels_["Label6"]->setText(Q(DateLabelText(std::time(nullptr))));
  if (++seconds_ == kGreetingSeconds) HideAllPicture();
  const std::string_view greeting = GreetingText(tick1_);
  if (!greeting.empty()) labels_["Label13"]->setText(Q(greeting));
  tick1_ = (tick1_ + 1) % kGreetingTicks;
}

void ConsoleWindow::Tick2() {
  labels_["Label15"]->setStyleSheet(QString("font-weight: bold; color: %1;").arg(kBlink[BlinkColour(tick2_)]));
  tick2_ = (tick2_ + 1) % kBlinkTicks;
}

void ConsoleWindow::ShowWisdom() {
  const int count = static_cast<int>(WisdomLines().size());
  labels_["Label4"]->setText(Q(WisdomLine(QRandomGenerator::global()->bounded(count))));
}

}  // namespace korvan::gui
