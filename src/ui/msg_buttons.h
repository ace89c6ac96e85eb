#pragma once
// The buttons of a message box as the front ends name them.
#include <optional>
#include <string>
#include <vector>

namespace korvan {

// The answers a box of the given buttons offers, in the order of their positions. Icon flags
// added to the buttons value are ignored.
std::vector<int> ButtonsOf(int buttons);
// The answer at defaultButton's position (1, 2, 3), or the first button when there is none
// there. A default position added to the buttons value (256, 512) counts as well.
int DefaultAnswer(int buttons, int defaultButton);
// "OK", "Cancel", "Yes", "No", ... for an answer code.
std::string AnswerName(int answer);
// The answer code of a name among the box's answers, in any case ("yes", "YES"); nothing when
// the box doesn't offer it.
std::optional<int> ParseAnswer(const std::string& name, int buttons);
// "Yes, No or Cancel": the box's answers for messages.
std::string AnswerList(int buttons);

}  // namespace korvan
