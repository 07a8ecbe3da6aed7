#include "core/LargeBuffers.h"

#include <sys/mman.h>

#include <cstdint>

namespace quillon {

void AdviseHugePages(const void* data, std::size_t bytes) {
#ifdef MADV_HUGEPAGE
  constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
  const auto start = reinterpret_cast<std::uintptr_t>(data);
  if (!data || bytes < kHugePage) return;
  const std::uintptr_t begin = (start + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t end = (start + bytes) & ~(kHugePage - 1);
  // A refusal (no transparent huge pages in this kernel) leaves the pages as they were.
  if (end > begin) madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
  (void)data;
  (void)bytes;
#endif
}

}  // namespace quillon
