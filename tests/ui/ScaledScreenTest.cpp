// Navigation on a screen that scales its windows by 2: run under a display (xvfb-run -a).
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <cmath>
#include <memory>

#include "NavigationDoubles.h"
#include "ui/cSceneViewport.h"
#include "ui/cViewportManipulator.h"
#include "ui/qt/cQtRenderArea.h"
#include "ui/qt/cRenderAreaPanel.h"
#include "ui/qt/cViewerHolderWnd.h"

namespace quillon::test {
namespace {

using M = IViewportManipulator;

QApplication& app() {
  // Qt reads the factor when the application starts; the test is meaningless without it.
  qputenv("QT_SCALE_FACTOR", "2");
  static int argc = 1;
  static char name[] = "test_ui_scaled";
  static char* argv[] = {name, nullptr};
  static QApplication application(argc, argv);
  return application;
}

// The real viewport over the window's render area: the framebuffer is twice the size that
// the pointer crosses.
class ScaledScreenTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app();
    for (int i = 0; i < M::MODE_NONE; ++i) {  // release the process-wide mode objects
      manipulator.SetMode(i);
      manipulator.FirstButtonUp(0, 0);
    }
    manipulator.SetMode(M::MODE_ROTATE);
    manipulator.SetViewport(&viewport);
    sceneGraph.manipulator = &manipulator;
    window = std::make_unique<cViewerHolderWnd>(&sceneGraph);
    area = std::make_unique<cQtRenderArea>(window->renderAreaPanel());
    sceneGraph.windowArea = area.get();
    window->resize(480, 480);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    ASSERT_EQ(panel()->devicePixelRatioF(), 2.0);
    ASSERT_EQ(area->width(), 2 * panel()->width());
    manipulator.SetKeyState(&keys);
  }

  cRenderAreaPanel* panel() { return window->renderAreaPanel(); }
  QPoint centre() { return {panel()->width() / 2, panel()->height() / 2}; }

  TestHolder sceneGraph;
  TestCamera& camera = sceneGraph.cam;
  cSceneViewport viewport{sceneGraph};
  cViewportManipulator manipulator;
  TestKeys keys;
  std::unique_ptr<cViewerHolderWnd> window;
  std::unique_ptr<cQtRenderArea> area;
};

TEST_F(ScaledScreenTest, WindowSizeIsThePointersSize) {
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  EXPECT_EQ(width, panel()->width());
  EXPECT_EQ(height, panel()->height());
}

// A glide takes one step per pixel between the click and the window centre.
TEST_F(ScaledScreenTest, RotationCentreGlidesToThePointersCentre) {
  manipulator.SetMode(M::MODE_SELECT_ROT_CENTRE);
  const nav::Vec3 start = camera.position;
  QTest::mousePress(panel(), Qt::LeftButton, {}, centre());
  manipulator.Apply();
  EXPECT_EQ(camera.position.x, start.x);  // clicked on the centre: nothing to glide
  EXPECT_EQ(camera.position.y, start.y);
  QTest::mouseRelease(panel(), Qt::LeftButton, {}, centre());

  QTest::mousePress(panel(), Qt::LeftButton, {}, centre() + QPoint(30, 40));
  int steps = 0;
  for (int i = 0; i < 200; ++i) {
    const nav::Vec3 before = camera.position;
    manipulator.Apply();
    if (camera.position.x != before.x || camera.position.y != before.y) ++steps;
  }
  EXPECT_EQ(steps, 50);
  QTest::mouseRelease(panel(), Qt::LeftButton, {}, centre() + QPoint(30, 40));
}

// Alt with the middle button pans by ten times the world distance under the pointer's path,
// which the unprojection measures over the window's height in the pointer's pixels.
TEST_F(ScaledScreenTest, PanFollowsThePointer) {
  keys.alt = true;
  QTest::mousePress(panel(), Qt::MiddleButton, {}, centre());
  QTest::mouseMove(panel(), centre() + QPoint(20, 0));
  QTest::mouseRelease(panel(), Qt::MiddleButton, {}, centre() + QPoint(20, 0));
  const double depth = 5;  // the test camera's focal distance
  const double perPixel = 2 * depth * std::tan(camera.fieldOfView / 2) / panel()->height();
  EXPECT_NEAR(camera.position.x, -10 * 20 * perPixel, 1e-9);
}

TEST_F(ScaledScreenTest, DollyStepsScaleWithThePointersHeight) {
  manipulator.Dolly(10);
  const nav::Vec3 moved = camera.position - nav::Vec3{0, 0, 100};
  EXPECT_NEAR(std::sqrt(nav::dot(moved, moved)), 0.1 * 10 * panel()->height() * 0.0027777778, 1e-9);
}

}  // namespace
}  // namespace quillon::test
