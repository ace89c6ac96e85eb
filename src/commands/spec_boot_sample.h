#pragma once
// "P. Spec. boot": the life-table data file of one bootstrap sample, from its record.
#include "run/run_context.h"

namespace korvan {

class SpecBootSampleCommand : public Procedures {
 public:
  using Procedures::Procedures;
  void cmdWriteSpeLifeTable_Click();
};

}  // namespace korvan
