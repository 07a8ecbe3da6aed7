#include <gtest/gtest.h>

#include <cmath>

#include "NavigationDoubles.h"
#include "ui/cSceneViewport.h"

namespace quillon::test {
namespace {

TEST(SceneViewport, UnprojectsThroughTheCameraFrustum) {
  TestHolder holder;
  holder.cam.position = {10, 20, 30};
  holder.cam.orientation = nav::axisAngle({0, 1, 0}, std::acos(-1.0) / 2);  // looking down -x
  holder.cam.fieldOfView = std::acos(-1.0) / 2;                             // half-height = depth
  cSceneViewport viewport(holder);

  double x, y, z;
  viewport.unproject(100, 50, 8, x, y, z);  // the window centre lies on the view axis
  EXPECT_NEAR(x, 2, 1e-9);
  EXPECT_NEAR(y, 20, 1e-9);
  EXPECT_NEAR(z, 30, 1e-9);
  viewport.unproject(200, 0, 8, x, y, z);  // the top right corner: twice as wide as high
  EXPECT_NEAR(x, 2, 1e-9);
  EXPECT_NEAR(y, 28, 1e-9);
  EXPECT_NEAR(z, 30 - 16, 1e-9);  // camera right is world -z
}

// On a scaled screen the framebuffer has more pixels than the pointer crosses; the window
// size and the unprojection must be in the pointer's unit, or the centre moves off the axis.
TEST(SceneViewport, WorksInPointerPixelsOnAScaledScreen) {
  TestHolder holder;
  holder.area.scale = 2;
  holder.cam.position = {0, 0, 50};
  cSceneViewport viewport(holder);
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  EXPECT_EQ(width, 200);
  EXPECT_EQ(height, 100);
  double x, y, z;
  viewport.unproject(100, 50, 8, x, y, z);
  EXPECT_NEAR(x, 0, 1e-9);
  EXPECT_NEAR(y, 0, 1e-9);
  EXPECT_NEAR(z, 42, 1e-9);
}

TEST(SceneViewport, ReportsTheHoldersCameraAreaAndScene) {
  TestHolder holder;
  holder.cam.focalDistance = 250;
  cSceneViewport viewport(holder);
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  EXPECT_EQ(width, 200);
  EXPECT_EQ(height, 100);
  EXPECT_DOUBLE_EQ(viewport.focalPlane(), -250);
  float s[4];
  viewport.sceneBoundingSphere(s[0], s[1], s[2], s[3]);
  EXPECT_EQ(s[3], 4.0f);
  viewport.fitToSphere(1, 2, 3, 4);
  EXPECT_DOUBLE_EQ(holder.cam.sphereRadius, 4);
  viewport.redraw();
  EXPECT_EQ(holder.refreshes, 1);

  holder.attached = false;  // no window: no size, and unprojection still gives a finite point
  viewport.getWindowSize(width, height);
  EXPECT_EQ(width, 0);
  double x, y, z;
  viewport.unproject(5, 5, 10, x, y, z);
  EXPECT_TRUE(std::isfinite(x) && std::isfinite(y) && std::isfinite(z));
}

}  // namespace
}  // namespace quillon::test
