// Figure files of the age-stage matrices: a quoted title line, a head of "Age," and the stage
// names, a row per age (the age in rate units first) and a closing row of zeros.
#include <cmath>
#include <string>

#include "engine/life_table_engine.h"
#include "text/numbers.h"

namespace korvan {

double LifeTableEngine::FigureValue(Figure matrix, int x, int j) const {
  const auto& T = W.tables;
  const int m = S.header.StageCount;
  switch (matrix) {
    case Figure::G: return T.Gxj(x, j);
    case Figure::D: return T.Dxj(x, j);
    case Figure::F: return T.Fxj(x, j);
    case Figure::S: return T.Sxj(x, j);
    case Figure::RC: {
      const double c = j < m + 1 ? S.header.StageRearingCost(1, j) : S.header.StageRearingCost(2, m);
      return T.Sxj(x, j) * c;
    }
    case Figure::N: return T.Nxj(x, j);
    case Figure::U: return T.Pxj(x, j);
    case Figure::Q: return T.Qxj(x, j);
    case Figure::P: return T.Mxj(x, j);
    case Figure::E: return W.lifeTable.Exj(x, j);
    case Figure::Survivors: return W.lifeTable.Survivors(x, j);
    case Figure::C: return W.predation.Cxj(x, j);
  }
  return 0;
}

void LifeTableEngine::WriteStageFigure(const std::string& suffix, const std::string& title, Figure matrix,
                                       FigureForm form) {
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  const auto& names = S.header.StageName;
  Keep().identity.OutputFileName = OutputName(S, suffix);
  TextFile f(S.identity.OutputFileName);
  f.Write(title);
  if (form != FigureForm::Bare) {
    f.RawText("Age,");
    for (int j = 1; j <= m + 1; ++j) {
      if (form != FigureForm::Development || j == m + 1)
        f.RawText(names(1, j));
      else if (j == m)
        f.RawText(names(1, m - 1) + " to " + names(1, m + 1));
      else
        f.RawText(names(1, j) + " to " + names(1, j + 1));
      if (j <= m) f.RawText(",");
    }
    f.NewLine();
  }
  for (int x = 0; x <= last; ++x) {
    f.RawText(NumberText(AgeInDays(x)));
    for (int j = 1; j <= m + 1; ++j) {
      f.RawText(",");
      f.RawText(FullPrecision(FigureValue(matrix, x, j)));
    }
    f.NewLine();
  }
  if (form == FigureForm::Bare) return;
  f.RawText(NumberText(AgeInDays(last + 1)));
  for (int j = 1; j <= m + 1; ++j) f.RawText(form == FigureForm::SpacedZeros ? ", 0" : ",0");
  f.NewLine();
}

// l(x) with its key factors: k(x) = log10 l(x) - log10 l(x+1), q(x) = 1 - l(x+1)/l(x), and the
// running sum of q(x). Where l(x+1) is 0 the logarithm has no value and k(x) is written as 0.
void LifeTableEngine::WriteLxKeyFactors() {
  const auto& T = W.tables;
  const int last = T.LastAge;
  Keep().identity.OutputFileName = OutputName(S, "_Fig_Age_lx_Kx_qx.txt");
  TextFile f(S.identity.OutputFileName);
  f.Write("age, l(x), k(x), q(x), cumu. q(x)");
  f.RawText("Age,l(x),k(x),q(x),cumu. q(x)");
  f.NewLine();
  double cumulative = 0;
  for (int x = 0; x <= last; ++x) {
    const double l = T.Lx(x);
    const double next = x < last ? T.Lx(x + 1) : 0;
    const double k = (l > 0 && next > 0) ? std::log10(l) - std::log10(next) : 0;
    const double q = l > 0 ? 1 - next / l : 0;
    cumulative += q;
    f.RawText(NumberText(AgeInDays(x)) + "," + FullPrecision(l) + "," + FullPrecision(k) + "," +
              FullPrecision(q) + "," + FullPrecision(cumulative));
    f.NewLine();
  }
  f.RawText(NumberText(AgeInDays(last + 1)) + ",0,0,0,0");
  f.NewLine();
}

void LifeTableEngine::Life04Gosub2400() {
  Flow("Life04Gosub2400");
  const std::string& level = S.options.OutputLevel;
  if (level == "Nooutput") return;
  const int m = S.header.StageCount;
  const bool costs = S.header.RegularLifeTable == "No";
  // Counts of a group-reared cohort give no g(x,j) and d(x,j), nor what is built on them.
  const bool groupReared = S.options.GroupRearedFlag == "Yes";
  if (level != "No") {
    if (!groupReared) {
      WriteStageFigure("_Fig_Gxj.txt", "Growth transition probability (matrix G)", Figure::G);
      WriteStageFigure("_Fig_Dxj.txt", "Development transition probability (matrix D)", Figure::D, FigureForm::Development);
    }
    WriteStageFigure("_2b_Fig_Fxj.txt", "Fecundity matrix (F)", Figure::F);
    WriteLxKeyFactors();
  }
  WriteStageFigure("_1_Fig_Sxj.txt", "Age-stage survival rate", Figure::S);
  if (costs) WriteStageFigure("_1a_Fig_RCxj.txt", "Age-stage rearing cost (RCxj)", Figure::RC);
  WriteStageFigure("_1a_Fig_Nxj.txt", "Age-stage survival number", Figure::N);

  // The cohort in the group-reared form: counts by stage and age, and the female eggs.
  if (!groupReared) {
    const auto& T = W.tables;
    const auto& L = W.lifeTable;
    const auto& H = S.header;
    Keep().identity.OutputFileName =
        OutputName(S, "_0A3_Group-reared life table-" + std::to_string(m) + " stages.txt");
    TextFile f(S.identity.OutputFileName);
    f.Write(S.identity.ProjectName);
    f.Write(S.identity.UserName);
    f.Write(S.identity.TreatmentName);
    f.Write(W.cohort.CohortSize);
    f.Write(2, m);
    for (int t = 1; t <= 2; ++t) {
      const std::string code = !H.TypeCode(t).empty() ? H.TypeCode(t) : (t == 1 ? "F" : "M");
      f.WritePart(code);
      for (int j = 1; j <= m; ++j) {
        const std::string& name = !H.StageName(t, j).empty() ? H.StageName(t, j) : H.StageName(1, j);
        if (j < m)
          f.WritePart(name);
        else
          f.Write(name);
      }
    }
    for (int j = 1; j <= m + 1; ++j) {
      const int first = L.StageFirstAge(j), lastOfJ = L.StageLastAge(j);
      f.WritePart(H.StageName(1, j), first);
      f.Write(lastOfJ);
      for (int x = first; x <= lastOfJ; ++x) {
        if (x < lastOfJ)
          f.WritePart(T.Nxj(x, j));
        else
          f.Write(T.Nxj(x, j));
      }
    }
    f.WritePart(H.StageName(1, m), L.StageFirstAge(m));
    f.Write(L.StageLastAge(m));
    for (int x = L.StageFirstAge(m); x <= L.StageLastAge(m); ++x) {
      if (x < L.StageLastAge(m))
        f.WritePart(L.FxjTotal(x, m));
      else
        f.Write(L.FxjTotal(x, m));
    }
  }

  if (groupReared) return;
  WriteStageFigure("_6b_Fig_Uxj.txt", "Age-stage specific survival rate (matrix U)", Figure::U);
  WriteStageFigure("_6a_Fig_Qxj.txt", "Age-stage specific mortality (matrix Q)", Figure::Q);
  WriteStageFigure("_6_Fig_Pxj.txt", "Age-stage distribution of mortality (matrix P)", Figure::P);
}

void LifeTableEngine::WriteSxFig() {
  Flow("WriteSxFig");
  if (S.options.OutputLevel == "Nooutput") return;
  WriteStageFigure("_1_Fig_Sx.txt", "Age-stage survival rate", Figure::S, FigureForm::SpacedZeros);
}

}  // namespace korvan
