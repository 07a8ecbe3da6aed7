// Navigation on a screen that scales its windows by 2: run under a display (xvfb-run -a).
#include <cmath>

#include "HolderWindowSupport.h"
#include "ui/cSceneViewport.h"
#include "ui/qt/cQtRenderArea.h"
#include "ui/qt/cRenderAreaPanel.h"

namespace quillon::test {
namespace {

using M = IViewportManipulator;

// The real viewport over the window's render area: the framebuffer is twice the size that
// the pointer crosses.
class ScaledScreenTest : public HolderWindowFixture {
 protected:
  void SetUp() override {
    app("2");  // the test is meaningless without it
    open(viewport, sceneGraph, 480, 480);
    ASSERT_EQ(panel()->devicePixelRatioF(), 2.0);
    ASSERT_EQ(area->width(), 2 * panel()->width());
  }
  void TearDown() override {
    area.reset();
    HolderWindowFixture::TearDown();
  }
  void beforeShow() override {
    area = std::make_unique<cQtRenderArea>(window->renderAreaPanel());
    sceneGraph.windowArea = area.get();
  }

  cRenderAreaPanel* panel() { return window->renderAreaPanel(); }
  QPoint centre() { return {panel()->width() / 2, panel()->height() / 2}; }

  TestHolder sceneGraph;
  TestCamera& camera = sceneGraph.cam;
  cSceneViewport viewport{sceneGraph};
  std::unique_ptr<cQtRenderArea> area;
};

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
// which the unprojection measures over the window's height in the pointer's pixels; dolly steps
// scale with that height too.
TEST_F(ScaledScreenTest, PanAndDollyGoByThePointersPixels) {
  keys.alt = true;
  QTest::mousePress(panel(), Qt::MiddleButton, {}, centre());
  QTest::mouseMove(panel(), centre() + QPoint(20, 0));
  QTest::mouseRelease(panel(), Qt::MiddleButton, {}, centre() + QPoint(20, 0));
  const double depth = 5;  // the test camera's focal distance
  const double perPixel = 2 * depth * std::tan(camera.fieldOfView / 2) / panel()->height();
  EXPECT_NEAR(camera.position.x, -10 * 20 * perPixel, 1e-9);

  camera.position = {0, 0, 100};
  manipulator.Dolly(10);
  const nav::Vec3 moved = camera.position - nav::Vec3{0, 0, 100};
  EXPECT_NEAR(std::sqrt(nav::dot(moved, moved)), 0.1 * 10 * panel()->height() * 0.0027777778, 1e-9);
}

}  // namespace
}  // namespace quillon::test
