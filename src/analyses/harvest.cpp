#include "analyses/harvest.h"

#include <cmath>
#include <string>
#include <vector>

#include "input/field_reader.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Harvest";

std::string Num(double v) { return FullPrecision(v); }

template <class M>
void CopyCells(M& to, const M& from) {
  for (long x = 0; x <= M::kHi0; ++x)
    for (long j = 0; j <= M::kHi1; ++j) to(x, j) = from(x, j);
}

}  // namespace

bool ConservationNeedsSEFile(const std::string& level) { return level != kConservationLevels[0]; }

void MassRearingHarvest::SaveOriginalMatrices() {
  Flow("SaveOriginalMatrices");
  auto& h = S.harvest;
  const auto& t = S.ws.tables;
  CopyCells(h.OriginalG, t.Gxj);
  CopyCells(h.OriginalD, t.Dxj);
  CopyCells(h.OriginalF, t.Fxj);
}

std::string HarvestLifeTableInformation(const SessionStore& S) {
  const int m = S.header.StageCount;
  const auto& lt = S.ws.lifeTable;
  std::string text = "Life table information: Number of stage = " + std::to_string(m) + ". Age range of stages: ";
  const int stages = S.header.MaleCount > 0 ? m + 1 : m;
  for (int j = 1; j <= stages; ++j) {
    text += S.header.StageName(1, j) + ": " + std::to_string(lt.StageFirstAge(j)) + " to " +
            std::to_string(lt.StageLastAge(j)) + (j < stages ? ", " : ".");
  }
  text += " Net reproductive rate =" + PrintNumber(S.params.R0_Basic) + ".";
  return text;
}

bool MassRearingHarvest::ReadRoAndSEFile(const std::string& path) {
  Flow("ReadRoAndSEFile");
  auto& h = S.harvest;
  h.SEFileRead = "No";
  // One string, four strings, four numbers: the statement form of the bootstrap's file.
  std::vector<std::string> strings;
  std::vector<double> v;
  const std::string fault = ReadFieldPattern(path, "sssssnnnn", strings, v);
  if (!fault.empty()) {
    P.MsgBox("The file " + path +
                 " is not a file of R0 and its bootstrap SE (\"_Z-R0 and boot SE for harvest.txt\", written by "
                 "the bootstrap): " + fault + ".\nNothing was read.",
             "Read Ro and SE first", kOKOnly);
    return false;
  }
  const std::string& treatment = strings[0];
  h.SETreatment = treatment;
  h.FileR0 = v[0];
  h.FileR0SE = v[1];
  h.FileR0Low = v[2];
  h.FileR0Sigma = v[3];
  h.SEFileRead = "Yes";
  return true;
}

// ---------------------------------------------------------------------------------------
// Command1

void MassRearingHarvest::Command1() {
  Flow("Command1");
  auto& h = S.harvest;
  const int m = S.header.StageCount;
  if (m < 2) throw ProgramEnd{"A harvest analysis needs at least one preadult stage.", kTitle};
  if (h.LastHarvestAge < 0 || h.LastHarvestAge > S.ws.tables.LastAge) {
    throw ProgramEnd{"The last harvest age must be between 0 and " + std::to_string(S.ws.tables.LastAge) + ".",
                     kTitle};
  }
  if (h.HarvestStage < 1 || h.HarvestStage > m + 1) {
    throw ProgramEnd{"The target stage must be between 1 and " + std::to_string(m + 1) + ".", kTitle};
  }

  // 1. The conservation level.
  const std::string& level = h.ConservationLevel;
  if (level == kConservationLevels[0]) {
    h.TargetR0 = S.params.R0_Basic;
    h.FecundityScale = 1;
  } else {
    if (h.SEFileRead != "Yes") {
      throw ProgramEnd{"The conservation level \"" + level +
                           "\" needs the R0 and its SE: read \"_Z-R0 and boot SE for harvest.txt\" first.",
                       kTitle};
    }
    if (level == kConservationLevels[1])
      h.TargetR0 = h.FileR0Sigma;
    else if (level == kConservationLevels[2])
      h.TargetR0 = h.FileR0Low;
    else if (level == kConservationLevels[3])
      h.TargetR0 = h.FileR0 - h.ConservationOther;  // the number entered is subtracted
    else if (level == kConservationLevels[4])
      h.TargetR0 = h.FileR0 - h.FileR0SE;
    else
      h.TargetR0 = h.FileR0 - 2 * h.FileR0SE;
    if (h.FileR0 == 0) throw ProgramEnd{"Division by zero: the R0 read from the file is 0.", kTitle};
    h.FecundityScale = h.TargetR0 / h.FileR0;
  }

  // 2-4.
  ScaleFecundityForConservation();
  JudgeLastHarvestAge();

  // 5-6.
  if (h.HarvestStage == m + 1) AskMaleHarvest();
  h.HarvestRow = h.HarvestStage == 1 ? m : h.HarvestStage - 1;

  // 7. The fecundity row the target stage uses, over the target's ages.
  CopyCells(h.Dh, h.OriginalD);
  if (h.HarvestStage != 1) {
    const int t = h.HarvestStage;
    const int row = t >= m ? m : h.HarvestRow;
    for (int x = S.ws.lifeTable.StageFirstAge(t); x <= StageEnd(t); ++x) h.Fh(x, row) = h.ScaledF(x, row);
  }

  // 8. The search over the grid of rates.
  h.OptimalHarvestRate = 0;
  for (int i = 0; i <= 10000; ++i) {
    h.HarvestRateCandidate(i) = i * 0.0001;
    CutAtRate(h.HarvestRateCandidate(i));
    ConstructNewS();
    h.HarvestR0(i) = CalculateR0forHarvest();
    if (h.OptimalHarvestRate == 0 && h.HarvestR0(i) < 1) {
      // A colony below replacement at rate 0 can't arise past the judgement of the last age.
      if (i > 0) h.OptimalHarvestRate = h.HarvestRateCandidate(i - 1);
      break;
    }
  }
  // 9.
  P.Status("txtOptimalHarvestRate", Num(h.OptimalHarvestRate));

  // 10. The system at the rate found.
  ConstructFinalS();
  CalculateSASDwithHarvest();
  CalculateHarvestRatePerEgg();
  CalculateHarvestRatePerAdult();
  CalculateStageNumberInStableSystem();

  // 11.
  PrintOutputFilesGDFS();
  PrintSystemFile();
  PrintGraphicFilesGDFS();
  h.Done = "Yes";
  P.MsgBox("Output file and graphic data are successfully saved.", "Job done.", kOKOnly);

  // 12. The yield for the form: the sum of the harvested row at the rate, the harvest per egg.
  h.Yield = h.HarvestPerEgg;
  P.Status("txtYield", Num(h.Yield));
}

void MassRearingHarvest::ScaleFecundityForConservation() {
  Flow("ScaleFecundityForConservation");
  auto& h = S.harvest;
  const auto& t = S.ws.tables;
  const int m = S.header.StageCount;
  CopyCells(h.ScaledF, h.OriginalF);
  if (h.ConservationLevel != kConservationLevels[0]) {
    for (int x = 0; x <= t.LastAge; ++x)
      for (int j = 1; j <= m + 1; ++j) h.ScaledF(x, j) = h.OriginalF(x, j) * h.FecundityScale;
  }
  CopyCells(h.Fh, h.ScaledF);
  // m(x) of the scaled F, and R0 as its running sum. The sum is the session's: a second
  // calculation adds to it and stops at the check below.
  double cumulative = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    double births = 0;
    for (int j = 1; j <= m + 1; ++j) births += t.Sxj(x, j) * h.ScaledF(x, j);
    h.ScaledMx(x) = t.Lx(x) > 0 ? births / t.Lx(x) : 0;
    const double lm = t.Lx(x) * h.ScaledMx(x);
    cumulative += lm;
    h.ScaledCumLxMx(x) = cumulative;
    h.ScaledR0Sum += lm;
  }
  if (std::fabs(h.ScaledR0Sum - h.TargetR0) >= 0.1) {
    throw ProgramEnd{"Stop: the net reproductive rate of the fecundity scaled for conservation (" +
                         Num(h.ScaledR0Sum) + ") misses the target R0 (" + Num(h.TargetR0) +
                         ").\nThe harvest analysis runs once in a session: rerun the program for another one.",
                     kTitle};
  }
}

void MassRearingHarvest::JudgeLastHarvestAge() {
  Flow("JudgeLastHarvestAge");
  auto& h = S.harvest;
  const auto& t = S.ws.tables;
  h.R0ToLastHarvestAge = 0;
  for (int x = 0; x <= h.LastHarvestAge; ++x) h.R0ToLastHarvestAge += t.Lx(x) * h.ScaledMx(x);
  if (h.R0ToLastHarvestAge <= 1) {
    throw ProgramEnd{"You cannot setup a mass-rearing system with this last harvest age.\n"
                     "Click \"OK\" to end, then rerun the program.",
                     kTitle};
  }
  if (h.R0ToLastHarvestAge < 2) {
    P.MsgBox("You can setup a mass-rearing system with this last harvest age.\n"
             "But the profit is less than the rearing cost.",
             kTitle, kOKOnly);
  }
}

void MassRearingHarvest::AskMaleHarvest() {
  auto& h = S.harvest;
  P.MsgBox("In this version, harvesting male will not affect population.\nClick \"Yes\" to end.", "Harvesting male?",
           kYesNo);
  const std::string title = "Harvesting male adult";
  const std::string text =
      "Attention!  Enter the reduction coefficient of female fecundity (0<=x<=1)\n"
      "due to harvesting male adult.\n"
      "1 = Female fecundity is totally affected (unable to reproduce).\n"
      "0 = Female fecundity is not affected (female can reproduce normally).\n"
      "0.2 = 20% of Female fecundity is lost (fecundity lowered to 80%).";
  for (;;) {
    const std::string answer = P.InputBox(text, title, "1");
    if (answer.empty()) throw ProgramEnd{"The program ends here (Cancel at \"" + title + "\").", title};
    const double c = NumberOfText(answer);
    if (c >= 0 && c <= 1) {
      h.FecundityLossOnMaleHarvest = 1 - c;
      break;
    }
    P.MsgBox("The coefficient must be a number from 0 to 1.", title, kOKOnly);
  }
  h.MaleHarvest = "Yes";
}

// ---------------------------------------------------------------------------------------
// The cuts, by target

int MassRearingHarvest::StageEnd(int j) const {
  const int last = S.ws.lifeTable.StageLastAge(j);
  return last < S.harvest.LastHarvestAge ? last : S.harvest.LastHarvestAge;
}

int MassRearingHarvest::CutStage() const {
  const int m = S.header.StageCount;
  const int t = S.harvest.HarvestStage;
  if (t == 1) return m;  // the female's eggs
  if (t >= m) return m - 1;  // the moves into the female and into the male stage
  return t - 1;
}

void MassRearingHarvest::CalculateFforHarvest(double rate) {
  auto& h = S.harvest;
  const int f = S.header.StageCount;
  for (int x = S.ws.lifeTable.StageFirstAge(f); x <= StageEnd(f); ++x) h.Fh(x, f) = (1 - rate) * h.ScaledF(x, f);
}

void MassRearingHarvest::CalculateDforHarvestingFemale(double rate) {
  auto& h = S.harvest;
  const int k = S.header.StageCount - 1;
  for (int x = S.ws.lifeTable.StageFirstAge(k); x <= StageEnd(k); ++x) h.Dh(x, k) = (1 - rate) * h.OriginalD(x, k);
}

void MassRearingHarvest::CalculateDforHarvestingMale(double rate) {
  // Row m of D holds the move from stage m - 1 into the male stage.
  auto& h = S.harvest;
  const int m = S.header.StageCount;
  for (int x = S.ws.lifeTable.StageFirstAge(m - 1); x <= StageEnd(m - 1); ++x)
    h.Dh(x, m) = (1 - rate) * h.OriginalD(x, m);
}

void MassRearingHarvest::CalculateDforHarvest(double rate) {
  auto& h = S.harvest;
  const int k = h.HarvestRow;
  for (int x = S.ws.lifeTable.StageFirstAge(k); x <= StageEnd(k); ++x) h.Dh(x, k) = (1 - rate) * h.OriginalD(x, k);
}

void MassRearingHarvest::CutAtRate(double rate) {
  const int m = S.header.StageCount;
  const int t = S.harvest.HarvestStage;
  if (t == 1)
    CalculateFforHarvest(rate);
  else if (t == m)
    CalculateDforHarvestingFemale(rate);
  else if (t == m + 1)
    CalculateDforHarvestingMale(rate);
  else
    CalculateDforHarvest(rate);
}

// ---------------------------------------------------------------------------------------
// The harvested colony

void MassRearingHarvest::BuildSurvival(bool totals) {
  auto& h = S.harvest;
  const auto& lt = S.ws.lifeTable;
  const auto& G = h.OriginalG;
  const int m = S.header.StageCount;
  const int last = S.ws.tables.LastAge;
  for (int x = 0; x <= last; ++x)
    for (int j = 0; j <= m + 1; ++j) h.Sh(x, j) = 0;
  auto stage = [&](int j, int from, int row, int fromStage) {
    double sum = 0;
    for (int x = from; x <= StageEnd(j); ++x) {
      h.Sh(x, j) = G(x - 1, j) * h.Sh(x - 1, j) + h.Dh(x - 1, row) * h.Sh(x - 1, fromStage);
      sum += h.Sh(x, j);
    }
    if (totals) h.StageShSum(j) = sum;
  };
  h.Sh(0, 1) = 1;
  double first = 1;
  for (int x = 1; x <= StageEnd(1); ++x) {
    h.Sh(x, 1) = G(x - 1, 1) * h.Sh(x - 1, 1);
    first += h.Sh(x, 1);
  }
  if (totals) h.StageShSum(1) = first;
  // A stage nobody reached, or one that begins after the last harvest age, is passed over.
  auto reached = [&](int j) { return lt.StageFirstAge(j) > 0 && lt.StageFirstAge(j) <= h.LastHarvestAge; };
  for (int j = 2; j <= m; ++j) {
    if (reached(j))
      stage(j, lt.StageFirstAge(j), j - 1, j - 1);
    else if (totals)
      h.StageShSum(j) = 0;
  }
  if (S.header.MaleCount > 0 && reached(m + 1))
    stage(m + 1, lt.StageFirstAge(m + 1), m, m - 1);
  else if (totals)
    h.StageShSum(m + 1) = 0;
}

void MassRearingHarvest::ConstructNewS() { BuildSurvival(true); }

void MassRearingHarvest::ConstructFinalS() {
  Flow("ConstructFinalS");
  CutAtRate(S.harvest.OptimalHarvestRate);
  BuildSurvival(false);
}

double MassRearingHarvest::CalculateR0forHarvest() const {
  const auto& h = S.harvest;
  const int m = S.header.StageCount;
  double r0 = 0;
  for (int x = 0; x <= h.LastHarvestAge; ++x)
    for (int j = 1; j <= m + 1; ++j) r0 += h.Fh(x, j) * h.Sh(x, j);
  return r0;
}

void MassRearingHarvest::CalculateSASDwithHarvest() {
  Flow("CalculateSASDwithHarvest");
  auto& h = S.harvest;
  const int m = S.header.StageCount;
  const int last = S.ws.tables.LastAge;
  double total = 0;
  for (int x = 0; x <= h.LastHarvestAge; ++x)
    for (int j = 1; j <= m + 1; ++j) total += h.Sh(x, j);
  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= m + 1; ++j) h.Ph(x, j) = x <= h.LastHarvestAge ? h.Sh(x, j) / total : 0;
  // Scaled so that n(0,1) is 10,000.
  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= m + 1; ++j) h.Qh(x, j) = (10000 / h.Ph(0, 1)) * h.Ph(x, j);
}

void MassRearingHarvest::CalculateHarvestRatePerEgg() {
  Flow("CalculateHarvestRatePerEgg");
  auto& h = S.harvest;
  const int cut = CutStage();
  // Eggs are taken from the female's fecundity; any other target from the move into it.
  const auto& M = h.HarvestStage == 1 ? h.ScaledF : h.OriginalD;
  h.HarvestPerEgg = 0;
  for (int x = S.ws.lifeTable.StageFirstAge(cut); x <= StageEnd(cut); ++x)
    h.HarvestPerEgg += M(x, h.HarvestRow) * h.Sh(x, cut) * h.OptimalHarvestRate;
}

void MassRearingHarvest::CalculateHarvestRatePerAdult() {
  Flow("CalculateHarvestRatePerAdult");
  auto& h = S.harvest;
  const int m = S.header.StageCount;
  double adults = 0;
  for (int j = m; j <= m + 1; ++j)
    for (int x = S.ws.lifeTable.StageFirstAge(j); x <= StageEnd(j); ++x) adults += h.Ph(x, j);
  // No adult within the last harvest age: no yield per adult to tell.
  h.HarvestPerAdult = adults > 0 ? h.HarvestPerEgg * h.Ph(0, 1) / adults : 0;
}

void MassRearingHarvest::CalculateStageNumberInStableSystem() {
  Flow("CalculateStageNumberInStableSystem");
  auto& h = S.harvest;
  const auto& lt = S.ws.lifeTable;
  const int m = S.header.StageCount;
  const int last = S.ws.tables.LastAge;
  if (h.HarvestPerEgg == 0) {
    throw ProgramEnd{"Division by zero: the harvest per newborn is 0 (the sustainable harvest rate is " +
                         Num(h.OptimalHarvestRate) +
                         "), so no stable colony gives the expected harvest of this target stage.\n"
                         "No output file was written.",
                     kTitle};
  }
  const double Y = h.ExpectedHarvest / h.HarvestPerEgg;  // newborn per time unit
  h.NewbornPerTimeUnit = Y;
  for (int x = 0; x <= last; ++x)
    for (int j = 1; j <= m + 1; ++j) h.Nh(x, j) = Y * h.Sh(x, j);
  const bool costs = S.header.RegularLifeTable == "No";
  h.TotalCost = 0;
  h.TotalPopulation = 0;
  for (int j = 1; j <= m + 1; ++j) {
    double total = 0;
    if (lt.StageFirstAge(j) <= h.LastHarvestAge)
      for (int x = 0; x <= h.LastHarvestAge; ++x) total += h.Nh(x, j);
    h.StageTotal(j) = total;
    h.StageCost(j) = !costs ? 0 : j <= m ? S.header.StageRearingCost(1, j) : S.header.StageRearingCost(2, m);
    h.StageCostTotal(j) = h.StageCost(j) * total;
    h.TotalCost += h.StageCostTotal(j);
    h.TotalPopulation += total;
  }
  // Recruits per time unit: the newborn, then the moves into each stage inside the system.
  h.StageRecruits(1) = Y;
  for (int j = 2; j <= m + 1; ++j) {
    const int row = j <= m ? j - 1 : m;
    const int from = j <= m ? j - 1 : m - 1;
    double recruits = 0;
    const int start = lt.StageFirstAge(j) > 1 ? lt.StageFirstAge(j) : 1;
    if (lt.StageFirstAge(j) > 0)
      for (int x = start; x <= StageEnd(j); ++x) recruits += Y * h.Sh(x - 1, from) * h.Dh(x - 1, row);
    h.StageRecruits(j) = recruits;
  }
}

}  // namespace korvan
