// The heads and names of the detail files of a pair of treatments.
#include "comparison/pair_differences.h"

namespace korvan {

namespace {

std::string Num(long v) { return std::to_string(v); }

void DetailHead(TextFile& f, const ComparisonRecord& c, int i, int j, const std::string& firstB,
                const std::string& secondB, bool labelsTogether, const char* col1, const char* col2) {
  f.Write(c.TreatmentTitle(i) + " vs " + c.TreatmentTitle(j));
  f.Write("Next line is effective bootstrap number (B)");
  if (firstB.empty())
    f.Write(c.BootCount(i));
  else
    f.Write(firstB);
  f.Write(labelsTogether ? c.TreatmentParameter(i) + c.TreatmentParameter(j)
                         : c.TreatmentParameter(i) + " vs " + c.TreatmentParameter(j));
  if (secondB.empty())
    f.Write(c.BootCount(i));
  else
    f.Write(secondB);
  f.Write("Original means", c.TreatmentOriginal(i), c.TreatmentOriginal(j));
  f.Write(col1, col2);
}

// A Cartesian file names both B (they may differ), the cohort sizes and C.
void CartesianHead(TextFile& f, const ComparisonRecord& c, int i, int j, bool everyDifference, const char* col1,
                   const char* col2) {
  f.Write(c.TreatmentTitle(i) + " vs " + c.TreatmentTitle(j));
  f.Write(everyDifference ? "Next lines are the bootstrap number B, treament code, and Cartesian C"
                          : "Next line is effective bootstrap number (B)");
  f.Write(c.BootCount(i), c.BootCount(j));
  f.Write("Treatment sample sizes are " + Num(c.TreatmentN(i)) + " and " + Num(c.TreatmentN(j)));
  f.Write(static_cast<double>(c.BootCount(i)) * c.BootCount(j));
  f.Write("Original means", c.TreatmentOriginal(i), c.TreatmentOriginal(j));
  f.Write(col1, col2);
}

// The six files in their order: all, to the mean, significant (serial, number), insignificant
// (serial, number).
void OpenSix(DetailFiles& d, const std::string (&names)[6]) {
  TextFile* files[] = {&d.all, &d.toMean, &d.sigA, &d.sigB, &d.insigA, &d.insigB};
  for (int k = 0; k < 6; ++k) files[k]->Open(names[k]);
}

}  // namespace

void OpenPairedDetailFiles(DetailFiles& d, const SessionStore& S, int i, int j) {
  const auto& c = S.comparison;
  const std::string stem = c.TreatmentParameter(i) + "-" + Num(i) + " to " + Num(j);
  const std::string base = S.identity.DataFileBase;
  const std::string b = Num(c.BootCount(i));
  OpenSix(d, {base + "_23_1-" + stem + "_diff-All (for N. sort).txt", base + "_23_2-" + stem + "_diff to mean diff.txt",
              base + "_23_3-" + stem + "_diff-SigA.txt", base + "_23_4-" + stem + "_diff-SigB.txt",
              base + "_23_5-" + stem + "_diff-inSigA.txt", base + "_23_6-" + stem + "_diff-inSigB.txt"});
  DetailHead(d.all, c, i, j, "", "", false, "Bootstrap", "Difference");
  DetailHead(d.toMean, c, i, j, "", "", true, "Bootstrap", "Difference to mean of difference");
  const std::string sign1 = b + " (actual number of sign. can be less)";
  const std::string sign2 = b + " (actual number of sign. diff. can be less)";
  const std::string insign = b + " (actual number of insign. diff. can be less)";
  DetailHead(d.sigA, c, i, j, sign1, sign2, false, "Serial no.", "Difference");
  DetailHead(d.sigB, c, i, j, sign1, sign2, false, "Orig. Boot. no.", "Difference");
  DetailHead(d.insigA, c, i, j, insign, insign, false, "Serial no.", "Difference");
  DetailHead(d.insigB, c, i, j, insign, insign, false, "Orig. Boot. no.", "Difference");
}

void OpenCartesianDetailFiles(DetailFiles& d, const SessionStore& S, int i, int j) {
  const auto& c = S.comparison;
  const std::string stem = S.identity.DataFileBase + "_";
  const std::string pair = "-" + c.TreatmentParameter(i) + "-" + Num(i) + " to " + Num(j);
  OpenSix(d, {stem + "5" + pair + "_diff-All (for N. sort).txt", stem + "6" + pair + "_diff to mean diff.txt",
              stem + "7" + pair + "_diff-SigA.txt", stem + "9" + pair + "_diff-SigB.txt",
              stem + "10" + pair + "_diff-inSigA.txt", stem + "11" + pair + "_diff-inSigB.txt"});
  CartesianHead(d.all, c, i, j, true, "Cart. number", "Cart. Difference");
  CartesianHead(d.toMean, c, i, j, true, "Cart. number", "Difference to original difference");
  CartesianHead(d.sigA, c, i, j, false, "Serial no. of sig. diff.", "Sig. difference");
  CartesianHead(d.sigB, c, i, j, false, "Cart. prod. number", "Sig. difference");
  CartesianHead(d.insigA, c, i, j, false, "Serial no. of insig. diff.", "Insig. difference");
  CartesianHead(d.insigB, c, i, j, false, "Cart. prod. number", "Insig. difference");
}

}  // namespace korvan
