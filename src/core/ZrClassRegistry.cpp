#include "core/ZrClassRegistry.h"

#include <array>

namespace quillon {
namespace {

struct Tables {
  std::array<std::uint16_t, ZrClassRegistry::kMaxClassId> index{};
  std::array<const ZrClassRecord*, ZrClassRegistry::kSlots> slots{};
  int used = 0;
  Tables() { index.fill(ZrClassRegistry::kUnregistered); }
};

// Built on first use, so registrations from any static initialiser find it ready.
Tables& tables() {
  static Tables t;
  return t;
}

}  // namespace

bool ZrClassRegistry::RegisterClass(const ZrClassRecord* record, int classId) noexcept {
  Tables& t = tables();
  if (!record || classId < 0 || classId >= kMaxClassId) return false;
  auto& slot = t.index[static_cast<std::size_t>(classId)];
  if (slot != kUnregistered) return true;
  if (t.used >= kSlots) return false;
  slot = static_cast<std::uint16_t>(t.used);
  t.slots[static_cast<std::size_t>(t.used)] = record;
  ++t.used;
  return true;
}

const ZrClassRecord* ZrClassRegistry::Find(int classId) {
  if (classId < 0 || classId >= kMaxClassId) return nullptr;
  const Tables& t = tables();
  const auto slot = t.index[static_cast<std::size_t>(classId)];
  return slot == kUnregistered ? nullptr : t.slots[slot];
}

int ZrClassRegistry::UsedSlots() { return tables().used; }

}  // namespace quillon
