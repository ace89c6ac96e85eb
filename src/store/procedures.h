#pragma once
// Base of every family of procedures. A procedure takes no arguments and returns nothing: it
// reads and writes the store S and the workspace W in hand (the store's own in Basic Run, a
// worker's own in a bootstrap), and talks to the user through P.
#include <string>
#include <string_view>

#include "store/session_store.h"
#include "ui/prompt_service.h"

namespace korvan {

class Procedures {
 public:
  Procedures(SessionStore& store, PromptService& prompts) : S(store), P(prompts), W(store.ws) {}
  Procedures(SessionStore& store, PromptService& prompts, Workspace& ws) : S(store), P(prompts), W(ws) {}

 protected:
  // Flow record of a procedure that only a command runs: written whenever FlowMode isn't "No".
  void Flow(std::string_view entry);
  // Flow record of an engine procedure that the bootstrap shares: written when FlowMode is
  // "Yes" and Boot is exactly 1, or when FlowMode is "Boot" and Boot is above 1.
  // Called at every step of the engine's inner loops: "No" and empty are told inline.
  void FlowEngine(std::string_view entry) {
    const std::string& mode = S.options.FlowMode;
    if (mode.empty() || mode[0] == 'N') return;
    FlowEngineRecord(entry);
  }
  void FlowEngineRecord(std::string_view entry);

  SessionStore& S;
  PromptService& P;
  Workspace& W;
};

}  // namespace korvan
