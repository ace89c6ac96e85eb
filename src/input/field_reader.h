#pragma once
// Reads a text file as a stream of fields, the way every data file of the system is read.
//
// A field ends at a comma or at the end of a line. Leading blanks of a field are skipped; a
// number also ends at a blank. A string may stand in double quotes, and then a comma inside it
// belongs to it; the quotes are not part of the value. Records may thus be broken over lines
// or share a line with no change of meaning. "\r\n" line ends are taken like "\n".
//
// The bootstrap's record files are read in the same way, partly by lines (SkipLine passes over
// a label line whole), in the record form: an unquoted field loses its trailing blanks, a
// number is the value of the whole field with its blanks ignored (NumberOfText), and a fault
// has the record's title.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvan {

class FieldReader {
 public:
  enum class Form { Data, Record };
  // Reads the whole file; a file that cannot be opened ends the run (ProgramEnd).
  explicit FieldReader(const std::string& path, Form form = Form::Data);
  static FieldReader FromText(std::string text, Form form = Form::Data);

  // The next field as a string. Past the end of the file: ProgramEnd ("Input past end of file").
  std::string ReadString();
  // The next field as a number: the numeric head of the field's text (0 when it has none;
  // LastNumberValid() then tells false). Past the end: ProgramEnd as above.
  double ReadNumber();
  bool LastNumberValid() const { return lastValid_; }
  // The raw text of the last field read.
  const std::string& LastText() const { return lastText_; }

  // True when only blanks and line ends are left.
  bool AtEnd() const;
  // True when something other than blanks, line ends and commas is left.
  bool HasMoreData() const;
  // True when the position is at the very end of the file: a file that closes with the line
  // end of its last field is at its end, one with a further empty line is not.
  bool AtEndOfFile() const { return pos_ >= text_.size(); }
  // The next field without passing over empty lines: an empty line, or blanks at the end of
  // the file, give an empty string.
  std::string ReadFieldInLine();
  // The rest of the current line, up to and with its line end. At the end: ProgramEnd.
  void SkipLine();
  // 1-based line of the next character.
  int Line() const { return line_; }
  const std::string& Path() const { return path_; }

 private:
  FieldReader() = default;
  void SkipBlanks();
  void EndField();  // after a field: skip blanks, then one comma or one line end
  void SkipToField();  // before a field: blanks and whole empty lines; past the end, the fault
  [[noreturn]] void PastEnd() const;
  std::string text_;
  std::string path_;
  Form form_ = Form::Data;
  std::size_t pos_ = 0;
  int line_ = 1;
  bool lastValid_ = true;
  std::string lastText_;
};

// Reads a small file of fields by a pattern, 's' a string and 'n' a number, into the two lists.
// Returns the fault in words (a field that is not a finite number, the file ending early, a file
// that can't be read), or an empty string.
std::string ReadFieldPattern(const std::string& path, std::string_view pattern, std::vector<std::string>& strings,
                             std::vector<double>& numbers);

}  // namespace korvan
