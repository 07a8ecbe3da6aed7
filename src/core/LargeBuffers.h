#pragma once
// Large buffers that are filled once: the kernel is asked to back them with huge pages before
// their first write, so that filling one faults once per 2 MiB instead of once per 4 KiB.

#include <cstddef>

namespace quillon {

/// Advises huge pages for the whole 2 MiB pages inside [data, data + bytes). Only advice: where
/// the kernel has none to give, the buffer gets small pages as before.
void AdviseHugePages(const void* data, std::size_t bytes);

/// Reserves room for `count` items in a vector or string and advises huge pages for it.
template <class Container>
void ReserveLarge(Container& container, std::size_t count) {
  container.reserve(count);
  AdviseHugePages(container.data(), container.capacity() * sizeof(*container.data()));
}

}  // namespace quillon
