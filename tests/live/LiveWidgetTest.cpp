// The Qt widget with a live source, as a host embeds it: two lines give it live data, it
// follows each document it loads, and a flood does not hold up its event loop. Runs under a
// display (xvfb-run -a without one).
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <string>
#include <thread>

#include "LiveTestSupport.h"
#include "live/LivePublisher.h"
#include "live/qt/cLiveFeed.h"
#include "widget/QuillonWidget.h"

namespace quillon::test {
namespace {

using namespace std::chrono_literals;

QApplication& app() {
  static int argc = 1;
  static char name[] = "test_live_widget";
  static char* argv[] = {name, nullptr};
  static QApplication application(argc, argv);
  return application;
}

std::string Document(const char* group) {
  return std::string(R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape { appearance Appearance { material DEF Lamp Material { } } geometry Box { size 0.1 0.1 0.1 } }
]]></Scene>
  <ExternRoute from=")") +
         group + R"([0][1D]" to="Lamp.diffuseColor"/>
</Visualisation>
)";
}

class LiveWidget : public ::testing::Test {
 protected:
  void SetUp() override {
    app();
    ASSERT_EQ(publisher.attach({LiveAttach::kBind, kAnyPort}), "");
    widget = std::make_unique<QuillonWidget>();
    Load(Document("Probe[2]"));
  }
  int Load(const std::string& xml) {
    std::string annotated, groups;
    return widget->loadDocument(xml, annotated, groups);
  }
  void Send(std::string_view name, std::int32_t group, double value) {
    const auto m = OneValue(name, group, value);
    publisher.send(AddressText({std::string(name), group}), m.data(), m.size());
  }
  std::uint64_t Applied() const { return widget->liveFeed()->counts().applied; }

  LivePublisher publisher{0};
  std::unique_ptr<QuillonWidget> widget;
};

TEST_F(LiveWidget, FollowsTheGroupsOfEachDocumentItLoads) {
  ASSERT_EQ(widget->connectTo(publisher.lastEndpoint()), "");
  widget->show();
  ASSERT_TRUE(publisher.waitForSubscribers({"Probe[2]"}, 1, 5s));
  Send("Probe", 2, 0.5);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Applied() == 1; }, 5000));
  EXPECT_EQ(widget->liveFeed()->refused(), 0u);
  EXPECT_NE(widget->liveStatus().find("1 received"), std::string::npos) << widget->liveStatus();

  // A new document moves the subscription; a refused one leaves it where it was.
  ASSERT_EQ(Load(Document("Hand[3]")), 0);
  ASSERT_NE(Load("not a document"), 0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return publisher.subscribers("Probe[2]") == 0; }, 5000));
  ASSERT_TRUE(publisher.waitForSubscribers({"Hand[3]"}, 1, 5s));
  Send("Probe", 2, 0.7);
  Send("Hand", 3, 0.9);
  ASSERT_TRUE(QTest::qWaitFor([&] { return Applied() == 2; }, 5000));
  QTest::qWait(50);
  EXPECT_EQ(widget->liveFeed()->counts().received, 2u);
  EXPECT_EQ(widget->liveFeed()->counts().droppedTotal(), 0u);
}

TEST_F(LiveWidget, AFloodIsConflatedAndTheEventLoopKeepsTurning) {
  ASSERT_EQ(widget->bindTo(kAnyPort), "");
  LivePublisher flooder{1000, 0};
  ASSERT_EQ(flooder.attach({LiveAttach::kConnect, widget->liveFeed()->lastEndpoint()}), "");
  // A bound socket sends its subscriptions to a new peer only when its owner next uses it,
  // which the feed does from the event loop.
  ASSERT_TRUE(QTest::qWaitFor([&] { return flooder.subscribers("Probe[2]") == 1; }, 5000));
  widget->show();
  std::atomic<bool> stop{false};
  std::atomic<long> sent{0};
  std::thread flood([&] {
    for (long i = 0; !stop; ++i) {
      const auto m = OneValue("Probe", 2, static_cast<double>(i % 100) / 100.0);
      flooder.send("Probe[2]", m.data(), m.size());
      ++sent;
    }
  });
  int ticks = 0;
  QTimer ticker;
  QObject::connect(&ticker, &QTimer::timeout, [&] { ++ticks; });
  ticker.start(10);
  QTest::qWait(1000);
  stop = true;
  flood.join();
  const LiveCounts& counts = widget->liveFeed()->counts();
  // A 10 ms timer would fire 100 times in the second; a loop held up by the flood would
  // hardly fire it at all.
  EXPECT_GT(ticks, 20);
  EXPECT_GT(counts.applied, 0u);
  EXPECT_GT(counts.conflated, counts.applied);
  EXPECT_EQ(widget->liveFeed()->refused(), 0u);
}

}  // namespace
}  // namespace quillon::test
