#include "analyses/treatment_summary.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numeric>
#include <sstream>

#include "bootstrap/column_file.h"
#include "comparison/letter_table.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

std::vector<SummaryStatistic> SummaryStatistics(const std::vector<std::string>& preadultStages) {
  std::vector<SummaryStatistic> s;
  for (const auto& stage : preadultStages)
    s.push_back({stage, "_Effect Boot-S1_Stage mean_" + stage + ".txt", 2});
  const SummaryStatistic rest[] = {
      {"Preadult survival", "_Effect Boot-W3_Preadult survival (sa).txt", 4},
      {"Female longevity", "_Effect Boot-Y2_Sex_F_total longevity.txt", 2},
      {"Male longevity", "_Effect Boot-Y2_Sex_M_total longevity.txt", 2},
      {"APOP", "_Effect Boot-B3_APOP.txt", 2},
      {"TPOP", "_Effect Boot-B4_TPOP.txt", 2},
      {"Oviposition days", "_Effect Boot-W2_Oviposition days.txt", 2},
      {"Fecundity", "_Effect Boot-A1c_Fecundity (Nf).txt", 2},
      {"r", "_Effect Boot-A2a-r.txt", 4},
      {"lambda", "_Effect Boot-A3a-lambda.txt", 4},
      {"R0", "_Effect Boot-A1a-R0.txt", 2},
      {"T", "_Effect Boot-A4-T.txt", 2},
      {"GRR", "_Effect Boot-A6-GRR.txt", 2},
  };
  s.insert(s.end(), std::begin(rest), std::end(rest));
  return s;
}

EstimateAndSE ReadEstimate(const std::string& path) {
  EstimateAndSE e;
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return e;
  ColumnFile f;
  try {
    f = ReadColumnFile(path, false, "Summary");
  } catch (const ProgramEnd&) {
    return e;  // a file cut short: no value in the summary
  }
  if (f.values.empty()) return e;
  const double n = static_cast<double>(f.values.size());
  const double mean = std::accumulate(f.values.begin(), f.values.end(), 0.0) / n;
  double ss = 0;
  for (double v : f.values) ss += (v - mean) * (v - mean);
  e.present = true;
  e.estimate = f.cohort;
  e.se = f.values.size() > 1 ? std::sqrt(ss / (n - 1)) : 0;
  e.B = static_cast<long>(f.values.size());
  return e;
}

std::vector<std::string> SignificanceLetters(const std::vector<double>& means,
                                             const std::vector<std::vector<double>>& p) {
  const int n = static_cast<int>(means.size());
  std::vector<int> order(static_cast<std::size_t>(n));
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return means[a] > means[b]; });
  PairFlags sig;
  for (int i = 1; i <= n; ++i)
    for (int j = i + 1; j <= n; ++j)
      sig.Set(i, j, p[order[i - 1]][order[j - 1]] <= 0.05);
  std::vector<std::string> letters(static_cast<std::size_t>(n));
  for (const auto& [place, text] : MaximalGroupRows(n, sig)) letters[order[place - 1]] = text;
  return letters;
}

namespace {

// The column names of a statistic: spaces become underscores, so that R keeps them as they are.
std::string Name(const std::string& label) {
  std::string s = label;
  std::replace(s.begin(), s.end(), ' ', '_');
  return s;
}

std::string Quoted(const std::string& s) {
  std::string out = "\"";
  for (char c : s) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + "\"";
}

std::string Plain(double v) { return FullPrecision(v); }

std::string Fixed(double v, int decimals) {
  std::ostringstream s;
  s.setf(std::ios::fixed);
  s.precision(decimals);
  s << v;
  return s.str();
}

}  // namespace

std::string SummaryCsv(const SummaryTable& t) {
  std::ostringstream out;
  out << "treatment,n";
  for (const auto& c : t.columns) {
    const std::string name = Name(c.statistic.label);
    out << ',' << name << ',' << name << "_SE," << name << "_letters";
  }
  out << '\n';
  for (std::size_t i = 0; i < t.treatments.size(); ++i) {
    out << Quoted(t.treatments[i]) << ',' << t.cohortSizes[i];
    for (const auto& c : t.columns) {
      const EstimateAndSE& v = c.values[i];
      out << ',' << (v.present ? Plain(v.estimate) : "") << ',' << (v.present ? Plain(v.se) : "") << ','
          << (c.letters.empty() || !v.present ? "" : c.letters[i]);
    }
    out << '\n';
  }
  return out.str();
}

std::string SummaryMarkdown(const SummaryTable& t) {
  std::ostringstream out;
  out << "| Treatment | n |";
  for (const auto& c : t.columns) out << ' ' << c.statistic.label << " |";
  out << "\n|---|---:|";
  for (std::size_t k = 0; k < t.columns.size(); ++k) out << "---:|";
  out << '\n';
  for (std::size_t i = 0; i < t.treatments.size(); ++i) {
    out << "| " << t.treatments[i] << " | " << t.cohortSizes[i] << " |";
    for (const auto& c : t.columns) {
      const EstimateAndSE& v = c.values[i];
      if (!v.present) {
        out << " - |";
        continue;
      }
      out << ' ' << Fixed(v.estimate, c.statistic.decimals) << " ± " << Fixed(v.se, c.statistic.decimals);
      if (!c.letters.empty()) out << ' ' << c.letters[i];
      out << " |";
    }
    out << '\n';
  }
  out << '\n' << t.footer << '\n';
  return out.str();
}

}  // namespace korvan
