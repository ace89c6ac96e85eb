#pragma once
// What a text front end shows of the console: the last text of every status label and result
// field, and a progress bar with an estimate of the time left.
#include <chrono>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace korvan {

class ConsoleDisplay {
 public:
  // out receives the bar and messages; quiet shows nothing; on a terminal the bar is redrawn
  // in place, elsewhere a line is written at every tenth of the way.
  ConsoleDisplay(std::ostream& out, bool quiet, bool terminal);

  void Status(const std::string& label, const std::string& text);
  void Progress(long done, long total);
  void Beep();
  // Ends a bar in progress so that the next text starts on a line of its own.
  void EndProgress();
  // Shows a message (the text of a box that asks nothing).
  void Message(const std::string& title, const std::string& text);

  // Labels with their last text, in the order they were first set.
  const std::vector<std::pair<std::string, std::string>>& Fields() const { return fields_; }
  // The text of a label, empty when never set.
  std::string Field(const std::string& label) const;

  // One line of the bar: "[#####.....]  45%  450/1000  about 11 s left".
  static std::string FormatBar(long done, long total, double elapsedSeconds, int width);
  // "45 s", "3 min 05 s", "2 h 04 min".
  static std::string FormatDuration(double seconds);

 private:
  using Clock = std::chrono::steady_clock;
  std::ostream& out_;
  bool quiet_, terminal_;
  std::vector<std::pair<std::string, std::string>> fields_;
  bool barOpen_ = false;
  long lastDone_ = -1, lastTotal_ = -1;
  int lastTenth_ = -1;
  Clock::time_point start_{}, lastDraw_{};
};

}  // namespace korvan
