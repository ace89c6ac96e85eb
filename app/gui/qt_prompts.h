#pragma once
// The dialogues of the desktop program: message boxes with their named buttons and default
// button, input boxes with title and default, the file chooser with its title; and the
// console's labels, progress bar and charts.
//
// The analysis runs on a worker thread. A dialogue it raises is shown on the window's thread,
// and the worker waits for the answer (a blocking queued call). Labels, progress and charts are
// handed over without waiting: the latest of each is kept and the window takes them at its next
// turn, so a bootstrap that writes a label per sample never floods the window.
#include <QWidget>
#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "ui/chart_panel.h"
#include "run/prompt_service.h"

namespace korvan::gui {

// What the prompts hand to the window, always on the window's thread.
class ConsoleSink {
 public:
  virtual ~ConsoleSink() = default;
  virtual void ShowStatus(const std::string& label, const std::string& text) = 0;
  virtual void ShowProgress(long done, long total) = 0;
  virtual void ShowPanel(const ChartPanel& panel) = 0;
};

class QtPrompts : public PromptService {
 public:
  QtPrompts(QWidget* parent, ConsoleSink* sink) : parent_(parent), sink_(sink) {}

  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override;
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override;
  std::string ChooseFile(const std::string& title) override;
  void Status(const std::string& label, const std::string& text) override;
  void Progress(long done, long total) override;
  void Beep() override;
  void ShowChart(const ChartPanel& panel) override;

  // Hands what is waiting to the window now (on the window's thread).
  void Flush();
  // Answers of a form's fields, by dialogue title: each answers its input box or file chooser
  // once, in place of the dialogue.
  void Preset(std::map<std::string, std::string> answers);
  // The preset answer of a dialogue, once: false when there is none.
  bool TakePreset(const std::string& title, std::string& answer);

 private:
  // Runs f on the window's thread and waits for it.
  template <class F>
  void OnWindowThread(F&& f);
  void PostFlush();
  int ShowMsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton);

  QWidget* parent_;
  ConsoleSink* sink_;
  std::mutex mutex_;
  std::vector<std::pair<std::string, std::string>> statuses_;
  std::vector<ChartPanel> panels_;
  std::pair<long, long> progress_{-1, -1};
  int beeps_ = 0;
  std::atomic<bool> flushPosted_{false};
  std::string lastFolder_;
  std::map<std::string, std::string> presets_;
};

}  // namespace korvan::gui
