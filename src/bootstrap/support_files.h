#pragma once
// A reader of the record files of the bootstrap, which are read partly by lines (a label line
// is skipped whole) and partly by fields (numbers separated by commas and line ends).
#include <cstddef>
#include <string>

namespace korvan {

class LineFieldReader {
 public:
  // Reads the whole file; a file that cannot be opened ends the run (ProgramEnd).
  explicit LineFieldReader(const std::string& path);
  static LineFieldReader FromText(std::string text);

  // The rest of the current line, up to and with its line end.
  void SkipLine();
  // The next field: blanks skipped, a quoted string as one field, up to a comma or a line end,
  // which is taken with it.
  std::string ReadString();
  // The number at the head of the next field (0 when there is none).
  double ReadNumber();

 private:
  LineFieldReader() = default;
  [[noreturn]] void PastEnd() const;
  std::string text_;
  std::string path_;
  std::size_t pos_ = 0;
};

}  // namespace korvan
