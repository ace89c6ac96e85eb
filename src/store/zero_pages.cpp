#include "store/zero_pages.h"

#include <sys/mman.h>

#include <new>

namespace korvan {

void* MapZeroPages(std::size_t bytes) {
  void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (p == MAP_FAILED) throw std::bad_alloc();
  return p;
}

void UnmapZeroPages(void* p, std::size_t bytes) { munmap(p, bytes); }

}  // namespace korvan
