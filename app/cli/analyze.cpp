// `korvan analyze FILE...`: a paper's comparison in one command. For each data file the Fast
// Run (A1 and A2) and a bootstrap of B samples with the answers the example answer files give;
// then, with two or more files, the paired bootstrap test (C) of every statistic of the
// summary over all of them; the summary table as CSV and Markdown, and on the terminal. A
// dialogue those answers leave open (a file without sexes, rearing costs) is asked on the
// terminal, or answered by --answer.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>

#include "analyses/treatment_summary.h"
#include "cli_run.h"
#include "commands/run_command.h"
#include "input/csv_import.h"
#include "store/faults.h"
#include "store/session_store.h"
#include "ui/answer_book.h"
#include "ui/command_table.h"
#include "ui/console_display.h"
#include "ui/scripted_prompts.h"
#include "ui/terminal_prompts.h"

namespace korvan::cli {

namespace fs = std::filesystem;

namespace {

// The answers of one treatment's run: A1 as a Fast Run, then A3 along its detailed steps with
// the fast steps, B samples of the cohort's size.
AnswerBook TreatmentAnswers(const std::string& data, long B, const std::vector<std::string>& more) {
  AnswerBook book;
  for (const auto& line : more) book.AddOption(line);
  for (const std::string& line :
       {"Open life table data file=" + data, std::string("Do you need only the basic output (0A) and figure files?=No"),
        std::string("Fast run for two-sex or parthenogenetic population?=Yes"),
        std::string("Do you need the contribution of this life table to intrinsic rate?=No"),
        std::string("Cumulative (or additive) bootstrapping?=1"), std::string("Set the criterion of infertile sample?=1"),
        std::string("Fast run for bootstrap?=Cancel"), std::string("Same bootstrap samples?=No"),
        std::string("Detailed bootstrap results?=No"), std::string("Only effective bootstraps?=Yes"),
        std::string("More bars for histogram chart?=Yes"), std::string("Normal density curve?=Yes"),
        "Number of bootstrap resamplings (B)=?=" + std::to_string(B), std::string("Fast steps?=Yes"),
        std::string("Task completed=OK")})
    book.AddOption(line);
  return book;
}

// The prompts of a run: the fixed answers; the bootstrap's sample size at its default (the
// cohort's size); anything else asked on the terminal, or missing.
class AnalyzePrompts : public ScriptedPrompts {
 public:
  using ScriptedPrompts::ScriptedPrompts;
  std::string InputBox(const std::string& text, const std::string& title, const std::string& defaultText) override {
    if (title == "Bootstrap sample size (n) =?") return defaultText;
    return ScriptedPrompts::InputBox(text, title, defaultText);
  }
};

// Runs the commands in the session; false (with the ending told) when one didn't run through.
bool Press(Session& S, PromptService& P, const char* command, const std::string& what, int& code) {
  const CommandOutcome out = RunCommand(S, P, command);
  if (out.SessionGoesOn()) return true;
  std::cerr << "korvan analyze: " << what << ": ";
  if (!out.title.empty()) std::cerr << out.title << ": ";
  std::cerr << out.message << '\n';
  code = out.ending == CommandEnding::MissingAnswer || out.ending == CommandEnding::Refused ? kExitUsage
                                                                                             : kExitProgramEnd;
  return false;
}

struct Treatment {
  std::string data, base, name;
  long n = 0;
  std::vector<std::string> preadultStages;
};

class InFolder {
 public:
  explicit InFolder(const fs::path& folder) : back_(fs::current_path()) { fs::current_path(folder); }
  ~InFolder() {
    std::error_code ec;
    fs::current_path(back_, ec);
  }

 private:
  fs::path back_;
};

}  // namespace

int RunImport(const std::string& csvPath) {
  if (!IsCsvPath(csvPath)) {
    std::cerr << "korvan import: " << csvPath << " is no .csv file\n";
    return kExitUsage;
  }
  try {
    std::cout << ImportCohortCsv(csvPath) << '\n';
  } catch (const ProgramEnd& e) {
    std::cerr << e.title << '\n' << e.message << '\n';
    return kExitProgramEnd;
  }
  return kExitDone;
}

int RunAnalyze(const AnalyzeOptions& options) {
  if (options.files.empty()) {
    std::cerr << "korvan analyze: no data file given\n";
    return kExitUsage;
  }
  for (const auto& answer : options.answers)
    if (answer.find('=') == std::string::npos) {
      std::cerr << "korvan analyze: --answer takes 'TITLE=ANSWER', not: " << answer << '\n';
      return kExitUsage;
    }
  std::error_code ec;
  fs::path out = options.outDir.empty() ? fs::path() : fs::absolute(options.outDir, ec);
  if (!out.empty()) {
    fs::create_directories(out, ec);
    if (!fs::is_directory(out, ec)) {
      std::cerr << "korvan analyze: cannot make the folder " << out.string() << '\n';
      return kExitUsage;
    }
  }
  // One seed for the analysis (the k-th treatment's stream is seed + k - 1): the summary names
  // it, and --seed repeats the analysis.
  const std::uint64_t seed =
      options.hasSeed ? options.seed
                      : static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());

  ConsoleDisplay display(std::cerr, options.quiet, ::isatty(2) != 0);
  TerminalPrompts terminal(std::cin, std::cerr);
  std::vector<Treatment> treatments;
  std::string version;
  for (const auto& file : options.files) {
    fs::path data = fs::absolute(file, ec);
    if (!fs::is_regular_file(data, ec)) {
      std::cerr << "korvan analyze: no data file " << file << '\n';
      return kExitUsage;
    }
    if (!out.empty() && fs::weakly_canonical(data.parent_path(), ec) != fs::weakly_canonical(out, ec)) {
      // The run writes beside its data file: a copy in the folder of the results, under a name
      // of its own when an earlier treatment has the name ("mite-2.txt"). A different file of
      // that name there is not overwritten.
      fs::path copy = out / data.filename();
      for (int k = 2; std::any_of(treatments.begin(), treatments.end(),
                                  [&](const Treatment& t) { return fs::path(t.data) == copy; });
           ++k)
        copy = out / (data.stem().string() + "-" + std::to_string(k) + data.extension().string());
      if (fs::exists(copy, ec)) {
        std::ifstream a(data, std::ios::binary), b(copy, std::ios::binary);
        const std::string ta((std::istreambuf_iterator<char>(a)), {}), tb((std::istreambuf_iterator<char>(b)), {});
        if (ta != tb) {
          std::cerr << "korvan analyze: " << copy.string() << " exists and differs from " << data.string()
                    << "; choose another --out folder\n";
          return kExitUsage;
        }
      } else {
        fs::copy_file(data, copy, ec);
        if (ec) {
          std::cerr << "korvan analyze: cannot copy " << data.string() << " to " << out.string() << ": "
                    << ec.message() << '\n';
          return kExitUsage;
        }
      }
      data = copy;
    }
    // Two treatments of one file would write over each other's results.
    if (std::any_of(treatments.begin(), treatments.end(), [&](const Treatment& t) { return t.data == data.string(); })) {
      std::cerr << "korvan analyze: " << data.string() << " is given twice\n";
      return kExitUsage;
    }
    auto session = std::make_unique<Session>();
    Session& S = *session;
    S.StartUp();
    SetStartUpConsole(S.console);
    // Each treatment its own stream: seed, seed + 1, ...
    S.runControl = {true, seed + treatments.size(), options.threads, options.quiet};
    AnalyzePrompts P(TreatmentAnswers(data.string(), options.bootstrap, options.answers), false,
                     ::isatty(0) ? &terminal : nullptr, &display);
    if (!options.quiet) std::cerr << "korvan analyze: " << data.string() << '\n';
    int code = kExitDone;
    if (!Press(S, P, "cmdReadDataA1", data.string(), code)) return code;
    if (S.basic.BasicRunDone != "yes" && !Press(S, P, "cmdBasicRunA2", data.string(), code)) return code;
    if (!Press(S, P, "cmdBootstrap", data.string(), code)) return code;
    display.EndProgress();
    Treatment t;
    t.data = data.string();
    t.base = S.identity.DataFileBase;
    t.name = S.identity.TreatmentName.empty() ? data.stem().string() : S.identity.TreatmentName;
    t.n = S.header.CohortSizeRead;
    version = S.identity.VersionStamp;
    for (int j = 1; j <= S.header.StageCount - 1; ++j) t.preadultStages.push_back(S.header.StageName(1, j));
    treatments.push_back(std::move(t));
  }

  const fs::path folder = out.empty() ? fs::path(treatments.front().data).parent_path() : out;
  SummaryTable table;
  for (const auto& t : treatments) {
    // Treatments of one name (two runs of one cohort) are told apart by their files.
    const bool shared = std::count_if(treatments.begin(), treatments.end(),
                                      [&](const Treatment& u) { return u.name == t.name; }) > 1;
    table.treatments.push_back(shared ? t.name + " (" + fs::path(t.data).filename().string() + ")" : t.name);
    table.cohortSizes.push_back(t.n);
  }
  const std::size_t count = treatments.size();
  // Stages by name, in the order the treatments bring them: a stage some treatments lack shows
  // "-" for them and is not compared.
  std::vector<std::string> stages;
  for (const auto& t : treatments)
    for (const auto& stage : t.preadultStages)
      if (std::find(stages.begin(), stages.end(), stage) == stages.end()) stages.push_back(stage);
  for (const auto& statistic : SummaryStatistics(stages)) {
    SummaryColumn column{statistic, {}, {}};
    bool everywhere = true;
    for (const auto& t : treatments) {
      column.values.push_back(ReadEstimate(t.base + statistic.file));
      everywhere = everywhere && column.values.back().present;
    }
    if (count >= 2 && everywhere) {
      // The paired test over all treatments, its report in the summary's folder.
      InFolder here(folder);
      auto session = std::make_unique<Session>();
      Session& S = *session;
      S.StartUp();
      SetStartUpConsole(S.console);
      S.runControl.quiet = true;
      AnswerBook book;
      book.AddOption("Fast paired bootstrap test?=Yes");
      book.AddOption("Read data file one by one for multiple comparison=" + std::to_string(count));
      for (std::size_t i = 0; i < count; ++i)
        book.AddOption("Input treatment " + std::to_string(i + 1) + "=" + treatments[i].base + statistic.file);
      book.AddOption("Task completed=OK");
      book.AddOption("Task completed!=Yes");
      ScriptedPrompts P(std::move(book));
      // A test that can't be made (a statistic without variation, say) leaves this statistic
      // without letters; the summary goes on.
      int code = kExitDone;
      if (!Press(S, P, "cmdPairedBootTest", "paired test of " + statistic.label + " (no letters)", code)) {
        table.columns.push_back(std::move(column));
        continue;
      }
      const auto& c = S.comparison;
      std::vector<double> means(count);
      std::vector<std::vector<double>> p(count, std::vector<double>(count, 1));
      std::vector<std::size_t> of(count + 1);
      for (int a = 1; a <= static_cast<int>(count); ++a)
        for (std::size_t i = 0; i < count; ++i)
          if (c.TreatmentFileSorted(a) == treatments[i].base + statistic.file) of[static_cast<std::size_t>(a)] = i;
      for (int a = 1; a <= static_cast<int>(count); ++a) {
        means[of[static_cast<std::size_t>(a)]] = c.BootMean(a);
        for (int b = 1; b <= static_cast<int>(count); ++b)
          if (a != b) p[of[static_cast<std::size_t>(a)]][of[static_cast<std::size_t>(b)]] = c.PairP(a, b);
      }
      column.letters = SignificanceLetters(means, p);
      // Two statistics may share a parameter name (both longevities are "Total longevity"):
      // each report is kept under its statistic's name.
      const fs::path report = folder / c.ReportName;
      const fs::path kept = folder / ("24-Paired boot test results-" + statistic.label + ".txt");
      fs::rename(report, kept, ec);
      if (ec) {
        std::cerr << "korvan analyze: cannot rename " << report.string() << ": " << ec.message() << '\n';
        return kExitProgramEnd;
      }
    }
    table.columns.push_back(std::move(column));
  }
  table.footer = "Seed " + std::to_string(seed) + " (the k-th treatment seed + k - 1), B = " + std::to_string(options.bootstrap) +
                 " bootstrap samples a treatment; letters: treatments that share one do not differ by the "
                 "paired bootstrap test (P > 0.05); KORVAN " + version + ".";
  const std::string csv = SummaryCsv(table), md = SummaryMarkdown(table);
  for (const auto& [name, text] : {std::pair{"summary.csv", csv}, std::pair{"summary.md", md}}) {
    std::ofstream f(folder / name, std::ios::binary | std::ios::trunc);
    f << text;
    if (!f.flush()) {
      std::cerr << "korvan analyze: cannot write " << (folder / name).string() << '\n';
      return kExitProgramEnd;
    }
  }
  std::cout << md << "Summary: " << (folder / "summary.csv").string() << ", " << (folder / "summary.md").string()
            << '\n';
  return kExitDone;
}

}  // namespace korvan::cli
