#include "store/zero_pages.h"

#include <sys/mman.h>

#include <cstring>
#include <new>

namespace korvan {

void* MapZeroPages(std::size_t bytes) {
  void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (p == MAP_FAILED) throw std::bad_alloc();
  return p;
}

void CopyIntoZeroPages(void* to, const void* from, std::size_t bytes) {
  constexpr std::size_t kPage = 4096;
  auto* out = static_cast<unsigned char*>(to);
  const auto* in = static_cast<const unsigned char*>(from);
  for (std::size_t at = 0; at < bytes; at += kPage) {
    const std::size_t n = bytes - at < kPage ? bytes - at : kPage;
    static const unsigned char kZeros[kPage] = {};
    if (std::memcmp(in + at, kZeros, n) != 0) std::memcpy(out + at, in + at, n);
  }
}

void UnmapZeroPages(void* p, std::size_t bytes) { munmap(p, bytes); }

}  // namespace korvan
