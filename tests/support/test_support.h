#pragma once
// Helpers shared by the tests: temporary folders, file contents, scripted dialogues.
#include <filesystem>
#include <string>
#include <vector>

namespace korvan::test {

// A fresh, empty folder under the system's temporary folder, removed when the object dies.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  const std::filesystem::path& path() const { return path_; }
  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& text);
std::string DataPath(const std::string& name);  // tests/data/<name>
// The lines of a file, without their line ends.
std::vector<std::string> Lines(const std::string& path);

}  // namespace korvan::test
