#pragma once
// Answers to dialogues given before a run: answer files and --answer options.
//
// An answer file has one answer per line, "<key> = <answer>", split at the last " = " of the
// line; blank lines and lines starting with '#' are skipped. The key of a dialogue is its title
// with outer blanks trimmed or, when it has no title, the first non-blank line of its text.
// Several answers with the same key are used in order, one per dialogue met.
//
// An option "KEY=VALUE" from the command line is matched against the dialogue's key: the option
// must begin with the key followed by '=' (blanks allowed around it), so titles that hold '='
// themselves ("Each time unit =?") work without quoting rules. Options override the files: once
// an option names a key, the files' answers for that key are not used.
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace korvan {

std::string TrimBlanks(std::string_view s);

// The key under which a dialogue's answer is looked up.
std::string DialogueKey(const std::string& text, const std::string& title);

// A fault in the answers given: ends a command-line run with exit code 2.
class AnswerError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// No answer is left for a dialogue and it may not take its default.
class MissingAnswer : public AnswerError {
 public:
  explicit MissingAnswer(const std::string& dialogueKey)
      : AnswerError("no answer for dialogue \"" + dialogueKey + "\""), key(dialogueKey) {}
  std::string key;
};

class AnswerBook {
 public:
  static AnswerBook FromText(const std::string& text) {
    AnswerBook book;
    book.AddFileText(text, "answers");
    return book;
  }

  // Adds the lines of an answer file; origin names it in messages. A line that is neither
  // blank, a comment, nor "<key> = <answer>" throws AnswerError naming origin and line.
  void AddFileText(const std::string& text, const std::string& origin);
  // Reads an answer file; throws AnswerError when it can't be read.
  void AddFile(const std::string& path);
  // Adds one command-line option "KEY=VALUE"; throws AnswerError when it holds no '='.
  void AddOption(const std::string& keyEqualsValue);

  // The next answer for a dialogue's key, or nothing when none is left.
  std::optional<std::string> Take(const std::string& key);

  // Answers never used, as "<key> = <answer>" (options as given), in the order given; a file's
  // answer that an option replaces isn't among them.
  std::vector<std::string> Unused() const;

 private:
  struct FileAnswer {
    std::string key, value;
    bool used = false;
  };
  struct OptionAnswer {
    std::string text;
    bool used = false;
  };
  // The value of option text for key, or nothing when it doesn't name that key.
  static std::optional<std::string> OptionValue(const std::string& text, const std::string& key);

  std::vector<FileAnswer> fileAnswers_;
  std::vector<OptionAnswer> options_;
};

}  // namespace korvan
