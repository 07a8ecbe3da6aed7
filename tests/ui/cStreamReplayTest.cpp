#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/cStreamReplay.h"

namespace quillon::test {
namespace {

// A message of 1D values for a group: flags, name, group number, channel count, then per channel
// its kind and the value in the first of its eight bytes.
std::vector<unsigned char> message(const std::string& name, unsigned char group, std::vector<unsigned char> values) {
  std::vector<unsigned char> m = {0x01, 0x00, static_cast<unsigned char>(name.size()), 0};
  m.reserve(10 + name.size() + 9 * values.size());  // GCC 12 misreads the inserts without it
  m.insert(m.end(), name.begin(), name.end());
  m.insert(m.end(), {group, 0, 0, 0, static_cast<unsigned char>(values.size()), 0});
  for (unsigned char v : values) m.insert(m.end(), {1, v, 0, 0, 0, 0, 0, 0, 0});
  return m;
}

// Each handed-out message as the first value byte it carries, or its size when it has none.
std::vector<int> tags(const std::vector<const ChannelStreamRecord*>& due) {
  std::vector<int> out;
  for (const ChannelStreamRecord* r : due)
    out.push_back(r->message.size() > 16 ? r->message[r->message.size() - 8] : -static_cast<int>(r->message.size()));
  return out;
}

TEST(StreamReplayTest, HandsOutTheLatestDueMessageOfEachGroupInStreamOrder) {
  cStreamReplay replay({{0, message("Arm", 1, {10})},
                        {1000, message("Arm", 2, {20})},
                        {2000, message("Arm", 1, {11})},
                        {3000, message("Rail", 1, {30})},
                        {4000, message("Arm", 1, {12})},
                        {9000, message("Arm", 1, {13})}});
  EXPECT_EQ(tags(replay.due(0)), std::vector<int>{10});
  EXPECT_TRUE(replay.due(0).empty());  // nothing twice
  EXPECT_EQ(tags(replay.due(5000)), (std::vector<int>{20, 30, 12}));
  EXPECT_EQ(replay.passed(), 5u);
  EXPECT_FALSE(replay.finished());
  EXPECT_EQ(tags(replay.due(1'000'000)), std::vector<int>{13});
  EXPECT_TRUE(replay.finished());
  EXPECT_TRUE(replay.due(2'000'000).empty());
}

TEST(StreamReplayTest, MessagesThatSetOtherChannelsAreNotDropped) {
  const std::vector<unsigned char> cut = {0x01, 0x00, 0x09};  // too short to name its group
  std::vector<unsigned char> otherFlags = message("Arm", 1, {41});
  otherFlags[0] = 0x11;
  cStreamReplay replay({{0, message("Arm", 1, {40})},
                        {1, message("Arm", 1, {50, 51})},  // more channels
                        {2, otherFlags},
                        {3, cut},
                        {4, cut},
                        {5, message("Arm", 1, {42})}});
  EXPECT_EQ(tags(replay.due(10)), (std::vector<int>{51, 41, -3, -3, 42}));
  EXPECT_EQ(replay.passed(), 6u);
}

TEST(StreamReplayTest, MovedToAnotherMessageHandsOutFromThere) {
  cStreamReplay replay({{0, message("Arm", 1, {10})},
                        {1000, message("Arm", 1, {11})},
                        {1000, message("Arm", 1, {12})},
                        {3000, message("Arm", 1, {13})}});
  const std::pair<std::uint64_t, std::size_t> counts[] = {{0, 1}, {999, 1}, {1000, 3}, {2999, 3}, {3000, 4}, {9000, 4}};
  for (auto [time, count] : counts) EXPECT_EQ(replay.countUpTo(time), count) << time;

  replay.moveTo(3);
  EXPECT_EQ(replay.passed(), 3u);
  EXPECT_TRUE(replay.due(2000).empty());
  EXPECT_EQ(tags(replay.due(3000)), std::vector<int>{13});
  EXPECT_TRUE(replay.finished());
  replay.moveTo(0);  // back to the start: everything is due again
  EXPECT_EQ(tags(replay.due(1000)), std::vector<int>{12});
  replay.moveTo(99);
  EXPECT_TRUE(replay.finished());
  EXPECT_EQ(replay.messages().size(), 4u);

  cStreamReplay empty({});  // an empty stream is finished from the start
  EXPECT_TRUE(empty.finished());
  EXPECT_TRUE(empty.due(100).empty());
}

}  // namespace
}  // namespace quillon::test
