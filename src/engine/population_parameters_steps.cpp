// The steps of the Basic Run that belong to the population parameters.
#include "analyses/curtailed_tailed.h"
#include "engine/basic_run_driver.h"
#include "engine/population_parameters.h"

namespace korvan {

void BasicRunDriver::StepLife05() { ParameterEngine(S, P, W).Life05(); }
void BasicRunDriver::StepLife05a() { ParameterEngine(S, P, W).Life05a(); }
void BasicRunDriver::StepLife05ForMatrix() { ParameterEngine(S, P, W).Life05ForMatrix(); }
void BasicRunDriver::StepLife05AForMatrix() { ParameterEngine(S, P, W).Life05AForMatrix(); }
void BasicRunDriver::StepPrintIntrinsicRateTable() { ParameterEngine(S, P, W).PrintIntrinsicRateTable(); }
void BasicRunDriver::StepPrintTotalPopulationParameters() { ParameterEngine(S, P, W).PrintTotalPopulationParameters(); }
void BasicRunDriver::StepWriteGraphDataTailedR0andR() { CurtailedTailedRates(S, P, W).WriteGraphDataTailedR0andR(); }
void BasicRunDriver::StepWriteGraphDataCumuR0andR() { CurtailedTailedRates(S, P, W).WriteGraphDataCumuR0andR(); }

}  // namespace korvan
