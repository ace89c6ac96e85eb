#include "input/data_file_reader.h"

#include <cmath>

#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

std::string CleanProjectName(const std::string& field) {
  if (field.rfind("Project: ", 0) == 0 || field.rfind("project: ", 0) == 0) return field.substr(9);
  if (field.rfind("Project:", 0) == 0) return field.substr(8);
  return field;
}

std::string RecordNumberFaultText(long i) {
  return "Error in data file.\nCheck data of individual no. " + std::to_string(i - 1) + " or " +
         std::to_string(i) + ".";
}

std::string NonIntegerFaultText(long i) {
  return "Check data of individual no. " + std::to_string(i) + ". Developmental time is not integer.";
}

namespace {

// A number read into one of the store's 16-bit fields: rounded as the assignment rounds, and
// the overflow fault beyond the 16-bit range.
int ReadInt16(FieldReader& in) { return CInt16(in.ReadNumber()); }

// A double used as an index: rounded to the nearest, a tie to the even one.
long IndexOf(double v) {
  double r = CIntValue(v);
  if (!(r >= -1e9 && r <= 1e9)) throw OverflowFault();
  return static_cast<long>(r);
}

}  // namespace

double ReadFecundityList(FieldReader& in, Mat<double, kMaxIndividual, kMaxAge>& fecundity, long i, double d,
                         double factor) {
  double total = 0;
  for (long x = 1; x <= d + 1; ++x) {
    double value = in.ReadNumber();
    if (value == -1) {
      // A list that ends early is padded with zeros to the last adult day.
      for (long k = x; k <= d; ++k) fecundity(i, k) = 0;
      fecundity(i, IndexOf(d + 1)) = -1;
      break;
    }
    value *= factor;
    fecundity(i, x) = value;
    total += value;
  }
  return total;
}

void DataFileReader::RecordFault(Target target, long i) {
  // The bootstrap reads a file that has passed the check: it stops without a message.
  if (target == Target::Pool) throw ProgramEnd{"", ""};
  throw ProgramEnd{RecordNumberFaultText(i), kDataFileErrorTitle};
}

void DataFileReader::InputData() {
  FieldReader in(S.identity.DataFilePath);
  Flow("InputData");
  ReadHead(in, Target::Cohort);
  ReadRecords(in, Target::Cohort);
  S.header.MaleCount = S.header.TypeCounts(2);
  S.header.NTypeCount = S.header.TypeCounts(3);
  SetTotalLongevity();
}

void DataFileReader::InputdataBoot() {
  FieldReader in(S.identity.DataFilePath);
  Flow("InputdataBoot");
  ReadHead(in, Target::Pool);
  ReadRecords(in, Target::Pool);
}

void DataFileReader::ReadHead(FieldReader& in, Target target) {
  Identity& id = S.identity;
  CohortHeader& h = S.header;
  id.ProjectName = CleanProjectName(in.ReadString());
  id.UserName = in.ReadString();
  id.TreatmentName = in.ReadString();
  const int n = ReadInt16(in);
  W.cohort.CohortSize = n;
  h.CohortSizeRead = n;
  if (target == Target::Pool) S.pool.OriginalCohortSize = n;
  h.TypeCount = ReadInt16(in);
  h.StageCount = ReadInt16(in);
  const int m = h.StageCount;

  for (int t = 1; t <= h.TypeCount; ++t) {
    std::string code = in.ReadString();
    if (target == Target::Pool)
      S.pool.OriginalTypeCode(t) = code;
    else
      h.TypeCode(t) = code;
    for (int j = 1; j <= m; ++j) h.StageName(t, j) = in.ReadString();
  }

  if (h.RegularLifeTable == "No") {
    for (int j = 1; j <= m; ++j) {
      h.StageRearingCost(1, j) = in.ReadNumber();
      if (j == m && h.TypeCount != 1) h.StageRearingCost(2, m) = in.ReadNumber();
    }
  }

  // Row 1 of the stage names carries both adult stages: m the first, m+1 the second.
  h.StageName(1, m + 1) = h.StageName(2, m);
  // A file that gives the males first is turned round; the preadult names stay.
  if (h.StageName(1, m) == "Male" && h.StageName(1, m + 1) == "Female") {
    h.StageName(1, m) = "Female";
    h.StageName(1, m + 1) = "Male";
    h.StageName(2, m) = "Male";
    h.TypeCode(1) = "F";
    h.TypeCode(2) = "M";
  }

  h.SpecialGroup(1) = in.ReadString();
  h.SpecialGroup(2) = in.ReadString();
  if (m == 2) h.SpecialGroup(2) = "Adult";
}

void DataFileReader::ReadRecords(FieldReader& in, Target target) {
  const bool pool = target == Target::Pool;
  Cohort& c = W.cohort;
  CohortHeader& h = S.header;
  IndStrVec& sexOf = pool ? S.pool.OriginalSex : c.IndividualSex;
  auto& duration = pool ? S.pool.OriginalStageDuration : c.StageDuration;
  auto& fecundity = pool ? S.pool.OriginalFecundity : c.Fecundity;
  const int m = h.StageCount;
  const double factor = S.settings.FecundityFactor;

  if (!pool) h.OldFemaleCount = 0;
  for (long i = 1; i <= h.CohortSizeRead; ++i) {
    const int number = ReadInt16(in);
    const std::string sex = in.ReadString();
    if (number != i) RecordFault(target, i);
    if (!pool) c.IndividualNo(i) = number;
    sexOf(i) = sex;
    if (!pool) {
      if (sex == "F") h.TypeCounts(1) += 1;
      else if (sex == "M") h.TypeCounts(2) += 1;
      else if (sex == "N") h.TypeCounts(3) += 1;
    }

    // Stages after the one of death keep no value from an earlier reading.
    for (long j = 0; j <= kMaxStage; ++j) duration(i, j) = 0;
    for (int j = 1; j <= m; ++j) {
      if (sex == "N" && j == m) RecordFault(target, i);
      const double d = in.ReadNumber();
      duration(i, j) = d;
      if (d < 0) break;
      if (!pool && d != std::floor(d) && S.options.AcceptNonIntegerRead != "Yes")
        throw ProgramEnd{NonIntegerFaultText(i), kDataFileErrorTitle};
    }

    if (sex != "F") continue;
    const double d = duration(i, m);
    if (!pool && d >= S.settings.CriticalFemaleAge) h.OldFemaleCount += 1;
    const double total = ReadFecundityList(in, fecundity, i, d, factor);
    if (pool) S.pool.OriginalTotalFecundity(i) = total;
  }
}

void FormTotalLongevity(Cohort& C, int m) {
  C.MaxLongevity = 0;
  for (long i = 1; i <= C.CohortSize; ++i) {
    C.TotalLongevity(i) = TotalLongevityOf(C.StageDuration, i, m);
    if (C.TotalLongevity(i) > C.MaxLongevity) C.MaxLongevity = C.TotalLongevity(i);
  }
}

void DataFileReader::SetTotalLongevity() { FormTotalLongevity(W.cohort, S.header.StageCount); }

}  // namespace korvan

namespace korvan {

void ReadSideTableHead(FieldReader& in, SideTableHead& h, int& count) {
  h.ProjectName = CleanProjectName(in.ReadString());
  h.UserName = in.ReadString();
  h.TreatmentName = in.ReadString();
  count = ReadInt16(in);
  h.TypeCount = ReadInt16(in);
  h.StageCount = ReadInt16(in);
  if (h.TypeCount < 1 || h.TypeCount > kMaxType || h.StageCount < 1 || h.StageCount > kMaxStage - 1)
    throw ProgramEnd{"The file gives " + std::to_string(h.TypeCount) + " sex types and " + std::to_string(h.StageCount) +
                         " stages: it must have 1 to " + std::to_string(kMaxType) + " sex types and 1 to " +
                         std::to_string(kMaxStage - 1) + " stages.",
                     kDataFileErrorTitle};
  for (int t = 1; t <= h.TypeCount; ++t) {
    h.TypeCode(t) = in.ReadString();
    for (int j = 1; j <= h.StageCount; ++j) h.StageName(t, j) = in.ReadString();
  }
  h.SpecialGroup(1) = in.ReadString();
  h.SpecialGroup(2) = in.ReadString();
  if (h.StageCount == 2) h.SpecialGroup(2) = "Adult";
}

void DataFileReader::InputAdultLifeTable() {
  Flow("InputAdultLifeTable");
  const std::string path = P.ChooseFile("Open adult life table");
  if (path.empty()) return;
  FieldReader in(path);
  AdultLifeTable& a = S.adult;
  a.AdultFilePath = path;
  ReadSideTableHead(in, a.head, a.AdultCohortSize);
  S.identity.TreatmentName = a.head.TreatmentName;

  for (long i = 1; i <= a.AdultCohortSize; ++i) {
    const int number = ReadInt16(in);
    const std::string sex = in.ReadString();
    if (number != i) throw ProgramEnd{RecordNumberFaultText(i), kDataFileErrorTitle};
    if (sex != "F" && sex != "M")
      throw ProgramEnd{"Sex of individual no. " + std::to_string(i) + " is " + sex + "?", kDataFileErrorTitle};
    a.AdultIndividualNo(i) = number;
    a.AdultIndividualSex(i) = sex;
    const int d = ReadInt16(in);
    a.AdultLongevity(i) = d;
    if (sex == "F") ReadFecundityList(in, a.AdultFecundity, i, d, 1);
  }
}

void DataFileReader::InputImmatureLifeTable() {
  Flow("InputImmatureLifeTable");
  const std::string path = P.ChooseFile("Open immature life table");
  if (path.empty()) return;
  FieldReader in(path);
  ImmatureLifeTable& im = S.immature;
  im.ImmatureFilePath = path;
  ReadSideTableHead(in, im.head, im.ImmatureCount);
  const std::string correct = "\nPlease correct your data and rerun this program.";
  auto fault = [](const std::string& message) { throw ProgramEnd{message, kDataFileErrorTitle}; };

  for (long i = 1; i <= im.ImmatureCount; ++i) {
    const std::string no = std::to_string(i);
    const int number = ReadInt16(in);
    const std::string sex = in.ReadString();
    if (number != i) fault("Check data of individual no. " + std::to_string(i - 1) + " or " + no + correct);
    if (sex != "F" && sex != "M" && sex != "N") fault("Sex of individual no. " + no + " is " + sex + "?");
    im.ImmatureNo(i) = number;
    im.ImmatureSex(i) = sex;
    bool died = false;
    for (int j = 1; j <= kMaxStage; ++j) im.ImmatureDuration(i, j) = 0;
    for (int j = 1; j < im.head.StageCount && !died; ++j) {
      const double d = in.ReadNumber();
      if (d == 0) fault("Developmental time of individual no." + no + " is ZERO.");
      if (d != std::floor(d)) fault(NonIntegerFaultText(i));
      im.ImmatureDuration(i, j) = CInt16(d);
      died = d < 0;
      if (died && sex != "N")
        fault("Individual no." + no +
              " is type M or F without adult stage.\nIf an individual did not develop to adult, it should be type N.");
    }
    if (sex == "N" && !died) fault("Individual no." + no + " is N-type. But the last stage is positive.");
  }
}

}  // namespace korvan
