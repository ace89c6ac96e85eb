#include "text/text_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <set>
#include <utility>

namespace korvan {

namespace {

// The first failure a destructor met, until it is thrown or forgotten.
std::mutex pendingMutex;
bool pending = false;
WriteFault pendingFault;
std::atomic<long> faultCount{0};
// Files open now, and files closed while an exception passed through their writer.
std::multiset<std::string> openFiles;
std::vector<std::string> cutShort;
std::set<std::string> openedFiles;  // every path opened for writing

std::string ReasonOf(int error) { return error ? std::strerror(error) : "the system gave no reason"; }

}  // namespace

WriteFault WriteFaultOf(const std::string& path, const std::string& reason) {
  WriteFault fault;
  fault.title = "Error in writing file";
  fault.message = "The file " + path + " could not be written: " + reason + ".\n"
                  "The files written before it stand as they are; this one is not whole.";
  fault.file = path;
  return fault;
}

void ThrowPendingWriteFault() {
  std::lock_guard<std::mutex> lock(pendingMutex);
  if (!pending) return;
  pending = false;
  throw pendingFault;
}

void ClearPendingWriteFault() {
  std::lock_guard<std::mutex> lock(pendingMutex);
  pending = false;
}

long WriteFaultCount() { return faultCount.load(); }

TextFile::~TextFile() {
  if (f_ && std::uncaught_exceptions() > 0) {
    std::lock_guard<std::mutex> lock(pendingMutex);
    cutShort.push_back(path_);
  }
  CloseKeepingFault();
}

std::vector<std::string> FilesOpenedForWriting() {
  std::lock_guard<std::mutex> lock(pendingMutex);
  return {openedFiles.begin(), openedFiles.end()};
}

std::vector<std::string> TakeFilesNotWhole() {
  std::lock_guard<std::mutex> lock(pendingMutex);
  std::vector<std::string> files = std::move(cutShort);
  cutShort.clear();
  for (const std::string& path : openFiles)
    if (std::find(files.begin(), files.end(), path) == files.end()) files.push_back(path);
  return files;
}

void TextFile::CloseKeepingFault() noexcept {
  if (!f_) return;
  const std::string reason = CloseStream();
  if (reason.empty()) return;
  std::lock_guard<std::mutex> lock(pendingMutex);
  if (!pending) {
    pending = true;
    pendingFault = WriteFaultOf(path_, reason);
  }
}

TextFile::TextFile(TextFile&& o) noexcept
    : f_(std::exchange(o.f_, nullptr)),
      buffer_(std::move(o.buffer_)),
      memory_(std::exchange(o.memory_, nullptr)),
      path_(std::move(o.path_)),
      column_(o.column_) {}

TextFile& TextFile::operator=(TextFile&& o) noexcept {
  if (this != &o) {
    CloseKeepingFault();
    f_ = std::exchange(o.f_, nullptr);
    buffer_ = std::move(o.buffer_);
    memory_ = std::exchange(o.memory_, nullptr);
    path_ = std::move(o.path_);
    column_ = o.column_;
  }
  return *this;
}

void TextFile::Open(const std::string& path, Mode mode) {
  Close();
  ThrowPendingWriteFault();
  path_ = path;
  column_ = 1;
  memory_ = nullptr;
  f_ = std::fopen(path.c_str(), mode == Mode::Append ? "ab" : "wb");
  if (!f_) Fail(errno);
  // Result files run to megabytes: the system is handed them in large pieces.
  constexpr std::size_t kBuffer = 1 << 16;
  if (!buffer_) buffer_ = std::make_unique<char[]>(kBuffer);
  std::setvbuf(f_, buffer_.get(), _IOFBF, kBuffer);
  std::lock_guard<std::mutex> lock(pendingMutex);
  openFiles.insert(path_);
  openedFiles.insert(path_);
}

void TextFile::Forget() {
  std::lock_guard<std::mutex> lock(pendingMutex);
  const auto it = openFiles.find(path_);
  if (it != openFiles.end()) openFiles.erase(it);
}

std::string TextFile::CloseStream() {
  Forget();
  std::FILE* f = std::exchange(f_, nullptr);
  errno = 0;
  const bool failed = std::ferror(f) != 0;
  const int flushed = std::fflush(f);
  const int flushError = errno;
  const int closed = std::fclose(f);
  if (!failed && flushed == 0 && closed == 0) return {};
  ++faultCount;
  return ReasonOf(flushError ? flushError : errno);
}

void TextFile::Close() {
  if (!f_) return;
  const std::string reason = CloseStream();
  if (!reason.empty()) throw WriteFaultOf(path_, reason);
}

void TextFile::Flush() {
  if (!f_) return;
  errno = 0;
  if (std::fflush(f_) != 0 || std::ferror(f_)) Fail(errno);
}

void TextFile::Fail(int error) {
  if (f_) {
    Forget();
    std::fclose(std::exchange(f_, nullptr));
  }
  ++faultCount;
  throw WriteFaultOf(path_, ReasonOf(error));
}

void TextFile::RawText(std::string_view s) {
  if (s.empty()) return;
  if (memory_) {
    memory_->append(s);
  } else {
    if (!f_) return;
    // A file is written by one thread at a time (the bootstrap's workers write none): the
    // stream's lock is not needed.
    if (fwrite_unlocked(s.data(), 1, s.size(), f_) != s.size()) Fail(errno);
  }
  const void* lastNewLine = memrchr(s.data(), '\n', s.size());
  if (!lastNewLine)
    column_ += static_cast<int>(s.size());
  else
    column_ = static_cast<int>(s.data() + s.size() - static_cast<const char*>(lastNewLine));
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
