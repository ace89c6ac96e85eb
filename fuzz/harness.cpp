#include "harness.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "accepting_prompts.h"
#include "commands/run_command.h"
#include "input/check_data_file.h"
#include "input/data_file_reader.h"
#include "run/run_context.h"
#include "store/faults.h"
#include "text/text_file.h"
#include "ui/command_table.h"
#include "ui/console_rules.h"

namespace korvan::fuzz {

Workbench::Workbench() {
  // Memory-backed when there is such a folder: a run writes a dozen files.
  std::filesystem::path base = std::filesystem::is_directory("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                                         : std::filesystem::temp_directory_path();
  std::string pattern = (base / "korvan-fuzz-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::system_error(errno, std::generic_category(), "mkdtemp");
  path_ = pattern;
}

Workbench::~Workbench() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

void Workbench::Clear() {
  for (const auto& entry : std::filesystem::directory_iterator(path_)) std::filesystem::remove_all(entry.path());
}

std::string Workbench::Add(const std::string& name, const void* data, std::size_t size) {
  const std::string file = (path_ / name).string();
  std::ofstream out(file, std::ios::binary);
  out.write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
  return file;
}

void Workbench::ExpectIntact(const std::string& file, const void* data, std::size_t size) const {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw FileChanged(file);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (bytes.size() != size || (size > 0 && std::memcmp(bytes.data(), data, size) != 0)) throw FileChanged(file);
}

namespace {

template <class Run>
Outcome Guarded(Run&& run) {
  try {
    return run();
  } catch (const ProgramEnd& end) {
    return {Ending::ProgramEnd, end.title + ": " + end.message};
  } catch (const SubscriptFault& fault) {
    return {Ending::SubscriptFault, fault.what()};
  } catch (const OverflowFault& fault) {
    return {Ending::OverflowFault, fault.what()};
  }
}

// A session as the program starts it, its console at start-up.
std::unique_ptr<Session> StartedSession() {
  auto S = std::make_unique<Session>();
  S->StartUp();
  SetStartUpConsole(S->console);
  return S;
}

// A command pressed through the one way every front end runs commands. The endings of bad input
// are thrown on to Guarded; any other ending is a finding.
void Press(Session& S, PromptService& P, const char* control) {
  const long faultsBefore = WriteFaultCount();
  const CommandOutcome out = RunCommand(S, P, control);
  // A command that ends as done while one of its files could not be written would have the
  // user cite numbers whose files are not whole.
  if (out.ending == CommandEnding::Ran && WriteFaultCount() != faultsBefore)
    throw std::logic_error(std::string(control) + " ended as done though a file was not written whole");
  switch (out.ending) {
    case CommandEnding::Ran:
    case CommandEnding::Quit:
      return;
    case CommandEnding::ProgramEnd:
      throw ProgramEnd{out.message, out.title};
    case CommandEnding::SubscriptFault:
      throw SubscriptFault(out.message.substr(out.message.find(": ") + 2));
    case CommandEnding::OverflowFault:
      throw OverflowFault();
    default:
      throw std::logic_error(std::string(control) + " ended unexpectedly: " + out.message);
  }
}

const char* const kTwoSexTitle = "Two-sex mating?";

// A1 in a Fast Run, which goes on to Basic Run by itself.
void FastRun(Session& S, AcceptingPrompts& P, const std::string& path, bool twoSex) {
  P.files["Open life table data file"] = path;
  P.answers["Do you need only the basic output (0A) and figure files?"] = kNo;
  P.answers["Fast run for two-sex or parthenogenetic population?"] = twoSex ? kYes : kNo;
  P.answers["Do you need the contribution of this life table to intrinsic rate?"] = kNo;
  P.goOn = {"Non-integer developmental time", "Non-integer fecundity", "Are there more data?"};

  Press(S, P, "cmdReadDataA1");
}

// A1 through all its steps, the file's head holding rearing costs (unless the caller has
// answered that it holds none), then "A2. Basic Run" with every setting of the run at its
// default but those the caller has answered.
void AllStepsRun(Session& S, AcceptingPrompts& P, const std::string& path, bool twoSex) {
  P.files["Open life table data file"] = path;
  P.answers["Do you need only the basic output (0A) and figure files?"] = kNo;
  P.answers["Fast run for two-sex or parthenogenetic population?"] = kCancel;
  P.answers["Do you need flow record?"] = kNo;
  P.answers["Do you need the contribution of this life table to intrinsic rate?"] = kNo;
  P.answers["Do you need all output files?"] = kYes;
  P.answers.emplace("Rearing cost for each stage?", kNo);
  P.inputs["General analysis or 3D analysis?"] = twoSex ? "1" : "2";
  P.goOn = {"Non-integer developmental time", "Non-integer fecundity", "Are there more data?"};

  Press(S, P, "cmdReadDataA1");
  Press(S, P, "cmdBasicRunA2");
}

using Route = void (*)(Session&, AcceptingPrompts&, const std::string&, bool);

Outcome ReadAndRun(Route route, const std::string& path, bool twoSex) {
  auto S = StartedSession();
  AcceptingPrompts P;
  route(*S, P, path, twoSex);
  Outcome ran;
  ran.basicRunDone = S->basic.BasicRunDone == "yes";
  return ran;
}

// A file of females only ends the check of a two-sex run; it is read again as parthenogenetic.
Outcome RunTwoSexThenParthenogenetic(Route route, Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string path = bench.Put("data.txt", data, size);
  bool femalesOnly = false;
  Outcome first = Guarded([&] {
    try {
      return ReadAndRun(route, path, true);
    } catch (const ProgramEnd& end) {
      femalesOnly = end.title == kTwoSexTitle;
      throw;
    }
  });
  bench.ExpectIntact(path, data, size);
  if (!femalesOnly) return first;
  bench.Put("data.txt", data, size);
  Outcome second = Guarded([&] { return ReadAndRun(route, path, false); });
  bench.ExpectIntact(path, data, size);
  return second;
}

}  // namespace

Outcome RunDataFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  return RunTwoSexThenParthenogenetic(FastRun, bench, data, size);
}

Outcome RunDataFileAllSteps(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  return RunTwoSexThenParthenogenetic(AllStepsRun, bench, data, size);
}

Outcome RunCsvFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string csv = bench.Put("cohort.csv", data, size);
  Outcome ran = Guarded([&] {
    auto S = StartedSession();
    AcceptingPrompts P;
    FastRun(*S, P, csv, true);
    Outcome ran;
    ran.basicRunDone = S->basic.BasicRunDone == "yes";
    return ran;
  });
  bench.ExpectIntact(csv, data, size);
  return ran;
}

const char* const kRecordCohort =
    "Project: Record\nTester\nLab 25C\n6\n2, 4\n"
    "F,Egg,Larva,Nymph,Female\nM,Egg,Larva,Nymph,Male\nEgg,Nymph\n"
    " 1 ,F, 2, 4, 3, 5\n1,0,3,-1\n 2 ,M, 2, 4, 3, 6\n 3 ,N, 2, 4,-3\n"
    " 4 ,F, 3, 4, 3, 3\n2,2,2,-1\n 5 ,M, 2, 5, 3, 4\n 6 ,N,-1\n";

namespace {

// Basic Run of the record's cohort, then one command on the bytes as the file chosen.
// then(S, P, file, outcome) runs the command and notes what it did in the outcome.
template <class Then>
Outcome AfterBasicRun(Workbench& bench, const char* name, const std::uint8_t* data, std::size_t size, Then then) {
  const std::string cohort = bench.Put("cohort.txt", kRecordCohort, std::strlen(kRecordCohort));
  const std::string file = bench.Add(name, data, size);
  Outcome ran = Guarded([&] {
    auto S = StartedSession();
    AcceptingPrompts P;
    FastRun(*S, P, cohort, true);
    Outcome ran;
    ran.basicRunDone = S->basic.BasicRunDone == "yes";
    if (ran.basicRunDone) then(*S, P, file, ran);
    return ran;
  });
  bench.ExpectIntact(file, data, size);
  return ran;
}

}  // namespace

Outcome RunRecordFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  return AfterBasicRun(bench, "record.txt", data, size,
                       [](Session& S, AcceptingPrompts& P, const std::string& record, Outcome& ran) {
                         // One thread and a fixed seed: a run is repeated exactly from its input.
                         S.runControl.threads = 1;
                         S.runControl.hasSeed = true;
                         S.runControl.seed = 1;
                         P.files["Open bootstrap record file (In general, it is file no. 11)."] = record;
                         // The detailed steps, where the record is offered.
                         P.answers["Fast run for bootstrap?"] = kCancel;
                         P.answers["Same bootstrap samples?"] = kYes;
                         P.answers["Fast run for the rest steps?"] = kYes;
                         Press(S, P, "cmdBootstrap");
                         ran.bootstrapSamples = S.boot.EffectiveCount;
                       });
}

Outcome RunRecordCount(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  return AfterBasicRun(bench, "record.txt", data, size,
                       [](Session& S, AcceptingPrompts& P, const std::string& file, Outcome& ran) {
                         P.files["Open bootstrap record file (In general, it is file no. 11)."] = file;
                         P.answers["Sort bootstrap life tables for multinomial theorem?"] = kNo;
                         P.answers["Are you sure?"] = kYes;
                         Press(S, P, "cmdCountBootLifeTable");
                         ran.countedItems = S.multinomial.CountM;
                       });
}

Outcome RunExpansionFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  return AfterBasicRun(bench, "expansion.txt", data, size,
                       [](Session& S, AcceptingPrompts& P, const std::string& file, Outcome& ran) {
                         P.files["Open multinomial expansion data file"] = file;
                         P.answers["Read the file with all MNC or create the file of MNC?"] = kYes;
                         Press(S, P, "Command2");
                         ran.countedItems = S.multinomial.ItemCount;
                       });
}

Outcome RunConsumptionFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string cohort = bench.Put("cohort.txt", kRecordCohort, std::strlen(kRecordCohort));
  const std::string eaten = bench.Add("eaten.txt", data, size);
  Outcome ran = Guarded([&] {
    auto S = StartedSession();
    AcceptingPrompts P;
    P.answers["Rearing cost for each stage?"] = kYes;  // the cohort has no costs
    P.answers["Life table only?"] = kNo;
    P.files["Open consumption rate file (file 17)"] = eaten;
    AllStepsRun(*S, P, cohort, true);
    Outcome ran;
    ran.basicRunDone = S->basic.BasicRunDone == "yes" && S->options.PredationPresent == "Yes";
    return ran;
  });
  bench.ExpectIntact(eaten, data, size);
  return ran;
}

// The cohort of the record with the rearing cost of each stage in its head.
const char* const kCostCohort =
    "Project: Record\nTester\nLab 25C\n6\n2, 4\n"
    "F,Egg,Larva,Nymph,Female\nM,Egg,Larva,Nymph,Male\n0.5,1,1,2,1.5\nEgg,Nymph\n"
    " 1 ,F, 2, 4, 3, 5\n1,0,3,-1\n 2 ,M, 2, 4, 3, 6\n 3 ,N, 2, 4,-3\n"
    " 4 ,F, 3, 4, 3, 3\n2,2,2,-1\n 5 ,M, 2, 5, 3, 4\n 6 ,N,-1\n";

Outcome RunHarvestAndContributionFiles(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string cohort = bench.Put("cohort.txt", kCostCohort, std::strlen(kCostCohort));
  const std::string file = bench.Add("parameters.txt", data, size);
  Outcome ran;
  // The file as the R0 and SE of a bootstrap under each level that reads it, then as the pooled
  // cohort's parameters of a contribution; each in a session of its own.
  for (const char* level : {"Ro-SE", "Ro(0.025)", "Other", "contribution"}) {
    ran = Guarded([&] {
      auto S = StartedSession();
      AcceptingPrompts P;
      AllStepsRun(*S, P, cohort, true);
      Outcome out;
      out.basicRunDone = S->basic.BasicRunDone == "yes";
      if (std::string(level) == "contribution") {
        P.files["1. Read population parameters of all offspring"] = file;
        Press(*S, P, "ContributionPartition");
      } else {
        P.inputs["Conservation level"] = level;
        P.files["Open Z-Ro and bootSE for harvest.txt"] = file;
        Press(*S, P, "cmdHarvest");
      }
      return out;
    });
    bench.ExpectIntact(file, data, size);
  }
  return ran;
}

const char* const kColumnFile =
    "\"Fixed-r\"\n\"Next line is Bootstrap sample size (n)\"\n20\n"
    "\"Next line is total effective Bootstrap number (B)\"\n20\n\"r\",20,0.2\n"
    "0.21\n0.19\n0.2\n0.23\n0.18\n0.2\n0.22\n0.17\n0.21\n0.2\n"
    "0.19\n0.24\n0.2\n0.18\n0.21\n0.22\n0.2\n0.16\n0.2\n0.2\n";

namespace {

// The paired test writes its report and detail files in the current folder: a run goes there
// in the workbench's folder, and back where it was at its end.
class InFolder {
 public:
  explicit InFolder(const std::filesystem::path& folder) : back_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder);
  }
  ~InFolder() {
    std::error_code ec;
    std::filesystem::current_path(back_, ec);
  }
  InFolder(const InFolder&) = delete;
  InFolder& operator=(const InFolder&) = delete;

 private:
  std::filesystem::path back_;
};

long ComparedValues(const SessionStore& S) {
  long values = 0;
  for (int i = 1; i <= S.comparison.TreatmentCount; ++i) values += S.comparison.BootCount(i);
  return values;
}

Outcome PairedOneByOne(const std::string& file1, const std::string& file2, const char* transformation) {
  auto S = StartedSession();
  AcceptingPrompts P;
  P.files["Input treatment 1"] = file1;
  P.files["Input treatment 2"] = file2;
  P.inputs["Read data file one by one for multiple comparison"] = "2";
  P.answers["Task completed!"] = kYes;
  if (transformation) {
    P.answers["Fast paired bootstrap test?"] = kNo;
    P.answers["Do you need detailed info?"] = kYes;
    P.answers["Do you need flow record?"] = kNo;
    P.answers["Detailed differences"] = kYes;
    P.inputs["Transformation?"] = transformation;
  } else {
    P.answers["Fast paired bootstrap test?"] = kYes;
  }
  Press(*S, P, "cmdPairedBootTest");
  Outcome ran;
  ran.comparedValues = ComparedValues(*S);
  return ran;
}

// "Q. CartesianPT" on two column files, in detail or not.
Outcome Cartesian(const std::string& file1, const std::string& file2, bool detailed) {
  auto S = StartedSession();
  AcceptingPrompts P;
  P.answers["Do you need detailed info?"] = detailed ? kYes : kNo;
  P.answers["Do you need flow record?"] = kNo;
  P.answers["Detailed differences"] = kYes;
  P.inputs["Read data file one by one for paired comparison using Cartesian Product"] = "2";
  P.inputs["Transformation?"] = "0";
  P.files["Input treatment 1"] = file1;
  P.files["Input treatment 2"] = file2;
  Press(*S, P, "cmdCartesianDifference");
  Outcome ran;
  ran.cartesianDifferences = static_cast<double>(S->comparison.BootCount(1)) * S->comparison.BootCount(2);
  return ran;
}

}  // namespace

Outcome RunColumnFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  bench.Clear();
  const std::string column = bench.Add("column.txt", data, size);
  const std::string fixed = bench.Add("fixed.txt", kColumnFile, std::strlen(kColumnFile));
  InFolder here(bench.Path());
  Outcome fast = Guarded([&] { return PairedOneByOne(column, fixed, nullptr); });
  bench.ExpectIntact(column, data, size);
  const bool small = size <= kDetailedRouteLimit;
  const Outcome cartesian = Guarded([&] { return Cartesian(column, fixed, small); });
  bench.ExpectIntact(column, data, size);
  if (fast.ending != Ending::Ran || !small) {
    fast.cartesianDifferences = cartesian.cartesianDifferences;
    fast.cartesianEnding = cartesian.ending;
    return fast;
  }
  Outcome detailed = Guarded([&] { return PairedOneByOne(column, fixed, size % 2 ? "1" : "2"); });
  bench.ExpectIntact(column, data, size);
  detailed.detailedRun = true;
  detailed.cartesianDifferences = cartesian.cartesianDifferences;
  detailed.cartesianEnding = cartesian.ending;
  return detailed;
}

Outcome RunRatioFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  bench.Clear();
  const std::string column = bench.Add("column.txt", data, size);
  const std::string fixed = bench.Add("fixed.txt", kColumnFile, std::strlen(kColumnFile));
  for (const bool columnFirst : {true, false}) {
    Outcome ran = Guarded([&] {
      auto S = StartedSession();
      AcceptingPrompts P;
      P.inputs["Transformation?"] = "0";
      P.files["Select the numerator file (partial)"] = columnFirst ? column : fixed;
      P.files["Select the denominator file (total)"] = columnFirst ? fixed : column;
      Press(*S, P, "cmdCalculateRatio");
      return Outcome{};
    });
    bench.ExpectIntact(column, data, size);
    if (ran.ending != Ending::Ran) return ran;
  }
  return {};
}

namespace {

// A session at start-up whose random draws are repeated exactly: seed 1, one thread.
std::unique_ptr<Session> SeededSession() {
  auto S = StartedSession();
  S->runControl.hasSeed = true;
  S->runControl.seed = 1;
  S->runControl.threads = 1;
  return S;
}

}  // namespace

Outcome RunListFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string list = bench.Put("list.txt", data, size);
  for (int route = 0; route < 7; ++route) {
    const bool serial = route % 2 == 0;
    Outcome ran = Guarded([&] {
      auto S = SeededSession();
      AcceptingPrompts P;
      P.answers["Do you need flow record?"] = kNo;
      P.answers["Data formate"] = serial ? kYes : kNo;
      if (route < 4) {
        P.answers["Multiplicate a data file?"] = kNo;
        P.answers["General bootstrapping and finding the age of lx <= 0.5?"] = route < 2 ? kYes : kNo;
        P.answers["Save original frequency"] = kNo;
        P.answers["Pause?"] = kNo;
        P.inputs["Bootstrap"] = "20";
        P.files["Open life table data file"] = list;
        Press(*S, P, "cmdGeneralBootstrap");
      } else {
        P.answers["Sort and count"] = kYes;
        P.answers["Sort and count general data or bootstrap results"] = route == 4 ? kYes : route == 5 ? kNo : kCancel;
        P.inputs["Limit the decimal points?"] = "2";
        P.files[route == 4 ? "Open a general data file to sort" : "Open a bootstrap file to sort"] = list;
        Press(*S, P, "cmdSortandCount");
      }
      return Outcome{};
    });
    bench.ExpectIntact(list, data, size);
    if (ran.ending != Ending::Ran) return ran;
  }
  return {};
}

Outcome RunPooledFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string pooled = bench.Put("pooled.txt", data, size);
  InFolder here(bench.Path());
  Outcome ran = Guarded([&] {
    auto S = StartedSession();
    AcceptingPrompts P;
    P.files["Open pooled file of treatments for paired bootstrap test"] = pooled;
    P.answers["Do you need flow record?"] = kNo;
    const bool detailed = size <= kDetailedRouteLimit;
    P.answers["Detailed differences"] = detailed ? kYes : kNo;
    // A large file sorts as after a fast run of command C in the session.
    if (!detailed) S->comparison.UseQuickSort = "Yes";
    Press(*S, P, "cmdPBTPooled");
    Outcome ran;
    ran.comparedValues = ComparedValues(*S);
    ran.detailedRun = detailed;
    return ran;
  });
  bench.ExpectIntact(pooled, data, size);
  const Outcome tukey = Guarded([&] {
    auto S = StartedSession();
    AcceptingPrompts P;
    P.files["Open Tukey Q5 table"] = pooled;
    // The table's closing note goes to the main output of a Basic Run.
    S->channels.MainOutput.Open((bench.Path() / "main output.txt").string());
    Press(*S, P, "TukeyQ5TableInput");
    Outcome table;
    table.tukeyTreatments = S->comparison.TableNumber >= 2 ? S->comparison.TreatmentCount : 0;
    return table;
  });
  bench.ExpectIntact(pooled, data, size);
  ran.tukeyTreatments = tukey.tukeyTreatments;
  ran.tukeyEnding = tukey.ending;
  return ran;
}

namespace {

// A file a transform wrote that its readers don't take: the user can't go on with it.
struct UnreadableOutput : std::logic_error {
  UnreadableOutput(const std::string& file, const std::string& why)
      : std::logic_error(file + " written by a transform isn't read again: " + why) {}
};

// A1's check of a data file a transform wrote (rearing costs as the file read had them), then
// Basic Run's reader.
void ExpectReadAsDataFile(const std::string& file, bool costs) {
  auto S = std::make_unique<Session>();
  S->identity.DataFilePath = file;
  S->options.QuietCheck = "Yes";
  AcceptingPrompts P;
  P.answers["Rearing cost for each stage?"] = costs ? kNo : kYes;
  try {
    CheckDataFile check(*S, P);
    check.AskReproduction = false;
    check.CheckDataFile2();
    DataFileReader(*S, P).InputData();
  } catch (const ProgramEnd& end) {
    throw UnreadableOutput(file, end.title + ": " + end.message);
  } catch (const SubscriptFault& fault) {
    throw UnreadableOutput(file, fault.what());
  }
}

// An immature or adult file a transform wrote, read by its reader.
void ExpectReadAsSideTable(const std::string& file, bool immature) {
  auto S = std::make_unique<Session>();
  AcceptingPrompts P;
  P.files[immature ? "Open immature life table" : "Open adult life table"] = file;
  try {
    if (immature)
      DataFileReader(*S, P).InputImmatureLifeTable();
    else
      DataFileReader(*S, P).InputAdultLifeTable();
  } catch (const ProgramEnd& end) {
    throw UnreadableOutput(file, end.title + ": " + end.message);
  } catch (const SubscriptFault& fault) {
    throw UnreadableOutput(file, fault.what());
  }
}

// The files in the folder but the one given, by name.
std::vector<std::string> FilesBeside(const Workbench& bench, const std::string& given) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(bench.Path()))
    if (entry.path().string() != given) files.push_back(entry.path().string());
  return files;
}

bool EndsWith(const std::string& s, const std::string& tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace

Outcome RunTransformsOnDataFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const bool costs = size % 2 == 1;
  long written = 0;
  for (const char* control : {"Command28", "Command44", "cmdAddStage", "cmdAddDurationToStage", "cmdSplitStage",
                              "cmdSplit", "cmdReduceReprodPeriod"}) {
    const std::string path = bench.Put("data.txt", data, size);
    Outcome ran = Guarded([&] {
      auto S = StartedSession();
      ApplyConsoleRule(S->console, "A1 file checked");  // the transforms A1 opens, open without it
      AcceptingPrompts P;
      P.files["Open life table data file"] = path;
      P.answers["Rearing cost for each stage?"] = costs ? kNo : kYes;
      P.answers["Reduce rep. period"] = kYes;
      P.inputs["Time units x =?"] = "3";
      P.goOn = {"Non-integer developmental time", "Non-integer fecundity", "Are there more data?"};
      Press(*S, P, control);
      return Outcome{};
    });
    bench.ExpectIntact(path, data, size);
    if (ran.ending != Ending::Ran) return ran;
    for (const std::string& file : FilesBeside(bench, path)) {
      if (EndsWith(file, "Immature life table.txt"))
        ExpectReadAsSideTable(file, true);
      else if (EndsWith(file, "Adult life table.txt"))
        ExpectReadAsSideTable(file, false);
      else
        ExpectReadAsDataFile(file, costs);
      ++written;
    }
  }
  Outcome done;
  done.filesWritten = written;
  return done;
}

Outcome RunOverwinterOnAdultFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string path = bench.Put("adult.txt", data, size);
  Outcome ran = Guarded([&] {
    auto S = SeededSession();
    AcceptingPrompts P;
    P.files["Open adult life table"] = path;
    P.inputs["Overwinter duration"] = "5";
    P.inputs["Overwinter mortality"] = "0.5";
    Press(*S, P, "cmdAddDuration");
    return Outcome{};
  });
  bench.ExpectIntact(path, data, size);
  for (const std::string& file : FilesBeside(bench, path)) {
    ExpectReadAsSideTable(file, false);
    ++ran.filesWritten;
  }
  return ran;
}

Outcome RunImmatureFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string path = bench.Put("immature.txt", data, size);
  Outcome ran = Guarded([&] {
    auto S = std::make_unique<Session>();
    AcceptingPrompts P;
    P.files["Open immature life table"] = path;
    DataFileReader(*S, P).InputImmatureLifeTable();
    return Outcome{};
  });
  bench.ExpectIntact(path, data, size);
  return ran;
}

Outcome RunGroupFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string path = bench.Put("group.txt", data, size);
  auto readNandF = [&](const std::string& file, bool predation) {
    auto S = StartedSession();
    AcceptingPrompts P;
    P.answers["Group reared life table with predation rate?"] = predation ? kYes : kNo;
    P.files["Open group-reared life table data"] = file;
    P.answers["Do you need flow record?"] = kNo;
    P.goOn = {"Estimate matrices G and D?", "Double check matrix S based on N and F?", "Stop here or continue?",
              "Larval stage overlaps adult stage!", "Do you want to group stages?"};
    if (size % 4 != 0) P.inputs["Which case is good for your data =?"] = std::to_string(size % 4);
    Press(*S, P, "cmdReadNandF");
    return Outcome{};
  };
  // Without predation rows, then with them.
  Outcome ran = Guarded([&] { return readNandF(path, false); });
  bench.ExpectIntact(path, data, size);
  (void)Guarded([&] { return readNandF(path, true); });
  bench.ExpectIntact(path, data, size);
  // The two-stage form is read by B in turn; a rebuilt individual file passes A1's check.
  for (const std::string& file : FilesBeside(bench, path)) {
    if (EndsWith(file, "_2 Stages.txt")) {
      (void)Guarded([&] { return readNandF(file, false); });
      ++ran.filesWritten;
    } else if (EndsWith(file, "Individual Life Table.txt") || EndsWith(file, "Individual LifeTable.txt")) {
      ExpectReadAsDataFile(file, false);
      ++ran.filesWritten;
    }
  }
  return ran;
}

// ---------------------------------------------------------------------------------------
// Matching of preadult and adult tables, and the 3D life table

const char* const kMatchImmature =
    "\"Fuzz immature\"\n\"team\"\n\"lab\"\n6\n2,3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\nEgg,Female\n"
    "1,F,2,3\n2,M,3,2\n3,N,-2\n4,F,3,3\n5,N,2,-1\n6,M,2,2\n";
const char* const kMatchAdult =
    "\"Fuzz adult\"\n\"team\"\n\"lab\"\n4\n2,3\nF,Egg,Larva,Female\nM,Egg,Larva,Male\nEgg,Female\n"
    "1,F,4\n0,3,5,2\n2,M,3\n0,0,0\n3,F,2\n1,4\n4,M,5\n0,0,0,0,0\n";

Outcome RunMatchFiles(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  Outcome ran, all;
  for (int route = 0; route < 3; ++route) {
    bench.Clear();
    const std::string file = bench.Add("bytes.txt", data, size);
    const std::string immature =
        route == 0 ? file : bench.Add("table_0-Immature.txt", kMatchImmature, std::strlen(kMatchImmature));
    const std::string adult = route == 1 ? file : bench.Add("table_0-Adult.txt", kMatchAdult, std::strlen(kMatchAdult));
    ran = Guarded([&] {
      auto S = StartedSession();
      S->runControl = {true, 1, 1, true};
      AcceptingPrompts P;
      P.files["Open immature life table"] = immature;
      P.files["Open adult life table"] = adult;
      P.files["Read match record (file no. 2C)."] = file;
      P.inputs["A3. Sample size"] = "10";
      P.inputs["A4. Bootstrap B"] = "20";
      P.inputs["A5. Overwinter duration"] = "2";
      P.inputs["A6. Ow ran. max. mortality"] = "0.5";
      P.answers["SameBootstrapMatch"] = route == 2 ? kYes : kNo;
      P.answers["Teaching demo?"] = kNo;
      P.goOn.insert("Only effective match?");
      P.answers["B. Read data and match record to write specific life table"] = route == 2 ? kYes : kNo;
      P.answers["Congratulation!"] = kNo;
      P.answers["Attention!"] = kNo;
      Press(*S, P, "cmdMatchedLifeTable");
      return Outcome{};
    });
    bench.ExpectIntact(file, data, size);
    if (all.ending == Ending::Ran) all.ending = ran.ending;
    all.message += std::string(route == 0 ? "immature: " : route == 1 ? " | adult: " : " | record: ") + ran.message;
  }
  return all;
}

const char* const kMatrixFile =
    "\"Description\"\n\"Project: fuzz\"\n\"daughter\"\n\"lab\"\n\"Description: Last age group is 3\"\n3,2\n"
    "\"Description\"\n\"Egg\",0,1\n\"Female\",2,3\n\"Description: S\"\n1,1\n\n1,0.5\n\"Description: g\"\n1,0\n\n"
    "0.5,0\n\"Description: d\"\n0,1\n\"Description: the female stage is\"\n2\n\"Description: fecundity\"\n"
    "1,2\n\"Female finite rate\"\n1.2\n\"Description: stable\"\n1,0.8\n0.6,0.25\n";

Outcome RunMatrixFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const char* titles[] = {"Open female data file (female offspring)", "Open female data file (male offspring)",
                          "Open female data file (N-type offspring)", "Open male data file", "Open N-type data file"};
  Outcome ran;
  for (int route = 0; route < 5; ++route) {
    bench.Clear();
    const std::string file = bench.Add("bytes_20_.txt", data, size);
    const std::string fixed = bench.Add("study_20_.txt", kMatrixFile, std::strlen(kMatrixFile));
    ran = Guarded([&] {
      auto S = StartedSession();
      AcceptingPrompts P;
      for (int t = 0; t < 5; ++t) P.files[titles[t]] = t == route ? file : fixed;
      P.answers["Do you need flow record?"] = kNo;
      P.goOn.insert("Did you analyze your life table for three type offspring?");
      P.goOn.insert("If there are N-type offspring, click on Yes.");
      Press(*S, P, "FMNmatrices");
      return Outcome{};
    });
    bench.ExpectIntact(file, data, size);
    if (ran.ending != Ending::Ran) return ran;
  }
  return ran;
}

}  // namespace korvan::fuzz
