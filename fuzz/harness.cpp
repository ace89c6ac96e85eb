#include "harness.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <system_error>

#include "accepting_prompts.h"
#include "input/read_data_a1.h"
#include "store/faults.h"
#include "store/session_store.h"

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

std::string Workbench::Put(const std::string& name, const std::uint8_t* data, std::size_t size) {
  for (const auto& entry : std::filesystem::directory_iterator(path_)) std::filesystem::remove_all(entry.path());
  const std::string file = (path_ / name).string();
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return file;
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

const char* const kTwoSexTitle = "Two-sex mating?";

Outcome ReadAndRun(const std::string& path, bool twoSex) {
  auto S = std::make_unique<SessionStore>();
  S->StartUp();
  AcceptingPrompts P;
  P.files["Open life table data file"] = path;
  P.answers["Do you need only the basic output (0A) and figure files?"] = kNo;
  P.answers["Fast run for two-sex or parthenogenetic population?"] = twoSex ? kYes : kNo;
  P.answers["Do you need the contribution of this life table to intrinsic rate?"] = kNo;
  P.goOn = {"Non-integer developmental time", "Non-integer fecundity", "Are there more data?"};

  // A Fast Run goes on from A1 to Basic Run by itself.
  ReadDataA1(*S, P).cmdReadDataA1_Click();
  Outcome ran;
  ran.basicRunDone = S->basic.BasicRunDone == "yes";
  return ran;
}

}  // namespace

Outcome RunDataFile(Workbench& bench, const std::uint8_t* data, std::size_t size) {
  const std::string path = bench.Put("data.txt", data, size);
  bool femalesOnly = false;
  Outcome first = Guarded([&] {
    try {
      return ReadAndRun(path, true);
    } catch (const ProgramEnd& end) {
      femalesOnly = end.title == kTwoSexTitle;
      throw;
    }
  });
  if (!femalesOnly) return first;
  bench.Put("data.txt", data, size);
  return Guarded([&] { return ReadAndRun(path, false); });
}

}  // namespace korvan::fuzz
