// The wire rules, the conflation of the inbox and the status line without a network; then
// publishers and subscribers on loopback ports that the tests pick: topics, conflation, drops,
// CURVE keys and the proxy.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "LiveTestSupport.h"
#include "live/LiveProxy.h"
#include "live/LivePublisher.h"
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

TEST(LiveBus, DeliversTheSubscribedGroupsAndConflatesToTheNewest) {
  Link link({{"Arm", 1}, {"Probe1", -7}});
  ASSERT_TRUE(link.publisher.waitForSubscribers(link.inbox.topics(), 1, 5s));
  for (int i = 0; i < 50; ++i) {
    link.Send("Arm", 10, -1);  // filtered by the subscription
    link.Send("Hand", 1, -1);
    link.Send("Arm", 1, i);
  }
  link.Send("Probe1", -7, 99);
  ASSERT_TRUE(PumpUntil(link.subscriber, link.inbox, [&] { return link.inbox.counts().received == 51; }));
  std::vector<double> applied;
  link.inbox.apply([&](const std::vector<unsigned char>& m) { applied.push_back(ValueOf(m)); });
  EXPECT_EQ(applied, (std::vector<double>{49, 99}));
  EXPECT_EQ(link.inbox.counts().conflated, 49u);
  EXPECT_EQ(link.inbox.counts().droppedTotal(), 0u);
}

TEST(LiveBus, CountsEveryMessageThatBreaksTheRules) {
  LiveSubscriber subscriber;
  LiveInbox inbox;
  inbox.setTopics({{"Arm", 1}});
  subscriber.subscribe(inbox.topics());
  ASSERT_EQ(subscriber.attach({LiveAttach::kBind, kAnyPort}), "");
  // A plain PUB socket, which can send any number of frames.
  zmq::context_t context;
  zmq::socket_t raw(context, zmq::socket_type::pub);
  raw.set(zmq::sockopt::linger, 0);
  raw.connect(subscriber.lastEndpoint());
  const auto good = OneValue("Arm", 1, 7);
  const auto sendGood = [&] {
    raw.send(zmq::str_buffer("Arm[1]"), zmq::send_flags::sndmore);
    raw.send(zmq::buffer(good), zmq::send_flags::none);
  };
  // Messages sent before the subscription has arrived are lost, so the rule breakers follow
  // the first good message that comes through.
  ASSERT_TRUE(PumpUntil(subscriber, inbox, [&] {
    sendGood();
    return inbox.counts().received > 0;
  }));
  const std::uint64_t before = inbox.counts().received;
  raw.send(zmq::str_buffer("Arm[1]"), zmq::send_flags::none);
  raw.send(zmq::str_buffer("Arm[1]"), zmq::send_flags::sndmore);
  raw.send(zmq::buffer(good), zmq::send_flags::sndmore);
  raw.send(zmq::buffer(good), zmq::send_flags::none);
  raw.send(zmq::str_buffer("Arm[1]"), zmq::send_flags::sndmore);
  raw.send(zmq::buffer(OneValue("Arm", 2, 8)), zmq::send_flags::none);
  raw.send(zmq::str_buffer("Arm[1][2]"), zmq::send_flags::sndmore);
  raw.send(zmq::buffer(OneValue("Arm[1]", 2, 9)), zmq::send_flags::none);
  sendGood();
  const LiveCounts& counts = inbox.counts();
  PumpUntil(subscriber, inbox, [&] { return counts.received > before && counts.droppedTotal() >= 4; });
  EXPECT_EQ(counts.droppedFor(LiveDrop::kFrameCount), 2u);
  EXPECT_EQ(counts.droppedFor(LiveDrop::kTopicMismatch), 1u);
  EXPECT_EQ(counts.droppedFor(LiveDrop::kUnsubscribed), 1u);
  EXPECT_EQ(counts.droppedFor(LiveDrop::kTooLarge), 0u);
}

TEST(LiveBus, AFrameOverTheLimitNeverReachesTheInbox) {
  // Over TCP, ZeroMQ itself cuts the connection that carries it; the next message comes
  // through once the subscriber has connected again.
  Link link({{"Arm", 1}}, 256);
  ASSERT_TRUE(link.publisher.waitForSubscribers(link.inbox.topics(), 1, 5s));
  std::vector<unsigned char> big = OneValue("Arm", 1, 1);
  big.resize(1000);
  link.publisher.send("Arm[1]", big.data(), big.size());
  ASSERT_TRUE(PumpUntil(link.subscriber, link.inbox, [&] {
    link.Send("Arm", 1, 2);
    return link.inbox.counts().received > 0;
  }));
  double newest = 0;
  link.inbox.apply([&](const std::vector<unsigned char>& m) { newest = ValueOf(m); });
  EXPECT_EQ(newest, 2);
  EXPECT_EQ(link.inbox.counts().droppedTotal(), 0u);
  EXPECT_EQ(link.inbox.counts().lostConnections, 1u);
}

TEST(LiveBus, PublishersHearHowManySubscribeAndTheProxyPassesSubscriptionsUp) {
  LiveProxy proxy;
  ASSERT_EQ(proxy.attachFrontend({LiveAttach::kBind, kAnyPort}), "");
  ASSERT_EQ(proxy.attachBackend({LiveAttach::kBind, kAnyPort}), "");
  proxy.start();
  LivePublisher arms{0}, probes{0};
  for (LivePublisher* p : {&arms, &probes}) ASSERT_EQ(p->attach({LiveAttach::kConnect, proxy.frontendEndpoint()}), "");
  LiveSubscriber viewers[2];
  LiveInbox inboxes[2];
  inboxes[0].setTopics({{"Arm", 1}, {"Probe", 2}});
  inboxes[1].setTopics({{"Arm", 1}});
  // A publisher that joins the proxy later hears each topic once; one that is there hears each
  // viewer's subscription, so the second viewer joins once the publishers are in.
  viewers[0].subscribe(inboxes[0].topics());
  ASSERT_EQ(viewers[0].attach({LiveAttach::kConnect, proxy.backendEndpoint()}), "");
  ASSERT_TRUE(arms.waitForSubscribers({"Arm[1]"}, 1, 5s));
  ASSERT_TRUE(probes.waitForSubscribers({"Probe[2]"}, 1, 5s));
  viewers[1].subscribe(inboxes[1].topics());
  ASSERT_EQ(viewers[1].attach({LiveAttach::kConnect, proxy.backendEndpoint()}), "");
  ASSERT_TRUE(arms.waitForSubscribers({"Arm[1]"}, 2, 5s));
  EXPECT_EQ(probes.subscribers("Probe[2]"), 1u);

  const auto arm = OneValue("Arm", 1, 1), probe = OneValue("Probe", 2, 2);
  arms.send("Arm[1]", arm.data(), arm.size());
  probes.send("Probe[2]", probe.data(), probe.size());
  ASSERT_TRUE(PumpUntil(viewers[0], inboxes[0], [&] { return inboxes[0].counts().received == 2; }));
  ASSERT_TRUE(PumpUntil(viewers[1], inboxes[1], [&] { return inboxes[1].counts().received == 1; }));
  proxy.stop();
  EXPECT_EQ(proxy.traffic().messages, 2u);
}

class Curve : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!zmq_has("curve")) GTEST_SKIP() << "this ZeroMQ has no CURVE";
    std::tie(serverPublic, serverSecret) = MakeCurveKeyPair();
    std::tie(clientPublic, clientSecret) = MakeCurveKeyPair();
  }
  std::string serverPublic, serverSecret, clientPublic, clientSecret;
};

// A connecting viewer hears only the publisher whose key it holds; a binding viewer lets in only
// the publishers it lists.
TEST_F(Curve, OnlyTheRightKeysLetMessagesThrough) {
  const struct {
    bool viewerBinds;
    CurveKeys publisher, viewer;
    bool heard;
  } cases[] = {
      {false, {serverSecret, {}, {}}, {{}, serverPublic, {}}, true},
      {false, {serverSecret, {}, {}}, {{}, MakeCurveKeyPair().first, {}}, false},
      {false, {serverSecret, {}, {}}, {}, false},
      {true, {clientSecret, serverPublic, {}}, {serverSecret, {}, {clientPublic}}, true},
      {true, {MakeCurveKeyPair().second, serverPublic, {}}, {serverSecret, {}, {clientPublic}}, false},
      {true, {}, {serverSecret, {}, {clientPublic}}, false},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const auto& c = cases[i];
    LivePublisher publisher{0};
    LiveSubscriber viewer;
    LiveInbox inbox;
    inbox.setTopics({{"Arm", 1}});
    viewer.subscribe(inbox.topics());
    EXPECT_EQ(viewer.secure(c.viewer), "") << i;
    EXPECT_EQ(publisher.secure(c.publisher), "") << i;
    if (c.viewerBinds) {
      EXPECT_EQ(viewer.attach({LiveAttach::kBind, kAnyPort}), "");
      EXPECT_EQ(publisher.attach({LiveAttach::kConnect, viewer.lastEndpoint()}), "");
    } else {
      EXPECT_EQ(publisher.attach({LiveAttach::kBind, kAnyPort}), "");
      EXPECT_EQ(viewer.attach({LiveAttach::kConnect, publisher.lastEndpoint()}), "");
    }
    const auto m = OneValue("Arm", 1, 3);
    const bool heard = PumpUntil(
        viewer, inbox,
        [&] {
          publisher.send("Arm[1]", m.data(), m.size());
          return inbox.counts().received > 0;
        },
        c.heard ? 5s : 300ms);
    EXPECT_EQ(heard, c.heard) << i;
  }
}

TEST_F(Curve, KeysAreReadFromTextOrFilesAndChecked) {
  const std::string list = std::filesystem::temp_directory_path() / ("quillon-keys-" + std::to_string(::getpid()));
  std::ofstream(list) << "# the publishers of cell 4\n\n  " << clientPublic << "  \n" << serverPublic << "\nno key\n";
  std::vector<std::string> keys;
  EXPECT_EQ(ReadCurveKeys(serverSecret, keys), "");
  EXPECT_EQ(ReadCurveKeys(list, keys), list + ":5: not a key (40 characters of Z85 text)");
  EXPECT_EQ(keys, (std::vector<std::string>{serverSecret, clientPublic, serverPublic}));
  std::string one;
  EXPECT_NE(ReadCurveKey(list + ".missing", one), "");
  std::filesystem::remove(list);

  EXPECT_EQ(CheckCurveKeys({}), "");
  EXPECT_EQ(CheckCurveKeys({serverSecret, {}, {clientPublic}}), "");
  EXPECT_EQ(CheckCurveKeys({{}, serverPublic, {}}), "");
  EXPECT_NE(CheckCurveKeys({{}, {}, {clientPublic}}), "");            // a server without its secret key
  EXPECT_NE(CheckCurveKeys({{}, serverPublic, {clientPublic}}), "");  // a client listing clients
  EXPECT_NE(CheckCurveKeys({serverSecret.substr(1), {}, {}}), "");    // one character short
  EXPECT_EQ(CurvePublicKey(serverSecret), serverPublic);
}

}  // namespace
}  // namespace quillon::test
