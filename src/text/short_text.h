#pragma once
// Equality of the short codes that the engine tests for every individual on every day (sex
// and type codes such as "F"): what == says, told inline without a call into the library.
#include <cstring>
#include <string>

namespace korvan {

// a == b.
inline bool SameText(const std::string& a, const std::string& b) {
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  if (n == 0) return true;
  if (a[0] != b[0]) return false;
  return n == 1 || std::memcmp(a.data() + 1, b.data() + 1, n - 1) == 0;
}

// a == the one-character text c (a == "F" for c = 'F').
inline bool IsText(const std::string& a, char c) { return a.size() == 1 && a[0] == c; }

}  // namespace korvan
