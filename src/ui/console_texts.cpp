#include "ui/console_texts.h"

#include <array>

#include "ui/command_table.h"

namespace korvan {

std::string_view GreetingText(int tick) {
  if (tick <= 7) return "How do you do?";
  if (tick <= 14) return "Wie geht es Ihnen?";
  if (tick <= 21) return "Como estas?";
  if (tick <= 28) return "Comment faites-vous?";
  if (tick <= 35) return "Nin hao ma?";
  return "";
}

int BlinkColour(int tick) { return (tick % kBlinkTicks) / 3; }

std::string DateLabelText(std::time_t now) {
  std::tm local{};
  localtime_r(&now, &local);
  char buffer[64];
  std::strftime(buffer, sizeof buffer, "%A, %B %e, %Y  %H:%M:%S", &local);
  return buffer;
}

namespace {

constexpr std::string_view kCommandsMark = "<commands>";

constexpr std::array<std::string_view, 27> kWisdom = {
    "A journey of a thousand miles begins with a single step.",
    "Measure twice, cut once.",
    "The cohort does not lie; only our reading of it can.",
    "Patience is bitter, but its fruit is sweet.",
    "Who rears one insect well learns about them all.",
    "Not everything that can be counted counts, but every individual counts in a life table.",
    "Knowledge is a treasure, but practice is the key to it.",
    "A good question is half of the answer.",
    "Still waters run deep.",
    "Many hands make light work.",
    kCommandsMark,
    "The best time to plant a tree was twenty years ago; the second best time is now.",
    "Variance is information, not noise.",
    "An error admitted is half corrected.",
    "Learning without thought is labour lost.",
    "Little by little, one travels far.",
    "Nature is written in the language of numbers.",
    "Do not count the eggs before the females are counted.",
    "Where there is a will, there is a way.",
    "A small leak will sink a great ship.",
    "He who asks is a fool for five minutes; he who does not ask remains a fool forever.",
    "The roots of education are bitter, but the fruit is sweet.",
    "Every sample tells a story; a thousand samples tell its spread.",
    "Slow and steady wins the race.",
    "A mite is small, but its population is not.",
    "Observe, record, and think again.",
    "Tomorrow belongs to those who prepare for it today.",
};

}  // namespace

std::span<const std::string_view> WisdomLines() { return kWisdom; }

std::string CommandListLines() {
  std::string text =
      " A. Life table analysis (individual-reared data): A1, A2, A3.\n"
      "  A4: Sort bootstrap life tables and multinomial theorem.\n"
      "  B: Life table analysis (group-reared data).\n";
  for (const auto& c : CommandTable()) {
    if (c.group != CommandGroup::Main || c.code.size() != 1 || c.code < "C") continue;
    std::string what(c.code == "Q" ? std::string_view("Cartesian paired test") : c.toolTip);
    if (what.empty() || (what.back() != '.' && what.back() != '!' && what.back() != ')')) what += '.';
    text += "  " + std::string(c.code) + ": " + what + "\n";
  }
  return text;
}

std::string WisdomLine(int index) {
  if (index < 0 || index >= static_cast<int>(kWisdom.size())) index = 0;
  const std::string_view line = kWisdom[static_cast<std::size_t>(index)];
  return line == kCommandsMark ? CommandListLines() : std::string(line);
}

}  // namespace korvan
