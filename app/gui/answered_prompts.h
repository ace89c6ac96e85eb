#pragma once
// Dialogues answered from an answer file first (as the command line answers them), the window's
// own dialogues for the rest; labels, progress and charts go to the window.
#include "qt_prompts.h"
#include "ui/scripted_prompts.h"

namespace korvan::gui {

class AnsweredPrompts : public PromptService {
 public:
  // askWhenMissing: a dialogue with no answer left is shown on the window; otherwise it takes
  // its default (useDefaults) or stops the command with MissingAnswer.
  AnsweredPrompts(AnswerBook book, bool useDefaults, bool askWhenMissing, QtPrompts& qt)
      : scripted_(std::move(book), useDefaults, askWhenMissing ? &qt : nullptr, nullptr), qt_(qt) {}

  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override {
    return scripted_.MsgBox(text, title, buttons, defaultButton);
  }
  // A form's fields (QtPrompts::Preset) come before the answer files.
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override {
    std::string preset;
    if (qt_.TakePreset(title, preset)) return preset;
    return scripted_.InputBox(text, title, defaultText);
  }
  std::string ChooseFile(const std::string& title) override {
    std::string preset;
    if (qt_.TakePreset(title, preset)) return preset;
    return scripted_.ChooseFile(title);
  }
  void Status(const std::string& label, const std::string& text) override { qt_.Status(label, text); }
  void Progress(long done, long total) override { qt_.Progress(done, total); }
  void Beep() override { qt_.Beep(); }
  void ShowChart(const ChartPanel& panel) override { qt_.ShowChart(panel); }

  const AnswerBook& book() const { return scripted_.book(); }

 private:
  ScriptedPrompts scripted_;
  QtPrompts& qt_;
};

}  // namespace korvan::gui
