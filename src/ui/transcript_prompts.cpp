#include "ui/transcript_prompts.h"

#include "ui/answer_book.h"
#include "ui/msg_buttons.h"
#include "text/text_file.h"

namespace korvan {

void TranscriptPrompts::Record(const std::string& key, const std::string& answer) {
  // Written at once, so that a run that stops later still leaves the answers given so far.
  out_ << key << " = " << answer << '\n' << std::flush;
  if (!out_) throw WriteFaultOf(name_, "the stream refused it");
}

int TranscriptPrompts::MsgBox(const std::string& text, const std::string& title, int buttons,
                              int defaultButton) {
  const int answer = inner_.MsgBox(text, title, buttons, defaultButton);
  Record(DialogueKey(text, title), AnswerName(answer));
  return answer;
}

std::string TranscriptPrompts::InputBox(const std::string& text, const std::string& title,
                                        const std::string& defaultText) {
  std::string answer = inner_.InputBox(text, title, defaultText);
  Record(DialogueKey(text, title), answer);
  return answer;
}

std::string TranscriptPrompts::ChooseFile(const std::string& title) {
  std::string answer = inner_.ChooseFile(title);
  Record(DialogueKey("", title), answer);
  return answer;
}

}  // namespace korvan
