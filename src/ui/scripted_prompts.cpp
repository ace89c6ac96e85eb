#include "ui/scripted_prompts.h"

#include "ui/msg_buttons.h"

namespace korvan {

int ScriptedPrompts::MsgBox(const std::string& text, const std::string& title, int buttons,
                            int defaultButton) {
  const std::string key = DialogueKey(text, title);
  if (auto answer = book_.Take(key)) {
    if (auto code = ParseAnswer(*answer, buttons)) {
      if (ButtonsOf(buttons).size() == 1 && display_) display_->Message(title, text);
      return *code;
    }
    throw AnswerError("answer \"" + *answer + "\" to dialogue \"" + key + "\": it takes " +
                      AnswerList(buttons));
  }
  if (ButtonsOf(buttons).size() == 1) {
    if (display_) display_->Message(title, text);
    return ButtonsOf(buttons).front();
  }
  if (useDefaults_) return DefaultAnswer(buttons, defaultButton);
  if (ask_) {
    if (display_) display_->EndProgress();
    return ask_->MsgBox(text, title, buttons, defaultButton);
  }
  throw MissingAnswer(key);
}

std::string ScriptedPrompts::InputBox(const std::string& text, const std::string& title,
                                      const std::string& defaultText) {
  const std::string key = DialogueKey(text, title);
  if (auto answer = book_.Take(key)) return *answer;
  if (useDefaults_) return defaultText;
  if (ask_) {
    if (display_) display_->EndProgress();
    return ask_->InputBox(text, title, defaultText);
  }
  throw MissingAnswer(key);
}

std::string ScriptedPrompts::ChooseFile(const std::string& title) {
  const std::string key = DialogueKey("", title);
  if (auto answer = book_.Take(key)) return *answer;
  if (ask_) {
    if (display_) display_->EndProgress();
    return ask_->ChooseFile(title);
  }
  throw MissingAnswer(key);
}

void ScriptedPrompts::Status(const std::string& label, const std::string& text) {
  if (display_) display_->Status(label, text);
}

void ScriptedPrompts::Progress(long done, long total) {
  if (display_) display_->Progress(done, total);
}

void ScriptedPrompts::Beep() {
  if (display_) display_->Beep();
}

}  // namespace korvan
