#pragma once
// "Curtailed r": the curve of the curtailed r over age that a Basic Run computed (it opens only
// after a Basic Run that asked for the effect of reduced f(x,j)).
#include "run/run_context.h"

namespace korvan {

class CurtailedRCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdCurtailedR_Click();
};

}  // namespace korvan
