// Navigation without a window: the manipulator over a viewport of the tests' own, and the
// viewport that unprojects through the holder's camera.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "NavigationDoubles.h"
#include "ui/IViewportHolder.h"
#include "ui/cSceneViewport.h"
#include "ui/cViewportManipulator.h"

namespace quillon::test {
namespace {

using M = IViewportManipulator;

constexpr double kEps = 1e-9;

void expectNear(nav::Vec3 actual, nav::Vec3 expected, double eps = kEps) {
  EXPECT_NEAR(actual.x, expected.x, eps);
  EXPECT_NEAR(actual.y, expected.y, eps);
  EXPECT_NEAR(actual.z, expected.z, eps);
}

double length(nav::Vec3 v) { return std::sqrt(nav::dot(v, v)); }

class RecordingHolder final : public IViewportHolder {
 public:
  std::vector<bool> calls;
  void showNavigationControls(bool show) override { calls.push_back(show); }
};

class ManipulatorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetModes(manipulator);
    manipulator.SetViewport(&viewport);
    manipulator.SetKeyState(&keys);
  }

  void drag(int x0, int y0, int x1, int y1) {
    manipulator.FirstButtonDown(x0, y0);
    manipulator.MouseMove(x1, y1);
    manipulator.FirstButtonUp(x1, y1);
  }

  cViewportManipulator manipulator;
  TestViewport viewport;
  TestKeys keys;
  TestCamera& camera = viewport.cam;
};

TEST_F(ManipulatorTest, StartsWithEverythingEnabledInRotateMode) {
  cViewportManipulator fresh;
  EXPECT_TRUE(fresh.IsContextMenuEnabled());
  EXPECT_TRUE(fresh.IsMouseNavigationEnabled());
  EXPECT_TRUE(fresh.AreNavigationControlsShown());
  EXPECT_EQ(fresh.GetModeInfo(), M::MODE_ROTATE);
  EXPECT_FALSE(fresh.firstButton().pressed);
  EXPECT_FALSE(fresh.secondButton().pressed);
  // Without a viewport nothing can move, and nothing breaks.
  fresh.FirstButtonDown(1, 2);
  fresh.MouseMove(50, 60);
  fresh.MouseWheel(0, 0, 120);
  fresh.Dolly(3);
  fresh.ViewAll();
  fresh.Apply();
  EXPECT_TRUE(fresh.firstButton().pressed);
}

TEST_F(ManipulatorTest, SetModeSelectsFromTheTableAndFallsBackToRotate) {
  const struct {
    int index;
    int expected;
  } cases[] = {{0, M::MODE_PAN},    {1, M::MODE_ROTATE}, {2, M::MODE_SELECT_ROT_CENTRE},
               {3, M::MODE_ZOOM},   {4, M::MODE_DOLLY},  {5, M::MODE_NONE},
               {6, M::MODE_ROTATE}, {7, M::MODE_ROTATE}, {-1, M::MODE_ROTATE}};
  for (const auto& c : cases) {
    manipulator.SetMode(M::MODE_PAN);
    manipulator.SetMode(c.index);
    EXPECT_EQ(manipulator.GetModeInfo(), c.expected) << "index " << c.index;
  }
}

TEST_F(ManipulatorTest, PanMovesTheCameraTenTimesTheWorldDragTheOtherWay) {
  manipulator.SetMode(M::MODE_PAN);
  viewport.focal = -5.9;  // the depth is truncated, not rounded
  manipulator.FirstButtonDown(100, 100);
  manipulator.MouseMove(110, 95);
  // (last - current) world: (-0.1, -0.05, 0), times ten
  expectNear(camera.position, {-1.0, -0.5, 100});
  manipulator.MouseMove(110, 105);  // the current position became the last
  expectNear(camera.position, {-1.0, 0.5, 100});
  for (int depth : viewport.depths) EXPECT_EQ(depth, 5);
  manipulator.FirstButtonUp(110, 105);
  manipulator.MouseMove(200, 200);  // released: nothing more
  expectNear(camera.position, {-1.0, 0.5, 100});
}

TEST_F(ManipulatorTest, RotateTurnsAboutThePointAtTheWindowCentreByTheDragsLength) {
  // The centre (320, 240) unprojects to (3.2, -2.4, -5); put the camera 105 in front of it.
  camera.position = {3.2, -2.4, 100};
  drag(320, 240, 340, 240);
  const double angle = 20 * 3.14 * 0.0027777778;
  const nav::Vec3 centre{3.2, -2.4, -5};
  EXPECT_NEAR(length(camera.position - centre), 105, 1e-9);
  // A horizontal drag turns about the world's y axis: the view direction swings by the angle.
  EXPECT_NEAR(std::acos(-camera.viewDirection().z), angle, 1e-9);
  EXPECT_NEAR(camera.viewDirection().y, 0, 1e-12);
  // The camera still looks at the centre.
  const nav::Vec3 toCentre = (centre - camera.position) * (1 / 105.0);
  expectNear(toCentre, camera.viewDirection(), 1e-9);

  const nav::Vec3 before = camera.position;  // a drag of no length changes nothing
  const nav::Quat turned = camera.orientation;
  drag(200, 200, 200, 200);
  expectNear(camera.position, before);
  EXPECT_DOUBLE_EQ(camera.orientation.w, turned.w);
}

// Alt and Ctrl with a rotating drag roll about the view axis; Alt alone pans with the second
// button and rotates with the first, and with Ctrl again the move goes to the mode.
TEST_F(ManipulatorTest, AltAndCtrlNavigateWhateverTheMode) {
  keys.alt = keys.ctrl = true;
  // Moving from right of the centre to below it turns through a quarter circle on the screen.
  drag(420, 240, 320, 340);
  ASSERT_EQ(camera.turnsZ.size(), 1u);
  const double angle = std::sqrt(100.0 * 100 + 100 * 100) * 3.14 * 0.0027777778;
  EXPECT_NEAR(std::fabs(camera.turnsZ[0]), 6.28 - angle, 1e-12);
  expectNear(camera.viewDirection(), {0, 0, -1}, 1e-12);
  expectNear(camera.position, {0, 0, 100});

  // Alt alone navigates whatever the mode.
  camera = TestCamera{};
  keys.ctrl = false;
  manipulator.SetMode(M::MODE_ZOOM);
  manipulator.SecondButtonDown(100, 100);
  manipulator.MouseMove(120, 100);
  expectNear(camera.position, {-2.0, 0, 100});  // panned as the pan mode would
  EXPECT_EQ(manipulator.secondButton().x, 120);
  manipulator.SecondButtonUp(120, 100);
  EXPECT_TRUE(camera.zooms.empty());

  manipulator.SetMode(M::MODE_PAN);
  manipulator.FirstButtonDown(320, 240);
  manipulator.MouseMove(330, 240);
  EXPECT_GT(std::fabs(camera.viewDirection().x), 0.01);  // rotated, not panned
  EXPECT_EQ(manipulator.firstButton().x, 330);
  EXPECT_TRUE(camera.turnsZ.empty());

  // With Ctrl as well, the move goes to the mode again.
  keys.ctrl = true;
  const nav::Vec3 before = camera.position;
  manipulator.MouseMove(340, 240);
  EXPECT_NEAR(length(camera.position - before), 0.2 * 10, 1e-9);  // from the mode's own last position
}

TEST_F(ManipulatorTest, ZoomCountsOnlyTheDirectionOfAVerticalMove) {
  manipulator.SetMode(M::MODE_ZOOM);
  manipulator.FirstButtonDown(100, 100);
  manipulator.MouseMove(100, 101);  // one pixel down
  manipulator.MouseMove(100, 201);  // a hundred pixels down
  manipulator.MouseMove(150, 201);  // sideways only
  manipulator.MouseMove(150, 150);  // up
  EXPECT_EQ(camera.zooms, (std::vector<double>{1.05, 1.05, 0.95}));
}

TEST_F(ManipulatorTest, DollyMovesForwardWhicheverWayTheMouseOrWheelGoes) {
  manipulator.SetMode(M::MODE_DOLLY);
  // The press keeps the raw y, so the first move uses (480 - 300) - 300 = -120.
  manipulator.FirstButtonDown(10, 300);
  manipulator.MouseMove(10, 300);
  expectNear(camera.position, {0, 0, 100 - 12});
  manipulator.MouseMove(10, 280);  // up: flipped 200 -> delta +20
  expectNear(camera.position, {0, 0, 100 - 14});
  manipulator.MouseMove(10, 300);  // down: delta -20
  expectNear(camera.position, {0, 0, 100 - 16});
  manipulator.FirstButtonUp(10, 300);

  // Steps move forward for both signs, along the way the camera looks, in any mode.
  const double step = 0.1 * 2 * 480 * 0.0027777778;
  manipulator.SetMode(M::MODE_ROTATE);
  camera.position = {0, 0, 100};
  manipulator.Dolly(2);
  expectNear(camera.position, {0, 0, 100 - step});
  manipulator.Dolly(-2);
  expectNear(camera.position, {0, 0, 100 - 2 * step});
  camera.position = {0, 0, 100};
  camera.orientation = nav::axisAngle({0, 1, 0}, 3.14159265358979 / 2);  // looking down -x
  manipulator.Dolly(1);
  expectNear(camera.position, {-step / 2, 0, 100}, 1e-9);

  camera.orientation = {};
  camera.position = {0, 0, 100};
  manipulator.SetMode(M::MODE_DOLLY);
  manipulator.MouseWheel(0, 0, 120);
  manipulator.MouseWheel(0, 0, -120);
  expectNear(camera.position, {0, 0, 124});  // backwards both times, and no zoom
  EXPECT_TRUE(camera.zooms.empty());
}

TEST_F(ManipulatorTest, WheelZoomsWhenTheModeLeavesIt) {
  const struct {
    int mode;
    int delta;
    std::vector<double> zooms;
  } cases[] = {{M::MODE_ROTATE, -120, {0.95}},
               {M::MODE_ROTATE, 120, {1.05}},
               {M::MODE_PAN, 1, {1.05}},
               {M::MODE_ZOOM, 0, {}},
               {M::MODE_NONE, -1, {0.95}}};
  for (const auto& c : cases) {
    camera.zooms.clear();
    manipulator.SetMode(c.mode);
    manipulator.MouseWheel(5, 5, c.delta);
    EXPECT_EQ(camera.zooms, c.zooms) << "mode " << c.mode << " delta " << c.delta;
  }
}

TEST_F(ManipulatorTest, DisabledNavigationAndTheEmptyModeRecordButtonsButMoveNothing) {
  manipulator.SetMouseNavigationEnabled(false);
  for (int mode : {M::MODE_PAN, M::MODE_ROTATE, M::MODE_ZOOM, M::MODE_DOLLY, M::MODE_SELECT_ROT_CENTRE}) {
    manipulator.SetMode(mode);
    manipulator.FirstButtonDown(10, 20);
    manipulator.SecondButtonDown(30, 40);
    manipulator.MouseMove(300, 400);
    manipulator.MouseWheel(0, 0, 120);
    manipulator.Apply();
    EXPECT_TRUE(manipulator.firstButton().pressed);
    EXPECT_EQ(manipulator.secondButton().y, 40);
    manipulator.FirstButtonUp(1, 2);
    manipulator.SecondButtonUp(3, 4);
    EXPECT_FALSE(manipulator.firstButton().pressed);
    EXPECT_EQ(manipulator.firstButton().x, 1);
  }
  keys.alt = true;
  manipulator.FirstButtonDown(10, 20);
  manipulator.MouseMove(300, 400);
  expectNear(camera.position, {0, 0, 100});
  EXPECT_DOUBLE_EQ(camera.orientation.w, 1);
  EXPECT_TRUE(camera.zooms.empty());
  EXPECT_EQ(viewport.redraws, 0);

  // Enabled again, the empty mode still ignores a drag.
  manipulator.SetMouseNavigationEnabled(true);
  keys.alt = false;
  manipulator.SetMode(M::MODE_NONE);
  drag(10, 10, 200, 300);
  manipulator.Apply();
  expectNear(camera.position, {0, 0, 100});
  EXPECT_DOUBLE_EQ(camera.orientation.w, 1);
}

TEST_F(ManipulatorTest, RotationCentreGlidesOneStepPerApplyUntilReleaseOrTheCentre) {
  manipulator.SetMode(M::MODE_SELECT_ROT_CENTRE);
  manipulator.FirstButtonDown(323, 244);  // 5 pixels from the centre
  // Each step: (centre - clicked) / 5 * 10 = (-0.03, 0.04, 0) * 10 / 5
  for (int i = 1; i <= 5; ++i) {
    manipulator.Apply();
    expectNear(camera.position, {-0.06 * i, 0.08 * i, 100});
  }
  EXPECT_EQ(viewport.redraws, 5);
  manipulator.Apply();  // the end of the plan still asks for a redraw
  EXPECT_EQ(viewport.redraws, 6);
  manipulator.Apply();  // then nothing more
  EXPECT_EQ(viewport.redraws, 6);
  expectNear(camera.position, {-0.3, 0.4, 100});
  manipulator.FirstButtonUp(323, 244);

  // A release stops the glide where it is; a click on the centre plans none.
  camera.position = {0, 0, 100};
  manipulator.FirstButtonDown(323, 244);
  manipulator.Apply();
  manipulator.Apply();
  manipulator.FirstButtonUp(323, 244);
  manipulator.Apply();
  expectNear(camera.position, {-0.12, 0.16, 100});

  viewport.redraws = 0;
  manipulator.FirstButtonDown(320, 240);  // on the centre: no plan
  manipulator.Apply();
  EXPECT_EQ(viewport.redraws, 0);
}

// The thumbwheels' turns use the old degree factor; View All fits the scene's sphere.
TEST_F(ManipulatorTest, ThumbwheelsViewAllControlsMenuAndKeys) {
  manipulator.RotateX(90);
  manipulator.RotateY(-10);
  EXPECT_EQ(camera.turnsX, std::vector<double>{90 * 0.017444445});
  EXPECT_EQ(camera.turnsY, std::vector<double>{-10 * 0.017444445});
  const float sphere[] = {1, 2, 3, 4};
  std::copy(sphere, sphere + 4, viewport.sphere);
  manipulator.ViewAll();
  expectNear(camera.sphereCentre, {1, 2, 3});
  EXPECT_DOUBLE_EQ(camera.sphereRadius, 4);
  EXPECT_EQ(viewport.redraws, 3);

  // The navigation controls flag reaches the holder once there is one.
  RecordingHolder holder;
  manipulator.SetNavigationControlsShown(false);
  EXPECT_FALSE(manipulator.AreNavigationControlsShown());
  manipulator.SetHolder(&holder);
  manipulator.SetNavigationControlsShown(true);
  manipulator.SetNavigationControlsShown(false);
  EXPECT_EQ(holder.calls, (std::vector<bool>{true, false}));

  // The context menu appears only while it is enabled.
  int shown = 0;
  auto presenter = [&shown](int, int) { return ++shown, 32771; };
  EXPECT_EQ(manipulator.ShowContextMenu(presenter, 5, 5), 32771);
  EXPECT_EQ(manipulator.ShowContextMenu([](int, int) { return -1; }, 5, 5), 0);
  manipulator.SetContextMenuEnabled(false);
  EXPECT_EQ(manipulator.ShowContextMenu(presenter, 5, 5), 0);
  EXPECT_EQ(shown, 1);

  // Alt and Ctrl are traced, other keys not.
  Trace trace;
  for (int key : {18, 17, 65}) manipulator.KeyDown(key);
  for (int key : {18, 17, 65}) manipulator.KeyUp(key);
  EXPECT_EQ(trace.lines,
            (std::vector<std::string>{"Alt key down\n", "Ctrl key down\n", "Alt key up\n", "Ctrl key up\n"}));
}

TEST(SceneViewport, UnprojectsThroughTheHoldersCameraInPointerPixels) {
  TestHolder holder;
  holder.cam.position = {10, 20, 30};
  holder.cam.orientation = nav::axisAngle({0, 1, 0}, std::acos(-1.0) / 2);  // looking down -x
  holder.cam.fieldOfView = std::acos(-1.0) / 2;                             // half-height = depth
  holder.cam.focalDistance = 250;
  cSceneViewport viewport(holder);
  auto expectUnprojected = [&viewport](int x, int y, nav::Vec3 expected) {
    double wx, wy, wz;
    viewport.unproject(x, y, 8, wx, wy, wz);
    EXPECT_NEAR(wx, expected.x, 1e-9);
    EXPECT_NEAR(wy, expected.y, 1e-9);
    EXPECT_NEAR(wz, expected.z, 1e-9);
  };
  expectUnprojected(100, 50, {2, 20, 30});      // the window centre lies on the view axis
  expectUnprojected(200, 0, {2, 28, 30 - 16});  // the top right corner: camera right is world -z

  // On a scaled screen the framebuffer has more pixels than the pointer crosses; the window
  // size and the unprojection must be in the pointer's unit, or the centre moves off the axis.
  holder.area.scale = 2;
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  EXPECT_EQ(width, 200);
  EXPECT_EQ(height, 100);
  expectUnprojected(100, 50, {2, 20, 30});

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
