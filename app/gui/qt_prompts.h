#pragma once
// The dialogues of the desktop program: message boxes, input boxes, the file chooser, and the
// console's labels and progress.
#include <QWidget>
#include <functional>
#include <string>

#include "ui/prompt_service.h"

namespace korvan::gui {

class QtPrompts : public PromptService {
 public:
  // status receives the console's labels; it may be empty.
  QtPrompts(QWidget* parent, std::function<void(const std::string&, const std::string&)> status)
      : parent_(parent), status_(std::move(status)) {}

  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override;
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override;
  std::string ChooseFile(const std::string& title) override;
  void Status(const std::string& label, const std::string& text) override;
  void Progress(long done, long total) override;
  void Beep() override;

 private:
  QWidget* parent_;
  std::function<void(const std::string&, const std::string&)> status_;
};

}  // namespace korvan::gui
