#include "commands/general_bootstrap_command.h"

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "bootstrap/general_bootstrap.h"
#include "bootstrap/resampling.h"
#include "bootstrap/uniform_random.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"
#include "ui/chart_figures.h"

namespace korvan {

namespace {

constexpr const char* kChooser = "Open life table data file";

// A whole number from the text of an input box, or -1 when it is none.
long WholeNumber(const std::string& text) {
  const double v = NumberOfText(text);
  return std::isfinite(v) && v == std::floor(v) && std::fabs(v) < 1e9 ? static_cast<long>(v) : -1;
}

std::string BaseOf(const std::string& path) { return path.size() > 4 ? path.substr(0, path.size() - 4) : path; }

}  // namespace

bool GeneralBootstrapCommand::AskSerialNumbers() {
  const bool serial = P.MsgBox("Are there serial numbers in your data file?\n(Yes: i and x(i), No: x(i) only.",
                               "Data formate", kYesNo) == kYes;
  S.boot.SerialNumbersInData = serial ? "Yes" : "No";
  return serial;
}

void GeneralBootstrapCommand::Multiply() {
  const std::string title = "Multiplicate a data file?";
  const long times = WholeNumber(P.InputBox("Enter the number of multiplication!", title, "1"));
  if (times < 1 || times > 100000) {
    P.MsgBox("The number of multiplication must be a whole number from 1 to 100000. No file was written.", title,
             kOKOnly);
    return;
  }
  const bool serial = AskSerialNumbers();
  const std::string path = P.ChooseFile(kChooser);
  if (path.empty()) return;
  const GeneralData data = ReadGeneralData(path, serial);
  const std::string written = MultiplyGeneralData(path, data, times);
  P.Status("lblBootMsg", written);
  P.MsgBox("Congratulation!  Completed!\nYou can analyze the next data set.", "Task completed!", kOKOnly);
}

void GeneralBootstrapCommand::OfferFrequencySave(const std::vector<double>& values,
                                                 const std::vector<double>& counts) {
  if (P.MsgBox("Do you want to save the frequency of the original data?", "Save original frequency", kYesNo) !=
      kYes)
    return;
  std::string path = P.ChooseFile("Save frequency data");
  if (path.empty()) return;
  if (std::filesystem::path(path).extension() != ".txt") path += ".txt";
  std::error_code ec;
  if (std::filesystem::equivalent(path, S.identity.DataFilePath, ec)) {
    P.MsgBox("The frequency would be written over the data file " + path + ". It was not saved.",
             "Save frequency data", kOKOnly);
    return;
  }
  TextFile out(path);
  out.Write("Frequency", "Class center");
  for (std::size_t i = 0; i < values.size(); ++i) out.Write(counts[i], values[i]);
}

void GeneralBootstrapCommand::Demonstration(long N, long n, long B, bool pause) {
  SampleGenerator gen;
  std::vector<double> individuals(static_cast<std::size_t>(N)), counts(static_cast<std::size_t>(N));
  for (long k = 1; k <= N; ++k) individuals[static_cast<std::size_t>(k - 1)] = static_cast<double>(k);
  for (long i = 1; i <= B; ++i) {
    gen.SeedSample(S.boot.RunSeed, i);
    std::fill(counts.begin(), counts.end(), 0.0);
    for (long pos = 1; pos <= n; ++pos) counts[static_cast<std::size_t>(DrawIndividual(gen, static_cast<int>(N)) - 1)] += 1;
    P.ShowChart(ShowFreqForm("Bootstrap sample " + std::to_string(i) + " of " + std::to_string(B) +
                                 ": how often each individual was drawn (n = " + std::to_string(n) + ")",
                             "Individual (serial order)", individuals, counts));
    if (pause) P.Status("lblBootMsg", "Bootstrap sample " + std::to_string(i));
    if (i < B && P.MsgBox("Show the next bootstrap sample?", "Next one?", kYesNo) != kYes) break;
  }
  P.MsgBox("This was a demonstration of the bootstrap (B below 10): no file was written.\n"
           "Enter B of 10 or more for the results.",
           "Demonstration completed", kOKOnly);
}

void GeneralBootstrapCommand::cmdGeneralBootstrap_Click() {
  Flow("cmdGeneralBootstrap_Click");
  BootstrapRecord& R = S.boot;
  const bool flow =
      P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo) == kYes;
  if (P.MsgBox("Enter multiplier (e.g., 3) to convert a value (mean, etc.) to raw data?\n"
               "Attention! If you want to assign the mean (e.g., 34, 28, 31 the in following line) to each "
               "individual, you can use this option.\n"
               "For example, if your data rows are 1,34; 2,28; 3,31,..., a new file contains 1,34; 2,34; 3,34; "
               "4,28; 5,28; 6,28; 7,31; 8,31; 9,31;...\n"
               "will be generated.\n"
               "If you don't need this option, click on No.",
               "Multiplicate a data file?", kYesNo) == kYes) {
    Multiply();
    return;
  }
  const bool half =
      P.MsgBox("Do you want to run general bootstrapping or to find the age of lx <= 0.5 by using total longevity "
               "of all individuals? \n"
               "If the life table cannot run bootstrap, you will not get the file of lx<05 for the paired bootstrap \n"
               "comparison. Herewith you can use the general bootstrap and total longevity to get the file for "
               "paired bootstrap test.\n"
               "Yes: Find the age of lx<= 0.5.\n"
               "     You must choose the file \"_G_Total longevity-all.txt.\" \n"
               "No: Simple general bootstrap.",
               "General bootstrapping and finding the age of lx <= 0.5?", kYesNo) == kYes;
  R.AgeOfHalfSurvival = half ? "Yes" : "No";
  const bool serial = AskSerialNumbers();
  R.ProbitOn = "No";
  if (!half) {
    const double t = NumberOfText(P.InputBox("No transformation (0) or Probit (1)?", "Transformation?", "0"));
    R.ProbitOn = t == 1 ? "Yes" : "No";
  }

  const std::string path = P.ChooseFile(kChooser);
  if (path.empty()) return;
  S.identity.DataFilePath = path;
  S.identity.DataFileBase = BaseOf(path);
  P.Status("txtDatafile", path);
  if (flow) OpenFlowRecord(S, S.identity.DataFileBase);

  GeneralBootstrap gb(S, P);
  gb.data = ReadGeneralData(path, serial);
  gb.DataStatistics();
  const long N = static_cast<long>(gb.data.values.size());

  const std::string titleN = "Sample size =?";
  const long n = WholeNumber(P.InputBox("Enter the sample size (n) of bootstrap", titleN, std::to_string(N)));
  if (n < 2 || n > N) {
    P.MsgBox("The sample size must be a whole number from 2 to " + std::to_string(N) +
                 ", the number of values in the file. Nothing was written.",
             titleN, kOKOnly);
    return;
  }
  std::vector<double> values, counts;
  gb.DataFrequency(values, counts);
  P.ShowChart(ShowFreqForm("Frequency of " + gb.data.variable + " (N = " + std::to_string(N) + ")",
                           gb.data.variable, values, counts));
  OfferFrequencySave(values, counts);
  const bool pause =
      P.MsgBox("Do you want to see the samples of a demonstration slowly?", "Pause?", kYesNo) == kYes;

  const std::string titleB = "Bootstrap";
  const long B = WholeNumber(P.InputBox("Enter the number of bootstarp (B <=" + FullPrecision(R.MaxBootB) + ")",
                                        titleB, FullPrecision(R.MaxBootB)));
  if (B < 1 || static_cast<double>(B) > R.MaxBootB) {
    P.MsgBox("The number of bootstrap must be a whole number from 1 to " + FullPrecision(R.MaxBootB) +
                 ". Nothing was written.",
             titleB, kOKOnly);
    return;
  }
  R.RunSeed = S.runControl.hasSeed ? S.runControl.seed : SeedFromClock();
  if (B < 10) {
    Demonstration(N, n, B, pause);
    return;
  }
  gb.SampleSize = n;
  gb.B = B;
  gb.Run();
  P.ShowChart(ShowFreqR0(S));
  P.Status("lblBootMsg", "Bootstrap mean of " + gb.data.variable + " = " + FullPrecision(R.General.mean) +
                             ", SE = " + FullPrecision(R.General.se) + ", 0.025 and 0.975 percentiles: " +
                             FullPrecision(gb.Lower) + ", " + FullPrecision(gb.Upper));
  P.MsgBox("Congratulation!  Completed!\nThe results are in the files \"" + S.identity.DataFileBase +
               "_0_GB_...\".",
           "Task completed!", kOKOnly);
}

}  // namespace korvan
