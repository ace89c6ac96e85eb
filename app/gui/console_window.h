#pragma once
// The console: title, limits, data file and result fields, the frame of main procedures, the
// further commands and the frame of main figures (all from the command table), the chart area
// with the console's two charts, the labels of a running command with a progress bar, and the
// timers' labels. Commands run on a worker thread; the window stays responsive and keeps every
// command closed until the one running has ended.
#include <QMainWindow>
#include <QPointer>
#include <QString>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answered_prompts.h"
#include "qt_prompts.h"
#include "run/run_context.h"
#include "ui/command_table.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QTableWidget;
class QTimer;

namespace korvan::gui {

class ChartView;
class LargeGraph;

struct ConsoleOptions {
  std::vector<std::string> answerFiles;  // answer files, read in order
  std::vector<std::string> answers;      // "KEY=VALUE"
  bool useDefaults = false;              // an unanswered dialogue takes its default
  bool askWhenMissing = true;            // else it is shown on the window (or the command stops)
  RunControl runControl;                 // seed, threads
};

class ConsoleWindow : public QMainWindow, private ConsoleSink {
  Q_OBJECT

 public:
  explicit ConsoleWindow(const ConsoleOptions& options = {});
  ~ConsoleWindow() override;

  // Presses a command as a click does; false when it is refused (the reason in LastMessage).
  bool Press(const std::string& control);
  // Runs the commands in order, each once the one before has ended; scriptFinished follows.
  void RunScript(std::vector<std::string> controls);
  bool IsRunning() const { return running_; }
  // The session's store: read it only while no command runs.
  const SessionStore& Store() const { return *store_; }
  QString LastMessage() const { return lastMessage_; }
  ChartView* MainChart() const { return mainChart_; }
  ChartView* FrequencyChart() const { return freqChart_; }
  LargeGraph* LargeGraphWindow() const { return largeGraph_; }
  // Shows a message without waiting for it to be closed.
  void Note(const QString& text);

 signals:
  void commandFinished(const QString& control, bool ok);
  void scriptFinished(bool ok);
  // The program ends with this exit code: 0 after "Quit", 1 after a fault.
  void programEnded(int code);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  // What a command's run on the worker came to.
  struct Outcome {
    enum Kind { Done, Refused, Quit, Fault } kind = Done;
    std::string title, message;
  };

  QWidget* BuildResults();
  QWidget* BuildCharts();
  QWidget* BuildRunStatus();
  QWidget* BuildGreeting();
  QGroupBox* CommandFrame(const char* title, CommandGroup group, int columns);

  void StartCommand(const CommandInfo& command);
  void RunOnWorker(std::string control);
  void CommandEnded(const std::string& control);
  void ShowFault(const Outcome& outcome);
  void NextScriptStep();
  void ShowGraphCommand(const CommandInfo& command);
  void OpenLargeGraph();
  // The form of bootstrap results: mean and SE of r, lambda, R0, T, GRR.
  void ShowBootResultForm();
  void MainChartClicked();
  // The results form (a grid of the life table by age) and the frequency form of a bootstrap.
  void ShowResultForm();
  void ShowFrequencyForm();
  // The form of "H. Harvest" or "I. Contribution", whose main button runs the command.
  void ShowAnalysisForm(const CommandInfo& command);
  // After C, Q and the Tukey table: their grid (MSFlexGrid1) in a tab beside the charts.
  void ShowComparisonGrid(const std::string& control);
  // Enables the buttons and shows the frames as the session's console state says; while a
  // command runs every command stays closed.
  void Refresh();
  // The greeting picture gives way to the wisdom labels.
  void HideAllPicture();
  void Tick1();
  void Tick2();
  void ShowWisdom();
  void EnableAllForImage();

  // ConsoleSink
  void ShowStatus(const std::string& label, const std::string& text) override;
  void ShowProgress(long done, long total) override;
  void ShowPanel(const ChartPanel& panel) override;

  std::unique_ptr<Session> store_;
  QtPrompts qtPrompts_;
  std::unique_ptr<AnsweredPrompts> answered_;
  PromptService* prompts_;

  bool running_ = false;
  bool closeWhenDone_ = false;
  Outcome outcome_;
  std::vector<std::string> script_;
  std::size_t scriptStep_ = 0;
  bool scriptActive_ = false;
  QString lastMessage_;
  int clickCounter_ = 0;

  std::map<std::string, QPushButton*> buttons_;
  std::map<std::string, QLineEdit*> fields_;
  // The result fields of the open harvest and contribution forms.
  std::map<std::string, QPointer<QLineEdit>> formFields_;
  std::map<std::string, QLabel*> labels_;
  std::map<std::string, QGroupBox*> frames_;
  QTabWidget* chartTabs_ = nullptr;
  ChartView* mainChart_ = nullptr;
  ChartView* freqChart_ = nullptr;
  QTableWidget* comparisonGrid_ = nullptr;
  LargeGraph* largeGraph_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* progressText_ = nullptr;
  std::chrono::steady_clock::time_point progressStart_{};
  long lastDone_ = -1, lastTotal_ = -1;

  QTimer* timer1_ = nullptr;
  QTimer* timer2_ = nullptr;
  int tick1_ = 0, tick2_ = 0, seconds_ = 0;
  QWidget* greetingPicture_ = nullptr;
};

}  // namespace korvan::gui
