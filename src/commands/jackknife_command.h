#pragma once
// "Jackknife" (Command21): the refusals and the warning around the jackknife's passes, its
// report and files; a second press shows the chart of pseudo-values only.
#include "run/run_context.h"

namespace korvan {

class JackknifeCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void Command21_Click();
};

}  // namespace korvan
