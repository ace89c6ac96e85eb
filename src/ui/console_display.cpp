#include "ui/console_display.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace korvan {

ConsoleDisplay::ConsoleDisplay(std::ostream& out, bool quiet, bool terminal)
    : out_(out), quiet_(quiet), terminal_(terminal) {}

void ConsoleDisplay::Status(const std::string& label, const std::string& text) {
  for (auto& field : fields_) {
    if (field.first == label) {
      field.second = text;
      return;
    }
  }
  fields_.emplace_back(label, text);
}

std::string ConsoleDisplay::Field(const std::string& label) const {
  for (const auto& field : fields_) {
    if (field.first == label) return field.second;
  }
  return "";
}

void ConsoleDisplay::Progress(long done, long total) {
  if (quiet_ || total <= 0) return;
  const Clock::time_point now = Clock::now();
  // A new loop starts when the total changes or the count goes back.
  if (total != lastTotal_ || done < lastDone_) {
    start_ = now;
    lastDraw_ = Clock::time_point{};
    lastTenth_ = -1;
  }
  lastDone_ = done;
  lastTotal_ = total;
  const double elapsed = std::chrono::duration<double>(now - start_).count();
  if (terminal_) {
    if (done < total && now - lastDraw_ < std::chrono::milliseconds(100)) return;
    lastDraw_ = now;
    out_ << '\r' << FormatBar(done, total, elapsed, 30) << "\x1b[K" << std::flush;
    barOpen_ = true;
    if (done >= total) EndProgress();
  } else {
    const int tenth = static_cast<int>(10 * std::min(done, total) / total);
    if (tenth == lastTenth_) return;
    lastTenth_ = tenth;
    out_ << FormatBar(done, total, elapsed, 30) << '\n' << std::flush;
  }
}

void ConsoleDisplay::EndProgress() {
  if (barOpen_) {
    out_ << '\n' << std::flush;
    barOpen_ = false;
  }
}

void ConsoleDisplay::Beep() {
  if (!quiet_ && terminal_) out_ << '\a' << std::flush;
}

void ConsoleDisplay::Message(const std::string& title, const std::string& text) {
  if (quiet_) return;
  EndProgress();
  if (!title.empty()) out_ << title << '\n';
  out_ << text << '\n' << std::flush;
}

std::string ConsoleDisplay::FormatDuration(double seconds) {
  const long s = std::lround(std::max(0.0, seconds));
  char buffer[48];
  if (s < 60) {
    std::snprintf(buffer, sizeof buffer, "%ld s", s);
  } else if (s < 3600) {
    std::snprintf(buffer, sizeof buffer, "%ld min %02ld s", s / 60, s % 60);
  } else {
    std::snprintf(buffer, sizeof buffer, "%ld h %02ld min", s / 3600, (s % 3600) / 60);
  }
  return buffer;
}

std::string ConsoleDisplay::FormatBar(long done, long total, double elapsedSeconds, int width) {
  if (total <= 0) total = 1;
  const long shown = std::max(0L, std::min(done, total));
  const int filled = static_cast<int>(static_cast<long long>(width) * shown / total);
  std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                     std::string(static_cast<std::size_t>(width - filled), '.') + "]";
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, " %3ld%%  %ld/%ld", 100 * shown / total, done, total);
  line += buffer;
  if (shown >= total) {
    line += "  done in " + FormatDuration(elapsedSeconds);
  } else if (shown > 0 && elapsedSeconds > 0) {
    const double left = elapsedSeconds * static_cast<double>(total - shown) / static_cast<double>(shown);
    line += left < 0.5 ? std::string("  under 1 s left") : "  about " + FormatDuration(left) + " left";
  }
  return line;
}

}  // namespace korvan
