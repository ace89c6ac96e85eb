#pragma once
// The console's commands: code, control name, caption, tool tip, frame, and whether the command
// is open when the program starts. Both front ends build their commands from this one table.
#include <span>
#include <string>
#include <string_view>

#include "store/console_state.h"

namespace korvan {

enum class CommandGroup { Main, Further, Graph };

struct CommandInfo {
  std::string_view code;     // "A1", "B", ... as on the console; empty when the button has none
  std::string_view control;  // "cmdReadDataA1"
  std::string_view caption;  // "A1. Read data"
  std::string_view toolTip;  // may be empty
  CommandGroup group;
  std::string_view frame;    // "Frame4" (main procedures), "Frame1" (main figures), or none
  bool openAtStart;
};

// Every command, main commands first in the console's order, then the further commands, then
// the graph commands.
std::span<const CommandInfo> CommandTable();

// A command by its code ("a1" and "A1" alike) or its control name; nullptr when none.
const CommandInfo* FindCommand(std::string_view codeOrControl);

// The result fields of the console, in the order shown.
struct ResultField {
  std::string_view control;  // "txtIntrinsicrate"
  std::string_view label;    // "Intrinsic rate (r)"
};
std::span<const ResultField> ResultFields();

// Opens and closes the commands and frames as at the start of the program.
void SetStartUpConsole(ConsoleState& console);

// Enables every command and shows the frames of commands and figures: the teacher's way back
// to a console that a run has closed (two clicks on the date label).
void EnableAllButtonsForImage(ConsoleState& console);

// Closes every command but "Q. CartesianPT" and Quit, hides the figures (Frame1, Frame5) and
// shows the main procedures (Frame4, Frame6): what the Cartesian test leaves behind.
void DisableAllButtonsForCartesian(ConsoleState& console);
// The same for the count of a specific R0 (A5), which stays open, and "N. Normality" closed too.
void DisableAllButtonsForA5(ConsoleState& console);

// Whether a command can be pressed now: enabled, and its frame shown.
bool IsCommandOpen(const ConsoleState& console, const CommandInfo& command);

// The title of the analysis shown over the limits.
inline constexpr const char* kConsoleTitle = "Age-stage, two-sex life table analysis";

}  // namespace korvan
