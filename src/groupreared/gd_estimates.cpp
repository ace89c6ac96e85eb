// Estimates of the growth rate G (stay in the stage) and the development rate D (move to the
// next stage) from the counts of a group-reared cohort, by the rule of stay, move and die, and
// what follows from them: the number entering each stage, the mean duration of each stage, the
// number of adults and the mean fecundity, and s(x,j) rebuilt from G and D as a check.
// D follows the engine's rows: the chance of entering the female stage lies on row S-1, that
// of entering the male stage on row S, both from the last preadult stage.
#include <algorithm>
#include <cmath>
#include <string>

#include "groupreared/group_reared.h"
#include "text/numbers.h"

namespace korvan {

void GroupReared::CalculateGDbasedonNF() {
  Flow("CalculateGDbasedonNF");
  auto& g = S.group;
  const int s = StageCount();
  g.G.Fill(0);
  g.D.Fill(0);
  g.Stayers.Fill(0);
  g.Movers.Fill(0);
  // The variants cover two to four stages.
  if (s < 2 || s > 4) return;
  auto rise = [&](int x, int k) { return std::max(0.0, Count(x + 1, k) - Count(x, k)); };
  for (int j = 1; j <= s + 1; ++j) {
    for (int x = g.StageFirstAge(j); x <= g.StageLastAge(j); ++x) {
      const double here = Count(x, j), next = Count(x + 1, j);
      if (here == 0) continue;
      double toFemale = 0, toMale = 0, moved = 0;
      if (j < s - 1) {
        moved = rise(x, j + 1);
      } else if (j == s - 1) {
        toFemale = rise(x, s);
        toMale = rise(x, s + 1);
        moved = toFemale + toMale;
      }
      double stay;
      if (next == here && moved == 0) {
        stay = here;  // nobody moved or died
      } else if (moved > 0) {
        moved = std::min(moved, here);
        stay = std::min(next, here - moved);  // the rest stayed, less those that died
      } else {
        stay = std::min(next, here);  // a fall: deaths, and those at x+1 stayed
      }
      g.Stayers(x, j) = static_cast<int>(std::lround(stay));
      g.Movers(x, j) = static_cast<int>(std::lround(moved));
      g.G(x, j) = g.Stayers(x, j) / here;
      if (j < s - 1) {
        g.D(x, j) = g.Movers(x, j) / here;
      } else if (j == s - 1) {
        g.D(x, s - 1) = std::lround(toFemale) / here;
        g.D(x, s) = std::lround(toMale) / here;
      }
    }
  }
  g.GDEstimated = true;
  CalculateNfFromDandN();
  CalculateStageNumberBasedonNandF();
  CalculateStageMeanBasedonNandF();

  auto& out = S.channels.MainOutput;
  if (!out.IsOpen()) return;
  out.Print(" Estimates from N and F (rule of stay, move and die)");
  out.Print(" Stage", Tab{20}, "Entering", Tab{34}, "Mean duration");
  for (int j = 1; j <= s - 1; ++j)
    out.Print(" ", g.StageLabel(1, j), Tab{20}, RoundDisplay(g.StageEntering(j), 4), Tab{34},
              RoundDisplay(g.StageMeanNF(j), 4));
  out.Print(" Adults emerged (Nf) =", g.NfFromDandN);
  out.Print(" Mean fecundity per female =", g.MeanFecundityNF);
}

void GroupReared::CalculateNfFromDandN() {
  Flow("CalculateNfFromDandN");
  auto& g = S.group;
  const int s = StageCount();
  double nf = 0;
  for (int x = g.StageFirstAge(s - 1); x <= g.StageLastAge(s - 1); ++x) nf += g.D(x, s - 1) * Count(x, s - 1);
  g.NfFromDandN = std::round(nf);
  double eggs = 0;
  for (int x = 0; x <= g.LastAge; ++x) eggs += g.FemaleEggs(x, s);
  g.MeanFecundityNF = g.NfFromDandN > 0 ? eggs / g.NfFromDandN : 0;
}

void GroupReared::CalculateStageNumberBasedonNandF() {
  Flow("CalculateStageNumberBasedonNandF");
  auto& g = S.group;
  const int s = StageCount();
  g.StageEntering.Fill(0);
  g.StageEntering(1) = g.CohortSize;
  for (int j = 2; j <= s; ++j) {
    double entering = 0;
    for (int x = std::max(1, g.StageFirstAge(j)); x <= g.StageLastAge(j); ++x)
      entering += g.D(x - 1, j - 1) * Count(x - 1, j - 1);
    g.StageEntering(j) = entering;
  }
}

void GroupReared::CalculateStageMeanBasedonNandF() {
  Flow("CalculateStageMeanBasedonNandF");
  auto& g = S.group;
  g.StageMeanNF.Fill(0);
  for (int j = 1; j <= StageCount(); ++j) {
    double sum = 0;
    for (int x = g.StageFirstAge(j); x <= g.StageLastAge(j); ++x) sum += Count(x, j);
    g.StageMeanNF(j) = g.StageEntering(j) > 0 ? sum / g.StageEntering(j) : 0;
  }
}

void GroupReared::CalculateSxjFromGDfromNF() {
  Flow("CalculateSxjFromGDfromNF");
  auto& g = S.group;
  const int s = StageCount();
  if (!g.GDEstimated) CalculateGDbasedonNF();
  if (!g.GDEstimated) return;
  auto& sg = g.SxjFromGD;
  sg.Fill(0);
  const int last = std::min<int>(g.LastAge, kMaxAge);
  sg(0, 1) = 1;
  for (int x = 1; x <= last; ++x) {
    sg(x, 1) = g.G(x - 1, 1) * sg(x - 1, 1);
    for (int j = 2; j <= s; ++j) sg(x, j) = g.D(x - 1, j - 1) * sg(x - 1, j - 1) + g.G(x - 1, j) * sg(x - 1, j);
    sg(x, s + 1) = g.D(x - 1, s) * sg(x - 1, s - 1) + g.G(x - 1, s + 1) * sg(x - 1, s + 1);
  }
  double largest = 0;
  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= s + 1; ++j) largest = std::max(largest, std::fabs(sg(x, j) - g.Sxj(x, j)));
  auto& out = S.channels.MainOutput;
  if (out.IsOpen()) out.Print(" Double check of s(x,j) from G and D: the largest difference from N(x,j)/N is", largest);
}

}  // namespace korvan
