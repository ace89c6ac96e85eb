#include "ui/terminal_prompts.h"

#include <cctype>

#include "ui/answer_book.h"
#include "ui/msg_buttons.h"

namespace korvan {

void TerminalPrompts::Show(const std::string& text, const std::string& title) {
  out_ << '\n';
  if (!TrimBlanks(title).empty()) out_ << "== " << title << " ==\n";
  if (!text.empty()) out_ << text << '\n';
}

std::string TerminalPrompts::ReadLine(const std::string& key) {
  std::string line;
  if (!std::getline(in_, line)) throw MissingAnswer(key);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return TrimBlanks(line);
}

int TerminalPrompts::MsgBox(const std::string& text, const std::string& title, int buttons,
                            int defaultButton) {
  Show(text, title);
  const auto offered = ButtonsOf(buttons);
  const int fallback = DefaultAnswer(buttons, defaultButton);
  const std::string key = DialogueKey(text, title);
  for (;;) {
    out_ << AnswerList(buttons) << " [" << AnswerName(fallback) << "]? " << std::flush;
    const std::string typed = ReadLine(key);
    if (typed.empty()) return fallback;
    if (auto code = ParseAnswer(typed, buttons)) return *code;
    for (int answer : offered) {
      if (typed.size() == 1 &&
          std::tolower(static_cast<unsigned char>(typed[0])) ==
              std::tolower(static_cast<unsigned char>(AnswerName(answer)[0]))) {
        return answer;
      }
    }
    out_ << "Please answer " << AnswerList(buttons) << ".\n";
  }
}

std::string TerminalPrompts::InputBox(const std::string& text, const std::string& title,
                                      const std::string& defaultText) {
  Show(text, title);
  out_ << "[" << defaultText << "]: " << std::flush;
  const std::string typed = ReadLine(DialogueKey(text, title));
  return typed.empty() ? defaultText : typed;
}

std::string TerminalPrompts::ChooseFile(const std::string& title) {
  Show("", title);
  out_ << "File (empty for none): " << std::flush;
  return ReadLine(DialogueKey("", title));
}

}  // namespace korvan
