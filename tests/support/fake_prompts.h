#pragma once
// A PromptService for tests: answers are queued by dialogue title and used in order; every
// dialogue met is recorded, so a test can assert on its title, text and buttons. A dialogue
// with no answer left throws NoAnswer, which fails the test with the title in the message.
#include <deque>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "run/prompt_service.h"
#include "ui/chart_panel.h"

namespace korvan::test {

struct DialogueMet {
  std::string kind;  // "MsgBox", "InputBox", "ChooseFile"
  std::string title;
  std::string text;
  int buttons = 0;
  std::string defaultText;
};

struct NoAnswer : std::runtime_error {
  explicit NoAnswer(const std::string& title) : std::runtime_error("no answer for dialogue \"" + title + "\"") {}
};

class FakePrompts : public PromptService {
 public:
  // Queues an answer: "Yes", "No", "Cancel", "OK" for boxes, the text for input boxes, a path
  // for file choosers.
  FakePrompts& Answer(const std::string& title, const std::string& answer) {
    answers_[title].push_back(answer);
    return *this;
  }

  int MsgBox(const std::string& text, const std::string& title, int buttons, int) override {
    met.push_back({"MsgBox", title, text, buttons, ""});
    const std::string a = Next(title);
    if (a == "Yes") return kYes;
    if (a == "No") return kNo;
    if (a == "Cancel") return kCancel;
    if (a == "OK") return kOK;
    throw std::invalid_argument("not a box answer: " + a);
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& defaultText) override {
    met.push_back({"InputBox", title, text, 0, defaultText});
    return Next(title);
  }
  std::string ChooseFile(const std::string& title) override {
    met.push_back({"ChooseFile", title, "", 0, ""});
    return Next(title);
  }
  void Status(const std::string& label, const std::string& text) override { status[label] = text; }
  void ShowChart(const ChartPanel& panel) override { charts.push_back(panel); }

  // The dialogues met with this title.
  std::vector<DialogueMet> With(const std::string& title) const {
    std::vector<DialogueMet> out;
    for (const auto& d : met)
      if (d.title == title) out.push_back(d);
    return out;
  }
  bool Met(const std::string& title) const { return !With(title).empty(); }
  std::vector<std::string> Titles() const {
    std::vector<std::string> out;
    for (const auto& d : met) out.push_back(d.title);
    return out;
  }
  // Answers queued but never used.
  std::size_t Unused() const {
    std::size_t n = 0;
    for (const auto& [title, q] : answers_) n += q.size();
    return n;
  }

  std::vector<DialogueMet> met;
  std::map<std::string, std::string> status;
  std::vector<ChartPanel> charts;

 private:
  std::string Next(const std::string& title) {
    auto it = answers_.find(title);
    if (it == answers_.end() || it->second.empty()) throw NoAnswer(title);
    std::string a = it->second.front();
    it->second.pop_front();
    return a;
  }
  std::map<std::string, std::deque<std::string>> answers_;
};

// Answers boxes and input boxes in the order given, whatever their titles; when none is
// left, the default button or text. Every dialogue met is noted.
class OrderedPrompts : public PromptService {
 public:
  std::deque<std::string> answers;  // "Yes", "No", "OK", "Cancel" or the text of an input box
  std::vector<std::string> titles;
  std::vector<std::string> texts;
  std::vector<std::pair<std::string, std::string>> status;

  int MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) override {
    titles.push_back(title);
    texts.push_back(text);
    const std::string a = Take();
    if (a == "Yes") return kYes;
    if (a == "No") return kNo;
    if (a == "Cancel") return kCancel;
    if (a == "OK") return kOK;
    if (buttons == kYesNo || buttons == kYesNoCancel) return defaultButton == 2 ? kNo : kYes;
    return kOK;
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override {
    titles.push_back(title);
    texts.push_back(text);
    return answers.empty() ? def : Take();
  }
  std::string ChooseFile(const std::string& title) override {
    titles.push_back(title);
    return "";
  }
  void Status(const std::string& label, const std::string& text) override { status.emplace_back(label, text); }

 private:
  std::string Take() {
    if (answers.empty()) return "";
    std::string a = answers.front();
    answers.pop_front();
    return a;
  }
};

// A box with the OK button alone asks nothing: it is noted and the run goes on.
class OkPrompts : public FakePrompts {
 public:
  int MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) override {
    if (buttons != kOKOnly) return FakePrompts::MsgBox(text, title, buttons, defaultButton);
    met.push_back({"MsgBox", title, text, buttons, ""});
    return kOK;
  }
};

}  // namespace korvan::test
