// quillon view replaying the robot arm's recording in a real window: seeking shows what
// playing shows, the keys drive the timeline, and the plots draw the recording.
#include <gtest/gtest.h>

#define QTEST_QPA_MOUSE_HANDLING
#include <QCursor>
#include <QLabel>
#include <QSlider>
#include <QTemporaryDir>
#include <QToolTip>

#include "Framing.h"
#include "PlotDock.h"
#include "QualityLegend.h"
#include "Replay.h"
#include "ReplayTimeline.h"
#include "ViewTestSupport.h"
#include "ViewerWindow.h"
#include "control/QuillonComponent.h"

namespace quillon::app::test {
namespace {

class ReplayTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app();
    xml = example("robot_arm.xml");
    records = robotArmStream();
    ASSERT_EQ(records.size(), 120u);
    window = std::make_unique<ViewerWindow>(QStringLiteral("A robot arm on a rail"), shots.path());
    viewer = &window->viewer();
    std::string annotated;
    ASSERT_EQ(viewer->loadDocument(xml, annotated, groups), 0);
    viewer->setHoverDelay(50);
    viewer->component().EnableNavigationControls();  // another test may have hidden them
    window->resize(1200, 820);
    viewer->component().SetCameraPosition(FrameThreeQuarter(MotionBounds(xml, records), 4.0 / 3.0));
    replay = std::make_unique<Replay>(*viewer, records, 1.0, QStringLiteral("A robot arm on a rail"), groups,
                                      [this] { reload(); });
    window->setReplay(*replay, replay->messages());
    ASSERT_TRUE(showActive(*window));
  }
  void TearDown() override { QToolTip::hideText(); }

  void reload() {
    std::string annotated, reloadedGroups;
    viewer->loadDocument(xml, annotated, reloadedGroups);
  }
  // The scene after the first n messages, each applied in turn from the document as loaded.
  QImage playedTo(std::size_t n) {
    reload();
    for (std::size_t i = 0; i < n; ++i) viewer->sendChannels(records[i].message.data(), records[i].message.size());
    return viewer->grabImage();
  }
  std::uint64_t timeOf(std::size_t message) const { return records[message].timeMicroseconds; }
  // A point of the render area where the most particular routed node is this one.
  QPoint pointOn(const std::string& node) {
    QWidget* area = viewer->renderArea();
    for (int y = 0; y < area->height(); y += 3)
      for (int x = 0; x < area->width(); x += 3)
        if (viewer->pickAt({x, y}).node == node) return {x, y};
    return {-1, -1};
  }

  std::string xml, groups;
  std::vector<ChannelStreamRecord> records;
  QTemporaryDir shots;
  std::unique_ptr<ViewerWindow> window;
  QuillonWidget* viewer = nullptr;
  std::unique_ptr<Replay> replay;
};

TEST_F(ReplayTest, SeekShowsWhatPlayingToThatPointShows) {
  replay->pause();
  // 60: the elbow's values have been bad since message 50, so it stays where message 49 left
  // it; applying only the newest message would leave it where the document put it.
  for (std::size_t n : {60u, 100u, 1u, 120u}) {
    const QImage played = playedTo(n);
    replay->seekToMessage(0);
    replay->seek(timeOf(119));    // forward, to the end
    replay->seek(timeOf(n - 1));  // and back
    EXPECT_EQ(replay->applied(), n);
    EXPECT_EQ(replay->position(), timeOf(n - 1));
    EXPECT_TRUE(viewer->grabImage() == played) << "back to message " << n;
    replay->seekToMessage(0);
    replay->seek(timeOf(n - 1));  // forward from the start
    EXPECT_TRUE(viewer->grabImage() == played) << "on to message " << n;
  }
  const QImage frozen = playedTo(60);
  reload();
  viewer->sendChannels(records[59].message.data(), records[59].message.size());
  EXPECT_FALSE(viewer->grabImage() == frozen) << "the frozen elbow shows nowhere";

  // Between two messages the scene is that of the earlier one.
  const QImage earlier = playedTo(31);
  replay->seek(timeOf(30) + 20'000);
  EXPECT_EQ(replay->applied(), 31u);
  EXPECT_TRUE(viewer->grabImage() == earlier);
}

TEST_F(ReplayTest, KeysAndSliderDriveTheReplay) {
  replay->seekToMessage(0);
  ReplayTimeline* timeline = window->timeline();
  ASSERT_NE(timeline, nullptr);
  const struct {
    Qt::Key key;
    std::size_t applied;
  } steps[] = {{Qt::Key_Right, 1}, {Qt::Key_Right, 2},  {Qt::Key_Right, 3}, {Qt::Key_Left, 2},
               {Qt::Key_End, 120}, {Qt::Key_Left, 119}, {Qt::Key_Home, 0}};
  for (const auto& step : steps) {
    QTest::keyClick(window.get(), step.key);
    EXPECT_EQ(replay->applied(), step.applied) << step.key;
    EXPECT_FALSE(replay->playing());
  }
  timeline->refresh();
  EXPECT_EQ(timeline->timeLabel()->text(), QStringLiteral("0.00 / 5.95 s · 0 / 120"));

  QTest::keyClick(window.get(), Qt::Key_Space);
  EXPECT_TRUE(replay->playing());
  ASSERT_TRUE(QTest::qWaitFor([&] { return replay->applied() >= 3; }, 3000));
  QTest::keyClick(window.get(), Qt::Key_Space);
  EXPECT_FALSE(replay->playing());
  const std::size_t stopped = replay->applied();
  QTest::qWait(200);
  EXPECT_EQ(replay->applied(), stopped);

  // The slider counts milliseconds; a move seeks once the burst of moves is over.
  const QImage played = playedTo(61);
  timeline->slider()->setValue(1000);
  timeline->slider()->setValue(3000);
  ASSERT_TRUE(QTest::qWaitFor([&] { return replay->position() == 3'000'000; }, 2000));
  EXPECT_EQ(replay->applied(), 61u);
  EXPECT_TRUE(viewer->grabImage() == played);
}

// The plot draws the recorded points of its span, and a click on a part adds its channels; the
// tooltip, legend and timeline show beside it.
TEST_F(ReplayTest, PlotLegendTooltipAndTimelineShowTheRecording) {
  PlotDock* plots = window->plots();
  ASSERT_NE(plots, nullptr);
  plots->show();
  replay->seek(3'000'000);
  plots->setSpan(2);
  const std::vector<RouteState> routes = viewer->routes();
  ASSERT_EQ(routes.size(), 6u);
  plots->addRoute(routes[4]);  // Arm[1][4][1D]: a value and its quality
  plots->addRoute(routes[0]);  // Arm[1][0][3D]: x, y, z and the quality
  plots->addRoute(routes[4]);  // once is enough
  EXPECT_EQ(plots->channels(), (QStringList{"Arm[1][4][1D]", "Arm[1][0][3D]"}));
  plots->refresh();
  // From 1.0 to 3.0 s, both ends included, a message every 50 ms.
  EXPECT_EQ(plots->pointCounts(), (std::vector<int>{41, 41, 41, 41, 41, 41}));
  plots->setSpan(0.5);
  EXPECT_EQ(plots->pointCounts(), (std::vector<int>{11, 11, 11, 11, 11, 11}));
  replay->seek(0);
  plots->refresh();
  EXPECT_EQ(plots->pointCounts(), (std::vector<int>{1, 1, 1, 1, 1, 1}));

  // A click on the elbow adds the elbow's channels; its qualities from 0 to 3 s are bad from 2.5 s.
  replay->seek(3'000'000);
  plots->setSpan(3);
  QTest::qWait(200);
  const QPoint elbow = pointOn("Elbow");
  ASSERT_NE(elbow, QPoint(-1, -1));
  QTest::mouseClick(viewer->renderArea(), Qt::LeftButton, {}, elbow);
  ASSERT_TRUE(QTest::qWaitFor([&] { return plots->channels().contains(QStringLiteral("Arm[1][2][6D]")); }, 2000));
  plots->refresh();
  EXPECT_EQ(plots->pointCounts()[6 + 3], 61);

  // The elbow's forearm: its own route first, then those of the joints and the base below it.
  QCursor::setPos(viewer->renderArea()->mapToGlobal(elbow));
  QTest::mouseMove(viewer->renderArea(), elbow + QPoint(2, 0));
  QTest::mouseMove(viewer->renderArea(), elbow);
  ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }, 3000));
  const QString tip = QToolTip::text();
  EXPECT_TRUE(tip.startsWith(QStringLiteral("<b>Elbow</b>"))) << tip.toStdString();
  EXPECT_TRUE(tip.contains(QStringLiteral("1000.000, not meaningful (&gt; 100)")));
  EXPECT_LT(tip.indexOf(QStringLiteral("Elbow.rotation")), tip.indexOf(QStringLiteral("Shoulder.rotation")));
  EXPECT_LT(tip.indexOf(QStringLiteral("Shoulder.rotation")), tip.indexOf(QStringLiteral("Base.translation")));
  EXPECT_TRUE(window->legend()->isVisible());
  EXPECT_TRUE(window->timeline()->isVisible());
}

}  // namespace
}  // namespace quillon::app::test
