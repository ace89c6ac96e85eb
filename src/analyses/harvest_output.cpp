// The files of the harvest analysis: the matrices with and without harvest, the stable
// mass-rearing system in words, and the figure files.
#include <string>
#include <vector>

#include "analyses/harvest.h"
#include "engine/population_parameters.h"
#include "engine/table_text.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr int kStagesPerPage = 7;
constexpr int kColumnWidth = 11;

std::string Padded(const std::string& text, int width) {
  return text.size() >= static_cast<std::size_t>(width) ? " " + text
                                                         : std::string(width - text.size(), ' ') + text;
}

}  // namespace

void MassRearingHarvest::PrintOutputFilesGDFS() {
  Flow("PrintOutputFilesGDFS");
  const auto& h = S.harvest;
  const auto& t = S.ws.tables;
  const int m = S.header.StageCount;
  const int last = t.LastAge;
  const bool plain = h.ConservationLevel == kConservationLevels[0];
  TextFile out(OutputName(S, plain ? "_0L_harvest_0-Basic_output.txt" : "_0L_harvest_0-Basic-conserved_output.txt"));
  out.Print(S.identity.ProjectName);
  out.Print(S.identity.TreatmentName);
  out.Print("Target stage: ", h.HarvestStage, S.header.StageName(1, h.HarvestStage));
  out.Print("Last harvest age: ", h.LastHarvestAge);
  out.Print("Conservation level: ", h.ConservationLevel, "  Target R0 =", h.TargetR0,
            "  Fecundity scale =", h.FecundityScale);
  out.Print("Harvest rate =", h.OptimalHarvestRate);
  int page = 0;
  // A matrix in pages of stage columns, ages 0 to the last age of the life table.
  auto matrix = [&](const std::string& title, auto cell, const std::string& sumLabel) {
    double total = 0;
    for (int first = 1; first <= m + 1; first += kStagesPerPage) {
      const int lastStage = first + kStagesPerPage - 1 < m + 1 ? first + kStagesPerPage - 1 : m + 1;
      out.NewLine();
      out.Print("Page", ++page);
      out.Print(title);
      std::string head = Padded("Age", 6);
      for (int j = first; j <= lastStage; ++j)
        head += Padded(j == m + 1 && S.header.MaleCount == 0 ? std::string("-") : S.header.StageName(1, j), kColumnWidth);
      out.RawText(head);
      out.NewLine();
      for (int x = 0; x <= last; ++x) {
        std::string line = Padded(std::to_string(x), 6);
        for (int j = first; j <= lastStage; ++j) {
          const double v = cell(x, j);
          total += v;
          line += Padded(CellText(v), kColumnWidth);
        }
        out.RawText(line);
        out.NewLine();
      }
    }
    if (!sumLabel.empty()) out.Print(sumLabel, total);
  };
  auto of = [](const auto& M) { return [&M](int x, int j) { return M(x, j); }; };
  const auto cost = [&](int j) { return h.StageCost(j); };
  matrix("Age-stage-specific growth probability g(x,j) (Matrix G) (original)", of(h.OriginalG), "");
  matrix("Age-stage-specific growth probability gh(x,j) (Matrix Gh) (with harvest)", of(h.OriginalG), "");
  matrix("Age-stage-specific development probability d(x,j) (Matrix D) (original)", of(h.OriginalD), "");
  matrix("Age-stage-specific development probability dh(x,j) (Matrix Dh) (With harvest)", of(h.Dh), "");
  matrix("Age-stage-specific fecundity f(x,j) (Matrix F) (original)", of(h.OriginalF), "");
  matrix("Age-stage-specific fecundity fh(x,j) (Matrix Fh) (With harvest)", of(h.Fh), "");
  matrix("Survival rate to each age-stage interval (Matrix S) (without harvest)", of(t.Sxj), "");
  matrix("Survival rate to each age-stage interval (Matrix Sh) (with harvest)", of(h.Sh), "");
  matrix("Rearing cost of each age-stage interval (with harvest)",
         [&](int x, int j) { return h.Sh(x, j) * cost(j); }, "Total rearing cost per day =");
  matrix("Individuals in each age-stage interval (Matrix Nh) (with harvest)", of(h.Nh), "");
  matrix("Cost of each age-stage unit (Matrix NhC) (with harvest)", [&](int x, int j) { return h.Nh(x, j) * cost(j); },
         "Total rearing cost =");
  matrix("Stable age-stage distribution (Matrix Ph) (with harvest)", of(h.Ph), "");
  matrix("Stable age-stage distribution (Matrix Qh) (with harvest)", of(h.Qh), "");
  matrix("Stable age-stage distribution (Matrix A) (with harvest) (=Matrix Nh)", of(h.Nh), "");
  matrix("(Matrix Sh) * (Matrix Fh) (with harvest): sh(x,j)*fh(x,j).",
         [&](int x, int j) { return x <= h.LastHarvestAge ? h.Sh(x, j) * h.Fh(x, j) : 0.0; }, "Sum =");
  out.Print("The summation over all age-stage groups should be close to unity.");
}

void MassRearingHarvest::PrintSystemFile() {
  Flow("PrintSystemFile");
  const auto& h = S.harvest;
  const int m = S.header.StageCount;
  const auto& name = [&](int j) { return S.header.StageName(1, j); };
  TextFile out(OutputName(S, "_0L_harvest_1-system_output.txt"));
  out.Print(S.identity.ProjectName);
  out.Print(S.identity.TreatmentName);
  out.Print("Target stage: ", h.HarvestStage, name(h.HarvestStage));
  if (h.HarvestStage == 1)
    out.Print("Fecundity of female is harvested per time unit. Harvest rate =", h.OptimalHarvestRate);
  else
    out.Print(name(h.HarvestStage), " is harvested. Harvest rate =", h.OptimalHarvestRate);
  out.Print("Recruits per time unit to stage", 1, "(", name(1), ") =", h.NewbornPerTimeUnit);
  out.Print("Last harvest age: ", h.LastHarvestAge);
  out.Print("Net reproductive rate to last harvest age =", h.R0ToLastHarvestAge);
  out.Print("Harvest rate per egg: ", h.HarvestPerEgg);
  out.Print("Harvest rate per adult: ", h.HarvestPerAdult);
  if (h.MaleHarvest == "Yes")
    out.Print("Loss of female fecundity on harvesting male adults (not applied) =", h.FecundityLossOnMaleHarvest);
  out.NewLine();
  out.Print("You need to set up following stable stage structure and stable stage recruits.");
  const int stages = S.header.MaleCount > 0 ? m + 1 : m;
  auto table = [&](const std::string& head, auto row) {
    out.RawText(head);
    out.NewLine();
    for (int j = 1; j <= stages; ++j) {
      std::string line = Padded(std::to_string(j), 4) + "  " + name(j);
      line += std::string(line.size() < 20 ? 20 - line.size() : 1, ' ');
      for (double v : row(j)) line += Padded(PrintNumber(v), 16);
      out.RawText(line);
      out.NewLine();
    }
  };
  auto column = [](const char* heading) { return Padded(heading, 16); };
  const double total = h.TotalPopulation;
  table("Stage no. Stage name" + column("T(j)") + column("N(j)") + column("D(j)") +
            column("a(j)") + column("C(j)") + column("N(j)*a(j)"),
        [&](int j) {
          return std::vector<double>{h.StageTotal(j), h.StageRecruits(j), total > 0 ? h.StageTotal(j) / total : 0,
                                     h.StageCost(j), h.StageCostTotal(j), h.StageRecruits(j) * h.StageCost(j)};
        });
  out.Print("T(j): number of individuals in stage j in the stable mass-rearing system (Expected harvest number =",
            h.ExpectedHarvest, ").");
  out.Print("Total population size = Sum[T(j)] =", total);
  out.Print("N(j): number of recruits to stage j (every time unit).");
  out.Print("D(j): proportion of individuals in stage j in the stable mass-rearing system (Sum[D(j)] = 1).");
  out.Print("a(j): cost for each individual of stage j per time unit.");
  out.Print("C(j)=T(j)*a(j)");
  out.Print("C(j): cost for stage j per time unit. If you need to replace the media, this is the actual cost.");
  out.Print("Total cost (per time unit) for the mass-rearing system, i.e., sum of C(j) =", h.TotalCost);
  out.Print(
      "N(j)*a(j): cost for stage j recruit (per time unit).  If you don't need to replace the media, this is the "
      "actual cost.");
  out.Print("Harvest cost per time unit =", h.HarvestCost * h.ExpectedHarvest);
  out.NewLine();
  out.Print("If you set the egg recruit (per time unit) = 10000, then you have to setup the following system.");
  const double scale = h.NewbornPerTimeUnit > 0 ? 10000 / h.NewbornPerTimeUnit : 0;
  table("Stage no. Stage name" + column("E(j)") + column("R(j)"),
        [&](int j) { return std::vector<double>{h.StageTotal(j) * scale, h.StageRecruits(j) * scale}; });
  out.Print("E(j): number of individuals in stage j; R(j): number of recruits to stage j (every time unit).");
}

void MassRearingHarvest::PrintGraphicFilesGDFS() {
  Flow("PrintGraphicFilesGDFS");
  const auto& h = S.harvest;
  const int last = S.ws.tables.LastAge;
  auto figure = [&](const char* suffix, const char* title, const auto& M) { WriteStageFigure(S, suffix, title, M, last); };
  figure("_0K-fig_harvest_G.txt", "Growth transition probability (matrix G)", h.OriginalG);
  figure("_0K-fig_harvest_D.txt", "Development transition probability (matrix D)", h.Dh);
  figure("_0K-fig_harvest_F.txt", "Fecundity matrix (F) with harvest", h.Fh);
  figure("_0K-fig_harvest_SASD.txt", "Stable age-stage distribution matrix (P') with harvest", h.Ph);
  figure("_0K-fig_harvest_Sxj.txt", "Age-stage survival rate (Sxj)under harvesting", h.Sh);
}

}  // namespace korvan
