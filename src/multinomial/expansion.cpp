#include "multinomial/expansion.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "bootstrap/sorting.h"
#include "input/field_reader.h"
#include "multinomial/mnc.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/short_text.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kReadTitle = "Open multinomial expansion data file";
constexpr const char* kBeyondTen = "For n > 10, please use KORVAN (MNT-15).";

[[noreturn]] void BadExpansion(const std::string& path, const std::string& what) {
  throw ProgramEnd{
      "The file " + path + " is not a multinomial expansion of this cohort: " + what + "\nNo result file was written.",
      kReadTitle};
}

}  // namespace

void WriteExpansionFile(const std::string& path, int n) {
  if (n < 1 || n > kMaxMncCohort) throw ProgramEnd{kBeyondTen, "Multinomial expansion"};
  TextFile out(path);
  out.Write("Multinomial expansion for exact results of bootstrap (Sorted).");
  out.Write("Number of individuals =", n);
  const double nFactorial = FactorialOf(n);
  int parts[kMaxMncCohort + 1] = {};
  int k = 0;
  long serial = 0;
  int who[kMaxMncCohort + 1] = {};  // the individual of each part
  bool used[kMaxMncCohort + 1] = {};
  int list[kMaxMncCohort + 1] = {};
  while (NextCountPattern(n, parts, k)) {
    const double mnc = MultinomialCoefficient(nFactorial, parts, k);
    // Nested loops over the individuals of the parts: distinct individuals, and among parts of
    // equal count in ascending order, so that each composition comes once.
    std::function<void(int)> assign = [&](int part) {
      if (part == k) {
        int counts[kMaxMncCohort + 1] = {};
        for (int q = 0; q < k; ++q) counts[who[q]] = parts[q];
        int p = 0;
        for (int i = 1; i <= n; ++i)
          for (int c = 0; c < counts[i]; ++c) list[p++] = i;
        out.WritePart(++serial, mnc);
        for (int q = 0; q < n - 1; ++q) out.WritePart(list[q]);
        out.Write(list[n - 1]);
        return;
      }
      const int from = part > 0 && parts[part] == parts[part - 1] ? who[part - 1] + 1 : 1;
      for (int i = from; i <= n; ++i) {
        if (used[i]) continue;
        used[i] = true;
        who[part] = i;
        assign(part + 1);
        used[i] = false;
      }
    };
    assign(0);
  }
}

void MultinomialExpansion::PrepareMNCExpansion5Ind() {
  Flow("PrepareMNCExpansion5Ind");
  WriteExpansionFile(OutputName(S, "_0_MN expans-new.txt"), S.pool.OriginalCohortSize);
}

void MultinomialExpansion::PrepareMNCExpansionData() {
  Flow("PrepareMNCExpansionData");
  WriteExpansionFile(OutputName(S, "_0_MN expans-new.txt"), S.pool.OriginalCohortSize);
}

void MultinomialExpansion::AllMNCitems() {
  Flow("AllMNCitems");
  MultinomialRecord& M = S.multinomial;
  const int n = S.pool.OriginalCohortSize;
  const int a = P.MsgBox(
      "Import the file of all MNC items or create the file for concurrent life table data?\n\n"
      "Yes: Read existing MNC file.\n"
      "No: Create the MNC file (This function is not ready yet).\n"
      "Cancel: End the program.",
      "Read the file with all MNC or create the file of MNC?", kYesNoCancel);
  if (a == kCancel)
    throw ProgramEnd{"Cancel: End the program.", "Read the file with all MNC or create the file of MNC?"};
  if (a == kNo) {
    if (n > 6) {
      P.MsgBox("The multinomial expansion for n>6 is not ready yet.", "This option is not ready for n>6 yet.", kOKOnly);
      return;
    }
    M.ItemCount = static_cast<long>(CompositionCount(n));
    if (n == 5)
      PrepareMNCExpansion5Ind();
    else
      PrepareMNCExpansionData();
    P.Status("lblBootMsg", "Multinomial expansion written: " + OutputName(S, "_0_MN expans-new.txt") + "\n" +
                               "Total number of items =" + PrintNumber(static_cast<double>(M.ItemCount)));
    return;
  }
  if (n > kMaxMncCohort) {
    P.MsgBox(kBeyondTen, "Multinomial expansion", kOKOnly);
    return;
  }
  ReadMultinomialExpansionData();
  if (M.ItemCount == 0) return;
  CalcuFMpairLessthan2();
  P.Status("lblBootMsg", "Task 1 completed.\nTotal number of items =" + PrintNumber(static_cast<double>(M.ItemCount)));
  AllMNCitemsSortedonRo();
  P.Status("lblBootMsg", "Task 2 completed.\nTotal number of items =" + PrintNumber(static_cast<double>(M.ItemCount)));
  WriteAllitem1();
  WriteAllitem2SortedMN();
  WriteAllitem3R0MNC();
  WriteAllitem4R0MNCgrouped();
  P.Status("lblBootEnd", "Task ended at: " + DateTimeText());
}

void MultinomialExpansion::ReadMultinomialExpansionData() {
  Flow("ReadMultinomialExpansionData");
  MultinomialRecord& M = S.multinomial;
  M.ItemCount = 0;
  const std::string path = P.ChooseFile(kReadTitle);
  if (path.empty()) return;
  FieldReader in(path, FieldReader::Form::Record);
  auto number = [&](const char* what) {
    if (in.AtEnd()) BadExpansion(path, std::string("it ends before ") + what + ".");
    const double v = in.ReadNumber();
    if (!in.LastNumberValid() || !std::isfinite(v))
      BadExpansion(path, "\"" + in.LastText() + "\" stands where " + what + " belongs (line " +
                             std::to_string(in.Line()) + ").");
    return v;
  };
  if (in.AtEnd()) BadExpansion(path, "it is empty.");
  in.SkipLine();
  if (!in.AtEnd()) in.ReadString();
  const double size = number("the number of individuals");
  const int cohort = S.pool.OriginalCohortSize;
  if (size > kMaxMncCohort) {
    P.Status("lblBootMsg", "For n>0, please use version \"KORVAN (MNT-15)\"!");
    P.MsgBox(kBeyondTen, kReadTitle, kOKOnly);
    return;
  }
  if (size != cohort)
    BadExpansion(path, "it is the expansion of n = " + FullPrecision(size) + ", and the cohort has " +
                           std::to_string(cohort) + " individuals.");
  const int n = cohort;
  S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
  P.Status("lblBootMsg", "I am running multinomial expansion. \n(Sample size =" + PrintNumber(n) +
                             ").\nMNC began at :" + DateTimeText());
  const long items = static_cast<long>(CompositionCount(n));
  M.ItemSize = n;
  M.NFactorial = FactorialOf(n);
  M.NPowerN = PowerNN(n);
  M.MNCSum = 0;
  M.OriginalItem = 0;
  int counts[kMaxMncCohort + 1];
  // Each composition as a number of base n + 1 (its counts as digits), to find one that repeats.
  std::vector<std::uint64_t> codes;
  codes.reserve(static_cast<std::size_t>(items));
  for (long k = 1; k <= items; ++k) {
    const double serial = number("a serial number");
    if (!(std::fabs(serial) < 2e9) || serial != std::floor(serial))
      BadExpansion(path, "item " + std::to_string(k) + " has the serial number " + FullPrecision(serial) + ".");
    M.ItemSerial(k) = static_cast<std::int32_t>(serial);
    const double mnc = number("a multinomial coefficient");
    for (int i = 0; i <= n; ++i) counts[i] = 0;
    for (int p = 1; p <= n; ++p) {
      const double who = number("an individual number");
      if (who < 1 || who > n || who != std::floor(who))
        BadExpansion(path, "item " + std::to_string(k) + " holds individual " + FullPrecision(who) + ", outside 1.." +
                               std::to_string(n) + ".");
      M.Individual(k, p) = static_cast<std::int16_t>(who);
      ++counts[static_cast<int>(who)];
    }
    if (mnc != MultinomialCoefficient(M.NFactorial, counts + 1, n))
      BadExpansion(path, "item " + std::to_string(k) + " has MNC " + FullPrecision(mnc) + ", and its composition " +
                             FullPrecision(MultinomialCoefficient(M.NFactorial, counts + 1, n)) + ".");
    std::uint64_t code = 0;
    for (int i = 1; i <= n; ++i)
      code = code * static_cast<std::uint64_t>(n + 1) + static_cast<std::uint64_t>(counts[i]);
    codes.push_back(code);
    M.ItemMNC(k) = mnc;
    M.MNCSum += mnc;
    if (mnc == M.NFactorial) M.OriginalItem = k;
  }
  std::sort(codes.begin(), codes.end());
  if (std::adjacent_find(codes.begin(), codes.end()) != codes.end())
    BadExpansion(path, "a composition of individuals stands in it twice.");
  if (M.MNCSum != M.NPowerN)
    BadExpansion(path, "its " + std::to_string(items) + " coefficients add to " + FullPrecision(M.MNCSum) +
                           ", not n^n = " + FullPrecision(M.NPowerN) + ".");
  M.ItemCount = items;
  P.Status("lblBootMsg", "The original cohort is MNC no. " + std::to_string(M.OriginalItem) +
                             ". The MNC of this item is " + FullPrecision(M.NFactorial));
}

void MultinomialExpansion::CalcuFMpairLessthan2() {
  Flow("CalcuFMpairLessthan2");
  MultinomialRecord& M = S.multinomial;
  const bool twoSex = S.options.MatingMode == "Yes";
  const int n = M.ItemSize;
  M.OnePair = M.TwoPairs = M.OneFemale = M.TwoFemales = FertileTally{};
  auto tally = [](FertileTally& t, bool fertile, double mnc) {
    if (fertile) {
      ++t.fertileItems;
      t.fertileMNC += mnc;
    } else {
      ++t.infertileItems;
      t.infertileMNC += mnc;
    }
  };
  for (long k = 1; k <= M.ItemCount; ++k) {
    int females = 0, males = 0, reproductive = 0;
    double eggs = 0;
    for (int p = 1; p <= n; ++p) {
      const int i = M.Individual(k, p);
      const double e = S.pool.OriginalTotalFecundity(i);
      eggs += e;
      const std::string& sex = S.pool.OriginalSex(i);
      if (IsText(sex, 'F')) {
        ++females;
        if (e > 0) ++reproductive;
      } else if (IsText(sex, 'M')) {
        ++males;
      }
    }
    // Fertile pairs: a reproductive female with a male; a parthenogenetic female needs none.
    const int pairs = twoSex ? std::min(reproductive, males) : reproductive;
    const bool fertile = pairs >= 1;
    M.ItemFemales(k) = static_cast<std::int8_t>(females);
    M.ItemMales(k) = static_cast<std::int8_t>(males);
    M.ItemReproductiveFemales(k) = static_cast<std::int8_t>(reproductive);
    M.ItemFertile(k) = fertile ? 1 : 0;
    M.ItemEggs(k) = eggs;
    M.ItemMeanFecundity(k) = fertile ? eggs / females : 0;
    M.ItemR0(k) = fertile ? eggs / n : 0;
    M.ItemProbability(k) = M.ItemMNC(k) / M.NPowerN;
    tally(M.OnePair, fertile, M.ItemMNC(k));
    tally(M.TwoPairs, pairs >= 2, M.ItemMNC(k));
    tally(M.OneFemale, reproductive >= 1, M.ItemMNC(k));
    tally(M.TwoFemales, reproductive >= 2, M.ItemMNC(k));
  }
}

void MultinomialExpansion::AllMNCitemsSortedonRo() {
  Flow("AllMNCitemsSortedonRo");
  MultinomialRecord& M = S.multinomial;
  SortStore& s = S.boot.sort;
  const std::string flow = S.options.FlowMode;
  S.options.FlowMode = "No";
  s.QuickRangesWanted = 1024;
  s.SortCount = static_cast<std::int32_t>(M.ItemCount);
  for (long k = 1; k <= M.ItemCount; ++k) {
    s.SortInValue(k) = M.ItemR0(k);
    s.SortInIndex(k) = static_cast<std::int32_t>(k);
  }
  QuickSort(s);
  for (long k = 1; k <= M.ItemCount; ++k) M.SortedItem(k) = s.SortIndex(k);
  S.options.FlowMode = flow;
}

}  // namespace korvan
