// The tables of the age-stage matrices in the main output, each on its own page, pages and
// tables numbered through the whole file.
#include <string>

#include "engine/life_table_engine.h"
#include "engine/table_text.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {
std::string Line(int length, char c) { return std::string(static_cast<std::size_t>(length), c); }
int StageColumn(int j) { return 9 * j - 3; }  // the age takes 5 columns, each stage 9
int RowColumn(int j) { return 9 * j + 6; }     // after a row label of 14 columns
int TableWidth(int m) { return 9 * (m + 1) + 5; }
}  // namespace

// Page mark, table number and title, and the head of the stage columns. For the d matrices
// a column names a move: the first 3 letters of the stage left and of the stage entered.
void LifeTableEngine::PrintTableHead(const std::string& title, bool developmentHead) {
  auto& out = C.MainOutput;
  const int m = S.header.StageCount;
  NewMainTablePage(C);
  if (title.rfind(". ", 0) == 0)
    out.Print("Table", C.MainTableNumber, title);
  else
    out.Print("Table", C.MainTableNumber, ". ", title);
  out.Print(Line(TableWidth(m), '='));
  out.PrintPart(" Age");
  for (int j = 1; j <= m + 1; ++j) {
    std::string name;
    const auto& names = S.header.StageName;
    if (!developmentHead || j == m + 1) {
      name = names(1, j).substr(0, 6);
    } else if (j == m) {
      name = names(1, m - 1).substr(0, 3) + "->" + names(1, m + 1).substr(0, 3);
    } else {
      name = names(1, j).substr(0, 3) + "->" + names(1, j + 1).substr(0, 3);
    }
    out.PrintPart(Tab{StageColumn(j)}, name);
  }
  out.NewLine();
  out.PrintPart(" (x)");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{StageColumn(j)}, j);
  out.NewLine();
  out.Print(Line(TableWidth(m), '-'));
}

// The display matrix by age and stage, at the given decimals (0 or 1 for counts, 4 for
// probabilities), with a closing line of column sums when asked.
void LifeTableEngine::PrintMatrixTable(const std::string& title, int decimals, bool withSum,
                                       bool developmentHead) {
  auto& out = C.MainOutput;
  const auto& M = W.lifeTable.PrintMatrix;
  const int m = S.header.StageCount;
  const int last = W.tables.LastAge;
  PrintTableHead(title, developmentHead);
  for (int x = 0; x <= last; ++x) {
    out.PrintPart(x);
    for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{StageColumn(j)}, FixedText(M(x, j), decimals));
    out.NewLine();
  }
  out.Print(Line(TableWidth(m), '-'));
  if (!withSum) return;
  out.PrintPart("Sum");
  for (int j = 1; j <= m + 1; ++j) {
    double sum = 0;
    for (int x = 0; x <= last; ++x) sum += M(x, j);
    out.PrintPart(Tab{StageColumn(j)}, FixedText(sum, decimals));
  }
  out.NewLine();
  out.Print(Line(TableWidth(m), '-'));
}

void LifeTableEngine::Life04Gosub0530() {
  Flow("Life04Gosub0530");
  auto& out = C.MainOutput;
  if (!out.IsOpen()) return;
  const auto& T = W.tables;
  auto& L = W.lifeTable;
  auto& M = L.PrintMatrix;
  const int m = S.header.StageCount;
  const int last = T.LastAge;
  const int N = W.cohort.CohortSize;
  const double tu = S.settings.TimeUnit;
  const bool costs = S.header.RegularLifeTable == "No";
  const bool groupReared = S.options.GroupRearedFlag == "Yes";
  auto cost = [&](int j) {
    return j < m + 1 ? S.header.StageRearingCost(1, j) : S.header.StageRearingCost(2, m);
  };
  auto fill = [&](auto value) {
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) M(x, j) = value(x, j);
  };
  auto total = [&]() {
    double t = 0;
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) t += M(x, j);
    return t;
  };

  // 1, 2: n(x,j).
  fill([&](int x, int j) { return T.Nxj(x, j); });
  PrintMatrixTable("Age-stage-specific survival - Actual number (Matrix N)", 0, false, false);
  const double sumN = total();
  out.Print("All individuals are dead on", AgeInDays(last + 1), " days.");
  out.Print("All individuals died on", AgeInDays(last), " days.");
  out.Print("Sum[n(x,j)]= ", sumN, ". This is the mean longevity of all individuals.");
  out.Print("Sum[n(x,j)]/", N, "= ", sumN / N, ". It is the mean longevity.");
  PrintMatrixTable("Age-stage-specific survival - Actual number (Matrix N) with sum", 0, true, false);

  // 3: rearing cost of the study.
  if (costs) {
    fill([&](int x, int j) { return T.Nxj(x, j) * cost(j); });
    PrintMatrixTable("Age-stage-specific rearing cost - Matrix LTC (life table cost)", 1, true, false);
    const double ltc = total();
    out.Print("Sum[LTC(x,j)]= ", ltc, ". This is the cost of this life table study.");
    out.Print("Sum[LTC(x,j)]/", N, "= ", ltc / N, ". It is the cost of one individual.");
  }

  // 4 to 7: growth and development.
  if (!groupReared) {
    fill([&](int x, int j) { return T.Gxj(x, j); });
    PrintMatrixTable("Age-stage-specific growth probability g(x,j) (Matrix G)", 4, false, false);
    out.Print("g(x,j) is the transition probability that individuals");
    out.Print("of (x,j) will be in (x+1,j) after ", tu, " time unit.");
    fill([&](int x, int j) { return T.Nxj(x, j) * T.Gxj(x, j); });
    PrintMatrixTable("Age-stage-specific growth number (Matrix Ng)", 1, true, false);
    fill([&](int x, int j) { return T.Dxj(x, j); });
    PrintMatrixTable("Age-stage-specific development probability d(x,j) (Matrix D) ", 4, false, true);
    out.Print("The d(x,j) is the transition probability that individuals");
    out.Print("of (x,j) will be in (x+1,j+1) after ", tu, " time unit.");
    fill([&](int x, int j) {
      return j == m ? T.Nxj(x, m - 1 < 1 ? 1 : m - 1) * T.Dxj(x, m) : T.Nxj(x, j) * T.Dxj(x, j);
    });
    PrintMatrixTable("Age-stage-specific development number nd(x,j) (Matrix Nd) ", 1, true, true);
  }

  // 8: deaths.
  fill([&](int x, int j) { return RoundDisplay(N * T.Mxj(x, j), 1); });
  PrintMatrixTable("Age-stage-specific death number (Matrix N-dead)", 1, true, false);
  out.Print("Total death = ", RoundDisplay(total(), 1), ". This must equal to the total individuals ", N, ".");
  out.Print("If one decimal is shown, it is due to rounding-off problem.");

  // 9 to 11: fecundity, when a female exists.
  if (L.FemaleCount > 0) {
    fill([&](int x, int j) { return T.Fxj(x, j); });
    PrintMatrixTable("Age-stage-specific fecundity f(x,j) (Matrix F)", 4, false, false);
    fill([&](int x, int j) { return L.FxjTotal(x, j); });
    PrintMatrixTable("Age-stage-specific total fecundity (Matrix Ft(x,j))", 1, true, false);
    out.Print("Ftotal =", total(), " (Total eggs laid by the whole population).");
    fill([&](int x, int j) { return j == m ? L.FxjCumulative(x) : 0.0; });
    PrintMatrixTable("Age-stage-specific cumulative total fecundity (Matrix Ft,cumu(x,j))", 1, false, false);
    // Cumulative total as a percentage of all eggs laid.
    const double eggs = L.StageFecundityTotal(m);
    if (eggs > 0) {
      out.Print(" Age", Tab{10}, "Ft,cumu", Tab{24}, "Percentage");
      for (int x = 0; x <= last; ++x) {
        if (T.Nxj(x, m) == 0) continue;
        out.Print(x, Tab{10}, FixedText(L.FxjCumulative(x), 1), Tab{24},
                  FixedText(100 * L.FxjCumulative(x) / eggs, 4));
      }
    }
  }

  // 13 to 15: survival.
  fill([&](int x, int j) { return T.Pxj(x, j); });
  PrintMatrixTable("Age-stage-specific survival rate (1-mortality) (Matrix U)", 4, false, false);
  fill([&](int x, int j) { return T.Pxj(x, j) * T.Nxj(x, j); });
  PrintMatrixTable("Age-stage-specific survival number (Matrix Ns)", 1, true, false);
  fill([&](int x, int j) { return T.Sxj(x, j); });
  PrintMatrixTable("Survival rate to each age-stage interval (Matrix S)", 4, true, false);
  out.Print("The s(x,j) is the probability that a new-born individual");
  out.Print("will survive to age x and stage j. s(x,j)=n(x,j)/", N);

  PrintAgeTables();
}

// Tables of one column per age or per stage: l(x), costs, mortality and stage rates.
void LifeTableEngine::PrintAgeTables() {
  auto& out = C.MainOutput;
  const auto& T = W.tables;
  auto& L = W.lifeTable;
  auto& M = L.PrintMatrix;
  const int m = S.header.StageCount;
  const int last = T.LastAge;
  const int N = W.cohort.CohortSize;
  const bool costs = S.header.RegularLifeTable == "No";
  auto fill = [&](auto value) {
    for (int x = 0; x <= last; ++x)
      for (int j = 1; j <= m + 1; ++j) M(x, j) = value(x, j);
  };
  auto pageHead = [&](const std::string& title, int dashes) {
    NewMainTablePage(C);
    out.Print("Table", C.MainTableNumber, title);
    out.Print(Line(dashes, '='));
  };
  // The tables of one row per quantity and one column per stage.
  const int stageWidth = TableWidth(m);
  auto stageHead = [&](const std::string& title, const std::string& second) {
    pageHead(title, stageWidth);
    out.Print(second);
    out.PrintPart(" Stage");
    for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{RowColumn(j)}, S.header.StageName(1, j).substr(0, 6));
    out.NewLine();
    out.Print(Line(stageWidth, '-'));
  };

  // 16: l(x).
  pageHead(". Age-specific survival rate l(x)", 30);
  out.Print(" Age", Tab{12}, "l(x)");
  out.Print(Line(30, '-'));
  double sumLx = 0;
  for (int x = 0; x <= last; ++x) {
    sumLx += T.Lx(x);
    out.Print(x, Tab{12}, FixedText(T.Lx(x), 4));
  }
  out.Print(Line(30, '-'));
  out.Print("Sum", Tab{12}, FixedText(sumLx, 4));

  // 17: rearing cost of each interval.
  if (costs) {
    fill([&](int x, int j) {
      const double c = j < m + 1 ? S.header.StageRearingCost(1, j) : S.header.StageRearingCost(2, m);
      return T.Sxj(x, j) * c;
    });
    PrintMatrixTable("Rearing cost of each age-stage interval (Matrix RC)", 4, true, false);
  }

  // 18 to 20: mortality.
  fill([&](int x, int j) { return T.Qxj(x, j); });
  PrintMatrixTable("Mortality of each age-stage-interval (Matrix Q)", 4, false, false);
  fill([&](int x, int j) { return T.Mxj(x, j); });
  PrintMatrixTable("Distribution of mortality (Matrix P)", 4, true, false);
  fill([&](int x, int j) { return N * T.Mxj(x, j); });
  PrintMatrixTable("Distribution of mortality in number (Matrix W)", 1, true, false);

  // 21: mortality by age.
  pageHead(". Age-specific distribution of mortality AD(x) and number of deaths", 86);
  out.Print(" Age", Tab{8}, "AD(x)", Tab{20}, "No. dead D(x)", Tab{36}, "Age mortality", Tab{52},
            "Exp. death", Tab{66}, "Cumu. death", Tab{80}, "Survival");
  out.Print(Line(86, '-'));
  double cumulative = 0;
  for (int x = 0; x <= last; ++x) {
    const double expected = N * L.AgeDeathProb(x);
    cumulative += expected;
    const double ageMortality = T.Lx(x) > 0 ? L.AgeDeathProb(x) / T.Lx(x) : 0;
    out.Print(x, Tab{8}, FixedText(L.AgeDeathProb(x), 4), Tab{20}, L.AgeDeaths(x), Tab{36},
              FixedText(ageMortality, 4), Tab{52}, FixedText(expected, 4), Tab{66},
              FixedText(cumulative, 4), Tab{80}, FixedText(T.Lx(x), 4));
  }
  out.Print(Line(86, '-'));

  // 22: mortality by stage. I(j) is the number that entered stage j.
  auto entered = [&](int j) -> double {
    if (j == 1) return N;
    if (j == m) return L.FemaleCount;
    if (j == m + 1) return L.MaleCountAdult;
    return L.StageSurvivors(j - 1);
  };
  stageHead(". P(j): Distribution of mortality to each stage: the probability",
            "that a newborn individual will die in stage j.");
  const char* rows[] = {"P(j)", "D(j)", "I(j)", "Q(j)"};
  for (int r = 0; r < 4; ++r) {
    out.PrintPart(" ", rows[r]);
    for (int j = 1; j <= m + 1; ++j) {
      const double D = L.StageDeaths(j), I = entered(j);
      const double v = r == 0 ? D / N : r == 1 ? D : r == 2 ? I : (I > 0 ? D / I : 0);
      out.PrintPart(Tab{RowColumn(j)}, FixedText(v, r == 1 || r == 2 ? 0 : 4));
    }
    out.NewLine();
  }
  out.Print(Line(stageWidth, '-'));

  // 23: from stage j to j + 1.
  stageHead(". Stage-specific survival rate and number from stage j to j+1. For the",
            "adult stages, the probability is 0.");
  out.PrintPart(" Probability");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{RowColumn(j)}, FixedText(L.StageToNext(j), 4));
  out.NewLine();
  out.PrintPart(" N(j)");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{RowColumn(j)}, FixedText(entered(j), 0));
  out.NewLine();
  out.Print(Line(stageWidth, '-'));
  const double pupae = m >= 2 ? entered(m - 1) : 0;
  if (pupae > 0) {
    out.Print("The probability from pupa to female is", FixedText(L.FemaleCount / pupae, 4));
    out.Print("The probability from pupa to male is", FixedText(L.MaleCountAdult / pupae, 4));
  } else {
    out.Print("The probability from pupa to female is 0");
    out.Print("The probability from pupa to male is 0");
  }

  // 24: the chance of a newborn to reach each stage.
  stageHead(". Stage survival rate.  It is the probability that a newborn",
            "individual will survive to stage j (but it may die in stage j).");
  out.PrintPart(" ");
  for (int j = 1; j <= m + 1; ++j) out.PrintPart(Tab{RowColumn(j)}, FixedText(L.StageEntry(j), 4));
  out.NewLine();
  out.Print(Line(stageWidth, '-'));
}

}  // namespace korvan
