#include "ui/cViewportManipulator.h"

#include "core/Trace.h"
#include "scenegraph/ICamera.h"
#include "ui/IKeyState.h"
#include "ui/IViewport.h"
#include "ui/IViewportHolder.h"
#include "ui/ManipulatorModes.h"
#include "ui/NavigationMath.h"

namespace quillon {

namespace {
// π / 180 with π as 3.14, as the thumbwheels have always turned.
constexpr double kDegreesToRadians = 0.017444445;
constexpr double kPerDegreeOfTurn = 0.0027777778;

cViewportManipulator::manipulatorModePan modePan;
cViewportManipulator::manipulatorModeRotate modeRotate;
cViewportManipulator::manipulatorModeSetRotCentre modeSetRotCentre;
cViewportManipulator::manipulatorModeZoom modeZoom;
cViewportManipulator::manipulatorModeDolly modeDolly;

cViewportManipulator::manipulatorMode* const modeTable[] = {&modePan,  &modeRotate, &modeSetRotCentre,
                                                            &modeZoom, &modeDolly,  nullptr};
}  // namespace

cViewportManipulator::cViewportManipulator() : mode(modeTable[MODE_ROTATE]) {}

const IKeyState& cViewportManipulator::keyState() const {
  static const cNoKeys noKeys;
  return keys ? *keys : noKeys;
}

void cViewportManipulator::FirstButtonDown(int x, int y) {
  first = {true, x, y};
  if (mouseNavigationEnabled && mode && viewport) mode->FirstButtonDown(x, y, *viewport);
}

void cViewportManipulator::FirstButtonUp(int x, int y) {
  first = {false, x, y};
  if (mouseNavigationEnabled && mode && viewport) mode->FirstButtonUp(x, y, *viewport);
}

void cViewportManipulator::SecondButtonDown(int x, int y) {
  second = {true, x, y};
  if (mouseNavigationEnabled && mode && viewport) mode->SecondButtonDown(x, y, *viewport);
}

void cViewportManipulator::SecondButtonUp(int x, int y) {
  second = {false, x, y};
  if (mouseNavigationEnabled && mode && viewport) mode->SecondButtonUp(x, y, *viewport);
}

int cViewportManipulator::ShowContextMenu(const MenuPresenter& presenter, int x, int y) {
  if (!contextMenuEnabled || !presenter) return 0;
  const int command = presenter(x, y);
  return command > 0 ? command : 0;
}

void cViewportManipulator::MouseWheel(int x, int y, int delta) {
  if (!mouseNavigationEnabled || !viewport) return;
  const bool handled = mode && mode->MouseWheel(x, y, delta, *viewport);
  if (!handled && delta != 0) viewport->camera().zoom(delta < 1 ? 0.95 : 1.05);
  if (handled || delta != 0) viewport->redraw();
}

void cViewportManipulator::MouseMove(int x, int y) {
  if (!mouseNavigationEnabled || !viewport) return;
  const IKeyState& k = keyState();
  if (!k.isAltDown() || k.isCtrlDown()) {
    if (!mode) return;
    mode->MouseMove(x, y, *viewport, k);
    viewport->redraw();
    return;
  }
  // Alt alone navigates whatever the mode: the second button pans, the first rotates.
  if (second.pressed) {
    manipulatorModePan::Pan(*viewport, second.x, second.y, x, y);
    second.x = x;
    second.y = y;
  } else if (first.pressed) {
    manipulatorModeRotate::Rotate(*viewport, first.x, first.y, x, y, false);
    first.x = x;
    first.y = y;
  } else {
    return;
  }
  viewport->redraw();
}

void cViewportManipulator::KeyDown(unsigned int virtualKey) {
  if (virtualKey == kAltKey) Trace("Alt key down\n");
  if (virtualKey == kCtrlKey) Trace("Ctrl key down\n");
}

void cViewportManipulator::KeyUp(unsigned int virtualKey) {
  if (virtualKey == kAltKey) Trace("Alt key up\n");
  if (virtualKey == kCtrlKey) Trace("Ctrl key up\n");
}

void cViewportManipulator::SetMode(int index) {
  mode = (index >= 0 && index <= MODE_NONE) ? modeTable[index] : modeTable[MODE_ROTATE];
}

int cViewportManipulator::GetModeInfo() const { return mode ? mode->GetModeInfo() : MODE_NONE; }

void cViewportManipulator::RotateX(double degrees) {
  if (!viewport) return;
  viewport->camera().rotateX(degrees * kDegreesToRadians);
  viewport->redraw();
}

void cViewportManipulator::RotateY(double degrees) {
  if (!viewport) return;
  viewport->camera().rotateY(degrees * kDegreesToRadians);
  viewport->redraw();
}

void cViewportManipulator::Dolly(double steps) {
  if (!viewport) return;
  int width = 0, height = 0;
  viewport->getWindowSize(width, height);
  nav::Vec3 move = nav::AlongViewAxis(viewport->camera(), steps * height * kPerDegreeOfTurn);
  // As with the dolly drag, both directions move forward.
  if (steps > 0) move = move * -1.0;
  nav::Translate(viewport->camera(), move);
  viewport->redraw();
}

void cViewportManipulator::ViewAll() {
  if (!viewport) return;
  float x = 0, y = 0, z = 0, radius = 0;
  viewport->sceneBoundingSphere(x, y, z, radius);
  viewport->fitToSphere(x, y, z, radius);
  viewport->redraw();
}

void cViewportManipulator::Apply() {
  if (mode && viewport && mode->Apply(*viewport)) viewport->redraw();
}

void cViewportManipulator::SetNavigationControlsShown(bool shown) {
  navigationControlsShown = shown;
  if (holder) holder->showNavigationControls(shown);
}

}  // namespace quillon
