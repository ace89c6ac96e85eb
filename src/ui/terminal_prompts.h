#pragma once
// Dialogues asked on a terminal: the text, the buttons or the default, and a typed answer.
// The streams are given by the front end (the core itself never reads standard input).
#include <istream>
#include <ostream>
#include <string>

#include "run/prompt_service.h"

namespace korvan {

class TerminalPrompts : public PromptService {
 public:
  TerminalPrompts(std::istream& in, std::ostream& out) : in_(in), out_(out) {}

  // Answers by the button's name or its first letter; an empty line takes the default.
  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override;
  // An empty line takes the default text.
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override;
  // An empty line chooses no file.
  std::string ChooseFile(const std::string& title) override;

 private:
  void Show(const std::string& text, const std::string& title);
  // The next line typed; MissingAnswer for the dialogue when the input has ended.
  std::string ReadLine(const std::string& key);

  std::istream& in_;
  std::ostream& out_;
};

}  // namespace korvan
