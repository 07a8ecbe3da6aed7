#include "ui/ManipulatorModes.h"

#include <cmath>

#include "scenegraph/ICamera.h"
#include "ui/IKeyState.h"
#include "ui/IViewport.h"
#include "ui/NavigationMath.h"

namespace quillon {

namespace {
// One pixel of drag turns by 3.14 / 360 radians: π is taken as 3.14 on purpose.
constexpr double kPi = 3.14;
constexpr double kPerDegreeOfTurn = 0.0027777778;
constexpr double kPanFactor = 10.0;
constexpr double kStepScale = 0.1;

nav::Quat orientationOf(const ICamera& camera) {
  nav::Quat q;
  camera.getOrientation(q.x, q.y, q.z, q.w);
  return q;
}
}  // namespace

namespace nav {

Vec3 ScreenToWorld(IViewport& viewport, int x, int y) {
  const int depth = static_cast<int>(-viewport.focalPlane());
  Vec3 p;
  viewport.unproject(x, y, depth, p.x, p.y, p.z);
  return p;
}

void Translate(ICamera& camera, const Vec3& by) {
  Vec3 p;
  camera.getPosition(p.x, p.y, p.z);
  camera.setPosition(p.x + by.x, p.y + by.y, p.z + by.z);
}

Vec3 AlongViewAxis(ICamera& camera, double z) { return rotate(orientationOf(camera), Vec3{0, 0, z}) * kStepScale; }

}  // namespace nav

void cViewportManipulator::manipulatorMode::FirstButtonDown(int x, int y, IViewport&) {
  pressed = true;
  lastX = x;
  lastY = y;
}

void cViewportManipulator::manipulatorMode::FirstButtonUp(int, int, IViewport&) { pressed = false; }

void cViewportManipulator::manipulatorModePan::Pan(IViewport& viewport, int fromX, int fromY, int toX, int toY) {
  const nav::Vec3 from = nav::ScreenToWorld(viewport, fromX, fromY);
  const nav::Vec3 to = nav::ScreenToWorld(viewport, toX, toY);
  nav::Translate(viewport.camera(), (from - to) * kPanFactor);
}

void cViewportManipulator::manipulatorModePan::MouseMove(int x, int y, IViewport& viewport, const IKeyState&) {
  if (!pressed) return;
  Pan(viewport, lastX, lastY, x, y);
  lastX = x;
  lastY = y;
}

void cViewportManipulator::manipulatorModeRotate::Rotate(IViewport& viewport, int fromX, int fromY, int toX, int toY,
                                                         bool roll) {
  ICamera& camera = viewport.camera();
  const nav::Quat orientation = orientationOf(camera);
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  const int centreX = width / 2;
  const int centreY = height / 2;

  const nav::Vec3 centre = nav::ScreenToWorld(viewport, centreX, centreY);
  const nav::Vec3 current = nav::ScreenToWorld(viewport, toX, toY);
  const nav::Vec3 last = nav::ScreenToWorld(viewport, fromX, fromY);
  const nav::Vec3 drag = current - last;
  const double dx = fromX - toX;
  const double dy = fromY - toY;
  const double angle = std::sqrt(dx * dx + dy * dy) * kPi * kPerDegreeOfTurn;

  if (roll) {
    const nav::Vec3 fromCentre{double(fromX - centreX), double(fromY - centreY), 0};
    const nav::Vec3 toCentre{double(toX - centreX), double(toY - centreY), 0};
    const double turn = nav::cross(fromCentre, toCentre).z;
    if (turn == 0) return;
    camera.rotateZ((turn > 0 ? 1.0 : -1.0) * (2 * kPi - angle));
    return;
  }

  const nav::Vec3 viewDirection = nav::rotate(orientation, nav::Vec3{0, 0, -1});
  nav::Vec3 axis = nav::cross(drag, viewDirection);
  if (axis.x == 0 && axis.y == 0 && axis.z == 0) return;
  const double lengthSquared = nav::dot(axis, axis);
  if (lengthSquared != 1) axis = axis * (1 / std::sqrt(lengthSquared));

  // Turn the camera about the axis through the point at the window centre.
  const nav::Quat turn = nav::axisAngle(axis, angle);
  nav::Vec3 position;
  camera.getPosition(position.x, position.y, position.z);
  const nav::Vec3 moved = centre + nav::rotate(turn, position - centre);
  const nav::Quat turned = turn * orientation;
  camera.setOrientation(turned.x, turned.y, turned.z, turned.w);
  camera.setPosition(moved.x, moved.y, moved.z);
}

void cViewportManipulator::manipulatorModeRotate::MouseMove(int x, int y, IViewport& viewport, const IKeyState& keys) {
  if (!pressed) return;
  Rotate(viewport, lastX, lastY, x, y, keys.isAltDown() && keys.isCtrlDown());
  lastX = x;
  lastY = y;
}

void cViewportManipulator::manipulatorModeSetRotCentre::FirstButtonDown(int x, int y, IViewport& viewport) {
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  const int centreX = width / 2;
  const int centreY = height / 2;
  const double dx = centreX - x;
  const double dy = centreY - y;
  const int count = static_cast<int>(std::sqrt(dx * dx + dy * dy));
  if (count == 0) return;

  const nav::Vec3 centre = nav::ScreenToWorld(viewport, centreX, centreY);
  const nav::Vec3 clicked = nav::ScreenToWorld(viewport, x, y);
  stepCount = count;
  stepIndex = 0;
  stepX = (centre.x - clicked.x) / count * kPanFactor;
  stepY = (centre.y - clicked.y) / count * kPanFactor;
  stepZ = (centre.z - clicked.z) / count * kPanFactor;
  pressed = true;
  lastX = x;
  lastY = y;
}

bool cViewportManipulator::manipulatorModeSetRotCentre::Apply(IViewport& viewport) {
  if (!pressed) return false;
  if (stepCount >= 1 && stepIndex >= 0 && stepIndex < stepCount) {
    nav::Translate(viewport.camera(), nav::Vec3{stepX, stepY, stepZ});
    ++stepIndex;
    return true;
  }
  stepCount = 0;
  stepIndex = 0;
  stepX = stepY = stepZ = 0;
  pressed = false;
  return true;
}

void cViewportManipulator::manipulatorModeZoom::MouseMove(int x, int y, IViewport& viewport, const IKeyState&) {
  if (!pressed) return;
  // Only the direction counts, not the distance.
  if (y != lastY) viewport.camera().zoom(y > lastY ? 1.05 : 0.95);
  lastX = x;
  lastY = y;
}

void cViewportManipulator::manipulatorModeDolly::MouseMove(int x, int y, IViewport& viewport, const IKeyState&) {
  if (!pressed) return;
  int width = 0, height = 0;
  viewport.getWindowSize(width, height);
  const int flippedY = height - y;
  const int delta = flippedY - lastY;
  nav::Vec3 move = nav::AlongViewAxis(viewport.camera(), delta);
  // Upward and downward drags both move forward: the sign flip meets a negative delta.
  if (flippedY > lastY) move = move * -1.0;
  nav::Translate(viewport.camera(), move);
  lastY = flippedY;
  lastX = x;
}

bool cViewportManipulator::manipulatorModeDolly::MouseWheel(int, int, int delta, IViewport& viewport) {
  nav::Vec3 move = nav::AlongViewAxis(viewport.camera(), delta);
  // Both wheel directions move backward, the opposite of the drag.
  if (delta < 0) move = move * -1.0;
  nav::Translate(viewport.camera(), move);
  return true;
}

}  // namespace quillon
