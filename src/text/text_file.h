#pragma once
// Output files written in the two forms of the system's text files.
//
// Print form: items follow each other as printed; Zone() moves to the next print zone of 14
// columns, Tab(n) to column n (1-based; when the line is already past n, to column n of the
// next line). Numbers print with a leading blank when not negative and a trailing blank;
// strings print as they are.
//
// Write form: strings in double quotes, numbers bare at full precision, items separated by
// commas, the line ended.
//
// A TextFile is closed by its destructor whatever happens, so a file always stands as far as
// it was written. Every write is checked: at the open, whenever the stream passes its buffer to
// the system, and at the close. A failure throws WriteFault; one met by the destructor, which
// cannot throw, is kept and thrown by the next open of any file or by ThrowPendingWriteFault.
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

struct Tab {
  int column;
};
struct Zone {};
inline constexpr int kZoneWidth = 14;

class TextFile {
 public:
  enum class Mode { Output, Append };
  TextFile() = default;
  explicit TextFile(const std::string& path, Mode mode = Mode::Output) { Open(path, mode); }
  // A file in memory: what is written is appended to *text (a stretch of rows formatted apart
  // from its file, to be written there whole).
  explicit TextFile(std::string* text) : memory_(text) {}
  ~TextFile();
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;
  TextFile(TextFile&& o) noexcept;
  TextFile& operator=(TextFile&& o) noexcept;

  // Opens for output or append; a path that cannot be opened ends the run (WriteFault).
  void Open(const std::string& path, Mode mode = Mode::Output);
  // Closes; a file that could not be written whole ends the run (WriteFault).
  void Close();
  // Passes what is written to the system; a failure ends the run (WriteFault).
  void Flush();
  bool IsOpen() const { return f_ != nullptr; }
  const std::string& Path() const { return path_; }
  int Column() const { return column_; }  // 1-based column of the next character

  // Print form, ending the line.
  template <class... Items>
  void Print(const Items&... items) {
    (PutItem(items), ...);
    NewLine();
  }
  // Print form with the line left open (a trailing semicolon).
  template <class... Items>
  void PrintPart(const Items&... items) {
    (PutItem(items), ...);
  }
  // Write form, ending the line.
  template <class... Items>
  void Write(const Items&... items) {
    if constexpr (((std::is_arithmetic_v<Items> && !std::is_same_v<Items, char>) && ...)) {
      // A line of numbers alone (the rows of the long result files) is made whole first.
      char line[sizeof...(Items) * (kNumberTextSize + 1) + 1];
      std::size_t n = 0;
      [[maybe_unused]] bool first = true;
      ((n += NumberItem(items, first, line + n), first = false), ...);
      line[n++] = '\n';
      RawText(std::string_view(line, n));
    } else {
      [[maybe_unused]] bool first = true;
      ((WriteItem(items, first), first = false), ...);
      NewLine();
    }
  }
  // Write form with the line left open: the items and a closing comma, so that the next
  // Write/WritePart continues the same list.
  template <class... Items>
  void WritePart(const Items&... items) {
    ((WriteItem(items, true), RawText(",")), ...);
  }

  void NewLine();
  void RawText(std::string_view s);  // text exactly as given

 private:
  void PutItem(std::string_view s) { RawText(s); }
  void PutItem(const std::string& s) { RawText(s); }
  void PutItem(const char* s) { RawText(s); }
  void PutItem(char c) { RawText(std::string_view(&c, 1)); }  // a character is text
  void PutItem(Tab t);
  void PutItem(Zone);
  template <class N, std::enable_if_t<std::is_arithmetic_v<N>, int> = 0>
  void PutItem(N v) {
    char buf[kNumberTextSize + 2];
    RawText(std::string_view(buf, FormatPrintNumber(static_cast<double>(v), buf)));
  }

  void WriteItem(std::string_view s, bool first);
  void WriteItem(const std::string& s, bool first) { WriteItem(std::string_view(s), first); }
  void WriteItem(const char* s, bool first) { WriteItem(std::string_view(s), first); }
  void WriteItem(char c, bool first) { WriteItem(std::string_view(&c, 1), first); }
  template <class N, std::enable_if_t<std::is_arithmetic_v<N>, int> = 0>
  void WriteItem(N v, bool first) {
    char buf[kNumberTextSize + 1];
    RawText(std::string_view(buf, NumberItem(v, first, buf)));
  }
  // A number of the Write form into buf (kNumberTextSize + 1), a comma before all but the first.
  template <class N>
  static std::size_t NumberItem(N v, bool first, char* buf) {
    std::size_t n = 0;
    if (!first) buf[n++] = ',';
    return n + FormatFullPrecision(static_cast<double>(v), buf + n);
  }

  // Closes the stream; the reason when it was not written whole, else empty.
  std::string CloseStream();
  // Closes; a failure is kept for the next open (ThrowPendingWriteFault).
  void CloseKeepingFault() noexcept;
  // Takes the file out of the list of open ones.
  void Forget();
  [[noreturn]] void Fail(int error);

  std::FILE* f_ = nullptr;
  std::unique_ptr<char[]> buffer_;  // the stream's buffer: result files run to megabytes
  std::string* memory_ = nullptr;
  std::string path_;
  int column_ = 1;
};

// The message and title of a file that could not be written.
WriteFault WriteFaultOf(const std::string& path, const std::string& reason);
// A failure that a destructor kept is thrown now, and forgotten.
void ThrowPendingWriteFault();
// Forgets a kept failure (a new run of a command begins).
void ClearPendingWriteFault();
// The files a fault has cut short since the last call: those closed while an exception passed
// through their writer, and those still open now. Forgets them.
// Every path opened for output or append in this process so far. The command line names what
// a run wrote by them: a file's time stamp can fall just before the run began, the file
// system's clock being coarser than the program's.
std::vector<std::string> FilesOpenedForWriting();
std::vector<std::string> TakeFilesNotWhole();

// Failures met since the program began (a check for the fuzz harness: no run may end as done
// while one of its files was not written).
long WriteFaultCount();

}  // namespace korvan
