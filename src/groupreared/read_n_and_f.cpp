// Reading a group-reared file of counts N and eggs F, its checks, the tables derived from it,
// the head of its report, and the two files written from the counts: the two-stage collapse
// and the file with consecutive stages grouped into one.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "engine/group_file_writer.h"
#include "groupreared/group_reared.h"
#include "input/field_reader.h"
#include "run/dialogues.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

std::string Int(long v) { return std::to_string(v); }

[[noreturn]] void DataFault(const std::string& text, const std::string& title) { throw ProgramEnd{text, title}; }

int ReadInt16(FieldReader& in) { return CInt16(in.ReadNumber()); }

// A plain 0 where the code of the fecundity block stands.
bool ZeroLike(const std::string& text) {
  std::size_t k = 0;
  while (k < text.size() && text[k] == ' ') ++k;
  if (k == text.size()) return true;
  char* end = nullptr;
  const double v = std::strtod(text.c_str() + k, &end);
  return end != text.c_str() + k && v == 0;
}

// The label a stage row must carry: stage j of the first sex, the male stage's from the second.
std::string LabelOfStage(const GroupRearedRecord& g, int j) {
  const int s = g.StageCountNF;
  return j <= s ? g.StageLabel(1, j) : g.StageLabel(2, s);
}

}  // namespace

double GroupReared::Count(int x, int j) const {
  const auto& g = S.group;
  if (x < 0 || x > kMaxAge || j < 1 || j > g.StageCountNF + 1) return 0;
  if (x < g.StageFirstAge(j) || x > g.StageLastAge(j)) return 0;
  return g.N(x, j);
}

double GroupReared::NAgeNF(int x) const {
  double n = 0;
  for (int j = 1; j <= StageCount() + 1; ++j) n += Count(x, j);
  return n;
}

void GroupReared::InputMatricesNandF() {
  Flow("InputMatricesNandF");
  auto& g = S.group;
  const bool predation = g.NandFwithPredation == "Yes";
  g.N.Fill(0);
  g.FemaleEggs.Fill(0);
  g.F.Fill(0);
  g.Predation.Fill(0);
  g.StageFirstAge.Fill(0);
  g.StageLastAge.Fill(0);
  g.StageRowSum.Fill(0);
  g.StagePredationRowSum.Fill(0);
  g.GDEstimated = false;

  FieldReader in(S.identity.DataFilePath);
  g.Title = in.ReadString();
  g.Description = in.ReadString();
  g.ThirdLine = in.ReadString();
  g.CohortSize = ReadInt16(in);
  g.SexCount = ReadInt16(in);
  g.StageCountNF = ReadInt16(in);
  const int s = g.StageCountNF;
  if (s < 1) DataFault("The number of stages is " + Int(s) + ". A group-reared life table needs at least one stage.", "Error in data file");
  // The male stage is stage S+1: a table of more stages is beyond the bounds.
  if (s + 1 > kMaxStage) throw SubscriptFault("N", "Stages 1.." + Int(s + 1) + " in the file; at most " + Int(kMaxStage) + ".");
  if (g.SexCount < 2) DataFault("The number of sexes is " + Int(g.SexCount) + ". The file needs at least the female and the male line.", "Error in data file");
  for (int t = 1; t <= g.SexCount; ++t) {
    g.SexCode(t) = in.ReadString();
    for (int j = 1; j <= s; ++j) g.StageLabel(t, j) = in.ReadString();
  }
  // A file that lists the male first: stage S is always the female one.
  if (g.StageLabel(1, s) == "Male" && g.StageLabel(2, s) == "Female") {
    for (int j = 1; j <= s; ++j) std::swap(g.StageLabel(1, j), g.StageLabel(2, j));
  }
  g.SexCode(1) = "F";
  g.SexCode(2) = "M";

  g.N(0, 1) = g.CohortSize;
  g.LastAge = 0;
  for (int j = 1; j <= s + 1; ++j) {
    const std::string code = in.ReadString();
    g.StageCode(j) = code;
    const std::string label = LabelOfStage(g, j);
    if (code != label) {
      DataFault(std::string(j == s ? "You assigned the code for stage " : "You have assigned the code for stage ") +
                    Int(j) + " as " + label + ".\nBut you wrote code of stage " + Int(j) + " as " + code +
                    " in the data line of stage " + Int(j) + ".\nPlease use the same code. (Or you may missed some data in stage " +
                    Int(j - 1) + ".)",
                "Error in data file");
    }
    const int first = ReadInt16(in), last = ReadInt16(in);
    if (j == 1 && first != 0) DataFault("First age <>0?  ", "The first age of the first stage must be zero (age indexed from 0).");
    g.StageFirstAge(j) = first;
    g.StageLastAge(j) = last;
    for (int x = first; x <= last; ++x) {
      g.N(x, j) = in.ReadNumber();
      g.StageRowSum(j) += g.N(x, j);
    }
    if (last > g.LastAge) g.LastAge = last;
    if (predation) {
      for (int x = first; x <= last; ++x) {
        const double v = in.ReadNumber();
        if (v == -1) break;
        g.Predation(x, j) = v;
        g.StagePredationRowSum(j) += v;
      }
    }
  }
  if (g.N(0, 1) != g.CohortSize) {
    DataFault("The cohort size is " + Int(g.CohortSize) + "\nBut N(0,1) is " + FullPrecision(g.N(0, 1)) +
                  "\nPlease check your data.",
              "Error in data file");
  }
  // Adults that begin on one day can't outnumber the pupae of the day before.
  const int a = g.StageFirstAge(s);
  if (s >= 2 && a >= 1 && a == g.StageFirstAge(s + 1)) {
    const double pupae = Count(a - 1, s - 1), f = Count(a, s), m = Count(a, s + 1);
    if (f + m > pupae) {
      DataFault("There were " + FullPrecision(pupae) + " pupae at time " + Int(a - 1) + "\nBut there were " +
                    FullPrecision(f) + " females and " + FullPrecision(m) + " males at time " + Int(a) + "\n" +
                    FullPrecision(f + m) + " adults emerged from " + FullPrecision(pupae) + " pupae?",
                "Error in data file");
    }
  }

  // The eggs of the female group.
  std::string code = in.ReadString();
  if (ZeroLike(code)) code = "Female";
  if (code != g.StageLabel(1, s)) DataFault("Female stage is " + code + "?\nChange it to Female.", "Check your data!");
  const int first = ReadInt16(in), last = ReadInt16(in);
  if (first != g.StageFirstAge(s)) {
    DataFault("Female stage begins from " + Int(first) + ". It is different from the age range of the female stage (" +
                  Int(g.StageFirstAge(s)) + " to " + Int(g.StageLastAge(s)) + ").",
              "Error in data file");
  }
  if (last != g.StageLastAge(s)) {
    DataFault("Female stage ends at " + Int(last) + ". It is different from the age range of the female stage (" +
                  Int(g.StageFirstAge(s)) + " to " + Int(g.StageLastAge(s)) + ").",
              "Error in data file");
  }
  for (int x = first; x <= last; ++x) {
    const double eggs = in.ReadNumber();
    if (eggs == -1) break;  // the rest of the row stays 0
    g.FemaleEggs(x, s) = eggs;
    if (eggs == 0) continue;
    if (g.N(x, s) == 0) {
      DataFault("Division by zero: " + FullPrecision(eggs) + " eggs at age " + Int(x) + ", where the number of females is 0.",
                "Run-time error '11'");
    }
    g.F(x, s) = eggs / g.N(x, s);
  }

  // A preadult stage can't grow from one age to the next unless the stage before it had
  // individuals to pass on; the first stage never grows.
  for (int j = 1; j <= s - 1; ++j) {
    for (int x = g.StageFirstAge(j); x < g.StageLastAge(j); ++x) {
      const double rise = g.N(x + 1, j) - g.N(x, j);
      const double inflow = j == 1 ? 0 : Count(x, j - 1);
      if (rise > inflow) {
        DataFault("Error in data file!  \nAt age " + Int(x) + ", n =" + FullPrecision(g.N(x, j)) + ", while at age " +
                      Int(x + 1) + ", n = " + FullPrecision(g.N(x + 1, j)),
                  "Error!");
      }
    }
  }
  // Counts of 0 at the end of the rows are nobody: the table ends at the last age with an
  // individual alive.
  int lastAlive = -1;
  for (int x = 0; x <= g.LastAge; ++x)
    if (NAgeNF(x) > 0) lastAlive = x;
  if (lastAlive < 0) DataFault("No individual is alive at any age.\nPlease check your data.", "Error in data file");
  g.LastAge = lastAlive;
  DerivedValuesNandF();
}

void GroupReared::DerivedValuesNandF() {
  Flow("DerivedValuesNandF");
  auto& g = S.group;
  const int s = StageCount();
  const int last = g.LastAge;
  const double n0 = g.N(0, 1);
  g.Sxj.Fill(0);
  g.PredationRate.Fill(0);
  g.TotalPredation = 0;
  for (int j = 1; j <= s + 1; ++j) {
    for (int x = 0; x <= last; ++x) {
      g.Sxj(x, j) = Count(x, j) / n0;
      if (g.Predation(x, j) != 0 && g.N(x, j) != 0) g.PredationRate(x, j) = g.Predation(x, j) / g.N(x, j);
    }
    g.StagePredationMean(j) = g.StageRowSum(j) != 0 ? g.StagePredationRowSum(j) / g.StageRowSum(j) : 0;
    g.TotalPredation += g.StagePredationRowSum(j);
  }
  g.PredationPerIndividual = g.TotalPredation / n0;

  // The engine's view of the cohort: stage list, counts, s(x,j), f(x,j) and l(x).
  auto& h = S.header;
  h.StageCount = s;
  h.TypeCount = 2;
  h.TypeCode(1) = "F";
  h.TypeCode(2) = "M";
  for (int j = 1; j <= s; ++j) {
    h.StageName(1, j) = g.StageLabel(1, j);
    h.StageName(2, j) = g.StageLabel(2, j);
  }
  h.StageName(1, s + 1) = g.StageLabel(2, s);
  h.RegularLifeTable = "Yes";
  h.CohortSizeRead = g.CohortSize;
  S.identity.ProjectName = g.Title;
  S.identity.UserName = g.Description;
  S.identity.TreatmentName = g.ThirdLine;
  S.options.GroupRearedFlag = "Yes";

  auto& t = W.tables;
  auto& lt = W.lifeTable;
  t.Nxj.Fill(0);
  t.Sxj.Fill(0);
  t.Fxj.Fill(0);
  t.Gxj.Fill(0);
  t.Dxj.Fill(0);
  t.Pxj.Fill(0);
  t.Qxj.Fill(0);
  lt.FxjTotal.Fill(0);
  W.cohort.CohortSize = g.CohortSize;
  t.LastAge = last;
  double femaleEggs = 0;
  for (int x = 0; x <= last; ++x) {
    double alive = 0;
    for (int j = 1; j <= s + 1; ++j) {
      t.Nxj(x, j) = Count(x, j);
      t.Sxj(x, j) = g.Sxj(x, j);
      alive += t.Nxj(x, j);
    }
    t.Fxj(x, s) = g.F(x, s);
    lt.FxjTotal(x, s) = g.FemaleEggs(x, s);
    femaleEggs += g.FemaleEggs(x, s);
    lt.FxjCumulative(x) = femaleEggs;
    // Nobody alive at an age before the last would leave l(x) = 0 to divide by.
    if (alive == 0)
      DataFault("At age " + Int(x) + " no individual is alive in any stage, but there are individuals at age " + Int(last) +
                    ".\nPlease check your data.",
                "Error in data file");
    t.NAge(x) = static_cast<int>(std::lround(alive));
    t.Lx(x) = alive / n0;
    lt.OneMinusLx(x) = 1 - t.Lx(x);
  }
  if (last + 1 <= kMaxAge) t.Lx(last + 1) = 0;
  for (int j = 1; j <= s + 1; ++j) {
    lt.StageFirstAge(j) = g.StageFirstAge(j);
    lt.StageLastAge(j) = g.StageLastAge(j);
  }
  // The females of the group: those at the first age of the stage and every later rise.
  double females = Count(g.StageFirstAge(s), s);
  for (int x = g.StageFirstAge(s); x < g.StageLastAge(s); ++x) females += std::max(0.0, Count(x + 1, s) - Count(x, s));
  double males = Count(g.StageFirstAge(s + 1), s + 1);
  for (int x = g.StageFirstAge(s + 1); x < g.StageLastAge(s + 1); ++x)
    males += std::max(0.0, Count(x + 1, s + 1) - Count(x, s + 1));
  lt.FemaleCount = static_cast<int>(std::lround(females));
  lt.MaleCountAdult = static_cast<int>(std::lround(males));
  h.MaleCount = lt.MaleCountAdult;
  lt.StageFecundityTotal(s) = femaleEggs;
  lt.FemaleFecunditySum = femaleEggs;
  lt.FemaleFecundityMean = females > 0 ? femaleEggs / females : 0;
}

void GroupReared::PrintGroupLifeTableTitle() {
  Flow("PrintGroupLifeTableTitle");
  auto& out = S.channels.MainOutput;
  if (!out.IsOpen()) return;
  const auto& g = S.group;
  out.Print(S.identity.ProgramName, " ", S.identity.VersionStamp, " (group-reared life table)");
  out.Print("Data file: ", S.identity.DataFilePath);
  out.Print("Project: ", g.Title);
  out.Print("Username: ", g.Description);
  out.Print("Treatment: ", g.ThirdLine);
  for (int j = 1; j <= StageCount() + 1; ++j)
    out.Print("Stage ", j, ": ", j <= StageCount() ? g.StageLabel(1, j) : g.StageLabel(2, StageCount()), " ages ",
              g.StageFirstAge(j), " to ", g.StageLastAge(j));
  out.Print("No. individuals =", g.CohortSize, ".");
}

void GroupReared::Write2StagesNewLifeTableBasedOnNF() {
  Flow("Write2StagesNewLifeTableBasedOnNF");
  const auto& g = S.group;
  const int s = StageCount();
  TwoStageGroupFile file;
  file.projectLine = g.Title;
  file.user = g.Description;
  file.treatment = g.ThirdLine;
  file.cohortSize = g.CohortSize;
  file.preadult.value = [&](long x) {
    double n = 0;
    for (int j = 1; j <= s - 1; ++j) n += Count(static_cast<int>(x), j);
    return n;
  };
  CountedRange(file.preadult.value, g.LastAge, file.preadult.first, file.preadult.last);
  file.preadult.first = 0;
  file.female = {g.StageFirstAge(s), g.StageLastAge(s), [&](long x) { return Count(static_cast<int>(x), s); }};
  file.male.value = [&](long x) { return Count(static_cast<int>(x), s + 1); };
  CountedRange(file.male.value, g.LastAge, file.male.first, file.male.last);
  file.eggs = {g.StageFirstAge(s), g.StageLastAge(s), [&](long x) { return g.FemaleEggs(x, s); }};
  TextFile f(OutputName(S, "_0A3_Group-reared Life Table_2 Stages.txt"));
  WriteTwoStageGroupFile(f, file);
}

void GroupReared::GroupNFlifetable() {
  Flow("GroupNFlifetable");
  const auto& g = S.group;
  const int s = StageCount();
  std::string list;
  for (int j = 1; j <= s + 1; ++j) list += "\n" + Int(j) + ". " + (j <= s ? g.StageLabel(1, j) : g.StageLabel(2, s));
  if (P.MsgBox("Do you want to group two or more consecutive stages to a single stage?\n\nLife table information: Number of stage = " +
                   Int(s) + list,
               "Do you want to group stages?", kYesNo) != kYes)
    return;
  const std::string firstText = InputOrEnd(
      P, "Stage grouping starts from stage i (i>=1 and i < " + Int(s) + ".)\nIf i = 0, end the program.", "Grouping stage", "1");
  const int first = CInt16(NumberOfText(firstText));
  if (first == 0) throw ProgramEnd{"The program ends here (stage 0 at \"Grouping stage\").", "Grouping stage"};
  const std::string lastText =
      InputOrEnd(P, "Stage grouping ends at stage i (i <" + Int(s) + ".)", "Grouping stage", Int(std::min(first + 1, s - 1)));
  const int last = CInt16(NumberOfText(lastText));
  const std::string name = InputOrEnd(
      P, "What is the name of the grouped stage (it should be different from other stages).", "Grouping stage", "Larva");
  if (first < 1 || last <= first || last >= s) {
    P.MsgBox("Stages " + Int(first) + " to " + Int(last) + " can't be grouped: the first must be at least 1 and below the last, " +
                 "and the last below the female stage " + Int(s) + ".",
             "No file written");
    return;
  }
  GroupingStagesNF(first, last, name);
}

void GroupReared::GroupingStagesNF(int first, int last, const std::string& name) {
  Flow("GroupingStagesNF");
  const auto& g = S.group;
  const int s = StageCount();
  const int removed = last - first;
  const bool predation = g.NandFwithPredation == "Yes";
  TextFile f(OutputName(S, "_0_Grouped stage_life table NF.txt"));
  f.Write(g.Title);
  f.Write(g.Description);
  f.Write(g.ThirdLine);
  f.RawText(NumberText(g.CohortSize));
  f.NewLine();
  f.Write(g.SexCount, s - removed);
  for (int t = 1; t <= g.SexCount; ++t) {
    std::string line = g.SexCode(t).empty() ? (t == 1 ? "F" : t == 2 ? "M" : "N") : g.SexCode(t);
    for (int j = 1; j <= s; ++j) {
      if (j > first && j <= last) continue;
      line += "," + (j == first ? name : g.StageLabel(t, j));
    }
    f.RawText(line);
    f.NewLine();
  }
  auto writeRow = [&](const std::string& code, int from, int to, auto&& value) {
    std::string line = code + "," + Int(from) + "," + Int(to);
    for (int x = from; x <= to; ++x) line += "," + FullPrecision(value(x));
    f.RawText(line);
    f.NewLine();
  };
  for (int j = 1; j <= s + 1; ++j) {
    if (j > first && j <= last) continue;
    int from = g.StageFirstAge(j), to = g.StageLastAge(j);
    int j0 = j, j1 = j;
    if (j == first) {
      j1 = last;
      for (int k = first; k <= last; ++k) {
        from = std::min(from, g.StageFirstAge(k));
        to = std::max(to, g.StageLastAge(k));
      }
    }
    const std::string code = j == first ? name : (j <= s ? g.StageLabel(1, j) : g.StageLabel(2, s));
    writeRow(code, from, to, [&](int x) {
      double n = 0;
      for (int k = j0; k <= j1; ++k) n += Count(x, k);
      return n;
    });
    if (predation) {
      std::string line;
      for (int x = from; x <= to; ++x) {
        double c = 0;
        for (int k = j0; k <= j1; ++k) c += g.Predation(x, k);
        line += (x > from ? "," : "") + FullPrecision(c);
      }
      f.RawText(line.empty() ? "-1" : line);
      f.NewLine();
    }
  }
  writeRow(g.StageLabel(1, s), g.StageFirstAge(s), g.StageLastAge(s), [&](int x) { return g.FemaleEggs(x, s); });
}

}  // namespace korvan
