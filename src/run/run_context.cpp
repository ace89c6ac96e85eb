#include "run/run_context.h"

#include <stdexcept>
#include <string>

namespace korvan {

void WriteFlow(const Options& options, Channels& channels, std::string_view entry) {
  if (options.FlowMode == "No" || !channels.Flow.IsOpen()) return;
  channels.Flow.Print(std::string("Sub ") + std::string(entry));
}

void WriteFlowEngine(const Options& options, Channels& channels, double boot, std::string_view entry) {
  const std::string& mode = options.FlowMode;
  if ((mode == "Yes" && boot == 1) || (mode == "Boot" && boot > 1)) {
    if (channels.Flow.IsOpen()) channels.Flow.Print(std::string("Sub ") + std::string(entry));
  }
}

Session& EngineProcedures::Keep() const {
  if (!keep_) throw std::logic_error("a bootstrap replicate writes no record of the session");
  return *keep_;
}

void OpenFlowRecord(Session& S, const std::string& base) {
  S.options.FlowMode = "Yes";
  S.identity.FlowFileName = base + "_0_Flow.txt";
  S.channels.Flow.Open(S.identity.FlowFileName);
}

}  // namespace korvan
