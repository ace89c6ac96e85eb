#include "store/session_store.h"

#include <ctime>

namespace korvan {

void SessionStore::StartUp() {
  identity.ProgramName = "KORVAN";
  identity.VersionStamp = "Ver. 5/7/2024";
  settings.TimeUnit = 1;
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  identity.SessionStartYear = tm.tm_year + 1900;
  identity.SessionStartMonth = tm.tm_mon + 1;
  identity.SessionStartDay = tm.tm_mday;
}

std::string OutputName(const SessionStore& S, const std::string& suffix) {
  return S.identity.DataFileBase + suffix;
}

}  // namespace korvan
