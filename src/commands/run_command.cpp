#include "commands/run_command.h"

#include <exception>

#include "commands/command_handlers.h"
#include "store/faults.h"
#include "ui/answer_book.h"

namespace korvan {

namespace {

// Runs step and turns however it ends into an outcome.
template <class Step>
CommandOutcome Outcome(Session& S, Step&& step) {
  using E = CommandEnding;
  try {
    step();
    return {};
  } catch (const SessionQuit&) {
    return {E::Quit, "", "", "", {}};
  } catch (const WriteFault& e) {
    return {E::ProgramEnd, e.title, e.message, e.file, {}};
  } catch (const ProgramEnd& e) {
    return {E::ProgramEnd, e.title, e.message, "", {}};
  } catch (const SubscriptFault& e) {
    return {E::SubscriptFault, "Run-time error '9'", e.what(), "", {}};
  } catch (const OverflowFault& e) {
    return {E::OverflowFault, "Run-time error '6'", e.what(), "", {}};
  } catch (const CommandRefused& e) {
    return {E::Refused, "", e.what(), "", {}};
  } catch (const AnswerError& e) {
    return {E::MissingAnswer, "", e.what(), "", {}};
  } catch (const std::exception& e) {
    return {E::Unexpected, S.identity.ProgramName, e.what(), "", {}};
  }
}

}  // namespace

CommandOutcome RunCommand(Session& S, PromptService& P, std::string_view codeOrControl) {
  ClearPendingWriteFault();
  TakeFilesNotWhole();
  CommandOutcome out = Outcome(S, [&] {
    PressCommand(S, P, ResolveCommand(codeOrControl));
    // What the command left open or kept of a failed close is checked before it counts as done.
    S.channels.MainOutput.Flush();
    S.channels.Flow.Flush();
    ThrowPendingWriteFault();
  });
  if (out.ending == CommandEnding::Quit) {
    const CommandOutcome closed = EndSession(S);
    if (closed.ending != CommandEnding::Ran) return closed;
  }
  if (out.EndsAsOnFault()) out.cutShort = TakeFilesNotWhole();
  return out;
}

CommandOutcome EndSession(Session& S) {
  return Outcome(S, [&] {
    S.channels.MainOutput.Close();
    S.channels.Flow.Close();
    ThrowPendingWriteFault();
  });
}

}  // namespace korvan
