#pragma once
// Which console commands and frames are open. Commands change it as they finish (A1 opens A2,
// and so on); the front ends read it to enable their buttons and to refuse a closed command.
#include <map>
#include <string>

namespace korvan {

struct ConsoleState {
  std::map<std::string, bool> enabled;  // by control name, e.g. "cmdBasicRunA2"
  std::map<std::string, bool> visible;  // frames by control name, e.g. "Frame1"

  void Enable(const std::string& control, bool on = true) { enabled[control] = on; }
  void Disable(const std::string& control) { enabled[control] = false; }
  bool IsEnabled(const std::string& control) const {
    auto it = enabled.find(control);
    return it != enabled.end() && it->second;
  }
  void Show(const std::string& frame, bool on = true) { visible[frame] = on; }
  bool IsVisible(const std::string& frame) const {
    auto it = visible.find(frame);
    return it == visible.end() || it->second;
  }
};

}  // namespace korvan
