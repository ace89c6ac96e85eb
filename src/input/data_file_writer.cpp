#include "input/data_file_writer.h"

#include <algorithm>


#include "text/numbers.h"

namespace korvan {

std::string StampedProjectLine(const SessionStore& S) {
  return "Project: " + S.identity.ProjectName + " " + S.identity.VersionStamp;
}

std::string RecordNumber(double v) {
  std::string s = FullPrecision(v);
  if (s[0] != '-') s.insert(s.begin(), ' ');
  return s;
}

void WriteLifeTableLayout(TextFile& out, const SessionStore& S, const LifeTableHead& head,
                          const LifeTableRecords& records) {
  const CohortHeader& h = S.header;
  const int m = h.StageCount;
  out.Write(head.projectLine);
  out.Write(head.user);
  out.Write(head.treatment);
  out.Write(records.count);
  out.Write(h.TypeCount, m);

  for (int t = 1; t <= h.TypeCount; ++t) {
    // A pool read on its own keeps the codes in its own list.
    std::string line = h.TypeCode(t).empty() ? S.pool.OriginalTypeCode(t) : h.TypeCode(t);
    for (int j = 1; j <= m; ++j) line += "," + h.StageName(t, j);
    out.RawText(line);
    out.NewLine();
  }
  if (head.withCosts) {
    std::string line;
    for (int j = 1; j <= m; ++j) line += (j > 1 ? "," : "") + FullPrecision(h.StageRearingCost(1, j));
    if (h.TypeCount != 1) line += "," + FullPrecision(h.StageRearingCost(2, m));
    out.RawText(line);
    out.NewLine();
  }
  out.RawText(h.SpecialGroup(1) + "," + h.SpecialGroup(2));
  out.NewLine();

  for (long p = 1; p <= records.count; ++p) {
    const long row = records.rowOf ? records.rowOf(p) : p;
    const std::string& sex = records.sex(row);
    const int last = records.lastStage > 0 ? records.lastStage : m;
    std::vector<double> durations;
    for (int j = records.firstStage; j <= last; ++j) durations.push_back(records.duration(row, j));
    const bool eggs = sex == "F" && records.withEggs;
    const long eggDays = !eggs ? -1 : records.eggless && records.eggless(row) ? 0
                                    : std::max(0L, static_cast<long>(records.duration(row, m)));
    WriteIndividualRecord(out, p, sex, durations, eggDays,
                          [&](long x) { return records.fecundity(row, x) * records.fecundityFactor; });
  }
}

void WriteIndividualRecord(TextFile& out, long number, const std::string& sex, const std::vector<double>& durations,
                           long eggDays, const std::function<double(long)>& eggsOfDay) {
  std::string line = PrintNumber(static_cast<double>(number)) + "," + sex;
  for (const double d : durations) {
    line += "," + RecordNumber(d);
    if (d < 0) break;
  }
  out.RawText(line);
  out.NewLine();
  if (eggDays < 0) return;

  // Days 1..d of the adult stage, then the closing -1; lines of at most 20 values.
  long written = 0;
  std::string values;
  auto put = [&](double v) {
    if (written > 0) values += (written % 20 == 0) ? "\n" : ",";
    values += RecordNumber(v);
    ++written;
  };
  for (long x = 1; x <= eggDays; ++x) put(eggsOfDay(x));
  put(-1);
  out.RawText(values);
  out.NewLine();
}

LifeTableRecords LifeTableWriter::SampleRecords() const {
  const auto& drawn = FromSavedSamples ? S.boot.SavedBootIndividuals : S.boot.BootIndividuals;
  const long sample = SampleNumber;
  return LifeTableRecords{S.pool.OriginalSex, S.pool.OriginalStageDuration, S.pool.OriginalFecundity,
                          S.boot.BootSampleSize,
                          [&drawn, sample](long p) { return static_cast<long>(drawn(p, sample)); }};
}

void LifeTableWriter::WriteLifeTableSub() {
  Flow("WriteLifeTableSub");
  if (!SubFile || !SubFile->IsOpen()) return;
  LifeTableHead head{StampedProjectLine(S), S.identity.UserName,
                     S.identity.TreatmentName + "-" + PercentileLabel, false};
  WriteLifeTableLayout(*SubFile, S, head, SampleRecords());
}

void LifeTableWriter::WriteLifeTableForSpecificSampleFile() {
  Flow("WriteLifeTableForSpecificSample");
  S.identity.OutputFileName = OutputName(S, "_0_data of spec bootsample_" + std::to_string(SampleNumber) + ".txt");
  {
    TextFile out(S.identity.OutputFileName);
    LifeTableHead head{StampedProjectLine(S), S.identity.UserName, S.identity.TreatmentName,
                       S.header.RegularLifeTable == "No"};
    WriteLifeTableLayout(out, S, head, SampleRecords());
  }
  P.MsgBox("Data file ready!", "");
}

void LifeTableWriter::WriteLifeTableForModifiedFxj() {
  Flow("WriteLifeTableForModifiedFxj");
  const std::string answer =
      P.InputBox("Enter a value between 0 and 1 to modify the fecundity", "Fecundity coefficeint", "1");
  if (answer.empty()) return;  // cancelled: no file
  const std::optional<double> number = NumberAnswer(answer);
  if (!number || *number < 0 || *number > 1) {
    P.MsgBox("The coefficient \"" + answer + "\" is no number between 0 and 1. No file was written.", "Not accepted");
    return;
  }
  const double coefficient = *number;
  S.identity.OutputFileName =
      OutputName(S, "_0A2_life table-modified fxj-" + FullPrecision(coefficient) + ".txt");
  TextFile out(S.identity.OutputFileName);
  const Cohort& c = W.cohort;
  LifeTableRecords records{c.IndividualSex, c.StageDuration, c.Fecundity, c.CohortSize, {}, coefficient};
  LifeTableHead head{StampedProjectLine(S), S.identity.UserName, S.identity.TreatmentName, false};
  WriteLifeTableLayout(out, S, head, records);
}

}  // namespace korvan
