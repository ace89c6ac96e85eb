#include "input/field_reader.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }
}  // namespace

FieldReader::FieldReader(const std::string& path, Form form) : path_(path), form_(form) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw ProgramEnd{"File not found: " + path, form == Form::Record ? "File not found" : "Error in data file"};
  std::ostringstream ss;
  ss << in.rdbuf();
  text_ = ss.str();
}

FieldReader FieldReader::FromText(std::string text, Form form) {
  FieldReader r;
  r.text_ = std::move(text);
  r.form_ = form;
  return r;
}

void FieldReader::PastEnd() const {
  if (form_ == Form::Record) throw ProgramEnd{"Input past end of file: " + path_, "Error in bootstrap record file"};
  throw ProgramEnd{"Input past end of file" + (path_.empty() ? std::string() : ": " + path_),
                   "Error in data file"};
}

void FieldReader::SkipLine() {
  if (pos_ >= text_.size()) PastEnd();
  while (pos_ < text_.size() && text_[pos_] != '\n') ++pos_;
  if (pos_ < text_.size()) ++pos_;
  ++line_;
}

void FieldReader::SkipBlanks() {
  while (pos_ < text_.size() && IsBlank(text_[pos_])) ++pos_;
}

void FieldReader::EndField() {
  SkipBlanks();
  if (pos_ >= text_.size()) return;
  char c = text_[pos_];
  if (c == ',') {
    ++pos_;
  } else if (c == '\r') {
    ++pos_;
    if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    ++line_;
  } else if (c == '\n') {
    ++pos_;
    ++line_;
  }
}

// Reaching a field skips blanks and whole empty lines before it, as the platform's reader does.
void FieldReader::SkipToField() {
  while (true) {
    SkipBlanks();
    if (pos_ >= text_.size()) PastEnd();
    if (!IsLineEnd(text_[pos_])) break;
    if (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n') ++pos_;
    ++pos_;
    ++line_;
  }
}

std::string FieldReader::ReadString() {
  SkipToField();
  std::string value;
  if (text_[pos_] == '"') {
    ++pos_;
    while (pos_ < text_.size() && text_[pos_] != '"' && !IsLineEnd(text_[pos_])) value += text_[pos_++];
    if (pos_ < text_.size() && text_[pos_] == '"') ++pos_;
    // Anything between the closing quote and the delimiter is dropped.
    while (pos_ < text_.size() && text_[pos_] != ',' && !IsLineEnd(text_[pos_])) ++pos_;
  } else {
    while (pos_ < text_.size() && text_[pos_] != ',' && !IsLineEnd(text_[pos_])) value += text_[pos_++];
    if (form_ == Form::Record)
      while (!value.empty() && IsBlank(value.back())) value.pop_back();
  }
  EndField();
  lastText_ = value;
  return value;
}

double FieldReader::ReadNumber() {
  if (form_ == Form::Record) {
    const double v = NumberOfText(ReadString());
    lastValid_ = true;
    return v;
  }
  SkipToField();
  std::string token;
  if (text_[pos_] == '"') {
    // A quoted number: its text between the quotes.
    token = ReadString();
  } else {
    while (pos_ < text_.size() && text_[pos_] != ',' && !IsBlank(text_[pos_]) && !IsLineEnd(text_[pos_]))
      token += text_[pos_++];
    EndField();
  }
  lastText_ = token;
  const char* begin = token.c_str();
  char* end = nullptr;
  double v = std::strtod(begin, &end);
  // Only decimal notation counts: no hexadecimal, infinities or NaN from strtod's extensions.
  bool plain = token.find_first_of("xXnNiI") == std::string::npos;
  lastValid_ = end != begin && plain && end == begin + token.size();
  if (end == begin || !plain) v = 0;
  return v;
}

std::string FieldReader::ReadFieldInLine() {
  SkipBlanks();
  if (pos_ >= text_.size() || IsLineEnd(text_[pos_])) {
    EndField();
    lastText_.clear();
    return lastText_;
  }
  return ReadString();
}

bool FieldReader::AtEnd() const {
  for (std::size_t p = pos_; p < text_.size(); ++p)
    if (!IsBlank(text_[p]) && !IsLineEnd(text_[p])) return false;
  return true;
}

bool FieldReader::HasMoreData() const {
  for (std::size_t p = pos_; p < text_.size(); ++p)
    if (!IsBlank(text_[p]) && !IsLineEnd(text_[p]) && text_[p] != ',') return true;
  return false;
}

std::string ReadFieldPattern(const std::string& path, std::string_view pattern, std::vector<std::string>& strings,
                             std::vector<double>& numbers) {
  strings.clear();
  numbers.clear();
  try {
    FieldReader in(path);
    for (char kind : pattern) {
      if (kind == 's') {
        strings.push_back(in.ReadString());
        continue;
      }
      numbers.push_back(in.ReadNumber());
      if (!in.LastNumberValid() || !std::isfinite(numbers.back()))
        return "\"" + in.LastText() + "\" on line " + std::to_string(in.Line()) + " is not a number";
    }
  } catch (const ProgramEnd& e) {
    return e.message;
  }
  return {};
}

}  // namespace korvan
