// Figure files of reproductive values, life expectancy, stable distributions, l(x) and m(x).
// Each has a title line in double quotes, a heading, and a row per age with the age in rate
// units; numbers are written at full precision.
#include <string>

#include "engine/population_parameters.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// A row: the age in rate units, then the values, comma-separated.
template <class... V>
void Row(TextFile& f, double age, V... values) {
  std::string line = NumberText(age);
  ((line += ",", line += FullPrecision(values)), ...);
  f.RawText(line);
  f.NewLine();
}

void Heading(TextFile& f, const char* text) {
  f.RawText(text);
  f.NewLine();
}

}  // namespace

std::string StageFigureHeading(const SessionStore& S) {
  const int m = S.header.StageCount;
  std::string line = "Age,";
  for (int j = 1; j <= m; ++j) line += S.header.StageName(1, j) + ",";
  line += S.header.MaleCount == 0 ? std::string("-") : S.header.StageName(1, m + 1);
  return line;
}

void WriteStageFigure(const SessionStore& S, const std::string& suffix, const char* title,
                      const Mat<double, kMaxAge, kMaxStage>& M, int last) {
  TextFile f(OutputName(S, suffix));
  f.Write(title);
  f.RawText(StageFigureHeading(S));
  f.NewLine();
  for (int x = 0; x <= last; ++x) {
    std::string line = NumberText(AgeInRateUnits(x, S.settings.TimeUnit));
    for (int j = 1; j <= S.header.StageCount + 1; ++j) line += "," + FullPrecision(M(x, j));
    f.RawText(line);
    f.NewLine();
  }
}

void ParameterEngine::Life05aGosub3610() {
  FlowEngine("Life05aGosub3610");
  figure_.Open(S.identity.OutputFileName);
}

void ParameterEngine::Life05aGosub3650() {
  FlowEngine("Life05aGosub3650");
  std::string line = NumberText(AgeInRateUnits(W.tables.LastAge + 1, S.settings.TimeUnit)) + ",";
  for (int j = 1; j <= S.header.StageCount; ++j) line += "0,";
  line += "0";
  figure_.RawText(line);
  figure_.NewLine();
}

void ParameterEngine::Life05aGosub3750() {
  FlowEngine("Life05aGosub3750");
  figure_.RawText(StageFigureHeading(S));
  figure_.NewLine();
}

void ParameterEngine::Life05aGosub2610() {
  FlowEngine("Life05aGosub2610");
  const bool groupReared = S.options.GroupRearedFlag == "Yes";
  if (!groupReared && (S.options.OutputLevel == "Nooutput" || S.options.OutputLevel == "No")) return;
  const auto& t = W.tables;
  const auto& p = W.params;
  const auto& lt = W.lifeTable;
  const int m = S.header.StageCount;
  const int last = t.LastAge;
  const double tu = S.settings.TimeUnit;
  auto age = [&](int x) { return AgeInRateUnits(x, tu); };
  double femaleEggs = 0;
  for (int x = 0; x <= last; ++x) femaleEggs += lt.FxjTotal(x, m);
  const bool writeA = !groupReared;
  const bool writeB = !groupReared || femaleEggs != 0;
  const bool writeC = !groupReared;

  auto open = [&](const char* suffix, const char* title) {
    Keep().identity.OutputFileName = OutputName(S, suffix);
    Life05aGosub3610();
    figure_.Write(title);
  };
  auto stageRows = [&](const auto& matrix, double factor) {
    for (int x = 0; x <= last; ++x) {
      std::string line = NumberText(age(x));
      for (int j = 1; j <= m + 1; ++j) line += "," + FullPrecision(matrix(x, j) * factor);
      figure_.RawText(line);
      figure_.NewLine();
    }
  };

  if (writeA) {
    open("_Fig_Exj.txt", "Age-stage life expectancy");
    Life05aGosub3750();
    stageRows(lt.Exj, 1);
    Life05aGosub3650();
    open("_4_Fig_Vxj.txt", "Age-stage reproductive value");
    Life05aGosub3750();
    stageRows(S.params.VxjBasic, 1);
    Life05aGosub3650();
  }
  if (writeB) {
    open("_Fig_SAD_in percentage.txt", "Stable age distribution");
    Heading(figure_, "Age, SAD (in percentage)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), p.Ax2(x));
    Row(figure_, age(last + 1), 0.0);
    open("_Fig_SAD_in proportion.txt", "Stable age distribution");
    Heading(figure_, "Age, SAD (in porportion)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), p.Ax2(x) / 100);
    Row(figure_, age(last + 1), 0.0);
    open("_Fig_age-specific total fecundity.txt",
         "Total female fecundity at each age (the total eggs producced by all female of age x).");
    Heading(figure_, "Age,Ft(i,female)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), lt.FxjTotal(x, m));
  }
  open("_Fig_Ex.txt", "Age-specific life expectancy");
  Heading(figure_, "Age,e(x)");
  for (int x = 0; x <= last; ++x) Row(figure_, age(x), lt.Ex(x));
  Row(figure_, age(last + 1), 0.0);
  if (writeB) {
    open("_Fig_Vx.txt", "Age-specific reproductive value");
    Heading(figure_, "Age,Reproductive value v(x)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), p.Vx(x));
    Row(figure_, age(last + 1), 0.0);
  }
  open("_Fig_Lx.txt", "Age-specific survival rate");
  Heading(figure_, "Age,survival rate l(x),mortality");
  for (int x = 0; x <= last; ++x) Row(figure_, age(x), t.Lx(x), lt.OneMinusLx(x));
  Row(figure_, age(last + 1), 0.0, 1.0);
  if (writeC) {
    open("_21_Lewis Sx and Fx.txt",
         "Age-specific survival rate and fecundity (Note well: For invalidating the age-specific life table).");
    Heading(figure_, "Age,survival rate S(x),fecundity F(x),Individual in age(i)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), p.LeslieP(x), p.LeslieF(x), x == 0 ? 10.0 : 0.0);
  }
  if (writeB) {
    open("_Fig_Mx.txt", "Age-specific fecundity");
    Heading(figure_, "Age,fecundity m(x)");
    for (int x = 0; x <= last; ++x) Row(figure_, age(x), p.Mx(x));
    Row(figure_, age(last + 1), 0.0);
  }
  if (writeC) {
    open("_5_Fig_SASD_in_percentage.txt", "Stable age-stage distribution");
    Life05aGosub3750();
    stageRows(p.Bxj, 1);
    open("_5_Fig_SASD_in proportion.txt", "Stable age-stage distribution");
    Life05aGosub3750();
    stageRows(p.Bxj, 0.01);
    for (int percent = 0; percent <= 1; ++percent) {
      if (percent)
        open("_5b_Fig_SSD_in percentage.txt", "Stable stage distribution (SSD) in percentage");
      else
        open("_5a_Fig_SSD_in proportion.txt", "Stable stage distribution (SSD) in proportion");
      Heading(figure_, percent ? "Stage no.,Stage name,SSD(%)" : "Stage no.,Stage name,SSD");
      for (int j = 1; j <= m + 1; ++j) {
        const std::string name = j == m + 1 ? std::string("Male") : S.header.StageName(1, j);
        const double v = percent ? p.SsdPercent(j) : p.SsdPercent(j) / 100;
        figure_.RawText(std::to_string(j) + "," + name + "," + FullPrecision(v));
        figure_.NewLine();
      }
    }
  }
  figure_.Close();
}

void ParameterEngine::Life05aGosub3800() {
  FlowEngine("Life05aGosub3800");
  if (S.options.OutputLevel == "Nooutput") return;
  const auto& t = W.tables;
  const auto& p = W.params;
  const int m = S.header.StageCount;
  const int last = t.LastAge;
  const double tu = S.settings.TimeUnit;
  auto age = [&](int x) { return AgeInRateUnits(x, tu); };

  Keep().identity.OutputFileName = OutputName(S, "_2_Fig_Lx-Fxf-Mx-LxMx.txt");
  Life05aGosub3610();
  figure_.Write(
      "Age-specific survival rate l(x), female fecundity f(x,female), age-specific fecundity m(x), "
      "l(x)*m(x), and Cumu[l(x)*m(x)]");
  Heading(figure_, "age, l(x), f(x,female), m(x), l(x)*m(x), Cumu[l(x)*m(x)]");
  for (int x = 0; x <= last; ++x)
    Row(figure_, age(x), t.Lx(x), t.Fxj(x, m), p.Mx(x), t.Lx(x) * p.Mx(x), p.CumLxMx(x));
  Row(figure_, age(last + 1), 0.0, 0.0, 0.0, 0.0, p.CumLxMx(last));

  if (p.R0 != 0) {
    Keep().identity.OutputFileName = OutputName(S, "_9_Fig_Rx_R0-ratio_Cumu-r_r-Ratio.txt");
    Life05aGosub3610();
    figure_.Write("CumuR0, CumuLxMx-R0 ratio, CumuIntrinsicR, CumuIntrinsicR ratio");
    Heading(figure_, "Age, Cumul(x)m(x), Cumul(x)m(x) to R0 ratio, CumuIntrinsicR, CumuEuler to r ratio");
    double c = 0;
    for (int x = 0; x <= last; ++x) {
      c += p.EulerTerm(x);
      Row(figure_, age(x), p.CumLxMx(x), p.CumLxMx(x) / p.R0, p.r * c, c);
    }
  }
  figure_.Close();
}

}  // namespace korvan
