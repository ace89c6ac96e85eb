#pragma once
// The two ways a run ends early. Both are caught only by the front ends, which show the
// message and end the program with all files closed.
#include <stdexcept>
#include <string>

namespace korvan {

// An index beyond the fixed bound of a store array. Nothing inside the analysis catches it.
class SubscriptFault : public std::out_of_range {
 public:
  explicit SubscriptFault(const std::string& arrayName)
      : std::out_of_range("Subscript out of range: " + arrayName), array(arrayName) {}
  // The same fault told with the place in the user's file that went beyond the bound.
  SubscriptFault(const std::string& arrayName, const std::string& where)
      : std::out_of_range("Subscript out of range: " + arrayName + "\n" + where), array(arrayName) {}
  std::string array;
};

// A specified end of the program: a data fault, an "End the program" answer, a halt.
struct ProgramEnd {
  std::string message;
  std::string title;
};

// A file that could not be written whole (a full disk, a folder without write permission, a
// removed drive, a quota): the program ends as on a data fault. The message names the file and
// the system's reason; the files written before it stay as they are.
struct WriteFault : ProgramEnd {
  std::string file;
};

// "Quit", or "End KORVAN" at the end of a command: the session ends normally and the commands
// after it don't run.
struct SessionQuit {};

// Display rounding of a value beyond the 32-bit range.
class OverflowFault : public std::overflow_error {
 public:
  OverflowFault() : std::overflow_error("Overflow") {}
};

}  // namespace korvan
