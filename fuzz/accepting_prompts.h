#pragma once
// Dialogue answers for runs on crafted input: every question that lets the run go on is
// answered so that it goes on, every other dialogue takes its default (or the answer the run
// sets for it), and a file chooser gets the file of its title or nothing.
#include <map>
#include <set>
#include <stdexcept>
#include <string>

#include "run/prompt_service.h"

namespace korvan::fuzz {

// A run that keeps asking has met a loop with no end: that is a finding, not an ending.
struct EndlessDialogue : std::logic_error {
  explicit EndlessDialogue(const std::string& title)
      : std::logic_error("more than " + std::to_string(kLimit) + " dialogues, the last \"" + title + "\"") {}
  static constexpr long kLimit = 100000;
};

class AcceptingPrompts : public PromptService {
 public:
  // Boxes answered Yes because Yes lets the check or the run go on.
  std::set<std::string> goOn;
  // Boxes with an answer of their own (kYes, kNo, kOK, kCancel).
  std::map<std::string, int> answers;
  // Input boxes with an answer of their own; any other takes its default text.
  std::map<std::string, std::string> inputs;
  // File choosers by title; any other gets no file.
  std::map<std::string, std::string> files;

  int MsgBox(const std::string&, const std::string& title, int buttons, int defaultButton) override {
    Count(title);
    if (goOn.count(title)) return kYes;
    if (auto it = answers.find(title); it != answers.end()) return it->second;
    return DefaultAnswer(buttons, defaultButton);
  }
  std::string InputBox(const std::string&, const std::string& title, const std::string& defaultText) override {
    Count(title);
    auto it = inputs.find(title);
    return it == inputs.end() ? defaultText : it->second;
  }
  std::string ChooseFile(const std::string& title) override {
    Count(title);
    auto it = files.find(title);
    return it == files.end() ? std::string() : it->second;
  }

  long dialogues = 0;

 private:
  void Count(const std::string& title) {
    if (++dialogues > EndlessDialogue::kLimit) throw EndlessDialogue(title);
  }
  // The default button, by its position among the buttons of the box.
  static int DefaultAnswer(int buttons, int position) {
    switch (buttons) {
      case kYesNo: return position == 2 ? kNo : kYes;
      case kYesNoCancel: return position == 3 ? kCancel : position == 2 ? kNo : kYes;
      case kOKCancel: return position == 2 ? kCancel : kOK;
      default: return kOK;
    }
  }
};

}  // namespace korvan::fuzz
