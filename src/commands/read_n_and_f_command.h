#pragma once
// "B. Read N, F": a group-reared life table of counts by stage and age, its analysis by the
// engine, and the rebuilding of an individually reared data file from it.
#include "run/run_context.h"

namespace korvan {

class ReadNandFCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdReadNandF_Click();

 private:
  void AskTimeUnit();
  void RunEngineForNandF();
};

}  // namespace korvan
