#pragma once
// "A2. Basic Run": the last settings of the run, the reading of the cohort, and the engine in
// its fixed order, with the main output "_0A_Life Table_Output.txt" open throughout. A second
// click only writes the raw-data files again.
//
// Procedures of other families stand as named steps, one member each, so that every step of
// the order is visible here. Side analyses that the program doesn't carry (the 3D matrices, the
// files for other programs, the teaching quizzes) are steps that do nothing.
#include <string>

#include "run/run_context.h"
#include "ui/chart_figures.h"

namespace korvan {

class BasicRunDriver : public Procedures {
 public:
  using Procedures::Procedures;

  void cmdBasicRunA2_Click();

  // The option dialogue of the run (also used at the first start of a bootstrap).
  void ModifyFxj();
  // The age and the survival rate whose bootstrap results are kept.
  void EnterSpecAge();
  void EnterSpecSurv();

 private:
  void AskCriticalAgeAndMethod();
  void AskFor3DAnalysis();
  void ReadCxjNew();
  void OpenConsoleAfterRun();

  // Random generator of the session, seeded anew from the clock at each run.
  void ReseedRandomGenerator() {}

  // Population parameters, reproductive value and stable distributions.
  void StepLife05();
  void StepLife05a();
  void StepLife05ForMatrix();
  void StepLife05AForMatrix();
  bool StepCurtailedAndTailedRates();
  void StepPrintIntrinsicRateTable();
  void StepPrintTotalPopulationParameters();
  void StepWriteGraphDataTailedR0andR();
  void StepWriteGraphDataCumuR0andR();

  // The chart of s(x,j) on the console.
  void StepShowSxj() { P.ShowChart(ShowSxj(S)); }

  // Side analyses and exchange files.
  void StepWriteDataFileFor3Dmatrices();
  void StepWriteEffectOfVariableFxj() {}
  void StepOfferQuiz() {}
};

}  // namespace korvan
