#include <gtest/gtest.h>

#include <vector>

#include "core/ZrClassRegistry.h"

namespace quillon {
namespace {

TEST(ZrClassRegistry, RefusesIdsOutOfRangeAndA601stClass) {
  static const ZrClassRecord outside{0, nullptr};
  EXPECT_FALSE(ZrClassRegistry::RegisterClass(&outside, ZrClassRegistry::kMaxClassId));
  EXPECT_FALSE(ZrClassRegistry::RegisterClass(&outside, -1));
  EXPECT_FALSE(ZrClassRegistry::RegisterClass(nullptr, 12));

  static std::vector<ZrClassRecord> records(ZrClassRegistry::kSlots + 1);
  int id = 2000;
  while (ZrClassRegistry::UsedSlots() < ZrClassRegistry::kSlots) {
    auto& r = records[static_cast<std::size_t>(ZrClassRegistry::UsedSlots())];
    r.classId = static_cast<std::uint16_t>(id);
    ASSERT_TRUE(ZrClassRegistry::RegisterClass(&r, id++));
  }
  // Registering a known id again keeps the first record, even when the table is full.
  const ZrClassRecord* first = ZrClassRegistry::Find(2000);
  static const ZrClassRecord again{2000, nullptr};
  EXPECT_TRUE(ZrClassRegistry::RegisterClass(&again, 2000));
  EXPECT_EQ(ZrClassRegistry::Find(2000), first);

  static const ZrClassRecord late{9999, nullptr};
  EXPECT_FALSE(ZrClassRegistry::RegisterClass(&late, 9999));
  EXPECT_EQ(ZrClassRegistry::Find(9999), nullptr);
  EXPECT_EQ(ZrClassRegistry::UsedSlots(), ZrClassRegistry::kSlots);
}

}  // namespace
}  // namespace quillon
