#include "qt_prompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>

#include "ui/msg_buttons.h"

namespace korvan::gui {

namespace {

QMessageBox::StandardButton ButtonFor(int answer) {
  switch (answer) {
    case kOK: return QMessageBox::Ok;
    case kCancel: return QMessageBox::Cancel;
    case kYes: return QMessageBox::Yes;
    case kNo: return QMessageBox::No;
    case 3: return QMessageBox::Abort;
    case 4: return QMessageBox::Retry;
    case 5: return QMessageBox::Ignore;
    default: return QMessageBox::NoButton;
  }
}

// The icon flags added to the buttons value: 16 critical, 32 question, 48 exclamation,
// 64 information.
QMessageBox::Icon IconFor(int buttons) {
  switch (buttons & 0x70) {
    case 16: return QMessageBox::Critical;
    case 32: return QMessageBox::Question;
    case 48: return QMessageBox::Warning;
    case 64: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

QString Q(const std::string& s) { return QString::fromStdString(s); }

}  // namespace

template <class F>
void QtPrompts::OnWindowThread(F&& f) {
  if (QThread::currentThread() == parent_->thread()) {
    f();
  } else {
    QMetaObject::invokeMethod(parent_, std::forward<F>(f), Qt::BlockingQueuedConnection);
  }
}

int QtPrompts::ShowMsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) {
  Flush();
  QMessageBox box(parent_);
  box.setWindowTitle(Q(title.empty() ? std::string("KORVAN") : title));
  box.setText(Q(text));
  box.setIcon(IconFor(buttons));
  const std::vector<int> offered = ButtonsOf(buttons);
  for (int answer : offered) box.addButton(ButtonFor(answer));
  box.setDefaultButton(ButtonFor(DefaultAnswer(buttons, defaultButton)));
  box.exec();
  const auto clicked = box.standardButton(box.clickedButton());
  for (int answer : offered) {
    if (ButtonFor(answer) == clicked) return answer;
  }
  // Closed without a button: its Cancel when it has one, else its default.
  for (int answer : offered) {
    if (answer == kCancel) return kCancel;
  }
  return DefaultAnswer(buttons, defaultButton);
}

int QtPrompts::MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) {
  int answer = kCancel;
  OnWindowThread([&] { answer = ShowMsgBox(text, title, buttons, defaultButton); });
  return answer;
}

void QtPrompts::Preset(std::map<std::string, std::string> answers) {
  std::lock_guard<std::mutex> lock(mutex_);
  presets_ = std::move(answers);
}

bool QtPrompts::TakePreset(const std::string& title, std::string& answer) {
  std::lock_guard<std::mutex> lock(mutex_);
  auto it = presets_.find(title);
  if (it == presets_.end()) return false;
  answer = it->second;
  presets_.erase(it);
  return true;
}

std::string QtPrompts::InputBox(const std::string& text, const std::string& title, const std::string& defaultText) {
  std::string result;
  if (TakePreset(title, result)) return result;
  OnWindowThread([&] {
    Flush();
    QInputDialog dialog(parent_);
    dialog.setWindowTitle(Q(title.empty() ? std::string("KORVAN") : title));
    dialog.setLabelText(Q(text));
    dialog.setTextValue(Q(defaultText));
    dialog.setInputMode(QInputDialog::TextInput);
    // Cancel gives an empty text, as an input box does.
    if (dialog.exec() == QDialog::Accepted) result = dialog.textValue().toStdString();
  });
  return result;
}

std::string QtPrompts::ChooseFile(const std::string& title) {
  std::string result;
  if (TakePreset(title, result)) return result;
  OnWindowThread([&] {
    Flush();
    const QString path = QFileDialog::getOpenFileName(parent_, Q(title), Q(lastFolder_),
                                                      "Text files (*.txt);;All files (*)");
    if (!path.isEmpty()) {
      lastFolder_ = QFileInfo(path).absolutePath().toStdString();
      result = path.toStdString();
    }
  });
  return result;
}

void QtPrompts::Status(const std::string& label, const std::string& text) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    bool found = false;
    for (auto& s : statuses_) {
      if (s.first == label) {
        s.second = text;
        found = true;
        break;
      }
    }
    if (!found) statuses_.emplace_back(label, text);
  }
  PostFlush();
}

void QtPrompts::Progress(long done, long total) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    progress_ = {done, total};
  }
  PostFlush();
}

void QtPrompts::Beep() {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    ++beeps_;
  }
  PostFlush();
}

void QtPrompts::ShowChart(const ChartPanel& panel) {
  {
    std::lock_guard<std::mutex> lock(mutex_);
    for (auto& p : panels_) {
      if (p.chart == panel.chart) {
        p = panel;
        PostFlush();
        return;
      }
    }
    panels_.push_back(panel);
  }
  PostFlush();
}

void QtPrompts::PostFlush() {
  bool expected = false;
  if (flushPosted_.compare_exchange_strong(expected, true)) {
    QMetaObject::invokeMethod(parent_, [this] { Flush(); }, Qt::QueuedConnection);
  }
}

void QtPrompts::Flush() {
  flushPosted_ = false;
  std::vector<std::pair<std::string, std::string>> statuses;
  std::vector<ChartPanel> panels;
  std::pair<long, long> progress;
  int beeps = 0;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    statuses.swap(statuses_);
    panels.swap(panels_);
    progress = progress_;
    progress_ = {-1, -1};
    beeps = beeps_;
    beeps_ = 0;
  }
  if (!sink_) return;
  for (const auto& [label, text] : statuses) sink_->ShowStatus(label, text);
  if (progress.second >= 0) sink_->ShowProgress(progress.first, progress.second);
  for (const auto& panel : panels) sink_->ShowPanel(panel);
  if (beeps > 0) QApplication::beep();
}

}  // namespace korvan::gui
