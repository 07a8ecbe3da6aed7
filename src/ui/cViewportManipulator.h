#pragma once
// Mouse and key navigation of the view through one current manipulation mode.

#include "ui/IViewportManipulator.h"

namespace quillon {

class IKeyState;
class IViewport;
class IViewportHolder;

/// Turns the viewer window's mouse and key input into camera moves. The mode objects exist
/// once per process and are chosen from a table of six entries, the last one empty.
class cViewportManipulator : public IViewportManipulator {
 public:
  // The mode classes go without the two leading underscores of their old names, which C++
  // reserves to the implementation.
  class manipulatorMode;
  class manipulatorModePan;
  class manipulatorModeRotate;
  class manipulatorModeSetRotCentre;
  class manipulatorModeZoom;
  class manipulatorModeDolly;

  static constexpr unsigned int kAltKey = 18;
  static constexpr unsigned int kCtrlKey = 17;

  cViewportManipulator();

  void FirstButtonDown(int x, int y) override;
  void FirstButtonUp(int x, int y) override;
  void SecondButtonDown(int x, int y) override;
  void SecondButtonUp(int x, int y) override;
  int ShowContextMenu(const MenuPresenter& presenter, int x, int y) override;
  void MouseWheel(int x, int y, int delta) override;
  void MouseMove(int x, int y) override;
  void KeyDown(unsigned int virtualKey) override;
  void KeyUp(unsigned int virtualKey) override;
  void SetMode(int index) override;
  int GetModeInfo() const override;
  void RotateX(double degrees) override;
  void RotateY(double degrees) override;
  void Dolly(double steps) override;
  void ViewAll() override;
  void Apply() override;

  void SetContextMenuEnabled(bool enabled) override { contextMenuEnabled = enabled; }
  bool IsContextMenuEnabled() const override { return contextMenuEnabled; }
  void SetMouseNavigationEnabled(bool enabled) override { mouseNavigationEnabled = enabled; }
  bool IsMouseNavigationEnabled() const override { return mouseNavigationEnabled; }
  void SetNavigationControlsShown(bool shown) override;
  bool AreNavigationControlsShown() const override { return navigationControlsShown; }

  void SetViewport(IViewport* v) override { viewport = v; }
  void SetHolder(IViewportHolder* h) override { holder = h; }
  void SetKeyState(const IKeyState* k) override { keys = k; }

  /// A mouse button as the manipulator last saw it.
  struct Button {
    bool pressed = false;
    int x = 0;
    int y = 0;
  };
  const Button& firstButton() const { return first; }
  const Button& secondButton() const { return second; }

 private:
  const IKeyState& keyState() const;

  IViewportHolder* holder = nullptr;
  IViewport* viewport = nullptr;
  bool contextMenuEnabled = true;
  bool mouseNavigationEnabled = true;
  bool navigationControlsShown = true;
  manipulatorMode* mode;
  Button first;
  Button second;
  const IKeyState* keys = nullptr;
};

}  // namespace quillon
