#pragma once
// The texts the console's timers and labels show: the rotating greeting, the colour step of
// the blinking label, the date label, and the lines a click on the wisdom label draws from.
#include <ctime>
#include <span>
#include <string>
#include <string_view>

namespace korvan {

// Timer1 counts its ticks 0..42 and starts again.
inline constexpr int kGreetingTicks = 43;
// The greeting of Label13 at a tick of Timer1; empty from 36 on, where the text stays as it is.
std::string_view GreetingText(int tick);

// Timer2 counts 16 ticks and moves to the next colour every 3: the colour's number 0..5.
inline constexpr int kBlinkTicks = 16;
int BlinkColour(int tick);

// The date label: "Tuesday, May 7, 2024  10:05:03".
std::string DateLabelText(std::time_t now);

// Seconds after start-up at which the greeting picture gives way to the wisdom labels.
inline constexpr int kGreetingSeconds = 8;

// The 27 lines of the wisdom label; one of them lists the commands.
std::span<const std::string_view> WisdomLines();
// The lines of the list of commands, from the console's command table.
std::string CommandListLines();
// The line shown for the index drawn (0..26); the commands' line is the list above.
std::string WisdomLine(int index);

}  // namespace korvan
