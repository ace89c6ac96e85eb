#include "input/check_data_file.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "store/faults.h"
#include "store/limits.h"
#include "text/numbers.h"

namespace korvan {

namespace {

const char* const kDataFault = "Error in data file";
const char* const kFecundityFault = "Error in fecundity data";
const std::string kPleaseCorrect = "Please correct your data and rerun this program.";

std::string HelpLine() { return std::string("(If you need help, please contact ") + kHelpAddress + ")"; }

std::string Num(long v) { return std::to_string(v); }

bool IsWhole(double v) { return std::floor(v) == v; }

// A field read into a 16-bit integer (beyond its range the overflow fault).
int ReadInt16(FieldReader& in) { return CInt16(in.ReadNumber()); }

[[noreturn]] void Fault(const std::string& message, const char* title = kDataFault) {
  throw ProgramEnd{message, title};
}

// Where a record of the file went beyond one of the fixed bounds, for the user to mend it.
std::string BeyondBound(const std::string& array, int individual, int cohortSize) {
  const std::string who = "Individual no. " + Num(individual) + ": ";
  if (array == "Fecundity")
    return who + "the fecundity list goes beyond day " + Num(kMaxAge) + " of adult life, the last day allowed.";
  if (array == "StageDuration") return who + "more stage durations than the " + Num(kMaxStage) + " stages allowed.";
  return who + "the 4th line gives " + Num(cohortSize) + " individuals; a cohort may have at most " +
         Num(kMaxIndividual) + ".";
}

std::string BeyondBoundInHead(const std::string& array) {
  if (array == "TypeCode") return "The head of the file has more types than the " + Num(kMaxType) + " allowed.";
  return "The head of the file has more stages than the " + Num(kMaxStage) + " allowed.";
}

}  // namespace

void CheckDataFile::CheckDataFile2() {
  Flow("CheckDataFile2");
  in_.emplace(S.identity.DataFilePath);
  S.header.FileFemaleCount = 0;
  S.header.FileMaleCount = 0;
  S.header.FileNCount = 0;

  try {
    CheckHead();
  } catch (const SubscriptFault& fault) {
    throw SubscriptFault(fault.array, BeyondBoundInHead(fault.array));
  }
  AskRearingCost();
  CheckSpecialGroup();
  CheckIndividuals();
  if (AskReproduction) AskKindOfReproduction();
  CheckEndOfFile();
  in_.reset();  // the file is closed
}

void CheckDataFile::CheckHead() {
  FieldReader& in = *in_;
  S.identity.ProjectName = in.ReadString();
  S.identity.UserName = in.ReadString();
  S.identity.TreatmentName = in.ReadString();
  W.cohort.CohortSize = ReadInt16(in);
  S.header.CohortSizeRead = W.cohort.CohortSize;
  if (S.options.QuietCheck != "Yes") P.Status("txtCohortsize", Num(W.cohort.CohortSize));
  S.header.TypeCount = ReadInt16(in);
  S.header.StageCount = ReadInt16(in);

  // Rule 1: each type has a code of its own.
  for (int t = 1; t <= S.header.TypeCount; ++t) {
    S.header.TypeCode(t) = in.ReadString();
    for (int u = 1; u < t; ++u) {
      if (S.header.TypeCode(t) == S.header.TypeCode(u)) {
        Fault("Check your data file. Don't use the same code for different sex.\nIs type " + Num(t) +
              " the same as type " + Num(u) + "?");
      }
    }
    for (int j = 1; j <= S.header.StageCount; ++j) S.header.StageName(t, j) = in.ReadString();
  }
}

void CheckDataFile::AskRearingCost() {
  if (S.options.FastRun != "Yes") {
    int answer = P.MsgBox(
        "Regular life table?\n"
        "Yes: Life table data without rearing cost.\n"
        "No: Life table data with rearing cost.\n"
        "If there is rearing cost, you must select \"No\".",
        "Rearing cost for each stage?", kYesNo);
    S.header.RegularLifeTable = answer == kYes ? "Yes" : "No";
  }
  if (S.header.RegularLifeTable != "No") return;
  const int m = S.header.StageCount;
  for (int j = 1; j <= m; ++j) {
    S.header.StageRearingCost(1, j) = in_->ReadNumber();
    if (j == m && S.header.TypeCount != 1) S.header.StageRearingCost(2, m) = in_->ReadNumber();
  }
}

void CheckDataFile::CheckSpecialGroup() {
  FieldReader& in = *in_;
  const int m = S.header.StageCount;
  S.header.SpecialGroup(1) = in.ReadString();
  S.header.SpecialGroup(2) = in.ReadString();

  // Rule 2: the first stage of the span is a stage of the first type.
  const std::string& first = S.header.SpecialGroup(1);
  bool found = false;
  for (int j = 1; j <= m && !found; ++j) found = S.header.StageName(1, j) == first;
  if (!found) {
    Fault("Check the name of the first stage of special group.\nThe first stage of special group is " + first +
          "\n" + kPleaseCorrect +
          "\nIf there is no rearing cost, you should choose \"Yes\" at the last step."
          "\nIf your data is group-reared life table, you should use button B. Reand N,F.");
  }

  // Rule 3: so is the last one; with two stages "Adult", "adult" or any type's second stage
  // name will do as well.
  const std::string& second = S.header.SpecialGroup(2);
  found = false;
  for (int j = 1; j <= m && !found; ++j) found = S.header.StageName(1, j) == second;
  if (!found && m == 2) {
    found = second == "Adult" || second == "adult";
    for (int t = 1; t <= S.header.TypeCount && !found; ++t) found = S.header.StageName(t, 2) == second;
  }
  if (!found) {
    Fault("Check the name of the second stage of special group.\nThe second stage of special group is " + second +
          "\n" + kPleaseCorrect);
  }
  if (m == 2) S.header.SpecialGroup(2) = "Adult";
}

void CheckDataFile::CheckIndividuals() {
  for (int i = 1; i <= W.cohort.CohortSize; ++i) {
    try {
      CheckIndividual(i);
    } catch (const SubscriptFault& fault) {
      throw SubscriptFault(fault.array, BeyondBound(fault.array, i, W.cohort.CohortSize));
    }
  }
}

void CheckDataFile::CheckIndividual(int i) {
  FieldReader& in = *in_;
  const int m = S.header.StageCount;
  const std::string tail = "\n" + kPleaseCorrect + "\n" + HelpLine();

  // Rule 4: records come in the order of their numbers.
  int number = ReadInt16(in);
  W.cohort.IndividualNo(i) = number;
  if (number != i) Fault("Check data of individual no. " + Num(i - 1) + " or " + Num(i) + tail);

  // Rule 5: the sex or type.
  std::string sex = in.ReadString();
  W.cohort.IndividualSex(i) = sex;
  if (sex == "F") {
    ++S.header.FileFemaleCount;
  } else if (sex == "M") {
    ++S.header.FileMaleCount;
  } else if (sex == "N") {
    ++S.header.FileNCount;
  } else {
    Fault("Sex of individual no. " + Num(i) + " is " + sex + "?\nCheck individual no. " + Num(i - 1) +
          " and no. " + Num(i) + "." + tail);
  }

  // Rules 6 to 10: the durations. A negative duration is the stage of death and ends the record.
  bool endedByDeath = false;
  for (int j = 1; j <= m; ++j) {
    double D = in.ReadNumber();
    W.cohort.StageDuration(i, j) = D;
    if (D == 0) Fault("Developmental time of individual no. " + Num(i) + " is ZERO." + tail);
    if (!IsWhole(D)) {
      if (S.options.AcceptNonIntegerDuration.empty()) {
        int answer = P.MsgBox("Attention!  Accept non-integer developmental time? (Individual no. " + Num(i) +
                                  ")\nSelect No to end.",
                              "Non-integer developmental time", kYesNo);
        S.options.AcceptNonIntegerDuration = answer == kYes ? "Yes" : "No";
      }
      if (S.options.AcceptNonIntegerDuration != "Yes")
        Fault("Check data of individual no. " + Num(i) + ". Developmental time is not integer.");
      // An accepted non-integer duration is taken as it stands, even when negative: the
      // record goes on with the next stage.
      continue;
    }
    if (j < m && D < 0) {
      if (sex != "N") {
        Fault("Individual no." + Num(i) +
              " is type M or F without adult stage.\nIf an individual did not develop to adult, it should be type N." +
              tail);
      }
      endedByDeath = true;
      break;
    }
    if (j == m && D < 0) {
      Fault("Sex of individual no. " + Num(i) + " is type N.\nBut there is adult stage.\nPlease correct your data.");
    }
  }
  if (!endedByDeath && sex == "N") {
    Fault("Individual no." + Num(i) + " should be N. (Type N should end with a negative duration of last stage.)" +
          tail);
  }

  if (sex == "F") CheckFecundity(i);
}

void CheckDataFile::CheckFecundity(int i) {
  FieldReader& in = *in_;
  const double d = W.cohort.StageDuration(i, S.header.StageCount);
  const std::string dText = FullPrecision(d);
  // The list holds at most d values and the closing -1; the last place is day d + 1 (the
  // last whole day within d + 1 when an accepted duration isn't whole).
  const double last = std::floor(d + 1);
  for (long x = 1; x <= last; ++x) {
    double f = in.ReadNumber();
    W.cohort.Fecundity(i, x) = f;

    // Rule 11: whole numbers, unless the user accepts otherwise once.
    if (!IsWhole(f)) {
      if (S.options.AcceptNonIntegerFecundity.empty()) {
        int answer = P.MsgBox("The fecundity of individual no. " + Num(i) +
                                  " is non-integer.\nIn general, the fecundity must be integer.\n"
                                  "Do you accept non-integer fecundity?",
                              "Non-integer fecundity", kYesNo);
        S.options.AcceptNonIntegerFecundity = answer == kYes ? "Yes" : "No";
      }
      if (S.options.AcceptNonIntegerFecundity != "Yes") {
        Fault("Error in fecundity of individual no. " + Num(i) +
                  "\nThe fecundity must be integer.\nPlease check your data. " + HelpLine(),
              kFecundityFault);
      }
    }

    // Rule 12: -1 closes the list on any day.
    if (f == -1) return;

    // Rules 13 and 14: on day d + 1 only the closing -1 may stand. Before it, a negative value
    // other than -1 passes.
    if (x == last) {
      if (f > 0) {
        Fault("Error in fecundity of individual no." + Num(i) + "\nThis female lived only " + dText +
                  " time units.\nBut the fecunidty data are more than " + dText +
                  " time units.\nPlease check your data. " + HelpLine(),
              kFecundityFault);
      }
      Fault("Error in fecundity of individual no." + Num(i) + "\n" + kPleaseCorrect + "\n" + HelpLine());
    }
  }
}

void CheckDataFile::AskKindOfReproduction() {
  bool threeD = false;
  if (S.options.FastRun != "Yes") {
    const std::string title = "General analysis or 3D analysis?";
    std::string answer = P.InputBox(
        "Is two-sex mating necessary for a successful reproduction?\n"
        "If there are only females in your data file, you MUST choose \"2\". \n"
        "1: Two-sex reproduction.\n"
        "2: Parthenogenetic reproduction.\n"
        "3: 3D life table analysis.\n"
        "4: End the program.",
        title, "1");
    // The answer is taken by its number, blanks around it ignored; anything else leaves the
    // mode as it was.
    const char* begin = answer.c_str();
    char* end = nullptr;
    double v = std::strtod(begin, &end);
    while (*end == ' ' || *end == '\t') ++end;
    if (end == begin || *end != '\0') v = 0;
    if (v == 1) {
      S.options.MatingMode = "Yes";
    } else if (v == 2) {
      S.options.MatingMode = "No";
    } else if (v == 3) {
      S.options.MatingMode = "3D";
      threeD = true;
    } else if (v == 4) {
      throw ProgramEnd{"The program ends, as chosen (4: End the program.).", title};
    }
  }

  // Rule 15: two-sex reproduction needs males.
  if (!threeD && S.options.MatingMode == "Yes" && S.header.FileMaleCount == 0) {
    throw ProgramEnd{"There are only females in your data.\nTwo-sex mating is impossible.", "Two-sex mating?"};
  }
}

void CheckDataFile::CheckEndOfFile() {
  FieldReader& in = *in_;
  if (in.AtEndOfFile()) return;
  std::string next = in.ReadFieldInLine();
  std::string line = next.empty() || next == " " ? "Next data line is: (empty line)" : "Next data line is: " + next;
  int answer = P.MsgBox("The number of individuals you given in the 4th line is " + Num(W.cohort.CohortSize) +
                            ".\nHowever, it seems there are more data or empty lines at the end of your data file.\n" +
                            line +
                            "\nDo you want to check your data?\n"
                            "Yes: Continue with analysis (if you are sure they are empty lines).\n"
                            "No: End this program. Correct your data file. Then re-run the program.",
                        "Are there more data?", kYesNo);
  if (answer != kYes) {
    throw ProgramEnd{"Correct your data file. Then re-run the program.", "Are there more data?"};
  }
}

}  // namespace korvan
