#include "input/csv_import.h"

#include <cctype>
#include <cstdlib>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "input/data_file_writer.h"
#include "store/faults.h"
#include "store/limits.h"
#include "store/session_store.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kTitle = "Import of a CSV file";

[[noreturn]] void Fail(const std::string& message) { throw ProgramEnd{message, kTitle}; }

std::string Trim(const std::string& s) {
  std::size_t a = 0, b = s.size();
  while (a < b && std::isspace(static_cast<unsigned char>(s[a]))) ++a;
  while (b > a && std::isspace(static_cast<unsigned char>(s[b - 1]))) --b;
  return s.substr(a, b - a);
}

std::string Lower(std::string s) {
  for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// The rows of the file, each a list of cells; a quoted cell may hold commas and doubled quotes.
std::vector<std::vector<std::string>> ReadRows(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) Fail("Cannot read " + path + ".");
  std::string text((std::istreambuf_iterator<char>(in)), {});
  if (text.rfind("\xEF\xBB\xBF", 0) == 0) text.erase(0, 3);
  std::vector<std::vector<std::string>> rows;
  std::vector<std::string> row;
  std::string cell;
  bool quoted = false, any = false;
  auto endRow = [&] {
    row.push_back(Trim(cell));
    cell.clear();
    // Blank lines and lines of empty cells (a spreadsheet's trailing ",,,,") are no rows.
    bool blank = true;
    for (const auto& c : row) blank = blank && c.empty();
    if (!blank) rows.push_back(std::move(row));
    row.clear();
    any = false;
  };
  for (std::size_t k = 0; k < text.size(); ++k) {
    const char c = text[k];
    if (quoted) {
      if (c == '"' && k + 1 < text.size() && text[k + 1] == '"') {
        cell += '"';
        ++k;
      } else if (c == '"') {
        quoted = false;
      } else {
        cell += c;
      }
      continue;
    }
    if (c == '"') {
      quoted = true;
      any = true;
    } else if (c == ',') {
      row.push_back(Trim(cell));
      cell.clear();
      any = true;
    } else if (c == '\n') {
      endRow();
    } else if (c != '\r') {
      cell += c;
      any = true;
    }
  }
  if (quoted) Fail("A quoted cell of " + path + " is not closed before the end of the file.");
  if (any || !cell.empty()) endRow();
  return rows;
}

// A cell that is a number and nothing else (a spreadsheet writes "3", "3.0", "1e2").
bool StrictNumber(const std::string& t, double& v) {
  if (t.empty()) return false;
  char* end = nullptr;
  v = std::strtod(t.c_str(), &end);
  if (end != t.c_str() + t.size()) return false;
  // strtod also takes "inf", "nan" and hexadecimal: not numbers of a rearing.
  for (char c : t)
    if (!std::isdigit(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != '+' && c != 'e' && c != 'E')
      return false;
  return std::isfinite(v);
}

struct Cell {
  long row;  // 1-based line of the file
  int column;
  const std::vector<std::vector<std::string>>& rows;
  const std::vector<std::string>& head;
  std::string Where() const {
    return "row " + std::to_string(row) + ", column " + std::to_string(column + 1) + " (" + head[column] + ")";
  }
  const std::string& Text() const { return rows[row - 1][column]; }
  // A whole number, or none (an empty cell) when empty is allowed.
  bool Whole(double& v) const {
    const std::string& t = Text();
    if (t.empty()) return false;
    double x = 0;
    if (!StrictNumber(t, x) || x != std::floor(x) || std::fabs(x) > 32767)
      Fail("The cell at " + Where() + " holds \"" + t + "\", not a whole number of days.");
    v = x;
    return true;
  }
};

}  // namespace

bool IsCsvPath(const std::string& path) {
  return path.size() > 4 && Lower(path.substr(path.size() - 4)) == ".csv";
}

std::string ImportedDataFilePath(const std::string& csvPath) {
  return csvPath.substr(0, csvPath.size() - 4) + ".txt";
}

std::string ImportCohortCsv(const std::string& csvPath) {
  const auto rows = ReadRows(csvPath);
  if (rows.empty()) Fail("The file " + csvPath + " is empty: a header row and a row per individual are needed.");
  const auto& head = rows[0];
  int adult = -1;
  for (int c = 2; c < static_cast<int>(head.size()); ++c)
    if (Lower(head[c]) == "adult") {
      adult = c;
      break;
    }
  if (head.size() < 4 || adult < 3)
    Fail("The header row of " + csvPath +
         " needs the columns: number, sex, one per preadult stage (named by the stage), \"adult\", then the daily "
         "eggs. " + (adult < 0 ? "There is no column headed \"adult\"." : "No preadult stage stands before \"adult\"."));
  const int preadult = adult - 2;
  const int m = preadult + 1;  // the adult stage last
  if (m > kMaxStage - 1)
    Fail("Subscript out of range: StageCount\n" + std::to_string(preadult) + " preadult stages; at most " +
         std::to_string(kMaxStage - 2) + " fit.");
  for (int c = 2; c < adult; ++c)
    if (head[c].empty() || head[c].find_first_of(",\"") != std::string::npos)
      Fail("The stage name in row 1, column " + std::to_string(c + 1) + " is empty or holds a comma or a quote.");
  const long n = static_cast<long>(rows.size()) - 1;
  if (n < 1) Fail("The file " + csvPath + " has a header row and no individual.");
  if (n > kMaxIndividual)
    Fail("Subscript out of range: CohortSize\n" + std::to_string(n) + " individuals; at most " +
         std::to_string(kMaxIndividual) + " fit.");
  const long eggColumns = static_cast<long>(head.size()) - adult - 1;
  if (eggColumns > kMaxAge)
    Fail("Subscript out of range: Fecundity\n" + std::to_string(eggColumns) + " days of eggs; at most " +
         std::to_string(kMaxAge) + " fit.");

  auto session = std::make_unique<Session>();
  Session& S = *session;
  CohortHeader& h = S.header;
  Pool& pool = S.pool;
  bool males = false;
  for (long r = 1; r <= n; ++r) {
    const long line = r + 1;
    if (rows[r].size() != head.size())
      Fail("Row " + std::to_string(line) + " has " + std::to_string(rows[r].size()) + " cells; the header has " +
           std::to_string(head.size()) + ".");
    auto at = [&](int c) { return Cell{line, c, rows, head}; };
    double number = 0;
    if (!at(0).Whole(number)) Fail("The individual's number is missing at " + at(0).Where() + ".");
    const std::string sex = Lower(rows[r][1]) == "f" ? "F" : Lower(rows[r][1]) == "m" ? "M" : Lower(rows[r][1]) == "n" ? "N" : "";
    if (sex.empty()) Fail("The sex at " + at(1).Where() + " is \"" + rows[r][1] + "\"; it is F, M or N.");
    males = males || sex == "M";
    pool.OriginalSex(r) = sex;
    // Durations: every stage of an adult; an N up to the stage it died in, negative there.
    bool died = false;
    for (int j = 1; j <= m; ++j) {
      const int c = j == m ? adult : j + 1;
      double d = 0;
      const bool has = at(c).Whole(d);
      if (died) {
        if (has) Fail("The cell at " + at(c).Where() + " follows the stage the individual died in; it must be empty.");
        continue;
      }
      if (sex == "N") {
        if (!has)
          Fail("The cell at " + at(c).Where() + " is empty, but the individual (N) has not died yet: the stage it "
               "died in holds its days there as a negative number.");
        if (j == m) Fail("The cell at " + at(c).Where() + " gives an N an adult life; an N dies as a preadult.");
        if (d < 0) died = true;
        if (d == 0) Fail("The cell at " + at(c).Where() + " is 0: a stage lasts at least one day.");
      } else {
        if (!has) Fail("The cell at " + at(c).Where() + " is empty: a female or male has a duration in every stage.");
        if (d <= 0) Fail("The cell at " + at(c).Where() + " is " + FullPrecision(d) + ": a stage lasts at least one day.");
      }
      pool.OriginalStageDuration(r, j) = d;
    }
    // Eggs: a female's on her adult days; none from anybody else.
    const double days = sex == "F" ? pool.OriginalStageDuration(r, m) : 0;
    if (days > kMaxAge)
      Fail("Subscript out of range: Fecundity\n" + at(adult).Where() + ": " + FullPrecision(days) +
           " days of adult life; at most " + std::to_string(kMaxAge) + " fit.");
    for (long x = 1; x <= eggColumns; ++x) {
      const int c = adult + static_cast<int>(x);
      const std::string& t = rows[r][static_cast<std::size_t>(c)];
      double eggs = 0;
      if (!t.empty()) {
        if (!StrictNumber(t, eggs) || eggs < 0)
          Fail("The cell at " + at(c).Where() + " holds \"" + t + "\", not a number of eggs.");
      }
      if (x > days && eggs != 0)
        Fail("The cell at " + at(c).Where() + " has eggs " +
             (sex == "F" ? "after the female's adult life." : "of a " + std::string(sex == "M" ? "male." : "N.")));
      if (x <= days) pool.OriginalFecundity(r, x) = eggs;
    }
  }

  h.TypeCount = males ? 2 : 1;
  h.StageCount = m;
  h.TypeCode(1) = "F";
  h.TypeCode(2) = "M";
  for (int t = 1; t <= h.TypeCount; ++t) {
    for (int j = 1; j < m; ++j) h.StageName(t, j) = head[static_cast<std::size_t>(j + 1)];
    h.StageName(t, m) = t == 1 ? "Female" : "Male";
  }
  h.SpecialGroup(1) = h.StageName(1, 1);
  h.SpecialGroup(2) = "Female";

  const std::string out = ImportedDataFilePath(csvPath);
  {
    // Written to a file of its own first: an existing data file is kept unless it holds the same.
    const std::string fresh = out + ".new";
    {
      TextFile f(fresh);
      const std::string stem = std::filesystem::path(csvPath).stem().string();
      WriteLifeTableLayout(f, S, {"Project: " + stem, "Imported from " + std::filesystem::path(csvPath).filename().string(), stem},
                           {pool.OriginalSex, pool.OriginalStageDuration, pool.OriginalFecundity, n, {}, 1});
      f.Close();
    }
    std::error_code ec;
    if (std::filesystem::exists(out, ec)) {
      std::ifstream a(out, std::ios::binary), b(fresh, std::ios::binary);
      const std::string ta((std::istreambuf_iterator<char>(a)), {}), tb((std::istreambuf_iterator<char>(b)), {});
      if (ta != tb) {
        std::filesystem::remove(fresh, ec);
        Fail("The data file " + out + " exists and holds another cohort; it is not overwritten. Move it, or "
             "rename the CSV file.");
      }
    }
    std::filesystem::rename(fresh, out, ec);
    if (ec) Fail("Cannot write " + out + ": " + ec.message());
  }
  return out;
}

}  // namespace korvan
