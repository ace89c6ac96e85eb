// The "_00_" files of the counting of bootstrap life tables.
#include <string>
#include <vector>

#include "input/data_file_writer.h"
#include "multinomial/life_table_count.h"
#include "text/text_file.h"

namespace korvan {

namespace {

void Head(TextFile& out, const SessionStore& S, const char* what) {
  const MultinomialRecord& M = S.multinomial;
  out.Write(StampedProjectLine(S));
  out.Write(what);
  out.Write("Number of bootstrap samples (m) =", M.CountM);
  out.Write("Bootstrap sample size (n) =", M.CountN);
  out.Write("Number of different life tables =", M.LifeTableCount);
}

// The individuals of sample b in ascending order, closing the line.
void WriteComposition(TextFile& out, const MultinomialRecord& M, long b) {
  for (int p = 1; p < M.CountN; ++p) out.WritePart(M.SampleSorted(p, b));
  out.Write(M.SampleSorted(M.CountN, b));
}

// The MNC of all different life tables: the sampling ways of the compositions the run met,
// against which each group's share is expected.
double LifeTableMNCSum(const MultinomialRecord& M) {
  double sum = 0;
  for (long g = 1; g <= M.GroupCount; ++g) sum += M.GroupLifeTableMNC(g);
  return sum;
}

}  // namespace

void LifeTableCount::Print00ALTunsortedButInsectSorted() {
  Flow("Print00ALTunsortedButInsectSorted");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_00_A_LT unsorted but insects sorted.txt"));
  Head(out, S, "Bootstrap samples in their order, the individuals of each in ascending order.");
  out.Write("Sample no.", "R0", "Finite rate", "MNC", "Individuals");
  for (long b = 1; b <= M.CountM; ++b) {
    out.WritePart(b, M.SampleR0(b), M.SampleLambda(b), M.SampleMNC(b));
    WriteComposition(out, M, b);
  }
}

void LifeTableCount::Print00BLTRoSortedwithMNC() {
  Flow("Print00BLTRoSortedwithMNC");
  PrintInOrderOfR0("_00_B_LT_Ro_sorted_with MNC.txt", false);
}

void LifeTableCount::Print00BLTRoSortedwithLambdaandMNC() {
  Flow("Print00BLTRoSortedwithLambdaandMNC");
  PrintInOrderOfR0("_00_B_LT_Ro_sorted_with lambda and MNC.txt", true);
}

void LifeTableCount::PrintInOrderOfR0(const char* suffix, bool withLambda) {
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, suffix));
  Head(out, S, "Bootstrap samples in ascending order of R0.");
  if (withLambda)
    out.Write("Sorted no.", "Sample no.", "R0", "Finite rate", "MNC");
  else
    out.Write("Sorted no.", "Sample no.", "R0", "MNC", "P(MNC)");
  for (long i = 1; i <= M.CountM; ++i) {
    const long b = M.SampleOrder(i);
    if (withLambda)
      out.Write(i, b, M.SampleR0(b), M.SampleLambda(b), M.SampleMNC(b));
    else
      out.Write(i, b, M.SampleR0(b), M.SampleMNC(b), M.SampleProbability(b));
  }
}

void LifeTableCount::Print00CLifeTableSameAsOriginal() {
  Flow("Print00CLifeTableSameAsOriginal");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_00_C_Life table same as original.txt"));
  Head(out, S, "Bootstrap samples in which each individual of the cohort stands once.");
  out.Write("Sample no.", "R0", "Finite rate", "MNC");
  long same = 0;
  for (long b = 1; b <= M.CountM; ++b) {
    bool once = M.CountN == M.CountCohort;
    for (int p = 1; once && p <= M.CountN; ++p) once = M.SampleSorted(p, b) == p;
    if (!once) continue;
    ++same;
    out.Write(b, M.SampleR0(b), M.SampleLambda(b), M.SampleMNC(b));
  }
  out.Write("Number of bootstrap samples same as the original cohort =", same);
}

void LifeTableCount::Print00DLTRoSortedwithIndCounts() {
  Flow("Print00DLTRoSortedwithIndCounts");
  const MultinomialRecord& M = S.multinomial;
  const int N = M.CountCohort;
  TextFile out(OutputName(S, "_00_D_LT_Ro_sorted with individual counts.txt"));
  Head(out, S, "Bootstrap samples in ascending order of R0 with the count of each individual.");
  out.WritePart("Sorted no.", "Sample no.", "R0");
  for (int k = 1; k < N; ++k) out.WritePart("Ind " + std::to_string(k));
  out.Write("Ind " + std::to_string(N));
  std::vector<int> counts(static_cast<std::size_t>(N) + 1, 0);
  for (long i = 1; i <= M.CountM; ++i) {
    const long b = M.SampleOrder(i);
    for (int p = 1; p <= M.CountN; ++p) ++counts[static_cast<std::size_t>(M.SampleSorted(p, b))];
    out.WritePart(i, b, M.SampleR0(b));
    for (int k = 1; k < N; ++k) out.WritePart(counts[static_cast<std::size_t>(k)]);
    out.Write(counts[static_cast<std::size_t>(N)]);
    for (int p = 1; p <= M.CountN; ++p) counts[static_cast<std::size_t>(M.SampleSorted(p, b))] = 0;
  }
}

void LifeTableCount::Print00ELTRoSortedandLTcounted() {
  Flow("Print00ELTRoSortedandLTcounted");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_00_E_LT_Ro_sorted and LT counted.txt"));
  Head(out, S, "Different bootstrap life tables (compositions of individuals) in ascending order of R0.");
  out.Write("LT no.", "Group no.", "R0", "First sample", "Samples", "MNC", "P(MNC)", "Individuals");
  long i = 1;
  for (long t = 1; t <= M.LifeTableCount; ++t) {
    while (M.OrderLifeTable(i) != t) ++i;
    const long b = M.LifeTableFirst(t);
    out.WritePart(t, M.OrderGroup(i), M.SampleR0(b), b, M.LifeTableSamples(t), M.SampleMNC(b), M.SampleProbability(b));
    WriteComposition(out, M, b);
  }
}

void LifeTableCount::Print00GLTGroupedBasedonRo() {
  Flow("Print00GLTGroupedBasedonRo");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_00_G_LT grouped based on Ro.txt"));
  Head(out, S, "Groups of bootstrap samples of equal R0 (closer than 1E-10).");
  out.Write("Number of groups =", M.GroupCount);
  out.Write("Group no.", "R0", "Samples", "Life tables", "S(MNC)", "P[S(MNC)]", "S(MNC) of life tables");
  for (long g = 1; g <= M.GroupCount; ++g)
    out.Write(g, M.GroupR0(g), M.GroupSamples(g), M.GroupLifeTables(g), M.GroupMNC(g), M.GroupProbability(g),
              M.GroupLifeTableMNC(g));
}

void LifeTableCount::Print00HTableSameRoGrouped() {
  Flow("Print00HTableSameRoGrouped");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_00_H_Table_same Ro grouped-A.txt"));
  out.Print(StampedProjectLine(S));
  out.Print("Number of bootstrap samples (m) =", M.CountM, " Bootstrap sample size (n) =", M.CountN);
  const double sumD = LifeTableMNCSum(M);
  out.Print("Sum of the MNC of all samples, C = Sum[S(MNC)] =", M.SampleMNCSum);
  out.Print("Sum of the MNC of all different life tables, Sum(D) =", sumD, " (n^n =", M.CountNPowerN, ")");
  out.Print("Expected count of a group = D / Sum(D) * m, D being the sum of the MNC of its different life tables.");
  out.Print("Group no.", Zone{}, "R0", Zone{}, "Observed", Zone{}, "Life tables", Zone{}, "D = S(MNC)", Zone{},
            "Expected");
  for (long g = 1; g <= M.GroupCount; ++g) {
    const double expected = sumD > 0 ? M.GroupLifeTableMNC(g) / sumD * M.CountM : 0;
    out.Print(g, Zone{}, M.GroupR0(g), Zone{}, M.GroupSamples(g), Zone{}, M.GroupLifeTables(g), Zone{},
              M.GroupLifeTableMNC(g), Zone{}, expected);
  }
}

void LifeTableCount::Print00HTableForFig() {
  Flow("Print00HTableForFig");
  const MultinomialRecord& M = S.multinomial;
  const double sumD = LifeTableMNCSum(M);
  TextFile out(OutputName(S, "_00_H_Table_for figure.txt"));
  out.Write("R0", "Observed frequency", "Expected frequency");
  for (long g = 1; g <= M.GroupCount; ++g) {
    const double observed = M.CountM > 0 ? static_cast<double>(M.GroupSamples(g)) / M.CountM : 0;
    out.Write(M.GroupR0(g), observed, sumD > 0 ? M.GroupLifeTableMNC(g) / sumD : 0.0);
  }
}

}  // namespace korvan
