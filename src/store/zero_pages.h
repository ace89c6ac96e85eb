#pragma once
// Memory of zero pages from the system: it becomes real memory only where it is written, so a
// store sized for the largest cohort and 100,003 samples costs what a run uses. The one place
// that talks to the platform's memory mapping.
#include <cstddef>

namespace korvan {

// bytes of zeros; std::bad_alloc when the system refuses.
void* MapZeroPages(std::size_t bytes);
// Copies bytes from `from` into fresh zero pages at `to`, leaving out the pages of `from`
// that hold zeros only: a copy costs the memory its source uses, not its size.
void CopyIntoZeroPages(void* to, const void* from, std::size_t bytes);
// Gives back what MapZeroPages(bytes) returned.
void UnmapZeroPages(void* p, std::size_t bytes);

}  // namespace korvan
