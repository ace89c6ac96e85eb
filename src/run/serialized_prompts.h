#pragma once
// A PromptService shared by the workers of a loop over samples: its dialogues, should a
// replicate ever ask one, come one at a time.
#include <mutex>
#include <string>

#include "run/prompt_service.h"

namespace korvan {

// The dialogues of the engine, should a replicate ever ask one, come one at a time.
class SerializedPrompts final : public PromptService {
 public:
  explicit SerializedPrompts(PromptService& inner) : inner_(inner) {}
  int MsgBox(const std::string& text, const std::string& title, int buttons, int defaultButton) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.MsgBox(text, title, buttons, defaultButton);
  }
  std::string InputBox(const std::string& text, const std::string& title, const std::string& def) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.InputBox(text, title, def);
  }
  std::string ChooseFile(const std::string& title) override {
    std::lock_guard<std::mutex> lock(m_);
    return inner_.ChooseFile(title);
  }
  void Status(const std::string& label, const std::string& text) override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Status(label, text);
  }
  void Progress(long done, long total) override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Progress(done, total);
  }
  void Beep() override {
    std::lock_guard<std::mutex> lock(m_);
    inner_.Beep();
  }

 private:
  PromptService& inner_;
  std::mutex m_;
};

}  // namespace korvan
