#pragma once
// Passes every dialogue to another service and writes the dialogue met and the answer given
// as a line of an answer file, so that the run can be repeated with --answers.
#include <ostream>
#include <string>
#include <utility>

#include "run/prompt_service.h"

namespace korvan {

class TranscriptPrompts : public PromptService {
 public:
  // name: the transcript's file, named when it can't be written (WriteFault).
  TranscriptPrompts(PromptService& inner, std::ostream& out, std::string name = "the transcript")
      : inner_(inner), out_(out), name_(std::move(name)) {}

  int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
             int defaultButton = 1) override;
  std::string InputBox(const std::string& text, const std::string& title,
                       const std::string& defaultText = "") override;
  std::string ChooseFile(const std::string& title) override;
  void Status(const std::string& label, const std::string& text) override { inner_.Status(label, text); }
  void Progress(long done, long total) override { inner_.Progress(done, total); }
  void Beep() override { inner_.Beep(); }
  void ShowChart(const ChartPanel& panel) override { inner_.ShowChart(panel); }

 private:
  void Record(const std::string& key, const std::string& answer);

  PromptService& inner_;
  std::ostream& out_;
  std::string name_;
};

}  // namespace korvan
