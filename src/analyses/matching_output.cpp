// Files of a matching run: the match record (written and read back), the life table of the
// first match, the report "_2B_Bootstrap_Output.txt" and the column files of the paired test.
#include <algorithm>
#include <charconv>
#include <optional>
#include <cctype>
#include <cmath>
#include <functional>
#include <ctime>
#include <string>
#include <vector>

#include "analyses/matching.h"
#include "bootstrap/bootstrap_statistics.h"
#include "bootstrap/column_file.h"
#include "bootstrap/sorting.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kRecordTitle = "Error in match record";

// Lines of the record built in one buffer and handed to the file in large pieces.
class LineBuffer {
 public:
  explicit LineBuffer(TextFile& out) : out_(out) { text_.reserve(1 << 20); }
  ~LineBuffer() { Flush(); }
  LineBuffer& Int(long v) {
    char buf[24];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    text_.append(buf, r.ptr);
    return *this;
  }
  LineBuffer& Num(double v) {
    char buf[64];
    text_.append(buf, FormatFullPrecision(v, buf));
    return *this;
  }
  LineBuffer& Text(const char* s) {
    text_ += s;
    return *this;
  }
  void EndLine() {
    text_ += '\n';
    if (text_.size() > (1 << 20) - 256) Flush();
  }
  void Flush() {
    if (!text_.empty()) out_.RawText(text_);
    text_.clear();
  }

 private:
  TextFile& out_;
  std::string text_;
};

struct Statistic {
  const char* name;
  const std::vector<double> MatchRecord::*values;
  int decimals, seDecimals;
  const char* file;
  const char* tag;
};
constexpr Statistic kStatistics[] = {
    {"r", &MatchRecord::MatchR, 6, 5, "_Effect Boot-A2a-r.txt", "-r"},
    {"lambda ", &MatchRecord::MatchLambda, 6, 6, "_Effect Boot-A3a-lambda.txt", "-lambda"},
    {"R0", &MatchRecord::MatchR0, 5, 5, "_Effect Boot-A1a-R0.txt", "-R0"},
    {"T", &MatchRecord::MatchT, 3, 3, "_Effect Boot-A4-T.txt", "-T"},
    {"GRR", &MatchRecord::MatchGRR, 2, 3, "_Effect Boot-A6-GRR.txt", "-GRR"},
    {"F", &MatchRecord::MatchFecundity, 2, 3, "_Effect Boot-A1c_Fecundity (Nf).txt", "-F"},
    {"Longevity", &MatchRecord::MatchLongevity, 2, 3, "_Effect Boot-B1_Total longevity.txt", "-long."},
};
constexpr int kColumns[] = {15, 25, 38, 50, 60, 70, 80};

}  // namespace

void MatchedLifeTables::WriteMatchRecord() {
  Flow("WriteMatchRecord");
  MatchRecord& M = S.match;
  const long B = static_cast<long>(M.MatchB);
  const int n = M.MatchSampleSize;
  const SideTableHead& h = S.immature.head;
  M.RecordPath = M.MatchBase + "_2C_match record-date_" + ClockText("%m-%d-%Y") + "-time_" + ClockText("%H-%M-%S") + ".txt";
  TextFile out(M.RecordPath);
  out.Write(h.ProjectName);
  out.Write(h.UserName);
  out.Write(M.RunLabel);
  out.Write("Bootstrap number (B)=", B);
  out.Write("Sample size=", n);
  out.Write("Immature no.=", S.immature.ImmatureCount);
  out.Write("Adult no.=", S.adult.AdultCohortSize);
  out.Write("Sex type=", h.TypeCount);
  out.Write("Stage=", h.StageCount);
  for (int t = 1; t <= h.TypeCount; ++t) {
    out.WritePart(h.TypeCode(t));
    for (int j = 1; j < h.StageCount; ++j) out.WritePart(h.StageName(t, j));
    out.Write(h.StageName(t, h.StageCount));
  }
  out.Write(h.SpecialGroup(1), h.SpecialGroup(2));
  out.Write("Ind. No.,Sex,Immature duration,Adult duration");
  {
    LineBuffer line(out);
    for (long b = 1; b <= B; ++b) {
      const auto i = static_cast<std::size_t>(b);
      if (M.MatchEffective[i] == kMatchIneffective) {
        line.Text("\"Intrinsic rate:\",\"Ineffective match\",\"Finite rate:\",\"Ineffective match\","
                  "\"Net reproductive rate:\",\" Ineffective match\",\"Fecundity:\",\"Ineffective match\"")
            .EndLine();
        continue;
      }
      const std::size_t row = (i - 1) * static_cast<std::size_t>(n);
      for (int k = 1; k <= n; ++k) {
        const int imm = M.MatchImmature[row + static_cast<std::size_t>(k - 1)];
        const std::string& sex = S.immature.ImmatureSex(imm);
        line.Int(k).Text(sex == "F" ? ",\"F\"," : sex == "M" ? ",\"M\"," : ",\"N\",").Int(imm);
        if (sex != "N") line.Text(",").Int(M.MatchAdult[row + static_cast<std::size_t>(k - 1)]);
        line.EndLine();
      }
      line.Text("\"Match no. = \",").Int(b).Text(",\"Intrinsic rate=\",");
      if (M.MatchEffective[i] == kMatchNoOffspring)
        line.Text("\"No offspring\"");
      else
        line.Num(M.MatchR[i]);
      line.Text(",\"Finite rate=\",").Num(M.MatchLambda[i]).Text(",\"Net reproductive rate=\",").Num(M.MatchR0[i]);
      line.Text(",\"Fecundity=\",").Num(M.MatchFecundity[i]).EndLine();
    }
  }
  const std::string Bt = std::to_string(B);
  auto means = [&](TextFile& file) {
    file.Write(" Mean values of " + Bt + " matches:");
    file.Write("Means of " + Bt + " matches", " Fecundity=", M.MeanFecundity, " Net reproductive rate=", M.MeanR0,
               " Intrinsic rate=", M.MeanR, " Finite rate=", M.MeanLambda, " Mean generation time =", M.MeanT);
  };
  means(out);
  // The run in short, in its basic output.
  TextFile& basic = S.channels.MainOutput;
  if (basic.IsOpen()) {
    basic.Write(h.ProjectName);
    basic.Write(h.UserName);
    basic.Write(M.RunLabel);
    basic.Write("Immature file:", S.immature.ImmatureFilePath);
    basic.Write("Adult file:", S.adult.AdultFilePath);
    basic.Write("Bootstrap number (B)=", B);
    basic.Write("Sample size=", n);
    basic.Write("Overwinter duration=", M.OverwinterDuration);
    basic.Write("Ow ran. max. mortality=", M.OverwinterMortality);
    basic.Write("Effective matches=", M.EffectiveMatches);
    basic.Write("Ineffective matches=", M.IneffectiveMatches);
    basic.Write("Match record:", M.RecordPath);
    means(basic);
    basic.Flush();
  }
  // The seed as its digits: a clock's seed has more of them than a double holds.
  out.Write("Seed of the run=", std::to_string(M.Seed));
  out.Close();

  // The complete life table of the first match of the run.
  if (B >= 1 && M.MatchEffective[1] != kMatchIneffective)
    WriteMatchLifeTable(1, M.MatchBase + "-life table-1.txt", "Project: " + h.ProjectName + ". Match no. =1",
                        M.RunLabel + "-1");
}

namespace {

// A list for the general bootstrap: the treatment, the variable, then "number, value" lines.
void WriteGenBootList(const std::string& path, const std::string& treatment, const std::string& variable,
                      long count, const std::function<bool(long)>& has, const std::function<double(long)>& value) {
  TextFile out(path);
  out.Write(treatment);
  out.Write("Ind. No.", variable);
  for (long k = 1; k <= count; ++k)
    if (has(k)) out.Write(k, value(k));
}

}  // namespace

void MatchedLifeTables::WriteImmatureDataForGenBoot() {
  Flow("WriteImmatureDataForGenBoot");
  const ImmatureLifeTable& I = S.immature;
  for (int j = 1; j < I.head.StageCount; ++j) {
    const std::string& stage = I.head.StageName(1, j);
    std::string name = stage;  // the stage's name as a part of a file name
    for (char& c : name)
      if (!std::isalnum(static_cast<unsigned char>(c)) && c != ' ' && c != '-' && c != '_') c = '_';
    WriteGenBootList(
        S.match.MatchBase + "_GB_Immature-" + name + ".txt", I.head.TreatmentName, stage + " duration",
        I.ImmatureCount, [&](long k) { return I.ImmatureDuration(k, j) > 0; },
        [&](long k) { return static_cast<double>(I.ImmatureDuration(k, j)); });
  }
}

void MatchedLifeTables::WriteDataForGenBoot() {
  Flow("WriteDataForGenBoot");
  const AdultLifeTable& A = S.adult;
  const std::string base = MatchFileBase(A.AdultFilePath, "Adult");
  WriteGenBootList(
      base + "_GB_Adult duration.txt", A.head.TreatmentName, "Adult duration", A.AdultCohortSize,
      [](long) { return true; }, [&](long k) { return static_cast<double>(A.AdultLongevity(k)); });
  WriteGenBootList(
      base + "_GB_Fecundity.txt", A.head.TreatmentName, "Fecundity", A.AdultCohortSize,
      [&](long k) { return A.AdultIndividualSex(k) == "F"; },
      [&](long k) {
        double eggs = 0;
        for (int day = 1; day <= A.AdultLongevity(k); ++day) eggs += A.AdultFecundity(k, day);
        return eggs;
      });
}

bool MatchedLifeTables::ReadSameBootstrapData() {
  Flow("ReadSameBootstrapData");
  MatchRecord& M = S.match;
  FieldReader in(M.RecordPath, FieldReader::Form::Record);
  auto number = [&](const char* what) {
    const double v = in.ReadNumber();
    if (!in.LastNumberValid() || !std::isfinite(v))
      throw ProgramEnd{"The match record " + M.RecordPath + " has \"" + in.LastText() + "\" where " + what +
                           " should stand (line " + std::to_string(in.Line()) + ").",
                       kRecordTitle};
    return v;
  };
  auto whole = [&](const char* what, double lo, double hi) {
    const double v = number(what);
    if (v != std::floor(v) || v < lo || v > hi)
      throw ProgramEnd{"The match record " + M.RecordPath + " gives " + FullPrecision(v) + " for " + what +
                           " (line " + std::to_string(in.Line()) + "); it must be a whole number from " +
                           FullPrecision(lo) + " to " + FullPrecision(hi) + ".",
                       kRecordTitle};
    return static_cast<long>(v);
  };
  for (int i = 0; i < 3; ++i) in.ReadString();
  in.ReadString();
  const long B = whole("the bootstrap number", 1, kMaxBootB);
  in.ReadString();
  const long n = whole("the sample size", 1, kMaxIndividual);
  in.ReadString();
  const long immatureCount = whole("the immature number", 1, kMaxIndividual);
  in.ReadString();
  const long adultCount = whole("the adult number", 1, kMaxIndividual);
  in.ReadString();
  const long types = whole("the number of sex types", 1, kMaxType);
  in.ReadString();
  const long stages = whole("the number of stages", 1, kMaxStage);
  if (immatureCount != S.immature.ImmatureCount || adultCount != S.adult.AdultCohortSize) {
    P.MsgBox("The match record was written for " + std::to_string(immatureCount) + " immature and " +
                 std::to_string(adultCount) + " adult individuals, but the tables in hand hold " +
                 std::to_string(S.immature.ImmatureCount) + " and " + std::to_string(S.adult.AdultCohortSize) +
                 ".\nOpen the files of that run.",
             kRecordTitle);
    return false;
  }
  for (long t = 1; t <= types; ++t)
    for (long j = 0; j <= stages; ++j) in.ReadString();
  for (int i = 0; i < 3; ++i) in.ReadString();

  M.MatchB = static_cast<double>(B);
  M.MatchSampleSize = static_cast<int>(n);
  AllocateMatches(B);
  for (long b = 1; b <= B; ++b) {
    const std::string first = in.ReadString();
    if (first == "Intrinsic rate:") {
      for (int i = 0; i < 7; ++i) in.ReadString();
      M.MatchEffective[static_cast<std::size_t>(b)] = kMatchIneffective;
      continue;
    }
    const std::size_t row = static_cast<std::size_t>(b - 1) * static_cast<std::size_t>(n);
    for (long k = 1; k <= n; ++k) {
      const auto position = k == 1 ? NumberAnswer(first) : std::optional<double>(number("an individual's position"));
      if (!position || *position != static_cast<double>(k))
        throw ProgramEnd{"Match " + std::to_string(b) + " of the match record " + M.RecordPath +
                             " lacks its individual no. " + std::to_string(k) + " (line " + std::to_string(in.Line()) + ").",
                         kRecordTitle};
      const std::string sex = in.ReadString();
      const long imm = whole("an immature number", 1, static_cast<double>(immatureCount));
      if (S.immature.ImmatureSex(imm) != sex)
        throw ProgramEnd{"Match " + std::to_string(b) + " of the match record names immature no. " + std::to_string(imm) +
                             " as " + sex + ", but the immature table has it as " + S.immature.ImmatureSex(imm) + ".",
                         kRecordTitle};
      M.MatchImmature[row + static_cast<std::size_t>(k - 1)] = static_cast<std::int16_t>(imm);
      if (sex == "N") continue;
      const long adult = whole("an adult number", 1, static_cast<double>(adultCount));
      if (S.adult.AdultIndividualSex(adult) != sex)
        throw ProgramEnd{"Match " + std::to_string(b) + " of the match record pairs a " + sex + " with adult no. " +
                             std::to_string(adult) + " of the other sex.",
                         kRecordTitle};
      M.MatchAdult[row + static_cast<std::size_t>(k - 1)] = static_cast<std::int16_t>(adult);
    }
    in.ReadString();
    if (whole("the match number", 1, kMaxBootB) != b)
      throw ProgramEnd{"The match record " + M.RecordPath + " holds its matches out of order at match " + std::to_string(b) + ".",
                       kRecordTitle};
    for (int i = 0; i < 8; ++i) in.ReadString();
    M.MatchEffective[static_cast<std::size_t>(b)] = kMatchEffective;
  }
  // The run's seed closes the record: the winter of a match rebuilt from it is the one solved.
  for (int i = 0; i < 16 && in.HasMoreData(); ++i) {
    if (in.ReadString() != "Seed of the run=") continue;
    const std::string digits = in.ReadString();
    if (!digits.empty() && digits.size() <= 19 && digits.find_first_not_of("0123456789") == std::string::npos)
      M.Seed = std::stoull(digits);
    break;
  }
  M.RecordMatches = B;
  return true;
}

void MatchedLifeTables::Boot01New() {
  Flow("Boot01New");
  const MatchRecord& M = S.match;
  const long B = static_cast<long>(M.MatchB);
  TextFile out(M.MatchBase + "_2B_Bootstrap_Output.txt");
  out.Print("Table of bootstrapping results of matched life table");
  out.Print("Project: ", S.immature.head.ProjectName, "  ", M.RunLabel);
  out.Print("Immature file: ", S.immature.ImmatureFilePath);
  out.Print("Adult file: ", S.adult.AdultFilePath);
  out.Print("Sample size (n) =", M.MatchSampleSize, " Matches (B) =", B, " Effective matches =", M.EffectiveMatches);
  out.Print("Overwinter duration =", M.OverwinterDuration, " Ow ran. max. mortality =", M.OverwinterMortality);
  out.Print("Seed of the run =", std::to_string(M.Seed));
  out.Print(std::string(98, '='));
  out.PrintPart(" ");
  for (int c = 0; c < 7; ++c) out.PrintPart(Tab{kColumns[c]}, kStatistics[c].name);
  out.NewLine();
  out.Print(std::string(98, '-'));

  const long E = M.EffectiveMatches;
  std::vector<double> sorted[7];
  BootSummary summary[7];
  for (int c = 0; c < 7; ++c) {
    const std::vector<double>& v = M.*kStatistics[c].values;
    sorted[c].reserve(static_cast<std::size_t>(E));
    for (long b = 1; b <= B; ++b)
      if (M.MatchEffective[static_cast<std::size_t>(b)] == kMatchEffective) sorted[c].push_back(v[static_cast<std::size_t>(b)]);
    std::sort(sorted[c].begin(), sorted[c].end());
    summary[c] = SummarizeSamples(static_cast<long>(sorted[c].size()),
                                  [&](long i) { return sorted[c][static_cast<std::size_t>(i - 1)]; });
  }
  auto row = [&](const char* label, auto value, bool se) {
    out.PrintPart(label);
    for (int c = 0; c < 7; ++c)
      out.PrintPart(Tab{kColumns[c]}, RoundDisplayOrWhole(value(c), se ? kStatistics[c].seDecimals : kStatistics[c].decimals));
    out.NewLine();
  };
  if (E == 0) {
    out.Print("No effective match: no statistics.");
    return;
  }
  row("B", [&](int) { return static_cast<double>(E); }, false);
  row("Boot. max", [&](int c) { return summary[c].max; }, false);
  row("Boot mean", [&](int c) { return summary[c].mean; }, false);
  row("Boot. min", [&](int c) { return summary[c].min; }, false);
  row("Variance", [&](int c) { return summary[c].variance; }, false);
  row("S.E.", [&](int c) { return summary[c].se; }, true);
  out.Print(std::string(98, '-'));
  const double levels[] = {0.025, 0.5, 0.975};
  const char* labels[] = {"0.025 PCI", "0.5 PCI", "0.975 PCI"};
  for (int p = 0; p < 3; ++p) {
    const long index = std::clamp<long>(PercentileIndex(E, levels[p]), 1, E);
    row(labels[p], [&](int c) { return sorted[c][static_cast<std::size_t>(index - 1)]; }, true);
  }
  out.Print(std::string(98, '='));
  out.Print("r: intrinsic rate, lambda: finite rate, R0: net reproductive rate, T: mean generation time,");
  out.Print("GRR: gross reproduction rate, F: mean fecundity per female adult, Longevity: total longevity.");
  long barren = 0;
  for (long b = 1; b <= B; ++b) barren += M.MatchEffective[static_cast<std::size_t>(b)] == kMatchNoOffspring;
  out.Print("Ineffective draws repeated =", M.IneffectiveMatches);
  out.Print("Matches without offspring (left out of the table) =", barren);
}

void MatchedLifeTables::WriteEffectiveBootstrapInColumn() {
  Flow("WriteEffectiveBootstrapInColumn");
  const MatchRecord& M = S.match;
  const long B = static_cast<long>(M.MatchB);
  for (const Statistic& st : kStatistics) {
    const std::vector<double>& v = M.*st.values;
    double mean = 0;
    for (long b = 1; b <= B; ++b)
      if (M.MatchEffective[static_cast<std::size_t>(b)] == kMatchEffective) mean += v[static_cast<std::size_t>(b)];
    if (M.EffectiveMatches > 0) mean /= static_cast<double>(M.EffectiveMatches);
    std::string name = st.name;
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (name == "F") name = "Fecundity";
    ColumnHead head;
    head.tag = st.tag;
    head.line3 = M.MatchSampleSize;
    head.line5 = static_cast<double>(M.EffectiveMatches);
    head.name = name;
    head.nIn6 = M.MatchSampleSize;
    head.cohortValue = mean;
    TextFile out(M.MatchBase + st.file);
    WriteColumnHead(out, M.RunLabel, head);
    LineBuffer line(out);
    for (long b = 1; b <= B; ++b)
      if (M.MatchEffective[static_cast<std::size_t>(b)] == kMatchEffective) line.Num(v[static_cast<std::size_t>(b)]).EndLine();
  }
}

}  // namespace korvan
