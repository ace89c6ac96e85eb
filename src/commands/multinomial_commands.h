#pragma once
// "Multinomial" (Command2), "A4. Sort LT", "M. Count LT", "A5. Spec. Ro" and "Boot ind. freq.":
// the multinomial expansion of a small cohort and the counting of bootstrap life tables.
#include "run/run_context.h"

namespace korvan {

class MultinomialCommands : public Procedures {
 public:
  using Procedures::Procedures;
  void Command2_Click();
  void cmdSortAndCountLT_Click();
  void cmdCountBootLifeTable_Click();
  void cmdCalMNCforSpecR0_Click();
  void cmdCountBootIndNr_Click();
};

}  // namespace korvan
