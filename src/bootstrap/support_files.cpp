#include "bootstrap/support_files.h"

#include <fstream>
#include <sstream>

#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

LineFieldReader::LineFieldReader(const std::string& path) : path_(path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ProgramEnd{"File not found: " + path, "File not found"};
  std::ostringstream ss;
  ss << in.rdbuf();
  text_ = ss.str();
}

LineFieldReader LineFieldReader::FromText(std::string text) {
  LineFieldReader r;
  r.text_ = std::move(text);
  return r;
}

void LineFieldReader::PastEnd() const {
  throw ProgramEnd{"Input past end of file: " + path_, "Error in bootstrap record file"};
}

void LineFieldReader::SkipLine() {
  if (pos_ >= text_.size()) PastEnd();
  while (pos_ < text_.size() && text_[pos_] != '\n') ++pos_;
  if (pos_ < text_.size()) ++pos_;
}

std::string LineFieldReader::ReadString() {
  // Blank lines and blanks before a field are passed over.
  while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t' || text_[pos_] == '\r' ||
                                 text_[pos_] == '\n'))
    ++pos_;
  if (pos_ >= text_.size()) PastEnd();
  std::string field;
  if (text_[pos_] == '"') {
    ++pos_;
    while (pos_ < text_.size() && text_[pos_] != '"' && text_[pos_] != '\n') field.push_back(text_[pos_++]);
    if (pos_ < text_.size() && text_[pos_] == '"') ++pos_;
    while (pos_ < text_.size() && text_[pos_] != ',' && text_[pos_] != '\n') ++pos_;
  } else {
    while (pos_ < text_.size() && text_[pos_] != ',' && text_[pos_] != '\n') field.push_back(text_[pos_++]);
    while (!field.empty() && (field.back() == ' ' || field.back() == '\t' || field.back() == '\r')) field.pop_back();
  }
  if (pos_ < text_.size()) {
    if (text_[pos_] == ',') {
      ++pos_;
    } else if (text_[pos_] == '\n') {
      ++pos_;
    }
  }
  return field;
}

double LineFieldReader::ReadNumber() { return NumberOfText(ReadString()); }

}  // namespace korvan
