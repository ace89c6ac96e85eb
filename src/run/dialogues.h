#pragma once
// The dialogues whose Cancel ends the program ("Cancel: End the program."): the message tells
// where, under the dialogue's own title.
#include <string>

#include "run/prompt_service.h"
#include "store/faults.h"

namespace korvan {

[[noreturn]] inline void EndByCancel(const std::string& title) {
  throw ProgramEnd{"The program ends here (Cancel at \"" + title + "\").", title};
}

// A Yes/No/Cancel box; Cancel ends the program, else kYes or kNo.
inline int YesNoOrEnd(PromptService& P, const std::string& text, const std::string& title, int defaultButton = 1) {
  const int answer = P.MsgBox(text, title, kYesNoCancel, defaultButton);
  if (answer == kCancel) EndByCancel(title);
  return answer;
}

// An input box; no answer (Cancel) ends the program.
inline std::string InputOrEnd(PromptService& P, const std::string& text, const std::string& title,
                              const std::string& defaultText) {
  std::string answer = P.InputBox(text, title, defaultText);
  if (answer.empty()) EndByCancel(title);
  return answer;
}

}  // namespace korvan
