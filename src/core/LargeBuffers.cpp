#include "core/LargeBuffers.h"

#include <sys/mman.h>

#include <cstdint>

namespace quillon {

void AdviseHugePages(const void* data, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
  constexpr std::size_t kHugePage = std::size_t{2} << 20;
  if (!data) return;
  // From the first huge-page boundary in the buffer, over the whole huge pages that follow.
  const std::size_t lead = (kHugePage - reinterpret_cast<std::uintptr_t>(data) % kHugePage) % kHugePage;
  if (bytes < lead + kHugePage) return;
  void* first = static_cast<char*>(const_cast<void*>(data)) + lead;
  // A refusal (no transparent huge pages in this kernel) leaves the pages as they were.
  madvise(first, (bytes - lead) / kHugePage * kHugePage, MADV_HUGEPAGE);
#else
  (void)data;
  (void)bytes;
#endif
}

}  // namespace quillon
