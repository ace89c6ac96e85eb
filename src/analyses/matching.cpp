// Matching of preadult and adult life tables: the two readers and their checks, and the run of
// B matches on the cores of the machine.
#include "analyses/matching.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "bootstrap/resampling.h"
#include "engine/life_table_engine.h"
#include "engine/population_parameters.h"
#include "engine/stage_statistics.h"
#include "bootstrap/uniform_random.h"
#include "input/data_file_reader.h"
#include "input/data_file_writer.h"
#include "input/field_reader.h"
#include "run/serialized_prompts.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

constexpr const char* kErrorTitle = "Error in data file";
const char* const kCorrect = "\nPlease correct your data and rerun this program.";
// Draws of one match that may be repeated for want of an effective one before the run stops.
constexpr std::int32_t kMaxRedraws = 1000000;

char SexCode(const std::string& sex) { return sex.size() == 1 ? sex[0] : '?'; }

// The two questions of a run: only effective matches, and whether reproduction needs both sexes.
void AskMatchKind(PromptService& P, MatchRecord& M) {
  M.OnlyEffectiveMatch =
      P.MsgBox("Do you want only effective bootstrap match?", "Only effective match?", kYesNo) == kYes ? "Yes" : "No";
  M.MatingRequired = P.MsgBox("Is two-sex mating necessary for a successful reproduction?\n"
                              "If parthenogenetic reproduction is possible, you can choose \"No\". \n"
                              "If there are only females in your data file, you MUST choose \"No\". ",
                              "Two-sex mating?", kYesNo) == kYes
                         ? "Yes"
                         : "No";
}

// What one worker needs of the two tables, looked up once before the loop.
struct MatchTables {
  std::vector<char> immatureSex, adultSex;  // index 1..count
  int immatureCount = 0, adultCount = 0;
  explicit MatchTables(const SessionStore& S) {
    immatureCount = S.immature.ImmatureCount;
    adultCount = S.adult.AdultCohortSize;
    immatureSex.assign(static_cast<std::size_t>(immatureCount) + 1, '?');
    adultSex.assign(static_cast<std::size_t>(adultCount) + 1, '?');
    for (int k = 1; k <= immatureCount; ++k) immatureSex[static_cast<std::size_t>(k)] = SexCode(S.immature.ImmatureSex(k));
    for (int k = 1; k <= adultCount; ++k) adultSex[static_cast<std::size_t>(k)] = SexCode(S.adult.AdultIndividualSex(k));
  }
};

// One worker of the loop: draws (or takes from the record) match b, builds its table in the
// worker's workspace and solves it with the engine's replicate pass.
class MatchWorker {
 public:
  MatchWorker(Session& S, PromptService& P, Workspace& ws, const MatchTables& t)
      : S_(S), P_(P), M_(S.match), ws_(ws), t_(t) {}

  // Position k of the last table built is a female that died in winter: her list is "-1" alone.
  std::vector<char> diedInWinter = std::vector<char>(kMaxIndividual + 1, 0);

  // Draws the immature individuals of match b and their adults into the record; returns
  // whether the match is effective.
  bool Draw(long b) {
    const int n = M_.MatchSampleSize;
    std::int16_t* imm = &M_.MatchImmature[Row(b)];
    std::int16_t* adult = &M_.MatchAdult[Row(b)];
    draw_.SeedSample(M_.Seed, b);
    const bool twoSex = M_.MatingRequired == "Yes";
    std::int32_t redraws = 0;
    bool effective = false;
    for (;;) {
      int females = 0, males = 0;
      for (int k = 0; k < n; ++k) {
        const int i = DrawIndividual(draw_, t_.immatureCount);
        imm[k] = static_cast<std::int16_t>(i);
        const char c = t_.immatureSex[static_cast<std::size_t>(i)];
        females += c == 'F';
        males += c == 'M';
      }
      effective = twoSex ? females > 0 && males > 0 : females > 0;
      if (effective || M_.OnlyEffectiveMatch != "Yes") break;
      if (++redraws == kMaxRedraws)
        throw ProgramEnd{"Match " + std::to_string(b) + " found no effective draw in " + std::to_string(kMaxRedraws) +
                             " draws: the immature table has too few " + (females == 0 ? "females" : "males") +
                             " for samples of " + std::to_string(n) + ".",
                         "Only effective match?"};
    }
    M_.MatchRedraws[static_cast<std::size_t>(b)] = redraws;
    for (int k = 0; k < n; ++k) {
      const char c = t_.immatureSex[static_cast<std::size_t>(imm[k])];
      adult[k] = 0;
      if (!effective || c == 'N') continue;
      int a = 0;
      do a = DrawIndividual(draw_, t_.adultCount);
      while (t_.adultSex[static_cast<std::size_t>(a)] != c);
      adult[k] = static_cast<std::int16_t>(a);
    }
    return effective;
  }

  // The matched table of match b in the workspace's cohort, the winter drawn from its own
  // stream of (run seed, -b); returns the eggs of the match per female.
  double Build(long b) {
    const int n = M_.MatchSampleSize;
    const int m = S_.header.StageCount;
    const std::int16_t* imm = &M_.MatchImmature[Row(b)];
    const std::int16_t* adult = &M_.MatchAdult[Row(b)];
    winter_.SeedSample(M_.Seed, -static_cast<std::int64_t>(b));
    Cohort& C = ws_.cohort;
    const ImmatureLifeTable& I = S_.immature;
    const AdultLifeTable& A = S_.adult;
    double eggs = 0;
    int females = 0;
    for (int k = 1; k <= n; ++k) {
      const int i = imm[k - 1];
      const std::string& sex = I.ImmatureSex(i);
      C.IndividualNo(k) = k;
      C.RowSource(k) = 0;  // her rows are built here, not a pool individual's whole rows
      if (C.IndividualSex(k) != sex) C.IndividualSex(k) = sex;
      for (int j = 1; j <= m; ++j) C.StageDuration(k, j) = 0;
      for (int j = 1; j < m; ++j) {
        const int d = I.ImmatureDuration(i, j);
        C.StageDuration(k, j) = d;
        if (d < 0) break;
      }
      const char c = SexCode(sex);
      diedInWinter[static_cast<std::size_t>(k)] = 0;
      if (c == 'N') continue;
      const int a = adult[k - 1];
      const int own = A.AdultLongevity(a);
      const int winter = M_.OverwinterDuration;
      const bool diesInWinter = M_.OverwinterMortality > winter_.Next();
      diedInWinter[static_cast<std::size_t>(k)] = diesInWinter && c == 'F';
      int duration = 0;
      if (diesInWinter) {
        duration = CInt(winter * winter_.Next()) + own;
        if (c == 'F')
          for (int day = 1; day <= duration; ++day) C.Fecundity(k, day) = 0;
      } else {
        duration = winter + own;
        if (c == 'F') {
          for (int day = 1; day <= winter; ++day) C.Fecundity(k, day) = 0;
          for (int day = 1; day <= own; ++day) {
            const double e = A.AdultFecundity(a, day);
            C.Fecundity(k, winter + day) = e;
            eggs += e;
          }
        }
      }
      C.StageDuration(k, m) = duration;
      if (c == 'F') {
        C.Fecundity(k, duration + 1) = -1;
        ++females;
      }
    }
    C.CohortSize = n;
    FormTotalLongevity(C, m);
    ws_.tables.LastAge = C.MaxLongevity - 1;
    return females > 0 ? eggs / females : 0;
  }

  void Solve(long b, double fecundity) {
    const auto i = static_cast<std::size_t>(b);
    if (!(fecundity > 0)) {
      // Nobody laid: no population parameters; the match stays out of the statistics.
      M_.MatchEffective[i] = kMatchNoOffspring;
      M_.MatchR[i] = M_.MatchLambda[i] = M_.MatchR0[i] = M_.MatchT[i] = M_.MatchGRR[i] = 0;
      M_.MatchLongevity[i] = M_.MatchFecundity[i] = 0;
      return;
    }
    ws_.run.Boot = static_cast<double>(b);
    ws_.run.IsResamplingFlag = "y";
    ws_.run.IsBasicRunFlag = "n";
    ws_.run.ResampleKind = "b";
    // The engine's twins of a replicate, up to the parameters and the longevity: a matched
    // table needs neither the stage statistics nor the oviposition periods of a bootstrap.
    ws_.boot.sample.Clear();
    const Session& session = S_;
    LifeTableEngine life(session, S_.channels, P_, ws_);
    StageStatsEngine stats(session, S_.channels, P_, ws_);
    ParameterEngine params(session, S_.channels, P_, ws_);
    life.Life01();
    stats.Life10boot();
    life.Life03();
    life.Life04();
    params.Life05();
    const ReplicateRecord& rec = ws_.boot.sample;
    M_.MatchR[i] = rec.r;
    M_.MatchLambda[i] = rec.lambda;
    M_.MatchR0[i] = rec.R0;
    M_.MatchT[i] = rec.T;
    M_.MatchGRR[i] = rec.GRR;
    M_.MatchLongevity[i] = rec.Longevity;
    M_.MatchFecundity[i] = fecundity;
  }

 private:
  std::size_t Row(long b) const { return static_cast<std::size_t>(b - 1) * static_cast<std::size_t>(M_.MatchSampleSize); }

  Session& S_;
  PromptService& P_;
  MatchRecord& M_;
  Workspace& ws_;
  const MatchTables& t_;
  SampleGenerator draw_, winter_;
};

// The first matches leave their age-stage matrices n(x,j), s(x,j) and f(x,j) in files.
constexpr long kMatricesWritten = 10;

void WriteMatchMatrices(const Session& S, long b, const Workspace& ws) {
  const std::string match = "_2D_Match " + std::to_string(b) + "-";
  const int last = ws.tables.LastAge;  // the rows of the Basic Run's figures
  WriteStageFigure(S, match + "Nxj.txt", "Age-stage number n(x,j) of the matched table", ws.tables.Nxj, last);
  WriteStageFigure(S, match + "Sxj.txt", "Age-stage survival rate s(x,j) of the matched table", ws.tables.Sxj, last);
  WriteStageFigure(S, match + "Fxj.txt", "Age-stage fecundity f(x,j) of the matched table", ws.tables.Fxj, last);
}

}  // namespace

std::string MatchFileBase(const std::string& path, const std::string& kind) {
  std::string lower = kind;
  if (!lower.empty() && lower[0] >= 'A' && lower[0] <= 'Z') lower[0] = static_cast<char>(lower[0] - 'A' + 'a');
  const std::string endings[] = {"_0-" + kind + " life table.txt", "_0_" + kind + " life table.txt",
                                 "0-" + kind + " life table.txt",  "0_" + kind + " life table.txt",
                                 "_0-" + kind + ".txt",             "_0_" + kind + ".txt",
                                 "0-" + kind + ".txt",              "0_" + kind + ".txt",
                                 "_" + kind + ".txt",               "-" + kind + ".txt"};
  auto endsWith = [&](const std::string& e) {
    return path.size() >= e.size() && path.compare(path.size() - e.size(), e.size(), e) == 0;
  };
  for (const std::string& e : endings) {
    if (endsWith(e)) return path.substr(0, path.size() - e.size());
    std::string small = e;
    const std::size_t at = small.find(kind);
    small.replace(at, kind.size(), lower);
    if (endsWith(small)) return path.substr(0, path.size() - small.size());
  }
  return path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
}

// ---------------------------------------------------------------------------------------
// The two files

void MatchedLifeTables::InputImmatureData() {
  Flow("InputImmatureData");
  DataFileReader(S, P).InputImmatureLifeTable();
  const ImmatureLifeTable& I = S.immature;
  if (I.ImmatureFilePath.empty()) throw ProgramEnd{"No immature life table was chosen.", "Open immature life table"};
  if (I.head.StageCount < 2 || I.head.StageCount > kMaxStage - 1)
    throw ProgramEnd{"The immature life table must have 2 to " + std::to_string(kMaxStage - 1) +
                         " stages (the adult stage included).",
                     kErrorTitle};
  S.match.MatchBase = MatchFileBase(I.ImmatureFilePath, "Immature");
  // The run's own output beside the files it matches, and the flow record on demand.
  S.identity.OutputFileName = S.match.MatchBase + "_2A_Basic_output.txt";
  S.channels.MainOutput.Open(S.identity.OutputFileName);
  if (P.MsgBox("Do you need the record of program flow?", "Do you need flow record?", kYesNo, 2) == kYes) {
    const std::size_t slash = I.ImmatureFilePath.find_last_of('/');
    S.options.FlowMode = "Yes";
    S.identity.FlowFileName = (slash == std::string::npos ? "" : I.ImmatureFilePath.substr(0, slash + 1)) +
                              "Matched_Flow.txt";
    S.channels.Flow.Open(S.identity.FlowFileName);
  }
  S.match.ImmatureRead = "Yes";
  P.Status("lblImmatureNr", "n =" + std::to_string(I.ImmatureCount));
}

void MatchedLifeTables::InputAdultData() {
  Flow("InputAdultData");
  const std::string path = P.ChooseFile("Open adult life table");
  if (path.empty()) throw ProgramEnd{"No adult life table was chosen.", "Open adult life table"};
  FieldReader in(path);
  AdultLifeTable& A = S.adult;
  A.AdultFilePath = path;
  ReadSideTableHead(in, A.head, A.AdultCohortSize);
  if (A.AdultCohortSize < 1 || A.AdultCohortSize > kMaxIndividual)
    throw ProgramEnd{"The adult life table must hold 1 to " + std::to_string(kMaxIndividual) + " individuals.",
                     kErrorTitle};
  for (long i = 1; i <= A.AdultCohortSize; ++i) {
    const std::string no = std::to_string(i);
    A.AdultIndividualNo(i) = CInt16(in.ReadNumber());
    A.AdultIndividualSex(i) = in.ReadString();
    const double d = in.ReadNumber();
    if (d != std::floor(d)) throw ProgramEnd{NonIntegerFaultText(i), kErrorTitle};
    // A zero duration is read (with no eggs) for the check to name it.
    if (d < 0 || d > kMaxAge - 1)
      throw ProgramEnd{"Check data of individual no. " + no + ". The adult duration " + FullPrecision(d) +
                           " must be a whole number from 0 to " + std::to_string(kMaxAge - 1) + ".",
                       kErrorTitle};
    A.AdultLongevity(i) = static_cast<int>(d);
    for (int day = 1; day <= d; ++day) A.AdultFecundity(i, day) = in.ReadNumber();
  }
  S.match.AdultRead = "Yes";
  P.Status("lblAdultNr", "n =" + std::to_string(A.AdultCohortSize));
}

void MatchedLifeTables::CheckDataFileOfImmmature() {
  Flow("CheckDataFileOfImmmature");
  const ImmatureLifeTable& I = S.immature;
  const int m = I.head.StageCount;
  for (long k = 1; k <= I.ImmatureCount; ++k) {
    const std::string no = std::to_string(k);
    if (I.ImmatureNo(k) != k)
      throw ProgramEnd{"Check data of individual no. " + std::to_string(k - 1) + " or " + no + kCorrect, kErrorTitle};
    const std::string& sex = I.ImmatureSex(k);
    if (sex != "F" && sex != "M" && sex != "N") throw ProgramEnd{"Sex of individual no. " + no + " is " + sex + "?", kErrorTitle};
    int last = 0;
    for (int j = 1; j < m; ++j) {
      last = I.ImmatureDuration(k, j);
      if (last == 0) throw ProgramEnd{"Developmental time of individual no." + no + " is ZERO.", kErrorTitle};
      if (last < 0) break;
    }
    if (sex == "N" && last > 0)
      throw ProgramEnd{"Individual no." + no + " is N-type. But the last stage is positive.", kErrorTitle};
  }
}

void MatchedLifeTables::CheckDatafileOfAdult() {
  Flow("CheckDatafileOfAdult");
  const AdultLifeTable& A = S.adult;
  for (long k = 1; k <= A.AdultCohortSize; ++k) {
    const std::string no = std::to_string(k);
    if (A.AdultIndividualNo(k) != k)
      throw ProgramEnd{"Check data of individual no. " + std::to_string(k - 1) + " or " + no + kCorrect, kErrorTitle};
    const std::string& sex = A.AdultIndividualSex(k);
    if (sex != "F" && sex != "M") throw ProgramEnd{"Sex of individual no. " + no + " is " + sex + "?", kErrorTitle};
    if (A.AdultLongevity(k) == 0) throw ProgramEnd{"Developmental time of individual no." + no + " is ZERO.", kErrorTitle};
  }
}

// ---------------------------------------------------------------------------------------
// The run

void MatchedLifeTables::PrepareSessionForMatches() {
  const SideTableHead& h = S.immature.head;
  CohortHeader& H = S.header;
  H.StageCount = h.StageCount;
  H.TypeCount = h.TypeCount;
  for (int t = 0; t <= kMaxType; ++t) {
    H.TypeCode(t) = h.TypeCode(t);
    for (int j = 0; j <= kMaxStage + 1; ++j) H.StageName(t, j) = h.StageName(t, j);
  }
  H.SpecialGroup(1) = h.SpecialGroup(1);
  H.SpecialGroup(2) = h.SpecialGroup(2);
  H.RegularLifeTable = "Yes";
  // Row 1 of the names carries both adult stages, as a data file's reading leaves it.
  if (h.TypeCount >= 2 && H.StageName(1, h.StageCount + 1).empty()) H.StageName(1, h.StageCount + 1) = h.StageName(2, h.StageCount);
  H.MaleCount = 0;
  for (long k = 1; k <= S.immature.ImmatureCount; ++k) H.MaleCount += S.immature.ImmatureSex(k) == "M";
  S.identity.ProjectName = h.ProjectName;
  S.identity.UserName = h.UserName;
  S.identity.TreatmentName = h.TreatmentName;
  S.identity.DataFileBase = S.match.MatchBase;
  S.match.RunLabel = h.TreatmentName == S.adult.head.TreatmentName ? "Matched-" + h.TreatmentName : "Matched";
  S.options.AnalysisMethod = "Calculus";
  S.options.AgeConvention = "x+1";
  S.options.MatingMode = S.match.MatingRequired;
  S.settings.TimeUnit = 1;
  S.settings.FecundityFactor = 1;
  S.settings.CriticalFemaleAge = 0;
  S.settings.PrecisionCalculus = 1e-07;
}

void MatchedLifeTables::RefuseImpossibleRun() {
  const MatchRecord& M = S.match;
  if (M.ImmatureRead != "Yes" || M.AdultRead != "Yes")
    throw ProgramEnd{"Open the immature data (A1) and the adult data (A2) before the run.", "A7. Run random match"};
  if (M.MatchSampleSize < 1 || M.MatchSampleSize > kMaxIndividual)
    throw ProgramEnd{"The sample size must be from 1 to " + std::to_string(kMaxIndividual) + ".", "A3. Sample size"};
  if (!(M.MatchB >= 1 && M.MatchB <= kMaxBootB) || M.MatchB != std::floor(M.MatchB))
    throw ProgramEnd{"The bootstrap number B must be a whole number from 1 to " + std::to_string(kMaxBootB) + ".",
                     "A4. Bootstrap B"};
  if (M.OverwinterDuration < 0 || M.OverwinterDuration > kMaxAge / 2)
    throw ProgramEnd{"The overwinter duration must be from 0 to " + std::to_string(kMaxAge / 2) + ".",
                     "A5. Overwinter duration"};
  // The oldest matched individual must fit the tables' ages.
  int longestImmature = 0, longestAdult = 0;
  for (long k = 1; k <= S.immature.ImmatureCount; ++k) {
    int total = 0;
    for (int j = 1; j < S.immature.head.StageCount; ++j) total += std::abs(S.immature.ImmatureDuration(k, j));
    longestImmature = std::max(longestImmature, total);
  }
  for (long k = 1; k <= S.adult.AdultCohortSize; ++k) longestAdult = std::max(longestAdult, S.adult.AdultLongevity(k));
  if (longestImmature + M.OverwinterDuration + longestAdult + 1 > kMaxAge)
    throw ProgramEnd{"A matched individual could live " + std::to_string(longestImmature) + " + " +
                         std::to_string(M.OverwinterDuration) + " + " + std::to_string(longestAdult) +
                         " time units, beyond the " + std::to_string(kMaxAge) + " ages a life table holds.",
                     "A5. Overwinter duration"};
  const MatchTables t(S);
  bool hasF = false, hasM = false;
  for (int k = 1; k <= t.immatureCount; ++k) {
    hasF = hasF || t.immatureSex[static_cast<std::size_t>(k)] == 'F';
    hasM = hasM || t.immatureSex[static_cast<std::size_t>(k)] == 'M';
  }
  for (const char c : {'F', 'M'}) {
    if (!(c == 'F' ? hasF : hasM)) continue;
    if (std::find(t.adultSex.begin() + 1, t.adultSex.end(), c) == t.adultSex.end())
      throw ProgramEnd{std::string("The immature life table has ") + (c == 'F' ? "females" : "males") +
                           ", but the adult life table has no " + (c == 'F' ? "female" : "male") +
                           " adult to match them with.",
                       "Error in data file"};
  }
  if (M.OnlyEffectiveMatch == "Yes" && M.MatingRequired == "Yes" && M.MatchSampleSize < 2)
    throw ProgramEnd{"A sample of one individual never holds both sexes: two-sex matches need a sample size of 2 or "
                     "more.",
                     "Only effective match?"};
  if (M.OnlyEffectiveMatch == "Yes" && (!hasF || (M.MatingRequired == "Yes" && !hasM)))
    throw ProgramEnd{"No match can be effective: the immature life table has no " +
                         std::string(!hasF ? "female" : "male") +
                         ". Choose \"No\" for \"Only effective match?\" or use another file.",
                     "Only effective match?"};
}

void MatchedLifeTables::AllocateMatches(long B) {
  MatchRecord& M = S.match;
  const std::size_t rows = static_cast<std::size_t>(B) * static_cast<std::size_t>(M.MatchSampleSize);
  M.MatchImmature.assign(rows, 0);
  M.MatchAdult.assign(rows, 0);
  const std::size_t n = static_cast<std::size_t>(B) + 1;
  M.MatchEffective.assign(n, 0);
  M.MatchRedraws.assign(n, 0);
  for (auto* v : {&M.MatchR, &M.MatchLambda, &M.MatchR0, &M.MatchFecundity, &M.MatchT, &M.MatchGRR, &M.MatchLongevity})
    v->assign(n, 0);
}

void MatchedLifeTables::RunMatchLoop(bool fromRecord) {
  MatchRecord& M = S.match;
  const long B = static_cast<long>(M.MatchB);
  PrepareSessionForMatches();
  int threads = S.runControl.threads > 0 ? S.runControl.threads
                                         : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  const bool teaching = M.TeachingDemo == "Yes" && ShowMatch;
  if (S.options.FlowMode != "No" || teaching) threads = 1;
  threads = static_cast<int>(std::min<long>(threads, B));
  const MatchTables tables(S);
  std::vector<std::unique_ptr<Workspace>> spaces;
  for (int w = 0; w < threads; ++w) spaces.push_back(std::make_unique<Workspace>(S.ws));

  SerializedPrompts prompts(P);
  constexpr long kChunk = 64;
  std::atomic<long> next{1}, done{0};
  std::atomic<long> firstFailure{std::numeric_limits<long>::max()};
  std::mutex failMutex;
  std::exception_ptr failure;
  auto work = [&](int w) {
    MatchWorker worker(S, prompts, *spaces[static_cast<std::size_t>(w)], tables);
    long b = 0;
    try {
      for (;;) {
        const long first = next.fetch_add(kChunk);
        if (first > B || first >= firstFailure.load()) break;
        const long last = std::min(B, first + kChunk - 1);
        for (b = first; b <= last && b < firstFailure.load(); ++b) {
          const bool effective = fromRecord ? M.MatchEffective[static_cast<std::size_t>(b)] != kMatchIneffective : worker.Draw(b);
          M.MatchEffective[static_cast<std::size_t>(b)] = effective ? kMatchEffective : kMatchIneffective;
          if (effective) worker.Solve(b, worker.Build(b));
          if (effective && b <= kMatricesWritten) WriteMatchMatrices(S, b, *spaces[static_cast<std::size_t>(w)]);
          if (teaching && effective) ShowMatch(b, *spaces[static_cast<std::size_t>(w)]);
          done.fetch_add(1);
        }
      }
    } catch (...) {
      std::lock_guard<std::mutex> lock(failMutex);
      if (b < firstFailure.load()) {
        firstFailure.store(b);
        failure = std::current_exception();
      }
    }
  };
  const auto begin = std::chrono::steady_clock::now();
  // The teaching demo shows each match's chart from this thread, one match after the other.
  if (teaching) work(0);
  const int spawned = teaching ? 0 : threads;
  std::atomic<int> running{spawned};
  std::vector<std::thread> pool;
  for (int w = 0; w < spawned; ++w)
    pool.emplace_back([&, w] {
      work(w);
      running.fetch_sub(1);
    });
  // Progress and the pace are shown from this thread, as the front end expects them.
  bool paced = false;
  while (running.load() > 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const long d = done.load();
    prompts.Progress(d, B);
    if (!paced && d >= 100 && B > 100) {
      paced = true;
      const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
      const double minutes = seconds / static_cast<double>(d) * static_cast<double>(B) / 60;
      prompts.Status("lblMatchTime", "It will take " + FullPrecision(RoundDisplayOrWhole(minutes, 2)) + " min.\nEnd: " +
                                         ClockText("%m/%d/%Y %H:%M:%S", minutes * 60));
    }
  }
  for (auto& t : pool) t.join();
  if (failure) std::rethrow_exception(failure);
  P.Progress(B, B);
  long ineffective = 0;
  for (long b = 1; b <= B; ++b) ineffective += M.MatchRedraws[static_cast<std::size_t>(b)];
  M.IneffectiveMatches = ineffective;
}

void MatchedLifeTables::MatchMeans() {
  MatchRecord& M = S.match;
  const long B = static_cast<long>(M.MatchB);
  double r = 0, lambda = 0, R0 = 0, T = 0, F = 0;
  long E = 0;
  for (long b = 1; b <= B; ++b) {
    const auto i = static_cast<std::size_t>(b);
    if (M.MatchEffective[i] != kMatchEffective) continue;
    ++E;
    r += M.MatchR[i];
    lambda += M.MatchLambda[i];
    R0 += M.MatchR0[i];
    T += M.MatchT[i];
    F += M.MatchFecundity[i];
  }
  M.EffectiveMatches = E;
  const double e = E > 0 ? static_cast<double>(E) : 1;
  M.MeanR = r / e;
  M.MeanLambda = lambda / e;
  M.MeanR0 = R0 / e;
  M.MeanT = T / e;
  M.MeanFecundity = F / e;
  P.Status("txtMeanBootR0", FullPrecision(RoundDisplayOrWhole(M.MeanR0, 4)));
  P.Status("txtMeanBootT", FullPrecision(RoundDisplayOrWhole(M.MeanT, 4)));
  P.Status("txtMeanBootLambda", FullPrecision(RoundDisplayOrWhole(M.MeanLambda, 6)));
  P.Status("txtMeanBootr", FullPrecision(RoundDisplayOrWhole(M.MeanR, 6)));
  P.Status("txtMeanBootFecundity", FullPrecision(RoundDisplayOrWhole(M.MeanFecundity, 4)));
}

void MatchedLifeTables::Command7_Click() {
  Flow("Command7_Click");
  const int same = P.MsgBox(
      "If it is the first time that you analyze this data file, you must choos \"No\". \n"
      "If you have already completed the bootstrap match for this data file before, you can \n"
      "use the same bootstrap samples for this run (Click on \"Yes\".) \n"
      "Attention!  This good option should be used with large B. \n"
      "There are always variations among bootstraps. \n"
      "The larger B you use, the more stable results you will get. ",
      "SameBootstrapMatch", kYesNo, 2);
  S.match.TeachingDemo =
      P.MsgBox("Do you want to show the variability of matched life tables? (Yes or No)\nSelect Yes for teaching.",
               "Teaching demo?", kYesNo, 2) == kYes
          ? "Yes"
          : "No";
  if (same == kYes)
    RunSameBootstrapRandomMatch();
  else
    RunFirstTimeRunRandomMatch();
}

void MatchedLifeTables::RunFirstTimeRunRandomMatch() {
  Flow("RunFirstTimeRunRandomMatch");
  MatchRecord& M = S.match;
  M.SameMatch = "No";
  AskMatchKind(P, M);
  RefuseImpossibleRun();
  AllocateMatches(static_cast<long>(M.MatchB));
  RunAndReport(false);
}

void MatchedLifeTables::RunSameBootstrapRandomMatch() {
  Flow("RunSameBootstrapRandomMatch");
  MatchRecord& M = S.match;
  M.SameMatch = "Yes";
  const std::string path = P.ChooseFile("Read match record (file no. 2C).");
  if (path.empty()) throw ProgramEnd{"No match record was chosen.", "Read match record (file no. 2C)."};
  M.RecordPath = path;
  AskMatchKind(P, M);
  M.OnlyEffectiveMatch = "No";  // the record tells which matches are effective
  if (!ReadSameBootstrapData()) return;
  RefuseImpossibleRun();
  RunAndReport(true);
}

void MatchedLifeTables::RunAndReport(bool fromRecord) {
  MatchRecord& M = S.match;
  P.Status("lblMatchMsg", "I am running bootstrap match. (B=" + FullPrecision(M.MatchB) + ").\nPlease wait!\nDon't touch me!");
  M.Seed = S.runControl.hasSeed ? S.runControl.seed : SeedFromClock();
  RunMatchLoop(fromRecord);
  MatchMeans();
  WriteMatchRecord();
  Boot01New();
  WriteEffectiveBootstrapInColumn();
  P.MsgBox("Completed and congratulation!", "Task completed");
}

void MatchedLifeTables::WriteMatchLifeTable(long b, const std::string& path, const std::string& titleLine,
                                            const std::string& treatmentLine) {
  PrepareSessionForMatches();
  const MatchTables tables(S);
  MatchWorker worker(S, P, S.ws, tables);
  worker.Build(b);
  const Cohort& C = S.ws.cohort;
  TextFile out(path);
  LifeTableRecords records{C.IndividualSex, C.StageDuration, C.Fecundity, C.CohortSize, {}};
  records.eggless = [&worker](long k) { return worker.diedInWinter[static_cast<std::size_t>(k)] != 0; };
  WriteLifeTableLayout(out, S, LifeTableHead{titleLine, S.immature.head.UserName, treatmentLine}, records);
}

}  // namespace korvan
