#pragma once
// What a run works in: the session (its store of records and the files it holds open) and the
// base of every family of procedures.
#include <string>
#include <string_view>

#include "run/prompt_service.h"
#include "store/session_store.h"
#include "text/text_file.h"

namespace korvan {

// Files open beyond one procedure.
struct Channels {
  TextFile MainOutput;  // channel 3: "_0A_Life Table_Output.txt", open through Basic Run
  TextFile Flow;        // channel 8: the flow record, open from A1 to the end of the session
  // Tables and pages of the main output are numbered through the whole file.
  int MainTableNumber = 0;
  int MainPageNumber = 0;
};

// One session of the program: the store of its records and the channels open in it.
struct Session : SessionStore {
  Channels channels;
};

// Base of every family of procedures. A procedure takes no arguments and returns nothing: it
// reads and writes the session S and the workspace W in hand (the store's own in Basic Run, a
// worker's own in a bootstrap), and talks to the user through P.
class Procedures {
 public:
  Procedures(Session& session, PromptService& prompts) : S(session), P(prompts), W(session.ws) {}
  Procedures(Session& session, PromptService& prompts, Workspace& ws) : S(session), P(prompts), W(ws) {}

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

  Session& S;
  PromptService& P;
  Workspace& W;
};

}  // namespace korvan
