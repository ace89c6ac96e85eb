// "A2. Basic Run" in its fixed order, with ModifyFxj, EnterSpecAge and EnterSpecSurv.
#include "commands/basic_run_driver.h"

#include <ctime>
#include <string>

#include "engine/life_table_engine.h"
#include "engine/stage_statistics.h"
#include "input/consumption_file_reader.h"
#include "input/data_file_reader.h"
#include "text/numbers.h"
#include "ui/console_rules.h"

namespace korvan {

void BasicRunDriver::cmdBasicRunA2_Click() {
  Flow("cmdBasicRunA2_Click");
  LifeTableEngine life(S, P, W);
  StageStatsEngine stats(S, P, W);
  auto& opt = S.options;

  // 1. The main output stays open through the run.
  S.identity.OutputFileName = OutputName(S, "_0A_Life Table_Output.txt");
  S.channels.MainOutput.Open(S.identity.OutputFileName);
  ReseedRandomGenerator();

  // 2. The whole analysis is done once a session; a repeated click writes the raw data again.
  if (S.basic.BasicRunDone != "yes") {
    // 3.
    ApplyConsoleRule(S.console, "A2 begins");
    const std::time_t now = std::time(nullptr);
    std::tm clock{};
    localtime_r(&now, &clock);
    S.identity.RunStartHour = clock.tm_hour;
    S.identity.RunStartMinute = clock.tm_min;
    S.identity.RunStartSecond = clock.tm_sec;
    W.run.IsResamplingFlag = "n";
    W.run.IsBasicRunFlag = "y";

    // 4 to 6: the settings of the run; A1 has set everything for a Fast Run.
    if (opt.FastRun != "Yes") {
      if (opt.MatingMode == "3D") {
        opt.CountOldFemales = "No";
        opt.AnalysisMethod = "Calculus";
        opt.AgeConvention = "x+1";
        S.settings.FecundityFactor = 1;
        opt.EffectOfFxjFlag = "Yes";
        opt.WriteSubMatrix = "No";
        opt.SubMatrixAge = 0;
        opt.SubMatrixStage = 1;
        S.settings.PrecisionCalculus = 1e-08;
      } else {
        if (opt.MinimalOutput == "Yes") {
          opt.AnalysisMethod = "Calculus";
          S.settings.FecundityFactor = 1;
        } else {
          AskCriticalAgeAndMethod();
        }
        ModifyFxj();
      }
    }

    // 7 to 9: the cohort, its statistics, the tables of individuals.
    DataFileReader(S, P, W).InputData();
    life.Life01();
    life.Life02();
    stats.CountOvipositionDays();
    stats.PreadultMean();
    stats.Life10();
    stats.Life11();
    stats.Life12();
    stats.APOPandTPOP();
    stats.PrintAPOPandTPOP();
    EnterSpecAge();
    EnterSpecSurv();
    stats.AgeFecundityFromBirth();
    stats.CountOvipositionPeriod();
    stats.Life12PrintAgeFecundityFromBirth();
    stats.CalculateAdultLifeTable();
    stats.WriteAdultAgeSpecificLifeTable();
    stats.WriteAdultAgeSpecificLifeTableB();
    stats.WriteFemaleLifeTableBasedOnPreAandSa();

    // 10 to 12: the age-stage matrices.
    life.Life03();
    AskFor3DAnalysis();
    life.WriteSxFig();  // the data of the survival chart
    StepShowSxj();
    life.Life04();

    // 13.
    const double oviDays = W.stageStats.TotalOviDays;
    if (oviDays != 0 && W.run.Boot == 0)
      S.stageStats.FecundityPerOviDay = W.lifeTable.StageFecundityTotal(S.header.StageCount) / oviDays;

    // 14: r, lambda and what depends on them.
    if (opt.AnalysisMethod == "Calculus") {
      StepLife05();
      StepLife05a();
    } else if (opt.AnalysisMethod == "Matrix") {
      StepLife05ForMatrix();
      StepLife05AForMatrix();
    }

    // 15, 16.
    ReadCxjNew();
    if (opt.PredationPresent == "Yes") {
      life.CalculateNetPredationRate();
      life.CalculateFinitePredationRate();
    }
    life.PrintCxjAndBxj();
    StepPrintIntrinsicRateTable();
    stats.Life06();
    StepPrintTotalPopulationParameters();
    stats.Life07();

    // 17: a run of a 3D study is marked by the user field of its file.
    const std::string& user = S.identity.UserName;
    if (user == "daughter" || user == "son" || user == "infertile" || user == "Male" || user == "N-type")
      StepWriteDataFileFor3Dmatrices();

    // 18.
    stats.Life08();
    stats.WriteStageRawDataInColumns();
    StepWriteEffectOfVariableFxj();
    stats.WriteAPOPandTPOPforTtest();
    stats.WriteIndivFecundityForAnalysis();
    StepWriteGraphDataTailedR0andR();
    StepWriteGraphDataCumuR0andR();
    ApplyConsoleRule(S.console, "A2 analysis done");
  }

  // 19.
  S.basic.BasicRunDone = "yes";
  stats.WriteRawDataInRow();
  stats.WriteEachStageRawDataInColumn();
  stats.WriteStageRawDataInColumnForStatistics();
  stats.Write1stOviAgeAndLastOviAge();
  stats.WriteGroupedLifeTableFromIndividualData();

  OpenConsoleAfterRun();
}

// Steps 20 to 23: the console after the run.
void BasicRunDriver::OpenConsoleAfterRun() {
  auto& console = S.console;
  ApplyConsoleRule(console, S.header.RegularLifeTable == "No" ? "A2 harvest possible" : "A2 harvest impossible");
  ApplyConsoleRule(console, "A2 contribution");
  P.Status("txtMeanfecundity", FullPrecision(RoundDisplay(W.lifeTable.ReproductiveMean, 4)));

  S.channels.MainOutput.Close();

  if (S.options.Analysis3D == "Yes") {
    ApplyConsoleRule(console, "A2 3D analysis");
  } else if (W.lifeTable.ReproductiveCount > 0 && S.options.FastRun != "Yes") {
    StepOfferQuiz();
  }

  ApplyConsoleRule(console, "A2 ends");
  if (W.lifeTable.StageFecundityTotal(S.header.StageCount) == 0) ApplyConsoleRule(console, "A2 no offspring");
  P.Beep();
}

void BasicRunDriver::AskCriticalAgeAndMethod() {
  const std::string age = P.InputBox(
      "Count the number of females with age longer than a criterion?\n"
      "Enter critical age for female adult X (0= don't count).",
      "Critical female adult age X", "0");
  S.settings.CriticalFemaleAge = NumberOfText(age);
  if (S.settings.CriticalFemaleAge > 0)
    S.options.CountOldFemales = "Yes";
  else if (S.settings.CriticalFemaleAge == 0)
    S.options.CountOldFemales = "No";

  const int method = P.MsgBox(
      "Do you want to use calculus or matrix?\n\nYes: Use calculus.\n\nNo: Use matrix)",
      "Claculus or matrix technique?", kYesNo);
  S.options.AnalysisMethod = method == kYes ? "Calculus" : "Matrix";
}

void BasicRunDriver::ModifyFxj() {
  Flow("ModifyFxj");
  auto& opt = S.options;
  auto& set = S.settings;
  set.FecundityFactor = NumberOfText(
      P.InputBox("Enter a value between 0 and 1 to modify the fecundity", "Fecundity coefficeint", "1"));
  set.TimeUnit = NumberOfText(P.InputBox(
      "Enter the time unit of your data.\n"
      "(1 = 1 day, 0.5 = 0.5 day, 0.3 = 8h, 0.25 = 6 h, 0.2 = 4.8 h or 0.16 = 4 h).\n"
      "(2 = 2 days, 4 = 4 days, 5 = 5 days.)\n"
      "(For any other time unit, enter 1.)",
      "Each time unit =?", "1"));

  const int more = P.MsgBox(
      "Do you want to see more options?\n"
      "Yes: I want to see more options and make my decision.\n"
      "No: I don't need to see all options for this file.\n"
      "Note well: \n"
      "A. You must choose Yes for 3D analysis.\n"
      "B. If there is no error in your data file, but you\n"
      "    cannot analyze your data, you should choose Yes. \n"
      "    Then you choose No for the next step.",
      "More option (Yes or No)?", kYesNo, 2);
  if (more != kYes) {
    opt.MoreOptions = "No";
    opt.AgeConvention = "x+1";
    opt.SubMatrixAge = 0;
    opt.SubMatrixStage = 1;
    set.PrecisionCalculus = 1e-07;
    opt.WriteSubMatrix = "No";
    return;
  }
  opt.MoreOptions = "Yes";

  const int effect = P.MsgBox(
      "Do you want to detect the effect of reduction in f(x,j) on population parameters?\n"
      "Yes: I need the table of population parameter of reduced f(x,j).\n"
      "No: I don't need the table of population parameter of reduced f(x,j).\n"
      "Note well: If the program stops without any warning message, you should try NO!",
      "Effect of reduced f(x,j) on population parameters (r and lambda).", kYesNo);
  opt.EffectOfFxjFlag = effect == kYes ? "Yes" : "No";

  const int sub = P.MsgBox("Do you need submatrix S?\nYes: I want to write the submatrix.\nNo: I don't need it.",
                           "Do you need submatrix S?", kYesNo, 2);
  if (sub == kYes) {
    opt.WriteSubMatrix = "Yes";
    opt.SubMatrixAge = NumberOfText(P.InputBox(
        "Do you want to print submatrix s(x,j)?\n"
        "Enter the age of submatrix S.\n"
        "E.g., \"0\" means the submatrix s(0,j) will be printed.\n"
        "E.g., \"5\" means the submatrix s(5,j) will be printed.",
        "Age of submatrix S?", "0"));
    const std::string age = FullPrecision(opt.SubMatrixAge);
    opt.SubMatrixStage = CInt(NumberOfText(P.InputBox(
        "Do you want to print submatrix s(x,j)?\n"
        "Enter the stage of submatrix S\n"
        "E.g., \"1\" means the submatrix S(" + age + ",1) will be printed.\n"
        "E.g., \"3\" means the submatrix S(" + age + ",3) will be printed.",
        "Stage of submatrix S?", "1")));
  } else {
    opt.WriteSubMatrix = "No";
  }

  const double index = NumberOfText(P.InputBox(
      "Exp(r*x) or Exp(r*(x+1))? (1=x, 2=x+1)\n"
      "1: Use Euler-Lotka equation with \"-Exp(r*x)\".\n"
      "2: Use Euler-Lotka equation with \"-Exp(r*(x+1))\".",
      "Age index from zero or 1?", "2"));
  if (index == 1)
    opt.AgeConvention = "x";
  else if (index == 2)
    opt.AgeConvention = "x+1";

  const bool calculus = opt.AnalysisMethod == "Calculus";
  const double precision = NumberOfText(P.InputBox(
      "Precision level of r or lambda\n(r must not < 0.00000001. lambda must not < 0.000001)",
      "Precision level", calculus ? "0.0000001" : "0.000001"));
  if (calculus) {
    set.PrecisionCalculus = precision > 1e-07 ? 1e-07 : precision;
  } else if (opt.AnalysisMethod == "Matrix") {
    set.PrecisionMatrix = precision > 0.001 ? 1e-06 : precision;
  }
}

void BasicRunDriver::EnterSpecAge() {
  Flow("EnterSpecAge");
  const double half = W.tables.LastAge / 2.0 * S.settings.TimeUnit;
  const int byRule = CInt(half);
  if (S.options.FastRun == "Yes" || S.options.MatingMode == "3D") {
    S.settings.SpecificAge = byRule;
    return;
  }
  const std::string answer = P.InputBox(
      "Enter the age (time unit) that you want to save the bootstrap results of surivival rate.\n"
      "Attention! Enter the time unit, not the age!  If time unit=1, just click OK.",
      "Save bootstrap survival rates for specific age (time unit).", std::to_string(byRule));
  S.settings.SpecificAge = CInt(NumberOfText(answer));
}

void BasicRunDriver::EnterSpecSurv() {
  Flow("EnterSpecSurv");
  if (S.options.FastRun == "Yes" || S.options.MatingMode == "3D") {
    S.settings.SpecificSurvival = 0.5;
    return;
  }
  S.settings.SpecificSurvival = NumberOfText(
      P.InputBox("Enter a specific survival rate to save the bootstrap ages that give that l(x).",
                 "Save age (time unit) for specific bootstrap survival rate.", "0.5"));
}

// Step 11: 3D matrices instead of the routine ones, asked only after "more options".
void BasicRunDriver::AskFor3DAnalysis() {
  auto& opt = S.options;
  if (opt.MatingMode == "3D") {
    opt.Analysis3D = "Yes";
  } else if (opt.MoreOptions != "No") {
    opt.Analysis3D = P.InputBox("Enter \"Yes\" for 3D analysis. \"No\" to write routine matrices.",
                                "Yes = 3D analysis. No = routine life table.", "No");
  }
  if (opt.Analysis3D != "Yes") return;
  if (opt.SingleType == "No")
    P.MsgBox("There are more than one type. It is impossible to write FMN matrices.", "More than one type.");
  else
    StepWriteDataFileFor3Dmatrices();
}

// Step 15: the daily consumption of the cohort's individuals may be read beside the life table.
void BasicRunDriver::ReadCxjNew() {
  Flow("ReadCxjNew");
  if (S.options.FastRun == "Yes") return;
  const int answer = P.MsgBox(
      "Choose \"Yes\" for life table data only.\nChoose \"No\" to read consumption rate C(x,j) (file 17).",
      "Life table only?", kYesNo, 2);
  if (answer == kNo) {
    S.options.ConsumptionRead = "Yes";
    ConsumptionFileReader(S, P, W).ReadCxjNewSub();
  } else {
    S.options.ConsumptionRead = "No";
  }
}

}  // namespace korvan
