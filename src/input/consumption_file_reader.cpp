#include "input/consumption_file_reader.h"

#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {

[[noreturn]] void Fault(const std::string& message) { throw ProgramEnd{message, kConsumptionErrorTitle}; }

std::string Text(double v) { return FullPrecision(v); }

constexpr double kMaxDailyConsumption = 1e9;

}  // namespace

void ConsumptionFileReader::ReadCxjNewSub() {
  Flow("ReadCxjNewSub");
  const std::string path = P.ChooseFile(kConsumptionFileTitle);
  if (path.empty()) {
    S.options.ConsumptionRead = "No";
    return;
  }
  ReadConsumptionFile(path);
}

void ConsumptionFileReader::ReadConsumptionFile(const std::string& path) {
  FieldReader in(path);
  in.ReadString();  // project
  in.ReadString();  // user
  in.ReadString();  // treatment
  const Cohort& C = W.cohort;
  const int N = C.CohortSize;
  const double n = in.ReadNumber();
  if (!in.LastNumberValid() || n != N)
    Fault("The consumption file gives N = " + in.LastText() + ", but the life table has " + std::to_string(N) +
          " individuals.\nThe consumption file must have one record for each individual of the life table.");

  for (long i = 1; i <= N; ++i) {
    const std::string no = std::to_string(i);
    const double number = in.ReadNumber();
    if (!in.LastNumberValid() || number != i)
      Fault("Check consumption of individual no. " + std::to_string(i - 1) + " or " + no + ".\nThe record of no. " +
            no + " begins with \"" + in.LastText() + "\".");
    const int days = C.TotalLongevity(i);
    for (long day = 1;; ++day) {
      const double v = in.ReadNumber();
      const std::string where = "Consumption of individual no. " + no + " on day " + std::to_string(day);
      if (!in.LastNumberValid()) Fault(where + " is not a number (\"" + in.LastText() + "\").");
      if (v == -1) {
        if (day <= days)
          Fault("The consumption record of individual no. " + no + " ends after " + std::to_string(day - 1) +
                " days, but it lived " + std::to_string(days) +
                " days.\nGive one value for each day of its life (0 for a day without feeding), then -1.");
        break;
      }
      if (day > days)
        Fault("The consumption record of individual no. " + no + " has more values than the " +
              std::to_string(days) + " days it lived, or lacks its closing -1.");
      if (v < 0) Fault(where + " is negative (" + Text(v) + ").");
      // Sums over a cohort must stay finite numbers.
      if (!(v <= kMaxDailyConsumption)) Fault(where + " is too large (" + in.LastText() + ").");
      S.pool.OriginalConsumption(i, day - 1) = v;
      W.cohort.Consumption(i, day - 1) = v;
    }
  }
  S.predation.ConsumptionFilePath = path;
  S.options.PredationPresent = "Yes";
}

}  // namespace korvan
