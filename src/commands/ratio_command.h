#pragma once
// "J. Cal. ratio": the dialogues around the ratio of two bootstrap result files.
#include "run/run_context.h"

namespace korvan {

class RatioCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdCalculateRatio_Click();
};

}  // namespace korvan
