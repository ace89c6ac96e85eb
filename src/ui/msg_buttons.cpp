#include "ui/msg_buttons.h"

#include <cctype>

#include "run/prompt_service.h"

namespace korvan {

namespace {

// The platform's further answers, offered by two rarely used kinds of box.
constexpr int kAbort = 3, kRetry = 4, kIgnore = 5;

std::string Lower(const std::string& s) {
  std::string out = s;
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

}  // namespace

std::vector<int> ButtonsOf(int buttons) {
  switch (buttons & 7) {
    case kOKCancel: return {kOK, kCancel};
    case 2: return {kAbort, kRetry, kIgnore};
    case kYesNoCancel: return {kYes, kNo, kCancel};
    case kYesNo: return {kYes, kNo};
    case 5: return {kRetry, kCancel};
    default: return {kOK};
  }
}

int DefaultAnswer(int buttons, int defaultButton) {
  const std::vector<int> offered = ButtonsOf(buttons);
  int position = defaultButton;
  if ((buttons & 0x300) == 0x100) position = 2;
  if ((buttons & 0x300) == 0x200) position = 3;
  if (position < 1 || position > static_cast<int>(offered.size())) position = 1;
  return offered[static_cast<std::size_t>(position - 1)];
}

std::string AnswerName(int answer) {
  switch (answer) {
    case kOK: return "OK";
    case kCancel: return "Cancel";
    case kAbort: return "Abort";
    case kRetry: return "Retry";
    case kIgnore: return "Ignore";
    case kYes: return "Yes";
    case kNo: return "No";
    default: return std::to_string(answer);
  }
}

std::optional<int> ParseAnswer(const std::string& name, int buttons) {
  const std::string wanted = Lower(name);
  for (int answer : ButtonsOf(buttons)) {
    if (Lower(AnswerName(answer)) == wanted) return answer;
  }
  return std::nullopt;
}

std::string AnswerList(int buttons) {
  const std::vector<int> offered = ButtonsOf(buttons);
  std::string list;
  for (std::size_t i = 0; i < offered.size(); ++i) {
    if (i > 0) list += (i + 1 == offered.size()) ? " or " : ", ";
    list += AnswerName(offered[i]);
  }
  return list;
}

}  // namespace korvan
