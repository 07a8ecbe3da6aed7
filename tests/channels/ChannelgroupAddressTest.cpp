#include <gtest/gtest.h>

#include "MessageBuilder.h"
#include "channels/ChannelgroupAddress.h"

namespace quillon {
namespace {

TEST(ChannelgroupAddress, ComesFromTheHeaderAndNeverReadsPastIt) {
  test::MessageBuilder m;
  m.Header(0x0001, "Arm1", -7, 0);
  const auto address = ReadChannelgroupAddress(m.bytes.data(), m.bytes.size());
  ASSERT_TRUE(address);
  EXPECT_EQ(address->name, "Arm1");
  EXPECT_EQ(address->group, -7);
  EXPECT_EQ(AddressText(*address), "Arm1[-7]");
  // The name and group must be whole; the channel count is not needed.
  for (std::size_t cut : {std::size_t{0}, std::size_t{3}, std::size_t{7}, m.bytes.size() - 3})
    EXPECT_FALSE(ReadChannelgroupAddress(m.bytes.data(), cut)) << cut;
  EXPECT_TRUE(ReadChannelgroupAddress(m.bytes.data(), m.bytes.size() - 2));
  EXPECT_FALSE(ReadChannelgroupAddress(nullptr, 20));
}

TEST(ChannelgroupAddress, NeededGroupsAreReadOnceEachInDecimal) {
  const auto groups = ParseNeededGroups("[Probe1, 007][Arm, -0][Probe1, 7][Arm, +3][p_1, 12345678][cut, 1");
  ASSERT_EQ(groups.size(), 4u);
  EXPECT_EQ(AddressText(groups[0]), "Probe1[7]");
  EXPECT_EQ(AddressText(groups[1]), "Arm[0]");
  EXPECT_EQ(AddressText(groups[2]), "Arm[3]");
  EXPECT_EQ(AddressText(groups[3]), "p_1[12345678]");
  EXPECT_TRUE(ParseNeededGroups("").empty());
}

}  // namespace
}  // namespace quillon
