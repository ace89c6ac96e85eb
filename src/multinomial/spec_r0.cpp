#include "multinomial/spec_r0.h"

#include <algorithm>
#include <cmath>

#include "bootstrap/percentile.h"
#include "multinomial/life_table_count.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

// A sample has the R0 asked for when the two differ by less than this.
constexpr double kSameR0 = 1e-10;

// Distinct values among v (sorted in place), two closer than the tolerance being one.
long DistinctValues(std::vector<double>& v) {
  std::sort(v.begin(), v.end());
  long count = 0;
  for (std::size_t i = 0; i < v.size(); ++i)
    if (i == 0 || v[i] - v[i - 1] >= kSameR0) ++count;
  return count;
}

}  // namespace

void MncForSpecR0::CalculateMNCforSpecRo() {
  Flow("CalculateMNCforSpecRo");
  const std::string flow = S.options.FlowMode;
  S.options.FlowMode = "No";
  struct Restore {
    Options& o;
    std::string mode;
    ~Restore() { o.FlowMode = mode; }
  } restore{S.options, flow};
  if (P.MsgBox("You can use this subroutine to find the multinomial coefficients (MNC) and the expected number "
               "(counts) of a specific net reproductive rate. For example, you can find the expected counts of 0.025 "
               "or 0.975 percentile of R0.  You can find the 0.025 and 0.975 percentiles in the file  "
               "\"_J1c_Boot_0.025 and 0.975 percentile-R0.txt\". \n"
               "Attention! There is an A5 version of KORVAN which is specifically designed for larger bootstrap "
               "resampling. \n"
               "If you used smaller B, you can use A4 button in general versions to get more detailed results.\n"
               "Yes: Continue to use A5.\n"
               "No: Don't run A5",
               "Find life tables of a specific net reproductive rate and calculate their multinomial coefficients.",
               kYesNo) != kYes)
    return;
  if (!LifeTableCount(S, P, W).ReadFileNo11ToSortandCount()) return;
  const std::string text = "Please enter the specific net reproductive rate (Ro).";
  const std::string answer = P.InputBox(text, "", FullPrecision(S.boot.RecordR0(S.boot.BootB > 0 ? 1 : 0)));
  const auto value = NumberAnswer(answer);
  if (!value) {
    P.MsgBox("\"" + answer + "\" is not a net reproductive rate. A5 ended; no file was written.", text, kOKOnly);
    return;
  }
  SpecR0 = *value;
  ResultBase = S.identity.DataFileBase + "_R0" + FullPrecision(SpecR0);
  CalculateMNC01();
  CalculateMNC01a();
  CalculateMNC02();
  CalculateMNC02A();
  CalculateMNC03();
}

void MncForSpecR0::CalculateMNCforSpecLambda() { Flow("CalculateMNCforSpecLambda"); }

void MncForSpecR0::CalculateMNC01() {
  Flow("CalculateMNC01");
  MultinomialRecord& M = S.multinomial;
  const long B = std::max<long>(S.boot.BootB, 0);
  SetUpComposition(S);
  M.CountM = B;
  std::vector<int> counts(static_cast<std::size_t>(M.CountCohort) + 1, 0);
  std::vector<double> r0, lambda;
  r0.reserve(static_cast<std::size_t>(B));
  lambda.reserve(static_cast<std::size_t>(B));
  Picked.clear();
  SumMNC = 0;
  for (long b = 1; b <= B; ++b) {
    ComposeSample(S, b, counts.data());
    SumMNC += M.SampleMNC(b);
    r0.push_back(M.SampleR0(b));
    lambda.push_back(M.SampleLambda(b));
    if (std::fabs(M.SampleR0(b) - SpecR0) < kSameR0) Picked.push_back(b);
    if (b % 1000 == 0) P.Status("lblBootMsg", "I am running A5(1).\n B=" + PrintNumber(static_cast<double>(b)));
  }
  DifferentR0 = DistinctValues(r0);
  DifferentLambda = DistinctValues(lambda);
}

void MncForSpecR0::CalculateMNC01a() {
  Flow("CalculateMNC01a");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(ResultBase + "_1_A5.txt");
  out.Write("Bootstrap samples with R0 =", SpecR0);
  out.Write("Number of samples =", static_cast<long>(Picked.size()));
  for (long b : Picked) {
    out.Write("Bootstrap Sample: ", b);
    WriteSampleList(out, M.SampleSorted, b, M.CountN);
    out.Write("Net reproductive rate ", b);
    out.Print(M.SampleR0(b));
    out.Write("Finite rate ", b);
    out.Print(M.SampleLambda(b));
  }
}

void MncForSpecR0::CalculateMNC02() {
  Flow("CalculateMNC02");
  const MultinomialRecord& M = S.multinomial;
  TextFile out(ResultBase + "_2_A5.txt");
  out.Write("Sample no.", "MNC", "P(MNC)", "Individuals");
  long done = 0;
  for (long b : Picked) {
    out.WritePart(b, M.SampleMNC(b), M.SampleProbability(b));
    for (int p = 1; p < M.CountN; ++p) out.WritePart(M.SampleSorted(p, b));
    out.Write(M.SampleSorted(M.CountN, b));
    if (++done % 1000 == 0)
      P.Status("lblBootMsg", "I am running A5(2).\nB = " + PrintNumber(static_cast<double>(Picked.size())) +
                                 "\nI have Completed " + PrintNumber(static_cast<double>(done)));
  }
}

void MncForSpecR0::CalculateMNC02A() {
  Flow("CalculateMNC02A");
  const MultinomialRecord& M = S.multinomial;
  std::sort(Picked.begin(), Picked.end(), [&](long a, long b) {
    if (CompositionLess(M, a, b)) return true;
    if (CompositionLess(M, b, a)) return false;
    return a < b;
  });
  Different.clear();
  Repeats.clear();
  SumMNCOfR0 = 0;
  for (std::size_t i = 0; i < Picked.size(); ++i) {
    if (i == 0 || !SameComposition(M, Picked[i], Picked[i - 1])) {
      Different.push_back(Picked[i]);
      Repeats.push_back(0);
      SumMNCOfR0 += M.SampleMNC(Picked[i]);
    }
    ++Repeats.back();
  }
  TextFile out(ResultBase + "_6_A5.txt");
  out.Write("Different bootstrap life tables with R0 =", SpecR0);
  out.Write("Serial no.", "First sample", "Samples", "MNC", "P(MNC)");
  for (std::size_t t = 0; t < Different.size(); ++t) {
    const long b = Different[t];
    out.Write(static_cast<long>(t + 1), b, Repeats[t], M.SampleMNC(b), M.SampleProbability(b));
  }
}

void MncForSpecR0::CalculateMNC03() {
  Flow("CalculateMNC03");
  const MultinomialRecord& M = S.multinomial;
  const long B = S.boot.BootB;
  const double A = M.CountNPowerN, C = SumMNC, D = SumMNCOfR0;
  const double G = C > 0 ? D / C : 0;
  TextFile out(ResultBase + "_5_MNC_A5.txt");
  out.Print("The specific R0 is ", SpecR0);
  out.Print("Total number of bootstrap resamplings (B) is", B);
  out.Print("Bootstrap sample size is ", M.CountN);
  out.Print("Total number of different Ro is", DifferentR0);
  out.Print("Total number of different finite rate is", DifferentLambda);
  out.Print("Total number of bootstrap life tables with specific Ro", SpecR0, " is", static_cast<long>(Picked.size()));
  out.Print("Total number of different bootstrap life tables with specific Ro is", static_cast<long>(Different.size()));
  for (std::size_t t = 0; t < Different.size(); ++t) {
    const long b = Different[t];
    out.Print("Serial no. ", static_cast<long>(t + 1));
    out.Print("Bootstrap Sample: ", b);
    WriteSampleList(out, M.SampleSorted, b, M.CountN);
    out.Print("The multinomial coefficient for the bootstrap sample no. ", b, " is", M.SampleMNC(b));
    out.Print("Net reproductive rate of bootstrap sample no. ", b, " is", M.SampleR0(b));
    out.Print("Finite rate of increase of bootstrap sample no. ", b, " is", M.SampleLambda(b));
    if (Repeats[t] == 2)
      out.Print("There are two life tables with the same individual composition.");
    else if (Repeats[t] > 2)
      out.Print("There are ", Repeats[t], " life tables with same composition of individuals.");
  }
  out.Print("Sum of all theo. MNC (i.e., A = n^n =", A, ")");
  out.Print("Sum of the MNC of all", B, "bootstrap samples, i.e., C = Sum[S(MNC)] =", C);
  out.Print("Sum of the MNC of the different life tables of this Ro (", SpecR0, ") i.e., D = S(MNC) =", D);
  out.Print("Probability of this bootstrap in all possible combinations, i.e., E = C/A = Sum{P[S(MNC)]} =",
            A > 0 ? C / A : 0);
  out.Print("Probability of this specific Ro in all possible combinations, i.e., F = D/A = P[S(MNC)] =",
            A > 0 ? D / A : 0);
  out.Print("Probability of this specific Ro in this bootstrap, i.e., P[P] = G = D/C =", G);
  out.Print("Expected counts of this R0 = H = G*B =", G * B);
  out.Print("Observed counts of this R0 =", static_cast<long>(Picked.size()));
}

void MncForSpecR0::CalculateMNCforSpecBootSample() {
  Flow("CalculateMNCforSpecBootSample");
  if (!LifeTableCount(S, P, W).ReadFileNo11ToSortandCount()) return;
  SetUpComposition(S);
  const long B = S.boot.BootB;
  for (;;) {
    const std::string answer = P.InputBox(
        "You can use this subroutine to find the multinomial coefficients (MNC) and the expected number (counts).\n"
        "Please enter the specific bootstrap sample number.\n"
        "Enter 0 to quit this subroutine.",
        "Find a bootstrap sample and calculate its multinomial coefficient.", "0");
    const auto k = NumberAnswer(answer);
    if (!k || *k == 0) return;
    if (*k < 1 || *k > B || *k != std::floor(*k)) {
      P.MsgBox("There is no bootstrap sample no. " + answer + " in the record (1 to " + std::to_string(B) + ").",
               "Find a bootstrap sample and calculate its multinomial coefficient.", kOKOnly);
      continue;
    }
    SpecSample = static_cast<long>(*k);
    CalculateMNCforSpecBootSampleA();
    const MultinomialRecord& M = S.multinomial;
    if (P.MsgBox("The multinomial coefficient for the bootstrap sample no. " + std::to_string(SpecSample) + " is " +
                     FullPrecision(M.SampleMNC(SpecSample)) +
                     " (P = " + FullPrecision(M.SampleProbability(SpecSample)) +
                     ").\nCongratulation!\nClick \"Yes\" to calculate MNC for next bootstrap life table.\n"
                     "Click \"No\" to end.",
                 "Calculation of MNC completed.", kYesNo, 2) != kYes)
      return;
  }
}

void MncForSpecR0::CalculateMNCforSpecBootSampleA() {
  Flow("CalculateMNCforSpecBootSampleA");
  MultinomialRecord& M = S.multinomial;
  std::vector<int> counts(static_cast<std::size_t>(M.CountCohort) + 1, 0);
  ComposeSample(S, SpecSample, counts.data());
  P.Status("lblBootMsg", "The multinomial coefficient for the bootstrap sample no. " + std::to_string(SpecSample) +
                             " is " + FullPrecision(M.SampleMNC(SpecSample)));
}

}  // namespace korvan
