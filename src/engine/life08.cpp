// Life08: the end of a run, the time it took.
#include <ctime>

#include "engine/stage_statistics.h"

namespace korvan {

void StageStatsEngine::Life08() {
  Flow("Life08");
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  const long nowSeconds = tm.tm_hour * 3600L + tm.tm_min * 60L + tm.tm_sec;
  const auto& id = S.identity;
  const long startSeconds = id.RunStartHour * 3600L + id.RunStartMinute * 60L + id.RunStartSecond;
  long elapsed = nowSeconds - startSeconds;
  if (elapsed < 0) elapsed += 86400;  // the run went past midnight
  auto& r = Keep().stageStats;
  r.ElapsedHours = elapsed / 3600;
  r.ElapsedMinutes = (elapsed % 3600) / 60;
  r.ElapsedSeconds = elapsed % 60;
  TextFile& out = C.MainOutput;
  if (!out.IsOpen()) return;
  out.Print("");
  out.Print("Time used for this run:", r.ElapsedHours, "hour(s)", r.ElapsedMinutes, "minute(s)", r.ElapsedSeconds,
            "second(s).");
}

}  // namespace korvan
