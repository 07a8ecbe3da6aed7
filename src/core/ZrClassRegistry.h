#pragma once
// The process-wide table of class records behind ZrAnyObject's kind test.

#include <cstdint>

namespace quillon {

/// A class's static record: its identifier and the record of its base (null at the root).
struct ZrClassRecord {
  std::uint16_t classId;
  const ZrClassRecord* base;
};

/// Index of 15000 class identifiers onto 600 slots of class records.
class ZrClassRegistry {
 public:
  static constexpr int kMaxClassId = 15000;  // identifiers are 0 .. 14999
  static constexpr int kSlots = 600;
  static constexpr int kUnregistered = kSlots;

  /// Gives classId the next free slot. Keeps the first record of an identifier registered
  /// twice. Refuses (false) an identifier of 15000 or more and a 601st class. It only fills
  /// fixed tables and cannot throw, so static initialisers may call it.
  static bool RegisterClass(const ZrClassRecord* record, int classId) noexcept;
  /// The record registered under classId, or null.
  static const ZrClassRecord* Find(int classId);
  static int UsedSlots();
};

}  // namespace quillon
