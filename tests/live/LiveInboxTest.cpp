// The wire rules, the conflation of the inbox and the status line, without a network.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "LiveTestSupport.h"
#include "live/LiveStatus.h"

namespace quillon::test {
namespace {

using namespace std::chrono_literals;

struct RuleCase {
  const char* name;
  std::size_t frames;
  std::string topic;
  std::vector<unsigned char> message;
  std::optional<LiveDrop> expected;
};

TEST(LiveMessageRules, EachMessageIsTakenOrDroppedForItsReason) {
  constexpr std::size_t kLimit = 64;
  const std::vector<unsigned char> arm = OneValue("Arm", 1, 0.5);
  const std::string longName(kLimit - OneValue("", 1, 0).size(), 'N');
  const std::vector<RuleCase> cases = {
      {"good", 2, "Arm[1]", arm, std::nullopt},
      {"at the limit", 2, longName + "[1]", OneValue(longName, 1, 1), std::nullopt},
      {"negative group", 2, "Probe1[-7]", OneValue("Probe1", -7, 1), std::nullopt},
      {"bracket in the name", 2, "A[1][2]", OneValue("A[1]", 2, 1), std::nullopt},
      {"one frame", 1, "Arm[1]", arm, LiveDrop::kFrameCount},
      {"three frames", 3, "Arm[1]", arm, LiveDrop::kFrameCount},
      {"over the limit", 2, "Arm[1]", std::vector<unsigned char>(kLimit + 1, 0), LiveDrop::kTooLarge},
      {"other group in the header", 2, "Arm[1]", OneValue("Arm", 2, 1), LiveDrop::kTopicMismatch},
      {"other name in the header", 2, "Arm[1]", OneValue("Arn", 1, 1), LiveDrop::kTopicMismatch},
      {"group not in plain decimal", 2, "Arm[01]", arm, LiveDrop::kTopicMismatch},
      {"topic runs on", 2, "Arm[1]x", arm, LiveDrop::kTopicMismatch},
      {"empty topic", 2, "", arm, LiveDrop::kTopicMismatch},
      {"header cut short", 2, "Arm[1]", {0x11, 0x00, 3, 0, 'A', 'r', 'm', 1}, LiveDrop::kTopicMismatch},
      {"empty message", 2, "Arm[1]", {}, LiveDrop::kTopicMismatch},
      // A subscription is a prefix, so "Arm[1]" lets "Arm[1][5]" through; the inbox does not.
      {"prefix of a wanted topic", 2, "Arm[1][5]", OneValue("Arm[1]", 5, 1), LiveDrop::kUnsubscribed},
      {"unwanted group", 2, "Arm[10]", OneValue("Arm", 10, 1), LiveDrop::kUnsubscribed},
  };
  for (const RuleCase& c : cases) {
    LiveInbox inbox(kLimit);
    inbox.setTopics({{"Arm", 1}, {"Probe1", -7}, {"A[1]", 2}, {longName, 1}});
    EXPECT_EQ(inbox.offer(c.frames, Frame(c.topic), Frame(c.message)), c.expected) << c.name;
    EXPECT_EQ(inbox.counts().received + inbox.counts().droppedTotal(), 1u) << c.name;
    EXPECT_EQ(inbox.waiting(), c.expected ? 0u : 1u) << c.name;
  }
}

class Inbox : public ::testing::Test {
 protected:
  void SetUp() override { inbox.setTopics({{"Arm", 1}, {"Probe", 2}}); }
  void Offer(std::string_view name, std::int32_t group, double value) {
    const std::string topic = AddressText({std::string(name), group});
    ASSERT_FALSE(inbox.offer(2, Frame(topic), Frame(OneValue(name, group, value))));
  }
  std::vector<double> Apply(std::size_t most = static_cast<std::size_t>(-1)) {
    std::vector<double> values;
    inbox.apply([&](const std::vector<unsigned char>& m) { values.push_back(ValueOf(m)); }, most);
    return values;
  }
  LiveInbox inbox;
};

TEST_F(Inbox, KeepsOnlyTheNewestMessageOfEachGroupInTheOrderTheGroupsCameIn) {
  Offer("Probe", 2, 10);
  Offer("Arm", 1, 1);
  Offer("Probe", 2, 11);
  Offer("Arm", 1, 2);
  Offer("Arm", 1, 3);
  EXPECT_EQ(Apply(), (std::vector<double>{11, 3}));
  EXPECT_EQ(inbox.counts().received, 5u);
  EXPECT_EQ(inbox.counts().conflated, 3u);
  EXPECT_EQ(inbox.counts().applied, 2u);
  EXPECT_TRUE(Apply().empty());

  Offer("Arm", 1, 4);
  Offer("Probe", 2, 12);
  EXPECT_EQ(Apply(1), (std::vector<double>{4}));
  EXPECT_EQ(inbox.waiting(), 1u);
  Offer("Probe", 2, 13);
  EXPECT_EQ(Apply(), (std::vector<double>{13}));
}

TEST_F(Inbox, ANewSetOfGroupsLetsGoOfWhatWaitsForTheOldOnes) {
  Offer("Arm", 1, 1);
  Offer("Probe", 2, 2);
  inbox.setTopics({{"Probe", 2}, {"Hand", 3}});
  EXPECT_EQ(inbox.topics(), (std::vector<std::string>{"Hand[3]", "Probe[2]"}));
  EXPECT_EQ(inbox.counts().conflated, 1u);
  EXPECT_EQ(Apply(), (std::vector<double>{2}));
  EXPECT_EQ(inbox.offer(2, Frame("Arm[1]"), Frame(OneValue("Arm", 1, 5))), LiveDrop::kUnsubscribed);
}

TEST(LiveStatusLine, ShowsTheRateTheDropsAndSilence) {
  const auto t0 = LiveStatus::Clock::now();
  LiveStatus status(t0);
  LiveCounts counts;
  EXPECT_EQ(status.update(counts, t0 + 1s), "0 messages/s · 0 received · 0 dropped · 0 conflated");
  EXPECT_FALSE(status.quiet());
  EXPECT_EQ(status.update(counts, t0 + 3s).substr(0, 14), "no data for 3 ");

  counts.received = 20;
  counts.conflated = 4;
  counts.dropped[static_cast<std::size_t>(LiveDrop::kTopicMismatch)] = 2;
  counts.dropped[static_cast<std::size_t>(LiveDrop::kFrameCount)] = 1;
  counts.newest = t0 + 3400ms;
  EXPECT_EQ(status.update(counts, t0 + 3500ms),
            "40 messages/s · 20 received · 3 dropped · 4 conflated · newest 100 ms old");
  EXPECT_FALSE(status.quiet());
  EXPECT_EQ(status.update(counts, t0 + 9500ms), "no data for 6 s · 20 received · 3 dropped · 4 conflated");
  EXPECT_TRUE(status.quiet());
}

}  // namespace
}  // namespace quillon::test
