// The report of a multiple comparison by confidence intervals: head, one block per pair of
// treatments (t interval, percentile interval, P), the tables over all pairs, and the closing.
#include <chrono>
#include <cmath>
#include <ctime>
#include <random>
#include <string>

#include "comparison/paired_test.h"
#include "text/numbers.h"

namespace korvan {

namespace {

const std::string kRuleEq = " " + std::string(72, '=');
const std::string kRuleDash = " " + std::string(72, '-');
const std::string kRuleStar = " " + std::string(72, '*');
const std::string kRuleHash = " #" + std::string(70, '-') + "#";

std::string ShortPath(const std::string& p) {
  if (p.size() <= 48) return p;
  return p.substr(0, 2) + "..." + p.substr(p.size() - 46);
}

}  // namespace

void PairedBootTest::PrintMultiCIofDifference() {
  Flow("PrintMultiCIofDifference");
  auto& c = S.comparison;
  const bool oneByOne = c.PickedOneByOne == "Yes";
  const bool cartesian = c.CartesianRun == "Yes";
  std::string name;
  if (c.FastPBT == "Yes" || oneByOne || cartesian) {
    std::string code = "1";
    if (c.FastPBT != "Yes")
      code = P.InputBox(
          "If you want to add a specific code for this analysis, please enter the code and press OK. "
          "If not, just click on OK.",
          "Add a code to the output filename?", "1");
    if (code == "1") {
      const std::time_t now = std::time(nullptr);
      std::tm t{};
      localtime_r(&now, &t);
      name = S.identity.DataFileBase + " results-" + c.ParameterName + "_" + std::to_string(t.tm_year + 1900) +
             std::to_string(t.tm_mon + 1) + std::to_string(t.tm_mday) + "-" + std::to_string(t.tm_hour) +
             std::to_string(t.tm_min) + std::to_string(t.tm_sec) + ".txt";
    } else {
      std::mt19937 rnd(static_cast<unsigned>(std::time(nullptr)));
      const double r = CIntValue(std::uniform_real_distribution<double>(0, 1)(rnd) * 1000);
      name = S.identity.DataFileBase + " results-" + c.ParameterName + "_" + code + " " + FullPrecision(r) + ".txt";
    }
  } else {
    name = S.identity.DataFileBase + "_0_comparison-" + c.ParameterName + "_result.txt";
  }
  c.ReportName = name;
  report_.Open(name);
  PrintReportHead();
  const int n = c.TreatmentCount;
  for (int i = 1; i <= n - 1; ++i)
    for (int j = i + 1; j <= n; ++j) PrintPairBlock(i, j);
  report_.Print(" References:");
  report_.Print(" Chi, H. and H. Liu. 1985. Two new methods for the study of insect population ecology.");
  report_.Print("     Bull. Inst. Zool., Academia Sinica 24: 225-240.");
  report_.Print(" Efron, B. and R. J. Tibshirani. 1993. An introduction to the bootstrap.");
  report_.Print("     Chapman & Hall, New York.");
  report_.Print(" Chi, H. 1988. Life-table analysis incorporating both sexes and variable development rates");
  report_.Print("     among individuals. Environ. Entomol. 17: 26-34.");
  report_.Print(" Sidak, Z. 1967. Rectangular confidence regions for the means of multivariate normal");
  report_.Print("     distributions. J. Am. Stat. Assoc. 62: 626-633.");
  report_.Print("");
  PrintPairTestTable();
  PrintClosing();
}

void PairedBootTest::PrintReportHead() {
  auto& c = S.comparison;
  auto& f = report_;
  const bool cartesian = c.CartesianRun == "Yes";
  const int n = c.TreatmentCount;
  f.Print(" Program: Age-Stage, Korvan Life Table Analysis (" + S.identity.ProgramName + ").");
  f.Print(" " + S.identity.VersionStamp);
  f.Print(" Table", ++c.TableNumber,
          cartesian ? ". Cartesian product paired difference (KORVAN program)" : ". Paired Bootstrap test");
  f.Print("");
  f.Print(" Main reference:");
  f.Print(" Chi, H. 1988. Life-table analysis incorporating both sexes and variable development rates");
  f.Print("     among individuals. Environ. Entomol. 17: 26-34.");
  f.Print("");
  f.Print(" Efron, B. and R. J. Tibshirani. 1993. An introduction to the bootstrap. Chapman & Hall.");
  f.Print("");
  if (cartesian) {
    f.Print(" " + std::string(93, '-'));
    for (const char* line : {
             " The results of significance test using Cartesian products are presented in following 3 ways.",
             "    1. The t confidence intervals (assuming the Cartesian products is normally distributed).",
             "    2. Cartesian percentile confidence intervals of 0.025 and 0.975 percentiles.",
             "    3. P value based on number of Cartesian results showing significant difference.",
             " Because the t confidence intervals is based on the assumption of normal distribution, ",
             " while the percentile confidence interval based on random sampling and Cartesian products,",
             " they are different. Although most biological and ecological data are mostly not normal,",
             " the distribution of Cartesian differences are generally normal (if B and C are large).",
             " Therefore, a large number of resampling (B = 1000, C = 1000,000) is needed to ensure a",
             " reliable estimate. However, a B of 1000 and the corresponding C of 1000,000 are still a tiny",
             " proportion of the exact method using both the multinomail theorem and Cartesian products. ",
             " Because the Cartesian products include all possible combinations of differences, the",
             " confidence intervals of differences based on the multinomial theorem and Cartesian products",
             " are more reliable than the paired bootstrap test based on bootstrap technique alone."})
      f.Print(line);
    f.Print(" " + std::string(93, '-'));
  } else {
    f.Print(" " + std::string(89, '-'));
    for (const char* line : {
             " The results of paired bootstrap test are presented in following three ways.",
             "    1. The t confidence intervals (assuming the results is normally distributed).",
             "    2. Bootstrap percentile confidence intervals (based on the actual sampling results).",
             "    3. P value based on number of bootstrap samples showing significant difference.",
             " Because the t confidence intervals is based on the assumption of normal distribution, ",
             " while the bootstrap percentile confidence interval is based on random sampling, they",
             " are different. Although most biological and ecological data are mostly not normal,",
             " the distribution of bootstrap sample means are generally normal (if B is large).",
             " Therefore, a large number of resampling (B = 100,000) is needed to ensure a stable",
             " estimate. However, 100,000 is still a tiny proportion of exact method. If the bootstrap",
             " results are normally distributed, the t confidence interval is similar to the bootstrap",
             " confidence interval.  Moreover, the results of significance test based on three methods",
             " are consistent. Discrepant results will only be observed in extreme cases."})
      f.Print(line);
    f.Print(" " + std::string(89, '-'));
  }
  f.Print("");
  if (c.PickedOneByOne != "Yes") f.Print(" Project: " + c.ProjectTitle + " " + DateTimeText());
  f.Print(" Parameter: " + c.ParameterName);
  f.Print(" Number of treatments =", n);
  if (!cartesian) f.Print(" Bootstrap number (B) =", c.BootCount(1));
  f.Print(" F value =", c.FValue);
  f.Print(" df between groups (dfN: numerator) =", c.dfB);
  f.Print(" df within groups (dfD: denominator) =", c.dfW);
  f.Print("  ");
  if (n != 2) {
    f.Print(" If you are asked to use corrected alpha value:");
    f.Print(" Alpha(Sidak) =", c.PairAlphaSidak);
    f.Print(" If you are asked to use corrected alpha, you have to check the P value of ");
    f.Print(" each paired comparison. If a P value is lower than", c.PairAlphaSidak, ",");
    f.Print(" there is significant difference between them.");
    f.Print(" ");
  }
}

void PairedBootTest::PrintPairBlock(int i, int j) {
  auto& c = S.comparison;
  auto& f = report_;
  const bool cartesian = c.CartesianRun == "Yes";
  const int n = c.TreatmentCount;
  const std::string& ti = c.TreatmentTitle(i);
  const std::string& tj = c.TreatmentTitle(j);
  if (c.PickedOneByOne == "Yes")
    for (int t : {i, j}) {
      f.Print(" Treatment" + std::to_string(t) + "=" + ShortPath(c.TreatmentFileSorted(t)));
      f.Print("          Variable: " + c.TreatmentParameter(t));
    }
  f.Print(" Comparison between " + ti + " vs " + tj);
  if (cartesian)
    f.Print(" Number of Cartesian products (C)=", static_cast<double>(c.BootCount(i)) * c.BootCount(j));
  else
    f.Print(" Number of bootstrap resamplings (B)=", c.BootCount(i));
  f.Print(kRuleEq);
  f.Print(Tab{27}, ti, Tab{52}, tj);
  f.Print(kRuleDash);
  f.Print(" Original =", Tab{25}, c.TreatmentOriginal(i), Tab{50}, c.TreatmentOriginal(j));
  f.Print(kRuleDash);
  f.Print(" Bootstrap mean =", Tab{25}, c.BootMean(i), Tab{50}, c.BootMean(j));
  f.Print(" Variance =", Tab{25}, c.BootVar2(i), Tab{50}, c.BootVar2(j));
  f.Print(" SE =", Tab{25}, c.BootSE(i), Tab{50}, c.BootSE(j));
  f.Print(" n ", Tab{25}, c.TreatmentN(i), Tab{50}, c.TreatmentN(j));
  const double products = static_cast<double>(c.BootCount(i)) * c.BootCount(j);
  if (cartesian) {
    f.Print(kRuleDash);
    f.Print(Tab{15}, "Mean (Cart. diff.) =", Tab{35}, c.CartMeanDiff(i, j));
    f.Print(Tab{15}, "Variance =", Tab{35}, c.CartVar(i, j));
    f.Print(Tab{15}, "SE =", Tab{35}, c.CartSE(i, j));
    f.Print(Tab{15}, "n ", Tab{35}, products);
    f.Print(kRuleDash);
  }

  c.MeanDifference(i, j) = c.MeanDifference(j, i) = std::fabs(c.BootMean(i) - c.BootMean(j));
  f.Print(" Difference 1 =", std::fabs(c.TreatmentOriginal(i) - c.TreatmentOriginal(j)));
  f.Print("    Difference 1 is the difference of two original values.");
  if (cartesian) {
    f.Print(kRuleDash);
    f.Print(" With the increase of B, diff. 1 will close to mean of Cart. difference");
  } else {
    f.Print(kRuleDash);
    f.Print(" Difference 2 =", std::fabs(c.BootMean(i) - c.BootMean(j)));
    f.Print("    Difference 2 is the difference of two bootstrap means.");
    f.Print(kRuleDash);
    f.Print(" Difference 3 =", c.PairMeanDiff(i, j));
    f.Print("    Difference 3 is the mean of all paired bootstrap differences.");
    f.Print(" With the increase of B, diff. 2 and 3 will close to diff. 1.");
  }
  // The SE is of the pair's own differences: B of them, or C in the Cartesian test.
  const long B = c.BootCount(i);
  f.Print(kRuleDash);
  f.Print(" SE of", cartesian ? products : static_cast<double>(B), "differences =", c.PairSE(i, j));
  f.Print(kRuleStar);

  auto star = [&](const std::string& text) { f.Print(text, Tab{73}, "*"); };
  auto hash = [&](const std::string& text) { f.Print(text, Tab{73}, "#"); };
  // The verdict of a box, framed by the box's own mark.
  auto verdict = [&](const std::string& mark, bool significant) {
    auto line = [&](const std::string& text) { f.Print(" " + mark + text, Tab{73}, mark); };
    if (significant) {
      line(" Signif. diff. btw. " + ti + " and " + tj + ".");
      line(" If the CI does not include 0, there is significant difference.");
    } else {
      line(" No signif. diff. btw. " + ti + " and " + tj + ".");
      line(" If the CI includes 0, there is no significant difference.");
    }
  };
  star(cartesian ? " * Bootstrap t confidence intervals based on Cartesian differences:"
                 : " * t confidence intervals of differences (paired bootstrap test):");
  f.Print(" * 95% CI:", Tab{26}, "Lower", Tab{51}, "Upper", Tab{73}, "*");
  f.Print(" *", Tab{25}, c.PairLower(i, j), Tab{50}, c.PairUpper(i, j), Tab{73}, "*");
  if (c.BootMean(i) == c.BootMean(j)) {
    star(" * No signif. diff. btw. treatments.");
    f.Print(kRuleEq);
    f.Print("");
    return;
  }
  const bool tSignificant = c.PairLower(i, j) > 0;
  verdict("*", tSignificant);
  f.Print(kRuleStar);

  hash(cartesian ? " # Percentile confidence intervals of Cartesian product differences:"
                 : " # Percentile confidence intervals of paired bootstrap test differences:");
  f.Print(" # 95% CI:", Tab{26}, "Lower", Tab{51}, "Upper", Tab{73}, "#");
  f.Print(" #", Tab{25}, c.PairPctLower(i, j), Tab{50}, c.PairPctUpper(i, j), Tab{73}, "#");
  // A percentile limit of exactly 0 counts as significant, unlike the t limit.
  verdict("#", c.PairPctLower(i, j) >= 0);
  f.Print(kRuleHash);
  const double p = c.PairP(i, j);
  hash(" # Number of insignif. diff. = " + PrintNumber(c.PairOutsideCount(i, j)));
  hash(" # Number of signif. diff. = " + PrintNumber(c.PairInsideCount(i, j)));
  if (cartesian)
    hash(" # P-value (based on" + PrintNumber(products) + " Cartesian differences) = " + PrintNumber(p));
  else
    hash(" # P-value (based on" + PrintNumber(B) + " bootstrap samples) = " + PrintNumber(p));
  if ((tSignificant && p > 0.05) || (!tSignificant && p <= 0.05)) {
    hash(" # This P-value is inconsistent with the results of CI.");
    hash(" # In this case, please increase B and re-run the test.");
  }
  if (p == 0) {
    const long b1 = c.BootCount(1);
    const char* bound = b1 == 100      ? "0.01"
                        : b1 == 1000   ? "0.001"
                        : b1 == 10000  ? "0.0001"
                        : b1 == 100000 ? "0.00001"
                                       : nullptr;
    if (bound) hash(std::string(" # Because B is limited, if P = 0, you can report P < ") + bound + ".");
  }
  f.Print(kRuleStar);
  if (n > 2) {
    const double alpha = c.PairAlphaSidak;
    star(" * Alpha(Sidak) =" + PrintNumber(alpha));
    const bool consistent = tSignificant ? p < alpha : p > alpha;
    star(consistent ? " * Result with Sidak correction is consistent with CI of diff."
                    : " * Result with Sidak correction is inconsistent with CI of diff.");
    f.Print(kRuleStar);
  }
  if ((!tSignificant && c.PairLower(i, j) > 0 && c.PairPctLower(i, j) < 0) ||
      (tSignificant && c.PairLower(i, j) < 0 && c.PairPctLower(i, j) > 0)) {
    f.Print(kRuleStar);
    for (const char* line : {" * Note well: The lower confidence interval based on t is different",
                             " * from that based on percentiles.",
                             " * The lower CI of t is calculated as Mean - 1.959964 * SE.",
                             " * The lower CI of percentile is based on bootstrap samples.",
                             " * The P-value is calculated based on the finite bootstrap samples.",
                             " * When bootstrap samples are non-normal, there will be discrepancy."})
      star(line);
  }
  f.Print(kRuleEq);
  f.Print("");
}

void PairedBootTest::PrintClosing() {
  auto& c = S.comparison;
  auto& f = report_;
  c.BootEndTime = DateTimeText();
  const double now = std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  c.ElapsedSeconds = now - c.BeginSeconds;
  P.Status("lblBootEnd", " Test ended at:\n" + c.BootEndTime);
  const double e = c.ElapsedSeconds;
  f.Print(" " + c.BeginsAtText + " " + c.BootBeginTime);
  f.Print(" Test ended at: " + c.BootEndTime);
  if (e < 120)
    f.Print(" Total time = ", RoundDisplay(e, 2), " sec.");
  else if (e < 3600)
    f.Print(" Total time = ", RoundDisplay(e / 60, 2), " min.");
  else
    f.Print(" Total time = ", RoundDisplay(e / 3600, 2), " hr.");
  report_.Close();
  P.MsgBox("Analysis completed! Congratulation!\n\nThe output file is: " + c.ReportName, "Task completed");
  P.Status("txtDatafile", "Output file is: " + c.ReportName);
}

}  // namespace korvan
