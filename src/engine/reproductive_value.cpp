// Age-stage reproductive value v(x,j) and the figures of the female stage.
//
// For a start cell (x,j) the walk follows the chance s'(y,k) of reaching age y in stage k,
// one stage a step at most, and sums the discounted offspring E(y) s'(y,k) f(y,k); v(x,j) is
// that sum over E(x) s'(x,j). The start value is s(x,j), not 1: it cancels in the quotient.
#include <cmath>

#include "engine/population_parameters.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

namespace {

// E(a) = exp(-r (a+1)) on the rate scale, whatever the age convention of r.
inline double Discount(double r, int a, double timeUnit) {
  return std::exp(ConvertExponentFull(-r * (a + 1), timeUnit));
}

}  // namespace

// The same value as Discount(r, a, timeUnit), from the table where it holds it. The r and the
// time unit are compared bit for bit (a NaN never matches: it is computed anew).
inline double ParameterEngine::DiscountAt(double r, int a, double timeUnit) const {
  if (a >= 0 && a <= discountLast_ && r == discountR_ && timeUnit == discountTimeUnit_ &&
      std::signbit(r) == std::signbit(discountR_))
    return discount_[a];
  return Discount(r, a, timeUnit);
}

void ParameterEngine::MakeDiscountTable(double r, double timeUnit, int lastAge) {
  discountLast_ = -1;
  discountR_ = r;
  discountTimeUnit_ = timeUnit;
  const int last = lastAge < 0 ? -1 : (lastAge > kMaxAge + 1 ? static_cast<int>(kMaxAge) + 1 : lastAge);
  for (int a = 0; a <= last; ++a) discount_[a] = Discount(r, a, timeUnit);
  discountLast_ = last;
}

void ParameterEngine::Life05Gosub90Then1080() {
  FlowEngine("Life05Gosub90Then1080");
  Life05Gosub90Then1080BSDrate();
  AgeStageReproductiveValue(BasicPass());
  FemaleFiguresBasic();
}

void ParameterEngine::Life05Gosub90Then1080Boot() {
  FlowEngine("Life05Gosub90Then1080Boot");
  Life05Gosub90Then1080BootBSDrate();
  AgeStageReproductiveValue(false);
  FemaleFiguresBoot();
}

void ParameterEngine::Life05Gosub1480() {
  if (S.options.FlowMode != "No" && !C.FlowWritten1480) {
    C.FlowWritten1480 = true;
    FlowEngine("Life05Gosub1480");
  }
  auto& p = W.params;
  auto& survivors = *walkSurvivors_;
  const double r = walkR_;
  const auto& t = W.tables;
  const auto& lt = W.lifeTable;
  const double tu = S.settings.TimeUnit;
  const int x = p.VStartAge;
  const int m = S.header.StageCount;
  double acc = p.VAcc;
  int d = 0;
  // The value just stored is carried on in hand: the same products, without reading back.
  double before = 0;
  for (int k = p.VStartStage + 1; k <= m; ++k) {
    ++d;
    for (int y = x + d; y <= t.LastAge && y <= lt.StageLastAge(k); ++y) {
      if (y == x + d)
        before = t.Dxj(y - 1, k - 1) * survivors(y - 1, k - 1);
      else
        before = t.Gxj(y - 1, k) * before + t.Dxj(y - 1, k - 1) * survivors(y - 1, k - 1);
      survivors(y, k) = before;
      acc = DiscountAt(r, y, tu) * before * t.Fxj(y, k) + acc;
    }
  }
  p.VAcc = acc;
}

void ParameterEngine::AgeStageReproductiveValue(bool keepBasicCopy) {
  auto& p = W.params;
  // A resampling pass reads v(x,j) of the female stage alone (its first age and its peak): the
  // walks from the preadult cells are left out there, unless a flow record wants their lines.
  const std::string& flow = S.options.FlowMode;
  const bool femaleOnly = W.run.IsResamplingFlag == "y" && !keepBasicCopy && (flow.empty() || flow[0] == 'N');
  ReproductiveValueWalk(p.r, p.Vxj, p.Survivors, femaleOnly ? S.header.StageCount : 1);
  if (!keepBasicCopy) return;
  const auto& lt = W.lifeTable;
  for (int j = 1; j <= S.header.StageCount; ++j)
    for (int x = lt.StageFirstAge(j); x <= lt.StageLastAge(j); ++x) Keep().params.VxjBasic(x, j) = p.Vxj(x, j);
}

void ParameterEngine::ReproductiveValueWalk(double r, AgeStage& v, AgeStage& survivors, int firstStage) {
  auto& p = W.params;
  const auto& t = W.tables;
  const auto& lt = W.lifeTable;
  const double tu = S.settings.TimeUnit;
  const int m = S.header.StageCount;
  walkR_ = r;
  walkSurvivors_ = &survivors;
  MakeDiscountTable(r, tu, t.LastAge);
  for (int j = firstStage; j <= m; ++j) {
    for (int x = lt.StageFirstAge(j); x <= lt.StageLastAge(j); ++x) {
      if (j == m && FemaleStageValue(v, survivors, x)) continue;
      double before = t.Sxj(x, j);
      survivors(x, j) = before;
      double acc = DiscountAt(r, x, tu) * before * t.Fxj(x, j);
      for (int y = x + 1; y <= t.LastAge && y <= lt.StageLastAge(j); ++y) {
        before = t.Gxj(y - 1, j) * before;
        survivors(y, j) = before;
        acc = DiscountAt(r, y, tu) * before * t.Fxj(y, j) + acc;
      }
      const double ex = DiscountAt(r, x, tu);
      if (j < m) {
        p.VStartAge = x;
        p.VStartStage = j;
        p.VAcc = acc;
        Life05Gosub1480();
        acc = p.VAcc;
        v(x, j) = survivors(x, j) > 0 ? (1 / (ex * survivors(x, j))) * acc : 0;
      } else {
        // The female stage: the test is on the sum.
        v(x, j) = acc == 0 ? 0 : (1 / (ex * survivors(x, j))) * acc;
      }
    }
  }
}

// v(x,m) of the female stage as the general walk forms it, when its ages lie within the rows
// and the table of E made for the r of the walk in hand: the same products in the same order,
// along the rows directly. Of the chances s'(y,m) only s'(x,m) = s(x,m) is kept: the walk of
// each later start y writes its own s'(y,m) last, and no move leaves the last stage. False:
// nothing done.
bool ParameterEngine::FemaleStageValue(AgeStage& v, AgeStage& survivors, int x) {
  const auto& t = W.tables;
  const int j = S.header.StageCount;
  const int stageLast = W.lifeTable.StageLastAge(j);
  const int yEnd = t.LastAge < stageLast ? t.LastAge : stageLast;
  if (x < 0 || x > kMaxAge || yEnd > kMaxAge || yEnd > discountLast_ || x > discountLast_) return false;
  double before = t.Sxj(x, j);
  survivors(x, j) = before;
  const double ex = discount_[x];
  double acc = ex * before * t.Fxj(x, j);
  if (yEnd > x) {
    const long stride = &t.Gxj(1, j) - &t.Gxj(0, j);
    const double* g = &t.Gxj(x, j);
    const double* f = &t.Fxj(x + 1, j);
    const double* e = discount_ + x + 1;
    for (int y = x + 1; y <= yEnd; ++y, g += stride, f += stride, ++e) {
      before = *g * before;
      acc = *e * before * *f + acc;
    }
  }
  v(x, j) = acc == 0 ? 0 : (1 / (ex * survivors(x, j))) * acc;
  return true;
}

void ParameterEngine::FemaleFiguresBasic() {
  auto& p = W.params;
  const auto& t = W.tables;
  const auto& lt = W.lifeTable;
  const double tu = S.settings.TimeUnit;
  const int f = S.header.StageCount;
  const int first = lt.StageFirstAge(f), last = lt.StageLastAge(f);
  for (int x = first; x <= last; ++x) {
    if (p.Vxj(x, f) > 0) {
      p.FirstVxjAge = x;
      p.FirstVxjAgeSteps = x;
      break;
    }
  }
  if (W.run.Boot != 0) return;
  for (int x = first; x <= last; ++x) {
    if (t.Fxj(x, f) > 0) {
      p.FirstFxjAge = x;
      break;
    }
  }
  p.PeakVxj = p.Vxj(static_cast<long>(CIntValue(p.FirstVxjAge)), f);
  p.PeakVxjAge = p.FirstVxjAge;
  p.FirstVxjAge = ConvertExponentFull(p.FirstVxjAge, tu);
  p.FirstVxjAgeSteps = p.FirstVxjAgeSteps * tu;
  for (int x = first; x <= last; ++x) {
    if (p.Vxj(x, f) > p.PeakVxj) {
      p.PeakVxj = p.Vxj(x, f);
      p.PeakVxjAge = x;
    }
  }
  p.PeakVxjAge = ConvertExponentFull(p.PeakVxjAge, tu);
  p.PeakVxjAgeRounded = CInt16(p.PeakVxjAge);
}

void ParameterEngine::FemaleFiguresBoot() {
  auto& p = W.params;
  const auto& t = W.tables;
  const auto& lt = W.lifeTable;
  const double tu = S.settings.TimeUnit;
  const int f = S.header.StageCount;
  auto& rec = W.boot.sample;
  const int first = lt.StageFirstAge(f), last = lt.StageLastAge(f);
  for (int x = first; x <= last; ++x) {
    if (p.Vxj(x, f) > 0) {
      rec.FirstVxjAge = x;
      break;
    }
  }
  for (int x = first; x <= last; ++x) {
    if (t.Fxj(x, f) > 0) {
      rec.FirstFxjAge = x;
      break;
    }
  }
  double peakAge = rec.PeakVxjAge;
  for (int x = first; x <= last; ++x) {
    if (p.Vxj(x, f) > rec.PeakVxj) {
      rec.PeakVxj = p.Vxj(x, f);
      peakAge = x;
    }
  }
  rec.PeakVxjAge = CInt16(ConvertExponentFull(peakAge, tu));
  rec.FirstVxjAge = rec.FirstVxjAge * tu;
}

}  // namespace korvan
