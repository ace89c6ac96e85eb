#include "support/test_support.h"

#include <atomic>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace korvan::test {

TempDir::TempDir() {
  static std::atomic<int> counter{0};
  path_ = std::filesystem::temp_directory_path() /
          ("korvan_test_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
}

std::vector<std::string> Lines(const std::string& path) {
  std::istringstream in(ReadFile(path));
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string DataPath(const std::string& name) { return std::string(KORVAN_TEST_DATA) + "/" + name; }

}  // namespace korvan::test
