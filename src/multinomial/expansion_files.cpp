// The five files of an analysed multinomial expansion ("_0_MNT_1" to "_0_MNT_5").
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "multinomial/expansion.h"
#include "text/numbers.h"
#include "text/short_text.h"
#include "text/text_file.h"

namespace korvan {

namespace {

// Two R0 closer than this are one value.
constexpr double kSameR0 = 1e-10;

std::string IndividualsText(MultinomialRecord& M, long item) {
  std::string t;
  for (int p = 1; p <= M.ItemSize; ++p) {
    if (p > 1) t += '-';
    t += std::to_string(M.Individual(item, p));
  }
  return t;
}

// Columns of the item table behind the list of individuals.
struct ItemColumns {
  int female, male, fecundity, r0, mnc, p, pairs, cumuFertile, cumuMNC;
  explicit ItemColumns(int n) {
    female = 9 + 3 * n + 2;
    male = female + 8;
    fecundity = male + 8;
    r0 = fecundity + 12;
    mnc = r0 + 12;
    p = mnc + 12;
    pairs = p + 22;
    cumuFertile = pairs + 10;
    cumuMNC = cumuFertile + 14;
  }
};

}  // namespace

void MultinomialExpansion::WriteItemTable(TextFile& out, bool sorted) const {
  MultinomialRecord& M = S.multinomial;
  const bool twoSex = S.options.MatingMode == "Yes";
  const ItemColumns c(M.ItemSize);
  if (sorted) {
    out.Print(" A", Tab{9}, "B", Tab{c.female}, "C", Tab{c.male}, "D", Tab{c.fecundity}, "E", Tab{c.r0}, "F",
              Tab{c.mnc}, "G", Tab{c.p}, "H", Tab{c.pairs}, "I", Tab{c.cumuFertile}, "J", Tab{c.cumuMNC}, "K");
    out.Print(" MNC", Tab{9}, "Ind", Tab{c.female}, "Female", Tab{c.male}, "Male", Tab{c.fecundity}, "Fecund.",
              Tab{c.r0}, "Ro of", Tab{c.mnc}, "MNC", Tab{c.p}, "P(MNC)=", Tab{c.pairs}, "Fertile", Tab{c.cumuFertile},
              "Cumu.", Tab{c.cumuMNC}, "Cumu.");
    out.Print(" no.", Tab{9}, "No.", Tab{c.r0}, "(this)", Tab{c.p}, "G/(n^n)", Tab{c.pairs}, "pairs",
              Tab{c.cumuFertile}, "f. cohort", Tab{c.cumuMNC}, "MNC");
  } else {
    out.Print(" A", Tab{9}, "B", Tab{c.female}, "C", Tab{c.male}, "D", Tab{c.fecundity}, "E", Tab{c.r0}, "F",
              Tab{c.mnc}, "G", Tab{c.p}, "H", Tab{c.pairs}, "I", Tab{c.cumuFertile}, "J");
    out.Print(" MNC", Tab{9}, "Ind", Tab{c.female}, "Female", Tab{c.male}, "Male", Tab{c.fecundity}, "Fecund.",
              Tab{c.r0}, "Ro of", Tab{c.mnc}, "MNC", Tab{c.p}, "P(MNC)=", Tab{c.pairs}, "Fertile", Tab{c.cumuFertile},
              "Cumu.");
    out.Print(" no.", Tab{9}, "No.", Tab{c.r0}, "(this)", Tab{c.p}, "G/(n^n)", Tab{c.pairs}, "pairs",
              Tab{c.cumuFertile}, "females");
  }
  double cumuFertile = 0, cumuMNC = 0, sumP = 0;
  long females = 0, males = 0;
  for (long r = 1; r <= M.ItemCount; ++r) {
    const long k = sorted ? M.SortedItem(r) : r;
    const int pairs =
        twoSex ? std::min<int>(M.ItemReproductiveFemales(k), M.ItemMales(k)) : M.ItemReproductiveFemales(k);
    if (M.ItemFertile(k)) cumuFertile += M.ItemMNC(k);
    cumuMNC += M.ItemMNC(k);
    sumP += M.ItemProbability(k);
    females += M.ItemFemales(k);
    males += M.ItemMales(k);
    out.PrintPart(M.ItemSerial(k), Tab{9}, IndividualsText(M, k), Tab{c.female}, static_cast<int>(M.ItemFemales(k)),
                  Tab{c.male}, static_cast<int>(M.ItemMales(k)), Tab{c.fecundity},
                  RoundDisplay(M.ItemMeanFecundity(k), 4), Tab{c.r0}, RoundDisplay(M.ItemR0(k), 4), Tab{c.mnc},
                  M.ItemMNC(k), Tab{c.p}, M.ItemProbability(k), Tab{c.pairs}, pairs, Tab{c.cumuFertile}, cumuFertile);
    if (sorted) out.PrintPart(Tab{c.cumuMNC}, cumuMNC);
    out.NewLine();
  }
  out.Print(" Sum", Tab{c.female}, females, Tab{c.male}, males, Tab{c.mnc}, cumuMNC, Tab{c.p}, sumP);
}

void MultinomialExpansion::WriteCriterion(TextFile& out, const char* head, const FertileTally& t) const {
  const double all = S.multinomial.NPowerN;
  out.Print(head);
  out.Print("   Number of fertile items =", t.fertileItems, Tab{40}, "Sum of their MNC =", t.fertileMNC, Tab{80},
            "Probability =", t.fertileMNC / all);
  out.Print("   Number of infertile items =", t.infertileItems, Tab{40}, "Sum of their MNC =", t.infertileMNC, Tab{80},
            "Probability =", t.infertileMNC / all);
}

void MultinomialExpansion::WriteAllitem1() {
  Flow("WriteAllitem1");
  MultinomialRecord& M = S.multinomial;
  const int n = M.ItemSize;
  int females = 0, males = 0, ntype = 0;
  for (int i = 1; i <= n; ++i) {
    const std::string& sex = S.pool.OriginalSex(i);
    if (IsText(sex, 'F'))
      ++females;
    else if (IsText(sex, 'M'))
      ++males;
    else
      ++ntype;
  }
  TextFile out(OutputName(S, "_0_MNT_1-Expansion.txt"));
  out.Print(" Multinomial expansion for exact results of bootstrap.");
  out.Print(" Number of individuals (n) =", n);
  out.Print(" Female =", females, "Male =", males, "N-type =", ntype);
  out.Print(
      " Note well: This analysis considers the \"reproductive capacity\" of the combination. Please interpret "
      "with caution.");
  if (S.options.MatingMode == "Yes") {
    out.Print(" This is a two-sex population.");
    out.Print(" *** Combinations must have at least one fertile pair (a female and a male) can produce offspring.");
    out.Print(" *** Combinations with females but not male is infertile and the fecundity of female is invalid.");
  } else {
    out.Print(" This is a parthenogenetic population.");
    out.Print(" *** Combinations with at least one reproductive female can produce offspring.");
  }
  out.Print(" Columns: MNC no. = serial number of the item; Ind No. = the individuals of the item (with repeats);");
  out.Print("   Female, Male = their counts; Fecund. = eggs of the item / females; Ro of (this) = eggs / n;");
  out.Print("   MNC = multinomial coefficient (sampling ways giving the item); P(MNC) = MNC / n^n;");
  out.Print("   Fertile pairs = min(reproductive females, males); Cumu. females = cumulative MNC of fertile items.");
  out.Print(" The net reproductive rate (R0) of the original cohort =", S.params.R0_Basic);
  out.Print(" The intrinsic rate of the original cohort =", S.params.R_Basic);
  WriteItemTable(out, false);
  out.Print(" Sum of all multinomial coefficients =", M.MNCSum, " (n^n =", M.NPowerN, ")");
  out.Print(" Number of different items =", M.ItemCount);
  out.Print(" The original cohort is MNC no. ", M.OriginalItem, ". The MNC of this item is ", M.NFactorial);
  WriteCriterion(out, " If the criterion of fertile cohort is \"one fertile pair\":", M.OnePair);
  WriteCriterion(out, " If the criterion of fertile cohort is \"2 fertile pairs\":", M.TwoPairs);
  WriteCriterion(out, " If the criterion of fertile cohort is \"one fertile female\":", M.OneFemale);
  WriteCriterion(out, " If the criterion of fertile cohort is \"2 fertile females\":", M.TwoFemales);
  std::vector<double> plain(static_cast<std::size_t>(n) + 1, 0), weighted(static_cast<std::size_t>(n) + 1, 0);
  for (long k = 1; k <= M.ItemCount; ++k)
    for (int p = 1; p <= n; ++p) {
      const auto i = static_cast<std::size_t>(M.Individual(k, p));
      plain[i] += 1;
      weighted[i] += M.ItemMNC(k);
    }
  out.PrintPart(" Individual counts (without MNC): ");
  for (int i = 1; i <= n; ++i) out.PrintPart(i, "=", plain[static_cast<std::size_t>(i)], " ");
  out.NewLine();
  out.PrintPart(" Individual number (multiplied with MNC): ");
  for (int i = 1; i <= n; ++i) out.PrintPart(i, "=", weighted[static_cast<std::size_t>(i)], " ");
  out.NewLine();
}

void MultinomialExpansion::WriteAllitem2SortedMN() {
  Flow("WriteAllitem2SortedMN");
  TextFile out(OutputName(S, "_0_MNT_3-Expansion_Sorted_Table.txt"));
  out.Print(" Multinomial expansion for exact results of bootstrap, in ascending order of R0.");
  out.Print(" Number of individuals (n) =", S.multinomial.ItemSize);
  out.Print("Cumu. MNC: cumulative multinomial coefficient. Cumu. f. cohort: cumulative fertile cohort.");
  WriteItemTable(out, true);
}

void MultinomialExpansion::WriteAllitem3R0MNC() {
  Flow("WriteAllitem3R0MNC");
  MultinomialRecord& M = S.multinomial;
  TextFile out(OutputName(S, "_0_MNT_2-R0_Sorted.txt"));
  out.Write("i", "Orig. i", "No. Females", "Mean fecundity", "Ro", "MNC", "Prob.");
  for (long r = 1; r <= M.ItemCount; ++r) {
    const long k = M.SortedItem(r);
    out.Write(r, M.ItemSerial(k), static_cast<int>(M.ItemFemales(k)), M.ItemMeanFecundity(k), M.ItemR0(k), M.ItemMNC(k),
              M.ItemProbability(k));
  }
}

void MultinomialExpansion::WriteAllitem4R0MNCgrouped() {
  Flow("WriteAllitem4R0MNCgrouped");
  MultinomialRecord& M = S.multinomial;
  TextFile list(OutputName(S, "_0_MNT_4-R0_Grouped.txt"));
  TextFile table(OutputName(S, "_0_MNT_5-R0_Grouped_Table.txt"));
  list.Write("Multinomial expansion for exact results of bootstrap (Sorted and grouped).");
  list.Write("The net reproductive rate (R0) =", S.params.R0_Basic);
  list.Write("Group no.", "Sorted R0", "Sum(MNC)", "Sum(Probability)");
  table.Print("Multinomial expansion for exact results of bootstrap (Sorted and grouped).");
  table.Print("The net reproductive rate (R0) =", S.params.R0_Basic);
  table.Print("Group no.", Zone{}, "Sorted R0", Zone{}, "Sum(MNC)", Zone{}, "Sum(Probability)");
  long group = 0;
  double r0 = 0, mnc = 0, probability = 0, previous = 0;
  auto flush = [&] {
    if (group == 0) return;
    list.Write(group, r0, mnc, probability);
    table.Print(group, Zone{}, r0, Zone{}, mnc, Zone{}, probability);
  };
  for (long r = 1; r <= M.ItemCount; ++r) {
    const long k = M.SortedItem(r);
    const double v = M.ItemR0(k);
    // Consecutive items closer than the tolerance stay in one group, whose R0 is its first.
    if (group == 0 || std::fabs(v - previous) >= kSameR0) {
      flush();
      ++group;
      r0 = v;
      mnc = probability = 0;
    }
    mnc += M.ItemMNC(k);
    probability += M.ItemProbability(k);
    previous = v;
  }
  flush();
}

}  // namespace korvan
