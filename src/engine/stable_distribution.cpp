// Stable age-stage distribution a(x,j) and b(x,j), the stable age and stage distributions,
// and their tables in the main output.
#include <cmath>
#include <string>

#include "engine/age_stage_rows.h"
#include "engine/population_parameters.h"
#include "engine/table_text.h"
#include "text/numbers.h"

namespace korvan {

namespace {

std::string Line(int length, char c) { return std::string(static_cast<std::size_t>(length), c); }

}  // namespace

// ---------------------------------------------------------------------------------------
// Tops

void ParameterEngine::Life05a() {
  FlowEngine("Life05a");
  if (W.params.R0 <= 0) {
    ColourBox("txtNetreproductiverate", "Red");
    if (W.run.IsResamplingFlag != "y") return;
  }
  if (W.run.IsResamplingFlag == "y" && ResampleKind() == "j") return;
  Life05aGosub1580();
  Life05aGosub2100();
  if (W.run.Boot > 0) return;
  Life05aGosub2610();
  Life05aGosub3800();
}

void ParameterEngine::Life05AForMatrix() {
  FlowEngine("Life05AForMatrix");
  if (W.params.R0 <= 0) {
    ColourBox("txtNetreproductiverate", "Red");
    if (W.run.IsResamplingFlag != "y") return;
  }
  if (W.run.IsResamplingFlag == "y") return;
  Life05aGosub1580ForMatrix();
  Life05aGosub2100ForMatrix();
  Life05aGosub2610();
  Life05aGosub3800();
}

// ---------------------------------------------------------------------------------------
// a(x,j) and b(x,j)

void ParameterEngine::Life05aGosub1580() {
  FlowEngine("Life05aGosub1580");
  StableAgeStageDistribution(false);
  if (W.run.Boot == 0) PrintStableAgeStageTables(false);
}

void ParameterEngine::Life05aGosub1580ForMatrix() {
  FlowEngine("Life05aGosub1580ForMatrix");
  StableAgeStageDistribution(true);
  PrintStableAgeStageTables(true);
}

void ParameterEngine::StableAgeStageDistribution(bool /*percentCopy*/) {
  // The Matrix twin turns its copy for the stage sums into percent; the only reader of that
  // copy is the ratio to the first stage, which comes out the same, so one copy serves both.
  auto& p = W.params;
  const auto& t = W.tables;
  const auto& lt = W.lifeTable;
  const int m = S.header.StageCount;
  const int last = t.LastAge;
  const double q = S.settings.TimeUnit == 1 ? p.lambda : p.StepFiniteRate;
  auto& a = p.Axj;
  if (last >= 0 && m >= 0) {
    // The rows are walked directly once their last cell is found within the bounds: beyond
    // them its fault ends the run, as a walk cell by cell would. (Bxj has the bounds of Axj.)
    static_cast<void>(a(last, m + 1));
    double* const rows[] = {&a(0, 1)};
    ClearAgeStageRows(rows, 1, &a(1, 1) - &a(0, 1), m + 1, last + 1);
  }
  a(0, 1) = 1;
  for (int x = 1; x <= lt.StageLastAge(1); ++x) a(x, 1) = t.Gxj(x - 1, 1) * a(x - 1, 1) / q;
  for (int j = 2; j <= m; ++j) {
    if (lt.StageFirstAge(j) == 0) continue;
    for (int x = lt.StageFirstAge(j); x <= lt.StageLastAge(j); ++x)
      a(x, j) = (t.Dxj(x - 1, j - 1) * a(x - 1, j - 1) + t.Gxj(x - 1, j) * a(x - 1, j)) / q;
  }
  const int male = m + 1;
  if (lt.StageLastAge(male) != 0) {
    for (int x = lt.StageFirstAge(male); x <= lt.StageLastAge(male); ++x)
      a(x, male) = (t.Dxj(x - 1, m) * a(x - 1, m - 1) + t.Gxj(x - 1, male) * a(x - 1, male)) / q;
  }
  // The sum and the shares along each row: cells 1..m+1 of a row are row[0..m].
  double total = 0;
  for (int x = 0; x <= last; ++x) {
    const double* row = &a(x, 1);
    for (int j = 0; j <= m; ++j) total += row[j];
  }
  for (int x = 0; x <= last; ++x) {
    const double* row = &a(x, 1);
    double* share = &p.Bxj(x, 1);
    for (int j = 0; j <= m; ++j) share[j] = row[j] / total * 100;
  }
}

// ---------------------------------------------------------------------------------------
// Tables of V, A, B and B2

void ParameterEngine::PrintStableAgeStageTables(bool matrixTwin) {
  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  auto& p = W.params;
  auto& show = p.Survivors;  // the display matrix of the printers
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  auto copy = [&](const auto& from, double factor) {
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) show(x, j) = from(x, j) * factor;
  };
  copy(p.Vxj, 1);
  tableTitle_ = "Age-stage specific reproductive value (Matrix V)";
  tableLine1_ = "v(x,j) is the reproductive value of individuals of age x and stage j";
  tableLine2_ = "";
  Life05aGosub0180();
  copy(p.Axj, 1);
  tableTitle_ = "Stable age-stage-distribution (SASD) (Matrix A) (Newborn = 1)";
  tableLine1_ = "a(x,j) is the proportion of individuals in age x and stage j ";
  tableLine2_ = "in comparison with a(0,1) (the newborn).";
  Life05aGosub0180();
  copy(p.Bxj, 1);
  tableTitle_ = "Stable age-stage-distribution (SASD) (Matrix B) (in percentage)";
  tableLine1_ = "b(x,j) is the proportion of individuals in age x and stage j ";
  tableLine2_ = matrixTwin ? "and the total cohort is 100." : "when the total cohort is 100.";
  Life05aGosub0180();

  // Matrix B2 on the wider printer: every value to 4 decimals on columns of 9.
  copy(p.Bxj, 0.01);
  NewMainTablePage(C);
  out.Print("Table", C.MainTableNumber, ". ", "Stable age-stage-distribution (SASD) (Matrix B2) (sum = 1)");
  out.Print(Line(9 * (m + 1) + 5, '='));
  out.PrintPart(" Age");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * j - 3}, S.header.StageName(1, j).substr(0, 6));
  out.NewLine();
  out.PrintPart(" (x)");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * j - 3}, j);
  out.NewLine();
  out.Print(Line(9 * (m + 1) + 5, '-'));
  for (int x = 0; x <= last; ++x) {
    out.PrintPart(x);
    for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * j - 3}, FixedText(show(x, j), 4));
    out.NewLine();
  }
  out.Print(Line(9 * (m + 1) + 5, '-'));
  out.Print("b2(x,j) is the proportion of individuals in age x and stage j ");
  out.Print("and the total cohort is 1.");
}

void ParameterEngine::Life05aGosub0180() {
  FlowEngine("Life05aGosub0180");
  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  auto& show = W.params.Survivors;
  const auto& lt = W.lifeTable;
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  const double tu = S.settings.TimeUnit;

  NewMainTablePage(C);
  for (int x = 0; x <= last; ++x) {
    for (int j = 1; j <= m + 1; ++j) {
      const double v = show(x, j);
      if (v <= 1)
        show(x, j) = RoundDisplay(v, 4);
      else if (v <= 300)
        show(x, j) = RoundDisplay(v, 2);
      else if (v <= 3000)
        show(x, j) = RoundDisplay(v, 1);
    }
  }
  out.Print("Table", C.MainTableNumber, ". ", tableTitle_);
  out.Print(Line(9 * (m + 1), '='));
  out.PrintPart("Age");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{8 * j + 1}, S.header.StageName(1, j).substr(0, 6));
  out.NewLine();
  out.PrintPart("(x)");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{8 * j + 1}, "j=", j);
  out.NewLine();
  out.Print(Line(9 * (m + 1), '-'));
  for (int x = 0; x <= last; ++x) {
    out.PrintPart(AgeInTable(x, tu));
    for (int j = 1; j <= m + 1; ++j) {
      out.PrintPart(Tab{8 * j + 1});
      const int first = lt.StageFirstAge(j);
      const bool inRange = x >= first && x <= lt.StageLastAge(j) && !(j > 1 && first == 0);
      if (inRange)
        out.PrintPart(show(x, j));
      else
        out.PrintPart(" - ");
    }
    out.NewLine();
  }
  out.Print(Line(9 * (m + 1), '-'));
  if (*tableLine1_) out.Print(tableLine1_);
  if (*tableLine2_) out.Print(tableLine2_);
}

// ---------------------------------------------------------------------------------------
// Stable age and stage distributions

void ParameterEngine::Life05aGosub2100() {
  FlowEngine("Life05aGosub2100");
  StableTables();
}

void ParameterEngine::Life05aGosub2100ForMatrix() {
  FlowEngine("Life05aGosub2100ForMatrix");
  StableTables();
}

void ParameterEngine::StableTables() {
  auto& p = W.params;
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  const double tu = S.settings.TimeUnit;
  if (W.run.Boot > 0) {
    for (int j = 1; j <= m + 1; ++j) {
      double sum = 0;
      for (int x = 0; x <= last; ++x) sum += p.Bxj(x, j);
      W.boot.sample.Ssd(j) = sum;
    }
    return;
  }
  double firstStage = 0;
  for (int x = 0; x <= last; ++x) firstStage += p.Axj(x, 1);
  for (int j = 1; j <= m + 1; ++j) {
    double percent = 0, newborn = 0;
    for (int x = 0; x <= last; ++x) {
      percent += p.Bxj(x, j);
      newborn += p.Axj(x, j);
    }
    p.SsdPercent(j) = percent;
    p.SsdPercent2(j) = percent;
    p.SsdFirstStageOne(j) = newborn / firstStage;
  }
  for (int x = 0; x <= last; ++x) {
    double sum = 0;
    for (int j = 1; j <= m + 1; ++j) sum += p.Bxj(x, j);
    p.Ax2(x) = sum;
  }

  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  auto head = [&](const char* title) {
    NewMainTablePage(C);
    out.Print("Table", C.MainTableNumber, title);
  };
  auto stageHead = [&]() {
    for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * (j - 1) + 1}, S.header.StageName(1, j));
    out.NewLine();
  };
  const int wide = 9 * (m + 1) + 4;

  head(". The stable age distribution a(x) (newborn = 1)");
  out.Print(Line(20, '='));
  out.Print("Age       SAD a(x)");
  out.Print(Line(20, '-'));
  for (int x = 0; x <= last; ++x) out.Print(AgeInTable(x, tu), Tab{10}, FixedText(p.SadRaw(x), 4));
  out.Print(Line(20, '-'));

  head(". Stable age distribution in percentage");
  out.Print(Tab{11}, "(total population = 100)");
  out.Print(Line(20, '='));
  out.Print("Age       SAD (%)");
  out.Print(Line(20, '-'));
  for (int x = 0; x <= last; ++x) out.Print(AgeInTable(x, tu), Tab{10}, FixedText(p.Ax2(x), 4));
  out.Print(Line(20, '-'));

  head(". Stable stage distribution in percentage");
  out.Print(Tab{7}, "(Total population = 100)");
  out.Print(Line(wide, '='));
  stageHead();
  out.Print(Line(wide, '-'));
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * (j - 1) + 1}, FixedText(p.SsdPercent(j), 4));
  out.NewLine();
  out.Print(Line(wide, '-'));

  head(". Stable stage distribution (First stage = 1)");
  out.Print(Line(wide, '='));
  stageHead();
  out.Print(Line(wide, '-'));
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * (j - 1) + 1}, FixedText(p.SsdFirstStageOne(j), 4));
  out.NewLine();
  out.Print(Line(wide, '-'));
}

}  // namespace korvan
