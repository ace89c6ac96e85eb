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
  // The residual procedures write their line of the flow record once a session.
  bool FlowWritten0120 = false, FlowWritten1480 = false;
};

// One session of the program: the store of its records and the channels open in it.
struct Session : SessionStore {
  Channels channels;
};

// The flow record of a procedure entered: written whenever FlowMode isn't "No" (Flow), or,
// for an engine procedure that the bootstrap shares, when FlowMode is "Yes" and Boot is exactly
// 1 or FlowMode is "Boot" and Boot is above 1 (FlowEngine).
void WriteFlow(const Options& options, Channels& channels, std::string_view entry);
void WriteFlowEngine(const Options& options, Channels& channels, double boot, std::string_view entry);

// Opens the flow record "<base>_0_Flow.txt" of a command that works on a file of its own (not a
// life table read by A1) and turns the record on.
void OpenFlowRecord(Session& S, const std::string& base);

// Base of every family of procedures. A procedure takes no arguments and returns nothing: it
// reads and writes the session S and the workspace W in hand (the store's own in Basic Run, a
// worker's own in a bootstrap), and talks to the user through P.
class Procedures {
 public:
  Procedures(Session& session, PromptService& prompts) : S(session), P(prompts), W(session.ws) {}
  Procedures(Session& session, PromptService& prompts, Workspace& ws) : S(session), P(prompts), W(ws) {}

 protected:
  void Flow(std::string_view entry) { WriteFlow(S.options, S.channels, entry); }
  // Called at every step of the engine's inner loops: "No" and empty are told inline.
  void FlowEngine(std::string_view entry) {
    const std::string& mode = S.options.FlowMode;
    if (mode.empty() || mode[0] == 'N') return;
    WriteFlowEngine(S.options, S.channels, W.run.Boot, entry);
  }

  Session& S;
  PromptService& P;
  Workspace& W;
};

// Base of the engine's families, which run in a Basic Run and again for every bootstrap
// replicate, on the replicate's worker. They read the session through a const view and write
// only their workspace W and the open channels C (a replicate writes to none of them but the
// flow record, and then the bootstrap runs on one thread). What a Basic Run keeps for the
// session goes through Keep(), which a replicate's view has not: the compiler refuses any
// other write to the session, and Keep() refuses one from a replicate.
class EngineProcedures {
 public:
  // The view of a Basic Run (or of a command that runs the engine on the session's workspace).
  EngineProcedures(Session& session, PromptService& prompts)
      : S(session), C(session.channels), P(prompts), W(session.ws), keep_(&session) {}
  EngineProcedures(Session& session, PromptService& prompts, Workspace& ws)
      : S(session), C(session.channels), P(prompts), W(ws), keep_(&session) {}
  // The view of a replicate: the session read-only.
  EngineProcedures(const Session& session, Channels& channels, PromptService& prompts, Workspace& ws)
      : S(session), C(channels), P(prompts), W(ws), keep_(nullptr) {}
  // Another family on the same view.
  struct SameView {
    const EngineProcedures& view;
  };
  explicit EngineProcedures(SameView same) : EngineProcedures(same.view) {}

 protected:
  Session& Keep() const;
  // The pass of the whole cohort in a Basic Run: neither a bootstrap replicate nor a cohort
  // less one individual (a jackknife pass). Only it keeps values for the session.
  bool BasicPass() const { return W.params.JackNo == 0 && W.run.Boot == 0; }
  void Flow(std::string_view entry) { WriteFlow(S.options, C, entry); }
  void FlowEngine(std::string_view entry) {
    const std::string& mode = S.options.FlowMode;
    if (mode.empty() || mode[0] == 'N') return;
    WriteFlowEngine(S.options, C, W.run.Boot, entry);
  }

  const Session& S;
  Channels& C;
  PromptService& P;
  Workspace& W;

 private:
  Session* keep_;
};

}  // namespace korvan
