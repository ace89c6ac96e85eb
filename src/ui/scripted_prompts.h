#pragma once
// Dialogues answered from an AnswerBook: the command line's way of running the console.
//
// A dialogue takes the next answer given for its key. With none left it takes its default when
// defaults are allowed (the default button, the default text; a file chooser has none), else
// it is asked through the fallback service when there is one (a terminal), else the run stops
// with MissingAnswer. A box with the OK button alone asks nothing: it is shown and passes.
#include <string>

#include "ui/answer_book.h"
#include "ui/console_display.h"
#include "run/prompt_service.h"

namespace korvan {

class ScriptedPrompts : public PromptService {
 public:
  explicit ScriptedPrompts(AnswerBook book, bool useDefaults = false, PromptService* ask = nullptr,
                           ConsoleDisplay* display = nullptr)
      : book_(std::move(book)), useDefaults_(useDefaults), ask_(ask), display_(display) {}

  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override;
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override;
  std::string ChooseFile(const std::string& title) override;
  void Status(const std::string& label, const std::string& text) override;
  void Progress(long done, long total) override;
  void Beep() override;

  const AnswerBook& book() const { return book_; }

 private:
  AnswerBook book_;
  bool useDefaults_;
  PromptService* ask_;
  ConsoleDisplay* display_;
};

}  // namespace korvan
