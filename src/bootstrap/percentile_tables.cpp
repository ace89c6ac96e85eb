// Life tables and records of single bootstrap samples: the samples at the percentiles, the
// samples asked for by number, and the command that turns a sample record into a data file.
#include <array>
#include <charconv>
#include <cstring>
#include <string>

#include "bootstrap/percentile.h"
#include "input/field_reader.h"
#include "input/data_file_writer.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

void WriteSampleList(TextFile& out, const BootstrapRecord& R, long sample, long n) {
  WriteSampleList(out, R.BootIndividuals, sample, n);
}

namespace {

// " k " of every individual number k = 0..kMaxIndividual, made once: the record of 100,000
// samples holds ten million of them.
struct NumberWithBlanks {
  char text[8];
  std::size_t size;
};
const std::array<NumberWithBlanks, kMaxIndividual + 1>& IndividualTexts() {
  static const auto texts = [] {
    std::array<NumberWithBlanks, kMaxIndividual + 1> t{};
    for (int k = 0; k <= kMaxIndividual; ++k) {
      NumberWithBlanks& e = t[static_cast<std::size_t>(k)];
      e.text[0] = ' ';
      e.size = static_cast<std::size_t>(std::to_chars(e.text + 1, e.text + 7, k).ptr - e.text);
      e.text[e.size++] = ' ';
    }
    return t;
  }();
  return texts;
}

}  // namespace

void WriteSampleList(TextFile& out, const BootMatList<std::int16_t, kMaxIndividual>& lists, long sample, long n) {
  // Lines of 20 numbers " k ," (the last of a line without its comma), each line written whole.
  const auto& texts = IndividualTexts();
  char line[20 * 10 + 2 + 8];
  std::size_t used = 0;
  for (long p = 1; p <= n; ++p) {
    const int k = lists(p, sample);
    if (k >= 0 && k <= kMaxIndividual) {
      const NumberWithBlanks& e = texts[static_cast<std::size_t>(k)];
      std::memcpy(line + used, e.text, sizeof e.text);  // the whole 8 bytes: a single copy
      used += e.size;
    } else {
      line[used++] = ' ';
      used = static_cast<std::size_t>(std::to_chars(line + used, line + sizeof line, k).ptr - line);
      line[used++] = ' ';
    }
    if (p % 20 == 0 || p == n) {
      line[used++] = '\n';
      out.RawText(std::string_view(line, used));
      used = 0;
    } else {
      line[used++] = ',';
    }
  }
}

void BootPercentiles::WritePercentileLifeTable() {
  Flow("WriteLifeTableFor025Percentile");
  const BootstrapRecord& R = S.boot;
  const std::int32_t k = TableSample;
  if (k < 1) return;  // a percentile below the first value has no sample
  TextFile out(S.identity.OutputFileName);
  LifeTableHead head{"Project: " + S.identity.ProjectName + ". " + TableLabel, S.identity.UserName,
                     TableLabel + "-" + S.identity.TreatmentName, S.header.RegularLifeTable == "No"};
  const auto& drawn = R.BootIndividuals;
  LifeTableRecords records{S.pool.OriginalSex, S.pool.OriginalStageDuration, S.pool.OriginalFecundity,
                           R.BootSampleSize, [&drawn, k](long p) { return static_cast<long>(drawn(p, k)); }};
  WriteLifeTableLayout(out, S, head, records);
}

void BootPercentiles::WriteSpecificBootstrapSample() {
  Flow("WriteSpecificBootstrapSample");
  const BootstrapRecord& R = S.boot;
  const std::int32_t k = TableSample;
  if (k < 1) return;
  TextFile out(S.identity.OutputFileName);
  out.Write("Project: " + S.identity.ProjectName + " " + TableLabel);
  out.Write(S.identity.TreatmentName);
  out.Write(S.identity.UserName);
  out.Write("Next line is the total number of effective bootstrap (B)");
  out.Write(R.EffectiveCount);
  out.Write("Net line is the bootstrap sample size (n)");
  out.Write(R.BootSampleSize);
  out.Write("Next line is the specific bootstrap sample number:");
  out.Write(k);
  // The individuals stand under the sample's place in the list of effective samples (the
  // identity when only effective samples were kept); beyond that list, under its own number.
  const std::int32_t listed = k <= R.EffectiveCount ? R.EffectiveList(k) : 0;
  WriteSampleList(out, R, listed > 0 ? listed : k, R.BootSampleSize);
  out.Write("Next line is the net reproductive rate of the specific bootstrap sample");
  out.Print(R.BootR0(k));
  if (R.BootR0(k) != 0) {
    out.Write("Next line is the finite rate of the specific bootstrap sample");
    out.Print(R.BootLambda(k));
  } else {
    out.Write("This bootstrap sample is ineffective (infertile). No finite rate or intrinsic rate can be estimated.");
  }
}

void BootPercentiles::WritePercentilePair(const std::string& recordPrefix, const std::string& tablePrefix,
                                          std::int32_t sample, const std::string& name, const std::string& label) {
  if (sample < 1) return;
  const std::string tail = name + "-sample_" + std::to_string(sample) + ".txt";
  TableSample = sample;
  TableLabel = label;
  S.identity.OutputFileName = OutputName(S, tablePrefix + tail);
  WriteLifeTableFor025Percentile();
  S.identity.OutputFileName = OutputName(S, recordPrefix + tail);
  WriteSpecificBootstrapSample();
}

void BootPercentiles::WriteLifeTableForPercentileX() {
  Flow("WriteLifeTableForPercentileX");
  const SortStore& s = S.boot.sort;
  TextFile list(OutputName(S, "_0Aa_All spec boot percentile sample.txt"));
  for (int row = 0; row <= 14; ++row) {
    const std::int32_t k = s.PercentileSample(row);
    list.Write("Percentile ", s.PercentileP(row), k, k);
    // With the hundred tables, only 0.15866 and 0.84135 are not among them.
    if (S.boot.PercentileTables100 == "Yes" && row != 3 && row != 11) continue;
    if (k < 1) continue;
    const std::string label = s.PercentileLabel(row);
    TableSample = k;
    TableLabel = label + " lambda";
    S.identity.OutputFileName = OutputName(S, "_Ka_boot " + label + " lambda-sample_" + std::to_string(k) + ".txt");
    WriteSpecificBootstrapSample();
    TextFile table(OutputName(S, "_Kg_life Table_" + label + " lambda.txt"));
    LifeTableWriter writer(S, P, W);
    writer.SubFile = &table;
    writer.SampleNumber = k;
    writer.PercentileLabel = label + " lambda";
    writer.WriteLifeTableSub();
  }
}

void BootPercentiles::WriteLifeTableFor100() {
  Flow("WriteLifeTableFor100");
  const SortStore& s = S.boot.sort;
  for (int i = 1; i <= 100; ++i) {
    const std::int32_t k = s.Percentile100Sample(i);
    if (k < 1) continue;
    TextFile table(OutputName(S, "_Kn_life Table_" + s.Percentile100Label(i) + " lambda.txt"));
    LifeTableWriter writer(S, P, W);
    writer.SubFile = &table;
    writer.SampleNumber = k;
    writer.PercentileLabel = s.Percentile100Label(i) + " lambda";
    writer.WriteLifeTableSub();
  }
}

void BootPercentiles::WriteSpecificSampleLifeTables() {
  const BootstrapRecord& R = S.boot;
  for (long i = 1; i <= R.SpecificSampleCount; ++i) {
    const std::int32_t k = R.SpecificSample(i);
    if (k < 1 || k > R.BootB) continue;
    TextFile table(OutputName(S, "_000K_Life Table_boot-sample_" + std::to_string(k) + ".txt"));
    LifeTableWriter writer(S, P, W);
    writer.SubFile = &table;
    writer.SampleNumber = k;
    writer.PercentileLabel = "boot-sample_" + std::to_string(k);
    writer.WriteLifeTableSub();
  }
}

bool BootPercentiles::InputSpecBootSample() {
  Flow("InputSpecBootSample");
  BootstrapRecord& R = S.boot;
  FieldReader in(SpecRecordPath, FieldReader::Form::Record);
  for (int line = 1; line <= 4; ++line) in.SkipLine();
  in.ReadNumber();  // E
  in.SkipLine();
  const double n = in.ReadNumber();
  in.SkipLine();
  const double k = in.ReadNumber();
  const int N = S.pool.OriginalCohortSize;
  auto refuse = [&](const std::string& why) {
    P.MsgBox(why + "\nThe file " + SpecRecordPath + " cannot be used for a life table.",
             "Open specific bootstrap sample and prepare its life table");
    return false;
  };
  if (N < 1) return refuse("There is no cohort in memory: run \"A1. Read data\" and \"A3. Bootstrap\" first.");
  if (!(n >= 1 && n <= kMaxIndividual) || !(k >= 1 && k <= kMaxBootIndex))
    return refuse("The sample size or the sample number of this record is out of range.");
  const long size = static_cast<long>(n), sample = static_cast<long>(k);
  for (long p = 1; p <= size; ++p) {
    const double ind = in.ReadNumber();
    if (!(ind >= 1 && ind <= N))
      return refuse("Individual " + FullPrecision(ind) + " of this sample is not in the cohort of " +
                    std::to_string(N) + " individuals.");
    R.SavedBootIndividuals(p, sample) = static_cast<std::int16_t>(ind);
  }
  R.BootSampleSize = static_cast<std::int32_t>(size);
  SpecSampleNumber = static_cast<std::int32_t>(sample);
  return true;
}

}  // namespace korvan
