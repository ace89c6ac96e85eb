#include "commands/run_command.h"

#include <exception>

#include "commands/command_handlers.h"
#include "store/faults.h"
#include "ui/answer_book.h"

namespace korvan {

CommandOutcome RunCommand(Session& S, PromptService& P, std::string_view codeOrControl) {
  using E = CommandEnding;
  try {
    PressCommand(S, P, ResolveCommand(codeOrControl));
    return {};
  } catch (const SessionQuit&) {
    return {E::Quit, "", ""};
  } catch (const ProgramEnd& e) {
    return {E::ProgramEnd, e.title, e.message};
  } catch (const SubscriptFault& e) {
    return {E::SubscriptFault, "Run-time error '9'", e.what()};
  } catch (const OverflowFault& e) {
    return {E::OverflowFault, "Run-time error '6'", e.what()};
  } catch (const CommandRefused& e) {
    return {E::Refused, "", e.what()};
  } catch (const AnswerError& e) {
    return {E::MissingAnswer, "", e.what()};
  } catch (const std::exception& e) {
    return {E::Unexpected, S.identity.ProgramName, e.what()};
  }
}

}  // namespace korvan
