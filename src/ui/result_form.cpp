#include "ui/result_form.h"

#include <algorithm>
#include <cmath>

#include "text/numbers.h"
#include "ui/chart_panel.h"

namespace korvan {

namespace {

std::string Shown(double v) { return FullPrecision(RoundDisplay(v, 4)); }

// An age in the form's first column: a time unit of several whole days spans them.
std::string AgeText(int a, double timeUnit) {
  if (timeUnit > 1 && timeUnit == std::floor(timeUnit)) {
    const long first = static_cast<long>(a * timeUnit);
    return std::to_string(first) + " to " + std::to_string(first + static_cast<long>(timeUnit) - 1);
  }
  return AgeRowLabel(a, timeUnit);
}

}  // namespace

MultiCITable ResultFmTable(const SessionStore& S) {
  static const char* const kHeads[] = {"Age", "l(x)", "m(x)", "l(x)m(x)", "exp(-rx)l(x)m(x)", "SAD", "E(x)", "R(x)"};
  const int last = std::clamp(S.ws.tables.LastAge + 1, 0, static_cast<int>(kMaxAge));
  MultiCITable t;
  t.columns = 8;
  t.rows = last + 2;
  t.dataColumnWidth = 1200;
  t.centred = false;
  t.cells.emplace_back(std::begin(kHeads), std::end(kHeads));
  const auto& lx = S.ws.tables.Lx;
  const auto& p = S.ws.params;
  for (int a = 0; a <= last; ++a) {
    // m(x) of an age that nobody reaches is no number: shown as "-".
    const bool alive = lx(a) > 0;
    t.cells.push_back({AgeText(a, S.settings.TimeUnit), Shown(lx(a)), alive ? Shown(p.Mx(a)) : "-",
                       Shown(lx(a) * p.Mx(a)), Shown(p.EulerTerm(a)), Shown(p.Ax2(a)), Shown(S.ws.lifeTable.Ex(a)),
                       Shown(p.CumLxMx(a))});
  }
  return t;
}

}  // namespace korvan
