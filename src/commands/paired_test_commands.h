#pragma once
// "C. Paired BT" (one file per treatment) and "PBT pooled" (one file holding all treatments):
// the dialogues of the paired bootstrap test around its analysis (PairedBootTest).
#include "run/run_context.h"

namespace korvan {

class PairedTestCommands : public Procedures {
 public:
  using Procedures::Procedures;

  void cmdPairedBootTest_Click();
  void cmdPBTPooled_Click();
  void cmdCartesianDifference_Click();

 private:
  void AfterRun();
};

}  // namespace korvan
