#include "ui/answer_book.h"

#include <fstream>
#include <sstream>

namespace korvan {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

std::string TrimBlanks(std::string_view s) {
  std::size_t b = 0, e = s.size();
  while (b < e && IsBlank(s[b])) ++b;
  while (e > b && IsBlank(s[e - 1])) --e;
  return std::string(s.substr(b, e - b));
}

std::string DialogueKey(const std::string& text, const std::string& title) {
  std::string key = TrimBlanks(title);
  if (!key.empty()) return key;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string::npos) end = text.size();
    std::string line = TrimBlanks(std::string_view(text).substr(start, end - start));
    if (!line.empty()) return line;
    start = end + 1;
  }
  return "";
}

void AnswerBook::AddFileText(const std::string& text, const std::string& origin) {
  std::istringstream in(text);
  std::string line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string trimmed = TrimBlanks(line);
    if (trimmed.empty() || trimmed.front() == '#') continue;
    std::string key, value;
    const std::size_t at = line.rfind(" = ");
    if (at != std::string::npos) {
      key = TrimBlanks(std::string_view(line).substr(0, at));
      value = TrimBlanks(std::string_view(line).substr(at + 3));
    } else if (trimmed.size() >= 2 && trimmed.compare(trimmed.size() - 2, 2, " =") == 0) {
      key = TrimBlanks(std::string_view(trimmed).substr(0, trimmed.size() - 2));  // empty answer
    } else {
      throw AnswerError(origin + ":" + std::to_string(number) +
                        ": expected \"<dialogue title> = <answer>\": " + trimmed);
    }
    if (key.empty()) {
      throw AnswerError(origin + ":" + std::to_string(number) + ": no dialogue title before \" = \"");
    }
    fileAnswers_.push_back({key, value});
  }
}

void AnswerBook::AddFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw AnswerError("cannot read answer file " + path);
  std::ostringstream text;
  text << in.rdbuf();
  AddFileText(text.str(), path);
}

void AnswerBook::AddOption(const std::string& keyEqualsValue) {
  const std::size_t eq = keyEqualsValue.find('=');
  if (eq == std::string::npos || TrimBlanks(keyEqualsValue.substr(0, eq)).empty()) {
    throw AnswerError("--answer takes KEY=VALUE, not: " + keyEqualsValue);
  }
  options_.push_back({keyEqualsValue});
}

std::optional<std::string> AnswerBook::OptionValue(const std::string& text, const std::string& key) {
  const std::string_view t = text;
  std::size_t b = 0;
  while (b < t.size() && IsBlank(t[b])) ++b;
  if (key.empty() || t.substr(b, key.size()) != key) return std::nullopt;
  std::size_t i = b + key.size();
  while (i < t.size() && IsBlank(t[i])) ++i;
  if (i >= t.size() || t[i] != '=') return std::nullopt;
  return TrimBlanks(t.substr(i + 1));
}

std::optional<std::string> AnswerBook::Take(const std::string& key) {
  bool named = false;
  for (auto& option : options_) {
    auto value = OptionValue(option.text, key);
    if (!value) continue;
    named = true;
    if (!option.used) {
      option.used = true;
      return value;
    }
  }
  if (named) return std::nullopt;
  for (auto& answer : fileAnswers_) {
    if (!answer.used && answer.key == key) {
      answer.used = true;
      return answer.value;
    }
  }
  return std::nullopt;
}

std::vector<std::string> AnswerBook::Unused() const {
  std::vector<std::string> left;
  for (const auto& answer : fileAnswers_) {
    if (answer.used) continue;
    // An answer that an option overrides was not forgotten: it was replaced.
    bool replaced = false;
    for (const auto& option : options_) replaced = replaced || OptionValue(option.text, answer.key).has_value();
    if (!replaced) left.push_back(answer.key + " = " + answer.value);
  }
  for (const auto& option : options_) {
    if (!option.used) left.push_back(option.text);
  }
  return left;
}

}  // namespace korvan
