#pragma once
// The Tukey-Kramer table of a pooled file of three or more treatments' bootstrap results.
#include "run/run_context.h"

namespace korvan {

class TukeyCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void TukeyQ5TableInput();
};

}  // namespace korvan
