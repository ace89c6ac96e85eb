#include "text/text_file.h"

#include <utility>

#include "store/faults.h"

namespace korvan {

TextFile::TextFile(TextFile&& o) noexcept
    : f_(std::exchange(o.f_, nullptr)), path_(std::move(o.path_)), column_(o.column_) {}

TextFile& TextFile::operator=(TextFile&& o) noexcept {
  if (this != &o) {
    Close();
    f_ = std::exchange(o.f_, nullptr);
    path_ = std::move(o.path_);
    column_ = o.column_;
  }
  return *this;
}

void TextFile::Open(const std::string& path, Mode mode) {
  Close();
  f_ = std::fopen(path.c_str(), mode == Mode::Append ? "ab" : "wb");
  if (!f_) throw ProgramEnd{"Path/File access error: " + path, "File error"};
  path_ = path;
  column_ = 1;
}

void TextFile::Close() {
  if (f_) std::fclose(f_);
  f_ = nullptr;
}

void TextFile::RawText(std::string_view s) {
  if (!f_ || s.empty()) return;
  // A file is written by one thread at a time (the bootstrap's workers write none): the
  // stream's lock is not needed.
  fwrite_unlocked(s.data(), 1, s.size(), f_);
  const std::size_t lastNewLine = s.rfind('\n');
  if (lastNewLine == std::string_view::npos)
    column_ += static_cast<int>(s.size());
  else
    column_ = 1 + static_cast<int>(s.size() - lastNewLine - 1);
}

void TextFile::NewLine() { RawText("\n"); }

void TextFile::PutItem(Tab t) {
  int col = t.column < 1 ? 1 : t.column;
  if (column_ > col) NewLine();
  if (column_ < col) RawText(std::string(static_cast<std::size_t>(col - column_), ' '));
}

void TextFile::PutItem(Zone) {
  int next = ((column_ - 1) / kZoneWidth + 1) * kZoneWidth + 1;
  RawText(std::string(static_cast<std::size_t>(next - column_), ' '));
}

void TextFile::WriteItem(std::string_view s, bool first) {
  if (!first) RawText(",");
  RawText("\"");
  RawText(s);
  RawText("\"");
}

}  // namespace korvan
