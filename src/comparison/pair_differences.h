#pragma once
// What the paired test and the Cartesian test share in the loop over a pair's differences: the
// tally of the differences against the distance D of the two bootstrap means, and the six
// detail files of a detailed run.
#include <string>

#include "run/run_context.h"
#include "text/text_file.h"

namespace korvan {

// A difference d counts as "different" when 0 < d < 2D: it lies on the side of the larger mean
// and nearer to D than to the far side of 0. d <= 0 and d >= 2D count as "no difference".
struct DifferenceTally {
  explicit DifferenceTally(double distance) : D(distance) {}
  bool Add(double d) {
    sum += d;
    sumSq += d * d;
    if (d <= 0) {
      ++belowZero;
      return false;
    }
    if (d >= 2 * D) {
      ++beyondTwice;
      return false;
    }
    ++inside;
    return true;
  }
  double Mean(long count) const { return sum / count; }
  // Sample variance of the differences, 0 when rounding makes it negative.
  double Variance(long count) const {
    const double v = (sumSq - sum * sum / count) / (count - 1);
    return v < 0 ? 0 : v;
  }

  double D;
  double sum = 0, sumSq = 0;
  long belowZero = 0, beyondTwice = 0, inside = 0;
};

// The detail files of one pair: every difference (to 0 and to D), and the significant and the
// insignificant ones, each by serial number and by the number of the difference.
struct DetailFiles {
  TextFile all, toMean, sigA, sigB, insigA, insigB;
  long serialSig = 0, serialInsig = 0;

  void Record(long k, double d, double D, bool different) {
    all.Write(k, d);
    toMean.Write(k, d - D);
    if (different) {
      sigA.Write(++serialSig, d);
      sigB.Write(k, d);
    } else {
      insigA.Write(++serialInsig, d);
      insigB.Write(k, d);
    }
  }
};

// The files of pair i, j of the paired test ("_23_1-" to "_23_6-") and of the Cartesian test
// ("_5-" to "_11-"), opened with their heads.
void OpenPairedDetailFiles(DetailFiles& d, const SessionStore& S, int i, int j);
void OpenCartesianDetailFiles(DetailFiles& d, const SessionStore& S, int i, int j);

}  // namespace korvan
