#include "ui/console_rules.h"

#include <stdexcept>
#include <string>

namespace korvan {

namespace {

constexpr std::string_view kA1 = "cmdReadDataA1";
constexpr std::string_view kA2 = "cmdBasicRunA2";
constexpr std::string_view kA3 = "cmdBootstrap";
constexpr std::string_view kC = "cmdPairedBootTest";
constexpr std::string_view kPooled = "cmdPBTPooled";

constexpr ConsoleRule kRules[] = {
    // "A1. Read data"
    {kA1, "A1 begins", {}, {}, {"Label4", "Label14"}, {"Image1"}},
    // The console moves on to Basic Run. The commands that work on files of their own are
    // chosen before A1, in place of it, and close now.
    {kA1, "A1 file chosen", {kA2, "Command42"},
     {"Command21", kA1, "cmdMatchedLifeTable", kPooled, kC, "cmdGeneralBootstrap"}, {}, {}},
    {kA1, "A1 file checked",
     {"cmdWriteSpeLifeTable", "cmdAddDuration", "cmdReduceReprodPeriod", "cmdAddDurationToStage",
      "cmdCreateLectureFile"},
     {"cmdReadNandF", "FMNmatrices"}, {}, {}},
    {kA1, "A1 ends", {"Command44"}, {}, {}, {}},
    {kA1, "A1 Fast Run done", {}, {kA2}, {}, {}},

    // "A2. Basic Run"
    {kA2, "A2 begins", {}, {kA1}, {}, {}},
    {kA2, "A2 analysis done", {"Command4", "Command21", kA3, "Command27", "Command28"}, {}, {"Frame1"}, {}},
    {kA2, "A2 curtailed rates", {"cmdCurtailedR"}, {}, {}, {}},
    {kA2, "A2 harvest possible", {"cmdHarvest"}, {}, {}, {}},
    {kA2, "A2 harvest impossible", {}, {"cmdHarvest"}, {}, {}},
    {kA2, "A2 contribution", {"ContributionPartition"}, {}, {}, {}},
    {kA2, "A2 3D analysis", {}, {kA3}, {}, {}},
    {kA2, "A2 ends",
     {"Command42", "cmdFecundityVsOvidays", "cmdShowFvsAdultLong", "cmdShowFvsTotalLong", "cmdShowFvsConsumption"},
     {"Command44"}, {}, {}},
    // With no offspring at all (R0 = 0) nothing further can be analysed.
    {kA2, "A2 no offspring", {}, {}, {}, {"Frame4", "Frame1"}},

    // "A3. Bootstrap"
    {kA3, "A3 histogram chosen", {"cmdBootLx", "cmdBootMx"}, {}, {}, {}},
    {kA3, "A3 no fertile female", {}, {"cmdJackknife"}, {}, {}},
    {kA3, "A3 samples begin", {kA1}, {}, {}, {}},
    {kA3, "A3 column files written", {}, {"Command27", "Command28"}, {}, {}},
    {kA3, "A3 results shown", {"showBootandJackResult", "cmdBootLx", "cmdBootMx"}, {"cmdJackknife"}, {}, {}},
    {kA3, "A3 normality", {"cmdShowCumuFreqinProbit"}, {}, {}, {}},
    {kA3, "A3 ends", {"cmdSortAndCountLT"}, {kA1}, {}, {}},

    // "B. Read N, F": a group-reared table is analysed in place of a data file, so A1 and A2
    // close at its start and stay closed.
    {"cmdReadNandF", "B begins", {}, {kA1, kA2}, {}, {}},
    {"cmdReadNandF", "B ends", {}, {kA1, kA2}, {}, {}},
    {"cmdReadNandF", "B predation", {"cmdCxj"}, {}, {}, {}},

    // "Jackknife": the further commands close as in a bootstrap.
    {"Command21", "Jackknife runs", {}, {"Command27", "Command28"}, {}, {}},

    // "C. Paired BT" and "PBT pooled"
    {kC, "C begins", {}, {}, {}, {"MSChart1", "lblBootBegin", "lblBootEnd"}},
    {kC, "C settled", {}, {kA1, kA2, kA3, kPooled}, {}, {}},
    {kPooled, "PBT pooled begins", {}, {kA1, kA2, kA3, kC}, {}, {}},
    {kC, "Paired test done", {}, {kPooled, "cmdMatchedLifeTable", "FMNmatrices"}, {"MSFlexGrid1"}, {}},
    // "Q. CartesianPT" closes the console as it begins (DisableAllButtonsForCartesian).
    {"cmdCartesianDifference", "Cartesian test done", {}, {}, {"MSFlexGrid1"}, {}},
    // The Tukey table of a pooled file.
    {"TukeyQ5TableInput", "Tukey table done", {}, {}, {"MSFlexGrid1"}, {}},
};

}  // namespace

std::span<const ConsoleRule> ConsoleRules() { return kRules; }

void ApplyConsoleRule(ConsoleState& console, std::string_view name) {
  for (const ConsoleRule& rule : kRules) {
    if (rule.name != name) continue;
    for (std::string_view c : rule.open)
      if (!c.empty()) console.Enable(std::string(c));
    for (std::string_view c : rule.close)
      if (!c.empty()) console.Disable(std::string(c));
    for (std::string_view c : rule.show)
      if (!c.empty()) console.Show(std::string(c));
    for (std::string_view c : rule.hide)
      if (!c.empty()) console.Show(std::string(c), false);
    return;
  }
  throw std::logic_error("no console rule \"" + std::string(name) + "\"");
}

std::string_view OpenedBy(std::string_view control) {
  for (const ConsoleRule& rule : kRules) {
    for (std::string_view c : rule.open)
      if (c == control) return rule.owner;
  }
  return {};
}

}  // namespace korvan
