#include "bootstrap/jackknife.h"

#include <cmath>
#include <string>

#include "bootstrap/bootstrap_statistics.h"
#include "engine/life_table_engine.h"
#include "engine/population_parameters.h"
#include "input/data_file_reader.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// The ten columns of the jackknife: the reduced cohorts' parameters, then the pseudo-values.
struct Column {
  const char* head;
  const Vec<double, 0, kMaxIndividual> PopulationParameters::*values;
  int decimals;
};
constexpr Column kColumns[10] = {
    {"    r", &PopulationParameters::JackR, 6},
    {"lambda ", &PopulationParameters::JackLambda, 6},
    {" R0", &PopulationParameters::JackR0, 4},
    {" T", &PopulationParameters::JackT, 4},
    {" GRR", &PopulationParameters::JackGRR, 4},
    {"pseudo-r", &PopulationParameters::JackPseudoR, 6},
    {"pseudo-lambda", &PopulationParameters::JackPseudoLambda, 6},
    {"pseudo-R0", &PopulationParameters::JackPseudoR0, 4},
    {"pseudo-T", &PopulationParameters::JackPseudoT, 4},
    {"pseudo-GRR", &PopulationParameters::JackPseudoGRR, 4},
};
constexpr int kFirstColumn = 9, kColumnWidth = 14;

int ColumnAt(int c) { return kFirstColumn + c * kColumnWidth; }

// A row of the report: its label, then one value per column at its decimals.
template <class ValueOf>
void ReportRow(TextFile& out, const std::string& label, ValueOf value) {
  out.PrintPart(label);
  for (int c = 0; c < 10; ++c) out.PrintPart(Tab{ColumnAt(c)}, RoundDisplay(value(c), kColumns[c].decimals));
  out.NewLine();
}

}  // namespace

void Jackknife::EnginePass() {
  LifeTableEngine life(S, P, W);
  life.Life01();
  life.Life03();
  life.Life04();
  ParameterEngine params(S, P, W);
  if (S.options.AnalysisMethod == "Matrix") {
    params.Life05ForMatrix();
    params.Life05AForMatrix();
  } else {
    params.Life05();
    params.Life05a();
  }
}

void Jackknife::RunPasses() {
  W.run.ResampleKind = "j";
  W.run.IsResamplingFlag = "y";
  W.run.IsBasicRunFlag = "n";
  W.run.Boot = 0;
  W.params.JackNo = 0;
  DataFileReader reader(S, P, W);
  reader.InputData();
  EnginePass();
  const int N = W.cohort.CohortSize;
  S.params.JackCohortSize = N;
  for (int i = 1; i <= N; ++i) {
    P.Progress(i - 1, N);
    W.params.JackNo = i;
    reader.InputData();
    jackknif();
    EnginePass();
  }
  P.Progress(N, N);
  W.params.JackNo = 0;
}

void Jackknife::jackknif() {
  Flow("jackknif");
  Cohort& C = W.cohort;
  const int m = S.header.StageCount;
  const int N = C.CohortSize;
  for (int i = W.params.JackNo; i < N; ++i) {
    C.IndividualNo(i) = C.IndividualNo(i + 1);
    C.IndividualSex(i) = C.IndividualSex(i + 1);
    for (int j = 1; j <= m; ++j) C.StageDuration(i, j) = C.StageDuration(i + 1, j);
    for (int x = 0; x <= kMaxAge; ++x) C.Fecundity(i, x) = C.Fecundity(i + 1, x);
  }
  C.CohortSize = N - 1;
  // Longevities and the last age of the cohort less one, as a sample's are formed.
  FormTotalLongevity(C, m);
  W.tables.LastAge = C.MaxLongevity - 1;
}

void Jackknife::jack01() {
  Flow("jack01");
  auto& p = S.params;
  BootstrapRecord& R = S.boot;
  const int N = p.JackCohortSize;
  const double n = N;
  R.HistogramBars = 20;
  R.HistogramBarsPlus1 = 22;
  for (int i = 1; i <= N; ++i) {
    p.JackPseudoLambda(i) = n * p.Lambda_Basic - (n - 1) * p.JackLambda(i);
    p.JackPseudoR0(i) = n * p.R0_Basic - (n - 1) * p.JackR0(i);
    if (p.JackPseudoR0(i) < 1e-07) p.JackPseudoR0(i) = 0;
    p.JackPseudoT(i) = n * p.T_Basic - (n - 1) * p.JackT(i);
    p.JackPseudoGRR(i) = n * p.GRR_Basic - (n - 1) * p.JackGRR(i);
  }
  // Sums, extremes, mean and variance of each column over the N individuals; the S.D. is the
  // root of the variance, the S.E. the S.D. over the root of N.
  BootSummary sums[10];
  for (int c = 0; c < 10; ++c)
    sums[c] = SummarizeSamples(N, [&](long i) { return (p.*kColumns[c].values)(i); });
  auto sd = [&](int c) { return sums[c].se; };
  auto se = [&](int c) { return sums[c].se / std::sqrt(n); };
  // The second route to the S.E. of pseudo-r: squared deviations from the mean.
  double deviations = 0;
  for (int i = 1; i <= N; ++i) deviations += std::pow(p.JackPseudoR(i) - sums[5].mean, 2);
  const double seAgain = std::sqrt(deviations / n / (n - 1));

  // The pseudo-values stand in the session's summaries for the console's form and charts.
  const int pseudo[5] = {5, 6, 7, 8, 9};
  BootSummary* kept[5] = {&R.R, &R.Lambda, &R.R0, &R.T, &R.GRR};
  for (int k = 0; k < 5; ++k) {
    *kept[k] = sums[pseudo[k]];
    kept[k]->se = se(pseudo[k]);
  }
  R.ResampleKind = "j";
  const int plus1 = R.HistogramBarsPlus1;
  auto value = [&](const Vec<double, 0, kMaxIndividual>& list) {
    return [&list](long i, double& v) { return v = list(i), true; };
  };
  R.RClassWidth = CountClasses(sums[5].min, sums[5].max, 20, plus1 + 1, plus1, N, R.RClassEdge, R.RClassCentre,
                               R.RClassCount, value(p.JackPseudoR));
  R.R0ClassWidth = CountClasses(sums[7].min, sums[7].max, 20, plus1 + 2, plus1 + 1, N, R.R0ClassEdge,
                                R.R0ClassCentre, R.R0ClassCount, value(p.JackPseudoR0));

  TextFile out(OutputName(S, "_0_Output-Jackknife.txt"));
  out.Print(Tab{70}, "Page", 1);
  out.Print("Program: Age-Stage, Korvan Life Table Analysis (", S.identity.ProgramName, ").");
  out.Print("Table", 1, ". Table of Jackknife pseudo-values");
  out.Print("Project: ", S.identity.ProjectName, " ", S.identity.VersionStamp);
  out.Print("Username: ", S.identity.UserName);
  out.Print("Treatment: ", S.identity.TreatmentName);
  out.Print("Analyzed on : ", DateTimeText());
  out.Print("Use the jackknife means of this table for your paper.");
  out.Print("Attention! The jackknife has been shown to give biologically meaningless pseudo-values of the");
  out.Print("population parameters (r, lambda, R0, T and GRR). Use the bootstrap (A3) to estimate their errors.");
  out.PrintPart("Omitted");
  out.NewLine();
  out.PrintPart(" no.");
  for (int c = 0; c < 10; ++c) out.PrintPart(Tab{ColumnAt(c)}, kColumns[c].head);
  out.NewLine();
  for (int i = 1; i <= N; ++i) ReportRow(out, std::to_string(i), [&](int c) { return (p.*kColumns[c].values)(i); });
  ReportRow(out, "Mean", [&](int c) { return sums[c].mean; });
  ReportRow(out, "Max", [&](int c) { return sums[c].max; });
  ReportRow(out, "Min", [&](int c) { return sums[c].min; });
  ReportRow(out, "Variance", [&](int c) { return sums[c].variance; });
  ReportRow(out, "S.D.", sd);
  ReportRow(out, "S.E.", se);
  ReportRow(out, "n", [&](int) { return n; });
  const double original[5] = {p.R_Basic, p.Lambda_Basic, p.R0_Basic, p.T_Basic, p.GRR_Basic};
  ReportRow(out, "Original", [&](int c) { return original[c % 5]; });
  if (p.R0_Basic <= 1) {
    out.Print("Note well! The net reproductive rate of life table is less than 1 or equals 1.");
    out.Print("You have to pay attention to interpretation.  If you notice errors, use the bootstrap results.");
  }
  out.Print("SE of pseudo-r calculated again = ", FullPrecision(seAgain), " (Double check passed).");
  out.Print("Original are the parameters calculated using all individuals.");
  out.Print("r: intrinsic rate, lambda: finite rate, R0: net reproduction rate,");
  out.Print("T: mean generation time, GRR: gross reproduction rate.");
  out.Print("A pseudo-value of individual i is N x - (N - 1) x(i): x of the cohort, x(i) of the cohort without i.");
  out.Print("References:");
  out.Print("  Meyer, J. S., C. G. Ingersoll, L. L. McDonald, and M. S. Boyce. 1986. Estimating uncertainty in");
  out.Print("  population growth rates: jackknife vs. bootstrap techniques. Ecology 67: 1156-1166.");
  out.Print("  Efron, B. and R. J. Tibshirani. 1993. An introduction to the bootstrap. Chapman & Hall.");
}

void Jackknife::WriteJackknifeForTtest() {
  Flow("WriteJackknifeForTtest");
  const auto& p = S.params;
  TextFile out(OutputName(S, "_7_Jackknif-results.txt"));
  out.Write("Omitted no.", "pseudo-r", "pseudo-lambda", "pseudo-R0", "pseudo-T", "pseudo-GRR");
  for (int i = 1; i <= p.JackCohortSize; ++i)
    out.Write(i, RoundDisplay(p.JackPseudoR(i), 6), RoundDisplay(p.JackPseudoLambda(i), 4),
              RoundDisplay(p.JackPseudoR0(i), 2), RoundDisplay(p.JackPseudoT(i), 2), RoundDisplay(p.JackPseudoGRR(i), 2));
}

void Jackknife::WriteJackknifeInRow() {
  Flow("WriteJackknifeInRow");
  const auto& p = S.params;
  struct Row {
    const char* suffix;
    const char* name;
    const Vec<double, 0, kMaxIndividual>& values;
  };
  const Row rows[5] = {{"_Jackknif-pseudo-r-row.txt", "Pseudo-r", p.JackPseudoR},
                       {"_Jackknif-pseudo-lambda-row.txt", "Pseudo-lambda", p.JackPseudoLambda},
                       {"_Jackknif-pseudo-R0-row.txt", "Pseudo-R0", p.JackPseudoR0},
                       {"_Jackknif-pseudo-T-row.txt", "Pseudo-T", p.JackPseudoT},
                       {"_Jackknif-pseudo-GRR-row.txt", "Pseudo-GRR", p.JackPseudoGRR}};
  const int N = p.JackCohortSize;
  for (const Row& row : rows) {
    TextFile out(OutputName(S, row.suffix));
    out.Write(S.identity.TreatmentName);
    out.Write(row.name);
    // Twenty values to a line; the last one followed by the closing -1.
    for (int i = 1; i <= N; ++i) {
      out.RawText(FullPrecision(row.values(i)));
      out.RawText(i == N ? ",-1\n" : i % 20 == 0 ? "\n" : ",");
    }
    if (N == 0) out.RawText("-1\n");
  }
}

void Jackknife::WriteJackknifeFrequency() {
  Flow("WriteJackknifeFrequency");
  const BootstrapRecord& R = S.boot;
  for (const bool isR : {true, false}) {
    TextFile out(OutputName(S, isR ? "_9_Fig_Jackknife-r frequency.txt" : "_9_Fig_Jackknife-R0 frequency.txt"));
    WriteFrequencyClasses(out, R, isR, isR ? R.R : R.R0, "pseudo-", nullptr, -1);
  }
}

}  // namespace korvan
