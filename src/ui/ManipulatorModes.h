#pragma once
// The manipulation modes of the viewport manipulator.

#include "ui/cViewportManipulator.h"

namespace quillon {

class ICamera;

/// One way of turning a drag into a camera move. Each mode keeps its own drag state;
/// a first-button press stores the position and sets the pressed flag, a release clears it.
class cViewportManipulator::manipulatorMode {
 public:
  virtual ~manipulatorMode() = default;
  /// Carries out a pending change; true when the camera moved.
  virtual bool Apply(IViewport&) { return false; }
  virtual void FirstButtonDown(int x, int y, IViewport& viewport);
  virtual void FirstButtonUp(int x, int y, IViewport& viewport);
  virtual void SecondButtonDown(int, int, IViewport&) {}
  virtual void SecondButtonUp(int, int, IViewport&) {}
  virtual void MouseMove(int, int, IViewport&, const IKeyState&) {}
  /// True when the mode used the wheel itself.
  virtual bool MouseWheel(int, int, int, IViewport&) { return false; }
  /// The mode's index in the manipulator's table.
  virtual int GetModeInfo() const = 0;

  bool pressed = false;
  int lastX = 0;
  int lastY = 0;
};

class cViewportManipulator::manipulatorModePan final : public manipulatorMode {
 public:
  void MouseMove(int x, int y, IViewport& viewport, const IKeyState& keys) override;
  int GetModeInfo() const override { return MODE_PAN; }
  /// Moves the camera by ten times the world distance between the two window positions.
  static void Pan(IViewport& viewport, int fromX, int fromY, int toX, int toY);
};

class cViewportManipulator::manipulatorModeRotate final : public manipulatorMode {
 public:
  void MouseMove(int x, int y, IViewport& viewport, const IKeyState& keys) override;
  int GetModeInfo() const override { return MODE_ROTATE; }
  /// Turns the camera about the window centre's point by the drag; `roll` turns about the view axis.
  static void Rotate(IViewport& viewport, int fromX, int fromY, int toX, int toY, bool roll);
};

class cViewportManipulator::manipulatorModeSetRotCentre final : public manipulatorMode {
 public:
  bool Apply(IViewport& viewport) override;
  void FirstButtonDown(int x, int y, IViewport& viewport) override;
  int GetModeInfo() const override { return MODE_SELECT_ROT_CENTRE; }

  // The glide that moves the clicked point towards the window centre, one step per Apply.
  int stepCount = 0;
  int stepIndex = 0;
  double stepX = 0, stepY = 0, stepZ = 0;
};

class cViewportManipulator::manipulatorModeZoom final : public manipulatorMode {
 public:
  void MouseMove(int x, int y, IViewport& viewport, const IKeyState& keys) override;
  int GetModeInfo() const override { return MODE_ZOOM; }
};

class cViewportManipulator::manipulatorModeDolly final : public manipulatorMode {
 public:
  void MouseMove(int x, int y, IViewport& viewport, const IKeyState& keys) override;
  bool MouseWheel(int x, int y, int delta, IViewport& viewport) override;
  int GetModeInfo() const override { return MODE_DOLLY; }
};

namespace nav {
struct Vec3;
/// The world point under a window position at the depth of the focal plane.
Vec3 ScreenToWorld(IViewport& viewport, int x, int y);
/// Adds the vector to the camera's position.
void Translate(ICamera& camera, const Vec3& by);
/// The camera-space vector (0, 0, z) in world space, scaled by 0.1.
Vec3 AlongViewAxis(ICamera& camera, double z);
}  // namespace nav

}  // namespace quillon
