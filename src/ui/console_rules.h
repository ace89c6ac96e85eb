#pragma once
// The rules of the console: which command, at which point of its run, opens or closes which
// commands and shows or hides which parts of the window. The commands apply them by name; the
// command line and the desktop console both read the state they leave (ConsoleState), and the
// refusal of a closed command names the command whose rule opens it.
#include <array>
#include <span>
#include <string_view>

#include "store/console_state.h"

namespace korvan {

// Control names of a rule; the unused places are empty.
using ControlList = std::array<std::string_view, 8>;

struct ConsoleRule {
  std::string_view owner;  // the control of the command that applies it
  std::string_view name;   // the point of its run
  ControlList open, close, show, hide;
};

// Every rule, in the order of the console's main line (A1, A2, A3, then the others).
std::span<const ConsoleRule> ConsoleRules();

// Applies the rule of that name: opens, then closes, then shows, then hides. An unknown name is
// a fault of the program (std::logic_error).
void ApplyConsoleRule(ConsoleState& console, std::string_view name);

// The command whose rules open control first (its control name), or empty when none does.
std::string_view OpenedBy(std::string_view control);

}  // namespace korvan
