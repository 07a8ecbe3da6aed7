// The offscreen viewer fed from live publishers: the values reach the scene, and a flood from
// several publishers at once, while the window is resized and the document reloaded, applies
// nothing that does not match and counts every drop.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "LiveTestSupport.h"
#include "live/LivePublisher.h"
#include "quillon/quillon.h"

namespace quillon::test {
namespace {

using namespace std::chrono_literals;

constexpr int kWidth = 160, kHeight = 120;

// A probe box that channel 0 of Probe[2] moves along x, and boxes that the three groups of the
// flood colour: F0[1], F1[2] and F2[-3], channel 0 each.
std::string Document(const char* background) {
  return std::string(R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<Visualisation>
  <Version>1.0</Version>
  <Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Transform { translation 0 0.3 0 children [ Shape { appearance Appearance { material Material { diffuseColor )") +
         background + R"( } } geometry Box { size 0.01 0.01 0.01 } } ] }
Transform { translation -0.2 0 0 children [ Shape { geometry Box { size 0.01 0.01 0.01 } } ] }
Transform { translation 0.2 0 0 children [ Shape { geometry Box { size 0.01 0.01 0.01 } } ] }
DEF Probe Transform { children [ Shape { appearance Appearance { material Material { } } geometry Box { size 0.05 0.05 0.05 } } ] }
Shape { appearance Appearance { material DEF M0 Material { } } geometry Box { size 0.001 0.001 0.001 } }
Shape { appearance Appearance { material DEF M1 Material { } } geometry Box { size 0.001 0.001 0.001 } }
Shape { appearance Appearance { material DEF M2 Material { } } geometry Box { size 0.001 0.001 0.001 } }
]]></Scene>
  <ExternRoute from="Probe[2][0][3D]" to="Probe.translation"/>
  <ExternRoute from="F0[1][0][1D]" to="M0.diffuseColor"/>
  <ExternRoute from="F1[2][0][1D]" to="M1.diffuseColor"/>
  <ExternRoute from="F2[-3][0][1D]" to="M2.diffuseColor"/>
</Visualisation>
)";
}

// One 3D value of nominal quality for Probe[2].
std::vector<unsigned char> ProbeAt(double x) {
  MessageBuilder m;
  m.Header(0x0011, "Probe", 2, 1);
  m.U8(2).F64(x).F64(0).F64(0).F64(0);
  return m.bytes;
}

class LiveViewer : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) GTEST_SKIP() << "no offscreen rendering here";
    Load(Document("0.2 0.2 0.2"));
    quillon_ViewAll_v2(ctrl);
  }
  void TearDown() override {
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }

  std::string Load(const std::string& xml) {
    char* groups = nullptr;
    EXPECT_EQ(quillon_load_document(ctrl, xml.c_str(), nullptr, &groups), 0);
    std::string text = groups ? groups : "";
    quillon_free(groups);
    return text;
  }

  // Applies a message as a host does; false when the viewer did not take it cleanly.
  bool Send(const std::vector<unsigned char>& message) {
    QuillonBytes r = quillon_SendChannels_v1(ctrl, message.data(), static_cast<long>(message.size()));
    const bool clean = r.size == 0;
    quillon_free(r.data);
    return clean;
  }

  // The mean column of the probe's green pixels; negative when none are seen.
  double ProbeColumn() {
    std::vector<unsigned char> pixels(kWidth * kHeight * 4);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    double sum = 0;
    int count = 0;
    for (int i = 0; i < kWidth * kHeight; ++i) {
      const unsigned char* p = &pixels[static_cast<std::size_t>(i) * 4];
      if (p[1] > p[0] + 60 && p[1] > p[2] + 60) sum += i % kWidth, ++count;
    }
    return count ? sum / count : -1;
  }

  QuillonCtrl* ctrl = nullptr;
};

TEST_F(LiveViewer, PublishedValuesMoveTheProbe) {
  Link link({{"Probe", 2}});
  ASSERT_TRUE(link.publisher.waitForSubscribers(link.inbox.topics(), 1, 5s));

  double columns[2] = {};
  for (int side = 0; side < 2; ++side) {
    const auto m = ProbeAt(side == 0 ? -0.15 : 0.15);
    link.publisher.send("Probe[2]", m.data(), m.size());
    ASSERT_TRUE(PumpUntil(link.subscriber, link.inbox, [&] { return link.inbox.waiting() > 0; }));
    link.inbox.apply([&](const std::vector<unsigned char>& message) { EXPECT_TRUE(Send(message)); });
    columns[side] = ProbeColumn();
  }
  ASSERT_GE(columns[0], 0);
  EXPECT_LT(columns[0], kWidth / 2 - 10);
  EXPECT_GT(columns[1], kWidth / 2 + 10);
}

TEST_F(LiveViewer, AFloodFromSeveralPublishersWhileResizingAndReloading) {
  LiveSubscriber subscriber;
  LiveInbox inbox;
  inbox.setTopics({{"F0", 1}, {"F1", 2}, {"F2", -3}});
  subscriber.subscribe(inbox.topics());
  ASSERT_EQ(subscriber.attach({LiveAttach::kBind, kAnyPort}), "");
  const std::string endpoint = subscriber.lastEndpoint();

  // Each publisher sends its own group's values 0, 1, 2, ... in order, and among them messages
  // whose topic lies about their header, and lookalike topics that a subscription's prefix
  // lets through.
  constexpr int kGood = 3000, kBadEvery = 10;
  const std::array<ChannelgroupAddress, 3> groups = {{{"F0", 1}, {"F1", 2}, {"F2", -3}}};
  // The publishers stay until the viewer is done, since closing drops what is still queued.
  std::atomic<bool> finished{false};
  const auto stay = [&] {
    while (!finished) std::this_thread::sleep_for(10ms);
  };
  std::vector<std::thread> publishers;
  for (std::size_t p = 0; p < groups.size(); ++p)
    publishers.emplace_back([&, p] {
      LivePublisher publisher{0};  // keeps everything: the test counts every message
      publisher.attach({LiveAttach::kConnect, endpoint});
      const std::string topic = AddressText(groups[p]);
      const std::string lookalike = topic + "[7]";
      if (!publisher.waitForSubscribers({topic}, 1, 10s)) return stay();
      const auto liar = OneValue(groups[(p + 1) % 3].name, groups[(p + 1) % 3].group, -1);
      const auto hidden = OneValue(topic, 7, -1);
      for (int i = 0; i < kGood; ++i) {
        const auto m = OneValue(groups[p].name, groups[p].group, i);
        publisher.send(topic, m.data(), m.size());
        if (i % kBadEvery == 0) {
          publisher.send(topic, liar.data(), liar.size());
          publisher.send(lookalike, hidden.data(), hidden.size());
        }
      }
      stay();
    });
  const std::string documents[2] = {Document("0.2 0.2 0.2"), Document("0.4 0.4 0.4")};
  std::map<std::string, double> newest;
  int mismatches = 0, unclean = 0;
  const std::uint64_t expected = 3u * kGood + 3u * 2u * (kGood / kBadEvery);
  std::vector<unsigned char> pixels(512 * 512 * 4);
  const auto deadline = std::chrono::steady_clock::now() + 30s;
  int turn = 0, reloads = 0;
  for (; std::chrono::steady_clock::now() < deadline; ++turn) {
    const LiveCounts& c = inbox.counts();
    if (c.received + c.droppedTotal() == expected && inbox.waiting() == 0) break;
    if (subscriber.wait(5ms)) subscriber.drain(inbox, 100);
    inbox.apply([&](const std::vector<unsigned char>& message) {
      const auto address = ReadChannelgroupAddress(message.data(), message.size());
      const bool known = address && std::find(groups.begin(), groups.end(), *address) != groups.end();
      if (!known) {
        ++mismatches;
        return;
      }
      // Conflation may skip values but never goes back to an older one.
      double& last = newest.emplace(AddressText(*address), -1).first->second;
      if (ValueOf(message) <= last) ++mismatches;
      last = ValueOf(message);
      if (!Send(message)) ++unclean;
    });
    if (turn % 2 == 0) quillon_resize(ctrl, 100 + turn % 400, 80 + turn % 300);
    if (turn % 5 == 0) {
      // The second document needs the same groups, so the subscriptions stay as they are.
      EXPECT_EQ(ParseNeededGroups(Load(documents[(turn / 5) % 2])).size(), 4u);
      inbox.setTopics({groups.begin(), groups.end()});
      ++reloads;
    }
    quillon_render_rgba(ctrl, pixels.data(), pixels.size());
  }
  finished = true;
  for (std::thread& t : publishers) t.join();

  const LiveCounts& c = inbox.counts();
  EXPECT_GE(reloads, 10);
  EXPECT_EQ(mismatches, 0);
  EXPECT_EQ(unclean, 0);
  EXPECT_EQ(c.received, 3u * kGood);
  EXPECT_EQ(c.droppedFor(LiveDrop::kTopicMismatch), 3u * (kGood / kBadEvery));
  EXPECT_EQ(c.droppedFor(LiveDrop::kUnsubscribed), 3u * (kGood / kBadEvery));
  EXPECT_EQ(c.applied + c.conflated, c.received);
  for (const ChannelgroupAddress& g : groups) EXPECT_EQ(newest[AddressText(g)], kGood - 1) << AddressText(g);
}

}  // namespace
}  // namespace quillon::test
