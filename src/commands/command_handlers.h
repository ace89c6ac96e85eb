#pragma once
// Running the console's commands by name: the registry of built commands and the checks a
// press goes through (known, open now, built).
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "run/prompt_service.h"
#include "run/run_context.h"
#include "ui/command_table.h"

namespace korvan {

using CommandHandler = void (*)(Session&, PromptService&);

// A command that can't be run: unknown, closed at this point of the session, or not built
// yet. A command-line run ends with exit code 2.
class CommandRefused : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The built commands by control name.
const std::map<std::string, CommandHandler, std::less<>>& CommandHandlers();
bool IsCommandBuilt(std::string_view control);

// The command named by code or control name; CommandRefused when there is none.
const CommandInfo& ResolveCommand(std::string_view codeOrControl);

// Presses a command as the user does: refused when it isn't open now or isn't built.
void PressCommand(Session& S, PromptService& P, const CommandInfo& command);
// Presses a command from within another (as A1 presses A2 in a Fast Run): no check of the
// console, refused only when it isn't built.
void PressByProgram(Session& S, PromptService& P, std::string_view control);

// The message of a command that isn't open now.
std::string ClosedCommandMessage(const ConsoleState& console, const CommandInfo& command);

}  // namespace korvan
