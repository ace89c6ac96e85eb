#include "run/run_context.h"

#include <string>

namespace korvan {

void Procedures::Flow(std::string_view entry) {
  if (S.options.FlowMode == "No" || !S.channels.Flow.IsOpen()) return;
  S.channels.Flow.Print(std::string("Sub ") + std::string(entry));
}

void Procedures::FlowEngineRecord(std::string_view entry) {
  const std::string& mode = S.options.FlowMode;
  const double boot = W.run.Boot;
  if ((mode == "Yes" && boot == 1) || (mode == "Boot" && boot > 1)) {
    if (S.channels.Flow.IsOpen()) S.channels.Flow.Print(std::string("Sub ") + std::string(entry));
  }
}

}  // namespace korvan
