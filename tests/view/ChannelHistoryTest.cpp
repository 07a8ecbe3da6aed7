// The values that quillon view's plots draw: one channel through a recording, or as it comes.
#include <gtest/gtest.h>

#include <fstream>

#include "ChannelHistory.h"

namespace quillon::app::test {
namespace {

std::vector<ChannelStreamRecord> robotArm() {
  std::ifstream in(QUILLON_SOURCE_DIR "/examples/robot_arm.qcs", std::ios::binary);
  std::vector<ChannelStreamRecord> records;
  EXPECT_EQ(ChannelStreamReader::ReadAll(in, records), ChannelStreamReader::Status::kEnd);
  return records;
}

RouteState route(const char* from, int channel, RouteState::Kind kind) {
  RouteState r;
  r.from = from;
  r.controlPath = "Arm";
  r.group = 1;
  r.channel = static_cast<std::uint32_t>(channel);
  r.kind = kind;
  return r;
}

TEST(ChannelHistoryTest, ReadsOneChannelThroughARecordingAtItsTimes) {
  const std::vector<ChannelStreamRecord> records = robotArm();
  ASSERT_EQ(records.size(), 120u);

  // The motor temperature runs from 0 to 1 over the 120 messages, 50 ms apart.
  ChannelHistory temperature(route("Arm[1][4][1D]", 4, RouteState::Kind::Value1D));
  temperature.readRecording(records);
  ASSERT_EQ(temperature.size(), 120u);
  EXPECT_EQ(temperature.components(), 1);
  const std::vector<ChannelPoint> window = temperature.between(1.0, 3.0);
  ASSERT_EQ(window.size(), 41u);  // both ends included
  EXPECT_DOUBLE_EQ(window.front().time, 1.0);
  EXPECT_DOUBLE_EQ(window.front().value[0], 20.0 / 120);
  EXPECT_DOUBLE_EQ(window.back().time, 3.0);

  // The elbow's frames: the position, and the quality that marks frames 50 to 69 bad.
  ChannelHistory elbow(route("Arm[1][2][6D]", 2, RouteState::Kind::Frame6D));
  elbow.readRecording(records);
  EXPECT_EQ(elbow.components(), 3);
  const std::vector<ChannelPoint> all = elbow.between(0, 10);
  ASSERT_EQ(all.size(), 120u);
  EXPECT_DOUBLE_EQ(all[10].value[1], 0.2);
  EXPECT_EQ(all[49].quality, 0.0);
  EXPECT_EQ(all[50].quality, 1000.0);
  EXPECT_EQ(all[69].quality, 1000.0);
  EXPECT_EQ(all[70].quality, 0.0);

  EXPECT_TRUE(temperature.between(3.01, 3.04).empty());
  EXPECT_TRUE(temperature.between(7, 8).empty());
}

TEST(ChannelHistoryTest, FollowsTheViewerTakingEachValueOnce) {
  ChannelHistory history(route("Arm[1][0][3D]", 0, RouteState::Kind::Value3D));
  RouteState now = route("Arm[1][0][3D]", 0, RouteState::Kind::Value3D);
  history.follow(now, 0.5);  // nothing received yet
  EXPECT_EQ(history.size(), 0u);
  now.value = {1, 2, 3};
  now.quality = 7;
  now.received = 1;
  history.follow(now, 1.0);
  history.follow(now, 1.5);  // the same value, seen again
  now.value = {4, 5, 6};
  now.received = 2;
  history.follow(now, 2.0);
  ASSERT_EQ(history.size(), 2u);
  const std::vector<ChannelPoint> points = history.between(0, 5);
  EXPECT_EQ(points[0].value, (std::array<double, 3>{1, 2, 3}));
  EXPECT_EQ(points[0].quality, 7);
  EXPECT_EQ(points[1].time, 2.0);

  history.forgetBefore(1.5);
  ASSERT_EQ(history.size(), 1u);
  EXPECT_EQ(history.between(0, 5)[0].value[0], 4);
}

}  // namespace
}  // namespace quillon::app::test
