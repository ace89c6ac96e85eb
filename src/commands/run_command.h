#pragma once
// One way to run a console command, for every front end (command line, desktop console, fuzz
// harness): the command is pressed as the user presses it, and however it ends, the outcome
// says so with the message and title to show.
#include <string>
#include <string_view>
#include <vector>

#include "run/run_context.h"

namespace korvan {

enum class CommandEnding {
  Ran,             // the command ran to its end
  Quit,            // "Quit" (or "End" at a command's last box): the session ends normally
  ProgramEnd,      // the program ends as on a data fault, an "End the program" answer, a halt
  SubscriptFault,  // an index beyond a fixed bound: run-time error 9
  OverflowFault,   // display rounding beyond the 32-bit range: run-time error 6
  Refused,         // unknown, closed at this point of the session, or not built yet
  MissingAnswer,   // a dialogue without an answer, or with one it can't take (a scripted run)
  Unexpected,      // any other exception: a fault of the program itself
};

struct CommandOutcome {
  CommandEnding ending = CommandEnding::Ran;
  std::string title;    // the title of the message box that shows the ending
  std::string message;  // its text
  std::string failedFile;  // a file that could not be written whole, when that ended it
  // Besides it, the files the ending cut short (open when the program ended, or closed while
  // the fault passed through their writer): they stand as far as they were written.
  std::vector<std::string> cutShort;
  // The session goes on after it.
  bool SessionGoesOn() const { return ending == CommandEnding::Ran; }
  // The program ends as it ends on a fault (exit code 1, the message box of the console).
  bool EndsAsOnFault() const {
    return ending == CommandEnding::ProgramEnd || ending == CommandEnding::SubscriptFault ||
           ending == CommandEnding::OverflowFault || ending == CommandEnding::Unexpected;
  }
};

// Presses the command of that code or control name, with the console's rules: refused when it
// isn't open now or isn't built.
// A command that ran but left a file not whole ends as on a fault (ProgramEnd) all the same.
CommandOutcome RunCommand(Session& S, PromptService& P, std::string_view codeOrControl);

// The end of a session: the files it kept open (the flow record) are closed, and a file that
// could not be written whole is told as RunCommand tells it.
CommandOutcome EndSession(Session& S);

}  // namespace korvan
