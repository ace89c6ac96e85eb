// Life expectancy: e(x,j) by walking forward from every occupied cell of the age-stage table
// through the stages the individual may still reach, e(x) from l(x), the table of matrix E,
// its figure file and the sub-matrices of one chosen start cell.
#include <string>

#include "engine/life_table_engine.h"
#include "engine/table_text.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

void LifeTableEngine::AgeStageLifeExpectancy() {
  FlowEngine("AgeStageLifeExpectancy");
  // A resampling pass reads neither e(x,j) nor e(x): they serve the Basic Run's tables and
  // figures. With a flow record the walk still runs, for the lines it writes.
  if (W.run.IsResamplingFlag == "y" && (S.options.FlowMode.empty() || S.options.FlowMode[0] == 'N')) return;
  const auto& T = W.tables;
  auto& L = W.lifeTable;
  auto& sp = L.Survivors;  // s'(y,k): chance of reaching (y,k) from the start cell
  const int m = S.header.StageCount;
  const int last = T.LastAge;

  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= m + 1; ++j) sp(x, j) = 0;

  for (int j = 1; j <= m + 1; ++j) {
    const int lastOfJ = L.StageLastAge(j);
    for (int x = L.StageFirstAge(j); x <= lastOfJ && x <= last; ++x) {
      if (T.Sxj(x, j) == 0) continue;  // keeps the value of the former call
      int d = 0;
      sp(x, j) = 1;
      double e = 1;  // the start cell counts a whole time unit
      // The value just stored is carried on in hand: the same products, without reading back.
      double before = 1;
      for (int y = x + 1; y <= last && y <= lastOfJ; ++y) {
        before = T.Gxj(y - 1, j) * before;
        sp(y, j) = before;
        e += before;
      }
      if (j < m) {
        for (int k = j + 1; k <= m + 1; ++k) {
          if (k != m + 1) ++d;  // the male stage shares the delay of the female stage
          const int src = k == m + 1 ? m - 1 : k - 1;
          const int lastOfK = L.StageLastAge(k);
          for (int y = x + d; y <= last && y <= lastOfK; ++y) {
            if (y == x + d)
              before = T.Dxj(y - 1, k - 1) * sp(y - 1, src);
            else
              before = T.Gxj(y - 1, k) * before + T.Dxj(y - 1, k - 1) * sp(y - 1, src);
            sp(y, k) = before;
            e += before;
          }
        }
      }
      L.Exj(x, j) = e;
      if (x == S.options.SubMatrixAge && j == S.options.SubMatrixStage) PrintSubSMatrix();
    }
  }

  const double tu = S.settings.TimeUnit;
  for (int j = 1; j <= m + 1; ++j)
    for (int x = 0; x <= last; ++x) L.Exj(x, j) = TimeUnitToDaysWithHalf(L.Exj(x, j), tu);

  double sum = 0;
  for (int x = last; x >= 0; --x) {
    sum += T.Lx(x);
    L.Ex(x) = TimeUnitToDaysWithHalf(sum / T.Lx(x), tu);
  }
}

// One line per age: the age in rate units, then values separated by commas.
void LifeTableEngine::PrintLifeExpectancy() {
  Flow("PrintLifeExpectancy");
  if (S.options.OutputLevel == "Nooutput") return;
  WriteStageFigure("_3_Fig_Exj.txt", "Age-stage life expectancy", Figure::E);
}

void LifeTableEngine::PrintMatrixExj() {
  Flow("PrintMatrixExj");
  auto& L = W.lifeTable;
  auto& out = C.MainOutput;
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  const double tu = S.settings.TimeUnit;

  L.NewbornExj = L.Exj(0, 1);
  L.MaxExj = L.NewbornExj;
  L.MaxExjAge = 0;
  L.MaxExjStage = 1;
  for (int x = 0; x <= last; ++x) {
    for (int j = 1; j <= m + 1; ++j) {
      if (L.Exj(x, j) > L.MaxExj) {
        L.MaxExj = L.Exj(x, j);
        L.MaxExjAge = x;
        L.MaxExjStage = j;
      }
      L.PrintMatrix(x, j) = L.Exj(x, j);
    }
  }
  if (!out.IsOpen()) return;

  const std::string title = "Age-stage specific life expectancy (matrix E)";
  NewMainTablePage(C);
  out.Print("Table", C.MainTableNumber, ". ", title);
  out.Print(std::string(static_cast<std::size_t>(9 * (m + 1)), '='));
  out.PrintPart("Age");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * j + 1}, S.header.StageName(1, j).substr(0, 6));
  out.NewLine();
  out.PrintPart("(x)");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{9 * j + 1}, "j=" + std::to_string(j));
  out.NewLine();
  out.Print(std::string(static_cast<std::size_t>(9 * (m + 1)), '-'));
  const bool fraction = tu == 0.3 || tu == 0.16 || tu == 0.2 || tu == 0.25;
  for (int x = 0; x <= last; ++x) {
    const double age = fraction ? RoundDisplay(TimeUnitToDays(x, tu), 2) : x * tu;
    out.PrintPart(PrintNumber(age));
    for (int j = 1; j <= m + 1; ++j) {
      out.PrintPart(Tab{9 * j + 1});
      const bool inRange = x >= L.StageFirstAge(j) && x <= L.StageLastAge(j) &&
                           !(j > 1 && L.StageFirstAge(j) == 0 && x == 0);
      if (inRange)
        out.PrintPart(CellText(L.PrintMatrix(x, j)));
      else
        out.PrintPart(" - ");
    }
    out.NewLine();
  }
  out.Print(std::string(static_cast<std::size_t>(9 * (m + 1)), '-'));
  out.Print("e(x,j) is the life expectancy of individuals of age x and stage j.");
  out.Print("Life expectancy of newborn, E(0,1)=", RoundDisplay(L.NewbornExj, 2));
  out.Print("Maximal life expectancy Max(Exj)=", RoundDisplay(L.MaxExj, 2), " at age ",
            AgeInDays(L.MaxExjAge), "and stage ", L.MaxExjStage, ".");
  out.Print("If there is significant difference, there must be high mortality before the age of Max(Exj),");
  out.Print("or there is significant difference between female and male adults.");
}

void LifeTableEngine::PrintSubSMatrix() {
  Flow("PrintSubSMatrix");
  if (S.options.WriteSubMatrix == "No" || W.run.IsResamplingFlag == "y") return;
  const std::string cell = FullPrecision(S.options.SubMatrixAge) + " and stage" +
                           std::to_string(S.options.SubMatrixStage) + ".txt";
  WriteStageFigure("_Sub_Gxj_age" + cell, "Sub Age-stage growth rate for life expectancy", Figure::G,
                   FigureForm::Bare);
  WriteStageFigure("_Sub_Dxj_age" + cell, "Sub Age-stage developmental rate for life expectancy", Figure::D,
                   FigureForm::Bare);
  WriteStageFigure("_Sub_Sxj_age" + cell, "Sub Age-stage survival rate for life expectancy", Figure::Survivors,
                   FigureForm::Bare);
}

}  // namespace korvan
