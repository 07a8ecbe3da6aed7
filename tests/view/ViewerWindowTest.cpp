// quillon view's window round the viewer on basic.xml, in a real window: the values of a part
// on hover, the widget's hover and click signals, the legend and screenshots.
#include <gtest/gtest.h>

// Pointer moves go through the window system, as the user's do, hover events and all.
#define QTEST_QPA_MOUSE_HANDLING
#include <QCursor>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QToolTip>

#include "PlotDock.h"
#include "QualityLegend.h"
#include "ViewTestSupport.h"
#include "ViewerWindow.h"
#include "control/QuillonComponent.h"

namespace quillon::app::test {
namespace {

class ViewerWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app();
    ASSERT_TRUE(shots.isValid());
    window = std::make_unique<ViewerWindow>(QStringLiteral("A box on a probe"), shots.path());
    load("basic.xml");
    viewer().component().DisableNavigationControls();  // the render area takes the window
    viewer().setHoverDelay(50);
    window->resize(800, 640);
    ASSERT_TRUE(showActive(*window));
    // Half a metre in front of the 10 cm box, looking at it along -z.
    ASSERT_TRUE(viewer().component().SetCameraPosition({"0 0 0.5", "0 1 0 0", "0.01", "10", "0.5", "1"}));
    QTest::qWait(100);
  }
  void TearDown() override { QToolTip::hideText(); }

  QuillonWidget& viewer() { return window->viewer(); }
  QWidget* area() { return viewer().renderArea(); }
  QPoint centre() { return area()->rect().center(); }

  void load(const char* name) {
    std::string annotated, groups;
    ASSERT_EQ(viewer().loadDocument(example(name), annotated, groups), 0);
  }
  void send(const std::vector<unsigned char>& message) {
    ASSERT_EQ(viewer().sendChannels(message.data(), message.size()), "");
    QTest::qWait(50);  // drawn, so that the pointer is over what the frame shows
  }
  QuillonComponent::CameraTexts camera() {
    QuillonComponent::CameraTexts texts;
    viewer().component().GetCameraPosition(texts);
    return texts;
  }

  QTemporaryDir shots;
  std::unique_ptr<ViewerWindow> window;
};

TEST_F(ViewerWindowTest, RestingOnAPartShowsTheValuesOfItsRoutesWithoutMovingTheCamera) {
  send(probeMessage(0.001, 0.002, 0.003, 0, 0.5, 50));
  std::vector<RoutePick> hovered;
  QObject::connect(&viewer(), &QuillonWidget::routedNodeHovered,
                   [&hovered](const RoutePick& pick) { hovered.push_back(pick); });
  const auto before = camera();

  // The server's own pointer goes there too, so that no window appearing elsewhere takes it.
  QCursor::setPos(area()->mapToGlobal(centre()));
  QTest::mouseMove(area(), centre() - QPoint(8, 0));
  QTest::mouseMove(area(), centre());
  ASSERT_TRUE(QTest::qWaitFor([&] { return !hovered.empty(); }, 3000));
  // The material is the most particular routed node under the pointer; the transform above it
  // drives it too.
  const RoutePick& pick = hovered.back();
  EXPECT_EQ(pick.node, "ProbeMaterial");
  EXPECT_EQ(pick.position, centre());
  ASSERT_EQ(pick.routes.size(), 2u);
  EXPECT_EQ(pick.routes[0].from, "Probe1[2][1][1D]");
  EXPECT_EQ(pick.routes[0].value, std::vector<double>{0.5});
  EXPECT_EQ(pick.routes[0].quality, 50);
  EXPECT_EQ(pick.routes[1].node, "Probe");
  EXPECT_EQ(pick.routes[1].value, (std::vector<double>{0.001, 0.002, 0.003}));
  EXPECT_EQ(pick.routes[1].timestamp, 4711u);

  ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::isVisible(); }, 2000));
  const QString tip = QToolTip::text();
  for (const char* part :
       {"<b>ProbeMaterial</b>", "Probe1[2][1][1D] → ProbeMaterial.diffuseColor", "0.500",
        "50.000, between the thresholds (0 &lt; q ≤ 100)", "3, time stamp 4712", "Probe1[2][0][3D] → Probe.translation",
        "(0.001, 0.002, 0.003)", "0.000, nominal (≤ 0)", "0, time stamp 4711", " s ago"})
    EXPECT_TRUE(tip.contains(QString::fromUtf8(part))) << part << "\n" << tip.toStdString();
  EXPECT_EQ(camera(), before);

  // A value that arrives while the tooltip is up shows in it.
  send(probeMessage(0.001, 0.002, 0.003, 0, 0.75, 500));
  ASSERT_TRUE(QTest::qWaitFor([] { return QToolTip::text().contains(QStringLiteral("0.750")); }, 2000));
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("500.000, not meaningful (&gt; 100)")));

  // Beside the box nothing is routed: no signal, and the tooltip goes.
  const std::size_t seen = hovered.size();
  QCursor::setPos(area()->mapToGlobal(QPoint(5, 5)));
  QTest::mouseMove(area(), QPoint(5, 5));
  QTest::qWait(300);
  EXPECT_EQ(hovered.size(), seen);
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000));
  EXPECT_EQ(camera(), before);
}

TEST_F(ViewerWindowTest, ClickOnAPartIsSignalledAndADragStillNavigates) {
  send(probeMessage(0, 0, 0, 0, 0.25, 0));
  std::vector<RoutePick> clicked;
  QObject::connect(&viewer(), &QuillonWidget::routedNodeClicked,
                   [&clicked](const RoutePick& pick) { clicked.push_back(pick); });

  QTest::mouseClick(area(), Qt::LeftButton, {}, centre());
  ASSERT_TRUE(QTest::qWaitFor([&] { return !clicked.empty(); }, 2000));
  EXPECT_EQ(clicked[0].node, "ProbeMaterial");
  ASSERT_FALSE(clicked[0].routes.empty());
  EXPECT_EQ(clicked[0].routes[0].value, std::vector<double>{0.25});

  QTest::mouseClick(area(), Qt::LeftButton, {}, QPoint(5, 5));  // the background
  QTest::qWait(100);
  EXPECT_EQ(clicked.size(), 1u);

  // A drag from the box is the rotation it always was, and no click.
  const auto before = camera();
  QTest::mousePress(area(), Qt::LeftButton, {}, centre());
  for (int dx = 10; dx <= 80; dx += 10) {
    QTest::mouseMove(area(), centre() + QPoint(dx, 0));
    QTest::qWait(30);
  }
  QTest::mouseRelease(area(), Qt::LeftButton, {}, centre() + QPoint(80, 0));
  QTest::qWait(100);
  EXPECT_NE(camera(), before);
  EXPECT_EQ(clicked.size(), 1u);
}

TEST_F(ViewerWindowTest, LegendShowsTheThresholdsAsTheHostSetsThemAndTheColourMaps) {
  QualityLegend* legend = window->legend();
  EXPECT_TRUE(legend->isVisible());
  QStringList entries = legend->entries();
  for (const char* entry : {"nominal ≤ 0", "≤ 100", "not meaningful"})
    EXPECT_TRUE(entries.contains(QString::fromUtf8(entry))) << entry << ": " << entries.join('|').toStdString();

  viewer().setNominalThreshold(5);
  viewer().setMeaningfulThreshold(50.5f);
  entries = legend->entries();
  EXPECT_TRUE(entries.contains(QStringLiteral("nominal ≤ 5"))) << entries.join('|').toStdString();
  EXPECT_TRUE(entries.contains(QStringLiteral("≤ 50.5"))) << entries.join('|').toStdString();
  EXPECT_FALSE(entries.contains(QStringLiteral("≤ 100")));

  // Each colour map with the values that run through it: basic.xml's colour route uses the
  // built-in map at scale 1.
  EXPECT_EQ(entries.mid(3), (QStringList{"  ProbeMaterial.diffuseColor: 0", "1"}));
  // colour-maps.xml: two maps of their own, each at scale 0.01.
  load("colour-maps.xml");
  EXPECT_EQ(window->legend()->entries().mid(3),
            (QStringList{"  LeftMaterial.diffuseColor: 0", "100", "  Right.diffuseColor: 0", "100"}));
}

TEST_F(ViewerWindowTest, LivePlotTakesEachValueAsItArrives) {
  window->plotLive();
  PlotDock* plots = window->plots();
  plots->show();
  const std::vector<RouteState> routes = viewer().routes();
  ASSERT_EQ(routes.size(), 2u);
  plots->addRoute(routes[1]);  // the colour: a number and its quality
  send(probeMessage(0, 0, 0, 0, 0.5, 0));
  send(probeMessage(0, 0, 0, 0, 0.5, 0));  // the same value again is a new point all the same
  for (int i = 0; i < 3; ++i) send(probeMessage(0, 0, 0, 0, 0.1 * i, i));
  plots->refresh();
  EXPECT_EQ(plots->pointCounts(), (std::vector<int>{5, 5}));
}

TEST_F(ViewerWindowTest, ScreenshotSavesTheRenderAreaAtFullResolutionUnderTheLabel) {
  send(probeMessage(0, 0, 0, 0, 0.5, 0));
  const QString path = window->saveScreenshot();
  ASSERT_FALSE(path.isEmpty());
  EXPECT_TRUE(QFileInfo(path).fileName().startsWith(QStringLiteral("A_box_on_a_probe-")));
  EXPECT_TRUE(path.endsWith(QStringLiteral(".png")));
  const QImage image(path);
  ASSERT_FALSE(image.isNull());
  const double scale = area()->devicePixelRatioF();
  EXPECT_EQ(image.size(), QSize(qRound(area()->width() * scale), qRound(area()->height() * scale)));
  // The background in the corner, the box in the middle.
  const QColor corner = image.pixelColor(2, 2);
  EXPECT_NEAR(corner.red(), 77, 3);
  EXPECT_NEAR(corner.blue(), 128, 3);
  const QColor middle = image.pixelColor(image.width() / 2, image.height() / 2);
  EXPECT_GT(std::abs(middle.green() - corner.green()), 60);

  // The shortcut saves another, beside the first.
  QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
  const QStringList files = QDir(shots.path()).entryList({QStringLiteral("*.png")}, QDir::Files);
  EXPECT_EQ(files.size(), 2) << files.join(' ').toStdString();
}

}  // namespace
}  // namespace quillon::app::test
