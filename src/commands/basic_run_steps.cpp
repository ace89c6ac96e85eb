// The steps of the Basic Run that belong to the population parameters.
#include "commands/basic_run_driver.h"

#include "analyses/curtailed_tailed.h"
#include "engine/population_parameters.h"
#include "ui/console_rules.h"

namespace korvan {

void BasicRunDriver::StepLife05() {
  ParameterEngine(S, P, W).Life05();
  if (StepCurtailedAndTailedRates()) ApplyConsoleRule(S.console, "A2 curtailed rates");
}
void BasicRunDriver::StepLife05a() { ParameterEngine(S, P, W).Life05a(); }
void BasicRunDriver::StepLife05ForMatrix() {
  ParameterEngine(S, P, W).Life05ForMatrix();
  StepCurtailedAndTailedRates();
}
void BasicRunDriver::StepLife05AForMatrix() { ParameterEngine(S, P, W).Life05AForMatrix(); }
void BasicRunDriver::StepPrintIntrinsicRateTable() {
  ParameterEngine(S, P, W).PrintIntrinsicRateTable();
  CurtailedTailedRates(S, P, W).PrintCumuR0andIntrinR();
}
void BasicRunDriver::StepPrintTotalPopulationParameters() { ParameterEngine(S, P, W).PrintTotalPopulationParameters(); }
// Right after r: the rates of the life table cut after and before each age.
bool BasicRunDriver::StepCurtailedAndTailedRates() { return CurtailedTailedRates(S, P, W).CurtailedAndTailedAfterR(); }

void BasicRunDriver::StepWriteGraphDataTailedR0andR() { CurtailedTailedRates(S, P, W).WriteGraphDataTailedR0andR(); }
void BasicRunDriver::StepWriteGraphDataCumuR0andR() { CurtailedTailedRates(S, P, W).WriteGraphDataCumuR0andR(); }

}  // namespace korvan
