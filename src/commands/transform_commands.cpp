#include "commands/transform_commands.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "bootstrap/uniform_random.h"
#include "input/check_data_file.h"
#include "input/data_file_reader.h"
#include "text/numbers.h"
#include "text/text_file.h"
#include "transforms/life_table_transforms.h"

namespace korvan {

namespace {

std::string Num(double v) { return FullPrecision(v); }

std::string BaseOf(const std::string& path) { return path.size() > 4 ? path.substr(0, path.size() - 4) : std::string(); }

std::string Trimmed(const std::string& s) {
  const std::size_t begin = s.find_first_not_of(" \t");
  if (begin == std::string::npos) return {};
  return s.substr(begin, s.find_last_not_of(" \t") + 1 - begin);
}

// "Stages: 1. Egg, 2. Larva, 3. Female (adult)".
std::string StagesText(const CohortHeader& h) {
  std::string text = "Stages:";
  for (int j = 1; j <= h.StageCount; ++j)
    text += (j > 1 ? ", " : " ") + Num(j) + ". " + h.StageName(1, j) + (j == h.StageCount ? " (adult)" : "");
  return text;
}

// What to enter at "Each time unit =?" of Basic Run for a unit of 1/x: the run takes 0.3 and
// 0.16 for thirds and sixths.
std::string TimeUnitAnswer(int x) {
  if (x == 3) return "0.3";
  if (x == 6) return "0.16";
  return Num(1.0 / x);
}

LifeTableRecords RecordsOf(const Session& T) {
  const Cohort& c = T.ws.cohort;
  return LifeTableRecords{c.IndividualSex, c.StageDuration, c.Fecundity, c.CohortSize, {}};
}

LifeTableHead HeadOf(const Session& T, const std::string& change) {
  return LifeTableHead{StampedProjectLine(T), T.identity.UserName, T.identity.TreatmentName + "-" + change,
                       T.header.RegularLifeTable == "No"};
}

}  // namespace

// ---------------------------------------------------------------------------------------
// Reading, asking, writing

std::unique_ptr<Session> TransformCommands::ReadLifeTable() {
  auto T = std::make_unique<Session>();
  T->identity = S.identity;
  T->options.AcceptNonIntegerRead = S.options.AcceptNonIntegerRead;
  T->options.AcceptNonIntegerDuration = S.options.AcceptNonIntegerDuration;
  T->options.AcceptNonIntegerFecundity = S.options.AcceptNonIntegerFecundity;
  T->options.QuietCheck = "Yes";
  if (S.identity.DataFileRead == "Yes" && !S.identity.DataFilePath.empty()) {
    T->header.RegularLifeTable = S.header.RegularLifeTable;  // A1 has checked the file
  } else {
    const std::string path = P.ChooseFile("Open life table data file");
    if (path.empty()) return nullptr;
    // The file chosen here is the session's data file from now on.
    S.identity.DataFilePath = T->identity.DataFilePath = path;
    S.identity.DataFileBase = T->identity.DataFileBase = BaseOf(path);
    P.Status("txtDatafile", path);
    CheckDataFile check(*T, P);
    check.AskReproduction = false;
    check.CheckDataFile2();
    S.options.AcceptNonIntegerDuration = T->options.AcceptNonIntegerDuration;
    S.options.AcceptNonIntegerFecundity = T->options.AcceptNonIntegerFecundity;
  }
  DataFileReader(*T, P).InputData();
  if (const std::string why = UnwritableHeadRefusal(T->header); !why.empty()) {
    Refuse(why);
    return nullptr;
  }
  return T;
}

std::unique_ptr<Session> TransformCommands::ReadLifeTableWithPreadultStage() {
  auto T = ReadLifeTable();
  if (T && T->header.StageCount < 2) {
    Refuse("This life table has no preadult stage.");
    return nullptr;
  }
  return T;
}

std::optional<std::string> TransformCommands::Ask(const std::string& text, const std::string& title,
                                                  const std::string& defaultText, const Check& check) {
  for (int attempt = 1; attempt <= 3; ++attempt) {
    const std::string answer = P.InputBox(text, title, defaultText);
    if (answer.empty()) return std::nullopt;  // Cancel
    const std::string why = check(answer);
    if (why.empty()) return answer;
    P.MsgBox(why + (attempt < 3 ? "\nPlease enter it again." : "\nNo file was written."), "Not accepted", kOKOnly);
  }
  return std::nullopt;
}

std::optional<long> TransformCommands::AskWhole(const std::string& text, const std::string& title,
                                                const std::string& defaultText, long lowest, long highest) {
  const auto answer = Ask(text, title, defaultText, [&](const std::string& a) -> std::string {
    const std::optional<double> v = NumberAnswer(a);
    if (v && *v == std::floor(*v) && *v >= lowest && *v <= highest) return {};
    return "\"" + a + "\" is no whole number from " + Num(lowest) + " to " + Num(highest) + ".";
  });
  if (!answer) return std::nullopt;
  return static_cast<long>(*NumberAnswer(*answer));
}

std::optional<double> TransformCommands::AskShare(const std::string& text, const std::string& title,
                                                  const std::string& defaultText, bool openEnds) {
  const auto answer = Ask(text, title, defaultText, [&](const std::string& a) -> std::string {
    const std::optional<double> v = NumberAnswer(a);
    if (v && (openEnds ? *v > 0 && *v < 1 : *v >= 0 && *v <= 1)) return {};
    return "\"" + a + "\" is no share " + (openEnds ? "between 0 and 1 (not 0 or 1 itself)." : "from 0 to 1.");
  });
  if (!answer) return std::nullopt;
  return *NumberAnswer(*answer);
}

std::optional<std::string> TransformCommands::AskStageName(const std::string& text, const std::string& title,
                                                           const std::string& defaultText, const Check& isRefused) {
  const auto answer = Ask(text, title, defaultText, [&](const std::string& a) { return isRefused(Trimmed(a)); });
  if (!answer) return std::nullopt;
  return Trimmed(*answer);
}

void TransformCommands::Refuse(const std::string& why) {
  P.MsgBox(why + "\nNo file was written.", "No file written", kOKOnly);
}

bool TransformCommands::WouldReplaceFileRead(const Session& T, const std::string& path) {
  const std::string& source = T.identity.DataFilePath;
  std::error_code ec;
  if (path != source && !std::filesystem::equivalent(path, source, ec)) return false;
  Refuse("The new file would be written over the file read, " + source + ".");
  return true;
}

bool TransformCommands::WriteTable(const Session& T, const std::string& path, const LifeTableHead& head,
                                   const LifeTableRecords& records) {
  if (WouldReplaceFileRead(T, path)) return false;
  // The head lines stand in double quotes, which can't hold one more: it becomes an apostrophe.
  LifeTableHead quoted = head;
  for (std::string* line : {&quoted.projectLine, &quoted.user, &quoted.treatment})
    std::replace(line->begin(), line->end(), '"', '\'');
  TextFile out(path);
  WriteLifeTableLayout(out, T, quoted, records);
  out.Close();
  S.identity.OutputFileName = path;
  return true;
}

std::string TransformCommands::WriteChanged(const Session& T, const std::string& suffix, const std::string& change) {
  const std::string path = OutputName(T, suffix);
  return WriteTable(T, path, HeadOf(T, change), RecordsOf(T)) ? path : std::string();
}

void TransformCommands::Done(const std::string& caption, const std::string& what, const std::string& path) {
  P.MsgBox(what + "\n\nThe new life table data file:\n" + path + "\nRead it with \"A1. Read data\".", caption, kOKOnly);
}

// ---------------------------------------------------------------------------------------
// The commands

void TransformCommands::Command28_Click() {
  Flow("Command28_Click");
  auto T = ReadLifeTableWithPreadultStage();
  if (!T) return;
  CohortHeader& h = T->header;
  const int m = h.StageCount;
  const std::string title = "Grouping stage";
  const auto first = AskWhole("Life table information: Number of stage = " + Num(m) + "\n" + StagesText(h) +
                                  "\nStage grouping starts from stage i (i>=1 and i < " + Num(m) + ".)",
                              title, "1", 1, m - 1);
  if (!first) return;
  const auto last = AskWhole("Stage grouping ends at stage i (i >= " + Num(*first) + " and i < " + Num(m) + ".)",
                             title, Num(std::min<long>(*first + 1, m - 1)), *first, m - 1);
  if (!last) return;
  const int a = static_cast<int>(*first), b = static_cast<int>(*last);
  const std::string span = a == b ? h.StageName(1, a) : h.StageName(1, a) + "-" + h.StageName(1, b);
  const std::string names = a == b ? h.StageName(1, a) : h.StageName(1, a) + " to " + h.StageName(1, b);
  const auto name = AskStageName("What is the name of the grouped stage (it should be different from other stages).",
                                 "Name of the grouped stage", span,
                                 [&](const std::string& n) { return StageNameRefusal(h, n, a, b); });
  if (!name) return;
  if (const std::string why = GroupStages(h, T->ws.cohort, a, b, *name); !why.empty()) return Refuse(why);
  const std::string stages = Num(a) + "-" + Num(b);
  const std::string path = WriteChanged(*T, "_0_Grouped stages " + stages + ".txt",
                                        "stages " + stages + " grouped as " + *name);
  if (path.empty()) return;
  Done("F. Grouping", "Stages " + Num(a) + " to " + Num(b) + " (" + names + ") are one stage now: " + *name + ".", path);
}

void TransformCommands::Command44_Click() {
  Flow("Command44_Click");
  // The time-unit command reads durations that aren't whole: a new unit may make them whole.
  S.options.AcceptNonIntegerRead = "Yes";
  auto T = ReadLifeTable();
  if (!T) return;
  const auto x = AskWhole(
      "Each time unit of this life table becomes x time units (x = 1 to 24; e.g. 4 for 6 h when the time unit is one "
      "day).\nEvery duration is multiplied by x; the eggs of each time unit go on the first of its x new units.",
      "Time units x =?", "2", 1, 24);
  if (!x) return;
  const int units = static_cast<int>(*x);
  if (const std::string why = ToTimeUnits(T->header, T->ws.cohort, units); !why.empty()) return Refuse(why);
  const std::string path = WriteChanged(*T, "_0_Time unit 1 to " + Num(units) + ".txt",
                                        "time unit 1/" + Num(units) +
                                            " (the eggs of a day on its first unit, at the age the day begins)");
  if (path.empty()) return;
  Done("K. 1t to xt",
       "Every duration is " + Num(units) + " times as long, in time units of 1/" + Num(units) +
           " of the old one; the eggs of each old time unit are on the first of its " + Num(units) +
           " new units.\nAt \"A2. Basic Run\" enter " + TimeUnitAnswer(units) + " at \"Each time unit =?\".",
       path);
}

void TransformCommands::cmdAddDuration_Click() {
  Flow("cmdAddDuration_Click");
  AdultLifeTable& a = S.adult;
  a.AdultFilePath.clear();
  DataFileReader(S, P).InputAdultLifeTable();
  if (a.AdultFilePath.empty()) return;

  // The adult table as a cohort whose records hold the adult stage m only.
  auto T = std::make_unique<Session>();
  T->identity = S.identity;
  T->identity.DataFilePath = a.AdultFilePath;
  T->identity.DataFileBase = BaseOf(a.AdultFilePath);
  T->identity.ProjectName = a.head.ProjectName;
  CohortHeader& h = T->header;
  const int m = a.head.StageCount;
  if (m < 1 || a.head.TypeCount < 1) return Refuse("This adult life table has no stage.");
  h.TypeCount = a.head.TypeCount;
  h.StageCount = m;
  for (int t = 1; t <= h.TypeCount; ++t) {
    h.TypeCode(t) = a.head.TypeCode(t);
    for (int j = 1; j <= m; ++j) h.StageName(t, j) = a.head.StageName(t, j);
  }
  h.SpecialGroup(1) = a.head.SpecialGroup(1);
  h.SpecialGroup(2) = a.head.SpecialGroup(2);
  if (const std::string why = UnwritableHeadRefusal(h); !why.empty()) return Refuse(why);
  Cohort& c = T->ws.cohort;
  c.CohortSize = a.AdultCohortSize;
  for (long i = 1; i <= c.CohortSize; ++i) {
    c.IndividualSex(i) = a.AdultIndividualSex(i);
    const long d = a.AdultLongevity(i);
    if (d < 1) return Refuse("Adult no. " + Num(i) + " lived " + Num(d) + " time units; an adult lives 1 at least.");
    c.StageDuration(i, m) = d;
    if (c.IndividualSex(i) == "F")
      for (long x = 1; x <= d + 1; ++x) c.Fecundity(i, x) = a.AdultFecundity(i, x);
  }

  const auto days = AskWhole("Enter the overwintering time (time units): it comes before the adult life and the "
                             "eggs of every adult.",
                             "Overwinter duration", "0", 0, kMaxAge);
  if (!days) return;
  const auto mortality = AskShare("Enter the overwinter mortality (0 to 1): an adult dies in winter when a random "
                                  "number is below it, and then has no eggs.",
                                  "Overwinter mortality", "0", false);
  if (!mortality) return;
  const std::uint64_t seed = S.runControl.hasSeed ? S.runControl.seed : SeedFromClock();
  SampleGenerator draws;
  draws.SeedSample(seed, 1);
  long died = 0;
  const int d = static_cast<int>(*days);
  if (const std::string why = AddOverwinter(h, c, d, *mortality, draws, died); !why.empty()) return Refuse(why);

  std::string change = "overwinter " + Num(d) + " days";
  if (*mortality > 0) change += "-mortality " + Num(*mortality) + "-seed " + std::to_string(seed);
  const std::string path = T->identity.DataFileBase + "_0_Overwinter " + Num(d) + " days.txt";
  LifeTableRecords records = RecordsOf(*T);
  records.firstStage = records.lastStage = m;
  const LifeTableHead head{StampedProjectLine(*T), a.head.UserName, a.head.TreatmentName + "-" + change, false};
  if (!WriteTable(*T, path, head, records)) return;
  P.MsgBox("Every adult overwinters " + Num(d) + " time units before its adult life; " + Num(died) + " of " +
               Num(c.CohortSize) + " adults died in winter (no eggs).\n\nThe new adult life table:\n" + path,
           "O. + overwinter", kOKOnly);
}

void TransformCommands::cmdAddStage_Click() {
  Flow("cmdAddStage_Click");
  auto T = ReadLifeTable();
  if (!T) return;
  CohortHeader& h = T->header;
  const int m = h.StageCount;
  const auto k = AskWhole(StagesText(h) + "\nThe new stage goes before stage k (1 to " + Num(m) + "). k =?",
                          "Position of the new stage", "1", 1, m);
  if (!k) return;
  const auto name = AskStageName("Name of the new stage?", "Name of the new stage", "New stage",
                                 [&](const std::string& n) { return StageNameRefusal(h, n); });
  if (!name) return;
  const auto duration = AskWhole("Duration of the new stage (time units), the same for every individual that "
                                 "reached stage " + Num(*k) + "?",
                                 "Duration of the new stage", "1", 1, kMaxAge);
  if (!duration) return;
  double cost = 0;
  if (h.RegularLifeTable == "No") {
    const auto answer = Ask("Rearing cost of the new stage (per individual and time unit)?",
                            "Rearing cost of the new stage", "0", [](const std::string& a) -> std::string {
                              const auto v = NumberAnswer(a);
                              return v && *v >= 0 ? "" : "\"" + a + "\" is no cost (a number, 0 or more).";
                            });
    if (!answer) return;
    cost = *NumberAnswer(*answer);
  }
  const int before = static_cast<int>(*k);
  if (const std::string why = AddStage(h, T->ws.cohort, before, *name, static_cast<double>(*duration), cost);
      !why.empty())
    return Refuse(why);
  const std::string path =
      WriteChanged(*T, "_0_Added stage before stage " + Num(before) + ".txt",
                   "stage " + *name + " of " + Num(static_cast<double>(*duration)) + " added before stage " + Num(before));
  if (path.empty()) return;
  Done("Add stage+dura.",
       "Every individual that reached stage " + Num(before) + " spends " + Num(static_cast<double>(*duration)) +
           " time units in the new stage " + *name + " before it.",
       path);
}

void TransformCommands::cmdAddDurationToStage_Click() {
  Flow("cmdAddDurationToStage_Click");
  auto T = ReadLifeTableWithPreadultStage();
  if (!T) return;
  const CohortHeader& h = T->header;
  const int m = h.StageCount;
  const auto k = AskWhole(StagesText(h) + "\nAdd time to which preadult stage (1 to " + Num(m - 1) + ")?",
                          "Stage to lengthen", "1", 1, m - 1);
  if (!k) return;
  const int stage = static_cast<int>(*k);
  const bool share = P.MsgBox("Yes: add the same time to every individual that reached stage " + Num(stage) +
                                  ".\nNo: add a share (0 to 1) of each one's own time in the stage.",
                              "Fixed time or share?", kYesNo) == kNo;
  std::optional<double> amount;
  if (share) {
    amount = AskShare("Share of its own time in stage " + Num(stage) + " to add (0 to 1)?", "Share to add", "0.5", false);
  } else if (const auto t = AskWhole("Time to add to stage " + Num(stage) + " (time units)?", "Time to add", "1", 0,
                                     kMaxAge)) {
    amount = static_cast<double>(*t);
  }
  if (!amount) return;
  if (const std::string why = AddTimeToStage(h, T->ws.cohort, stage, *amount, share); !why.empty()) return Refuse(why);
  const std::string added = share ? "share " + Num(*amount) : Num(*amount);
  const std::string path =
      WriteChanged(*T, "_0_Stage " + Num(stage) + " plus " + added + ".txt",
                   "stage " + Num(stage) + " plus " + (share ? "a share " + Num(*amount) + " of its time" : Num(*amount)));
  if (path.empty()) return;
  Done("Add time to imma.",
       "Stage " + Num(stage) + " (" + h.StageName(1, stage) + ") of every individual that reached it is longer by " +
           (share ? "a share " + Num(*amount) + " of its own time there (rounded to whole time units)"
                  : Num(*amount) + " time units") +
           ".",
       path);
}

void TransformCommands::cmdSplitStage_Click() {
  Flow("cmdSplitStage_Click");
  auto T = ReadLifeTableWithPreadultStage();
  if (!T) return;
  CohortHeader& h = T->header;
  const int m = h.StageCount;
  const auto k = AskWhole(StagesText(h) + "\nSplit which preadult stage (1 to " + Num(m - 1) + ")?", "Stage to split",
                          "1", 1, m - 1);
  if (!k) return;
  const int stage = static_cast<int>(*k);
  const auto p = AskShare("Share of the stage's time in its first part (between 0 and 1)?", "Share of the first part",
                          "0.5", true);
  if (!p) return;
  const std::string old = h.StageName(1, stage);
  const auto first = AskStageName("Name of the first part?", "Name of the first part", old + "-1",
                                  [&](const std::string& n) { return StageNameRefusal(h, n, stage, stage); });
  if (!first) return;
  const auto second = AskStageName("Name of the second part?", "Name of the second part", old + "-2",
                                   [&](const std::string& n) {
                                     return n == *first ? "The two parts need names of their own."
                                                        : StageNameRefusal(h, n, stage, stage);
                                   });
  if (!second) return;
  long lengthened = 0;
  if (const std::string why = SplitStage(h, T->ws.cohort, stage, *p, *first, *second, lengthened); !why.empty())
    return Refuse(why);
  const std::string path = WriteChanged(*T, "_0_Split stage " + Num(stage) + ".txt",
                                        "stage " + Num(stage) + " split at " + Num(*p) + " into " + *first + " and " +
                                            *second);
  if (path.empty()) return;
  std::string what = "Stage " + Num(stage) + " (" + old + ") is two stages now: " + *first + " and " + *second + ".";
  if (lengthened > 0)
    what += "\n" + Num(lengthened) +
            " individuals with 1 time unit in the stage have 1 in each part, one time unit more than before.";
  Done("Split stage", what, path);
}

void TransformCommands::cmdSplit_Click() {
  Flow("cmdSplit_Click");
  auto T = ReadLifeTableWithPreadultStage();
  if (!T) return;
  const int m = T->header.StageCount;
  const Cohort& c = T->ws.cohort;
  std::vector<long> adults;
  for (long i = 1; i <= c.CohortSize; ++i)
    if (c.IndividualSex(i) == "F" || c.IndividualSex(i) == "M") adults.push_back(i);

  // The same treatment line in both files: a matching of the two names its run by it.
  LifeTableHead head = HeadOf(*T, "split LT");
  head.withCosts = false;
  LifeTableRecords immature = RecordsOf(*T);
  immature.lastStage = m - 1;
  immature.withEggs = false;
  LifeTableRecords adult = RecordsOf(*T);
  adult.count = static_cast<long>(adults.size());
  adult.rowOf = [&adults](long p) { return adults[static_cast<std::size_t>(p - 1)]; };
  adult.firstStage = adult.lastStage = m;
  const std::string immaturePath = OutputName(*T, "_0-Immature life table.txt");
  const std::string adultPath = OutputName(*T, "_0-Adult life table.txt");
  if (WouldReplaceFileRead(*T, immaturePath) || WouldReplaceFileRead(*T, adultPath)) return;
  WriteTable(*T, immaturePath, head, immature);
  WriteTable(*T, adultPath, head, adult);
  P.MsgBox("The immature life table holds every individual with its stages 1 to " + Num(m - 1) +
               "; the adult life table the " + Num(static_cast<double>(adults.size())) +
               " adults with their adult life and eggs. Adult no. k is the k-th F or M of the immature life table."
               "\n\nThe new files:\n" + immaturePath + "\n" + adultPath,
           "Split LT", kOKOnly);
}

void TransformCommands::cmdReduceReprodPeriod_Click() {
  Flow("cmdReduceReprodPeriod_Click");
  auto T = ReadLifeTable();
  if (!T) return;
  const int answer = P.MsgBox(
      "Reduce the reproduction period?\n"
      "Yes: keep the eggs of the first d days of adult life of every female; her later days have none, and her adult "
      "life stays as it is.\n"
      "No: multiply the fecundity of every day by a coefficient (0 to 1).\n"
      "Cancel: no change.",
      "Reduce rep. period", kYesNoCancel);
  if (answer == kCancel) return;
  if (answer == kNo) {
    T->identity.OutputFileName.clear();
    LifeTableWriter(*T, P).WriteLifeTableForModifiedFxj();
    if (T->identity.OutputFileName.empty()) return;
    S.identity.OutputFileName = T->identity.OutputFileName;
    Done("Reduce rep. period", "The fecundity of every day is multiplied by the coefficient.",
         T->identity.OutputFileName);
    return;
  }
  const int m = T->header.StageCount;
  Cohort& c = T->ws.cohort;
  double longest = 0;
  for (long i = 1; i <= c.CohortSize; ++i)
    if (c.IndividualSex(i) == "F") longest = std::max(longest, c.StageDuration(i, m));
  if (longest < 1) return Refuse("This life table has no female.");
  const auto days = AskWhole("Keep the eggs of the first d days of adult life (the longest adult life of a female is " +
                                 Num(longest) + "). d =?",
                             "Reproduction period", Num(longest), 1, kMaxAge);
  if (!days) return;
  const int d = static_cast<int>(*days);
  if (const std::string why = KeepEggsOfFirstDays(T->header, c, d); !why.empty()) return Refuse(why);
  const std::string path = WriteChanged(*T, "_0_Reproduction period " + Num(d) + " days.txt",
                                        "eggs of the first " + Num(d) + " adult days");
  if (path.empty()) return;
  Done("Reduce rep. period",
       "Every female keeps the eggs of her first " + Num(d) + " adult days; her later days have none.", path);
}

}  // namespace korvan
