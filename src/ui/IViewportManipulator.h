#pragma once
// Navigation as the viewer component and the viewer windows see it.

#include <functional>

namespace quillon {

class IKeyState;
class IViewport;
class IViewportHolder;

/// Turns mouse and key input into camera moves through the current manipulation mode.
class IViewportManipulator {
 public:
  enum Mode { MODE_PAN = 0, MODE_ROTATE = 1, MODE_SELECT_ROT_CENTRE = 2, MODE_ZOOM = 3, MODE_DOLLY = 4, MODE_NONE = 5 };

  /// Shows a menu at a screen position and returns the chosen command, or 0.
  using MenuPresenter = std::function<int(int x, int y)>;

  virtual ~IViewportManipulator() = default;

  virtual void FirstButtonDown(int x, int y) = 0;
  virtual void FirstButtonUp(int x, int y) = 0;
  virtual void SecondButtonDown(int x, int y) = 0;
  virtual void SecondButtonUp(int x, int y) = 0;
  /// 0 while the context menu is disabled, else what the presenter returns.
  virtual int ShowContextMenu(const MenuPresenter& presenter, int x, int y) = 0;
  virtual void MouseWheel(int x, int y, int delta) = 0;
  virtual void MouseMove(int x, int y) = 0;
  virtual void KeyDown(unsigned int virtualKey) = 0;
  virtual void KeyUp(unsigned int virtualKey) = 0;
  virtual void SetMode(int index) = 0;
  /// The current mode's index in the mode table.
  virtual int GetModeInfo() const = 0;
  virtual void RotateX(double degrees) = 0;
  virtual void RotateY(double degrees) = 0;
  virtual void Dolly(double steps) = 0;
  virtual void ViewAll() = 0;
  virtual void Apply() = 0;

  virtual void SetContextMenuEnabled(bool enabled) = 0;
  virtual bool IsContextMenuEnabled() const = 0;
  virtual void SetMouseNavigationEnabled(bool enabled) = 0;
  virtual bool IsMouseNavigationEnabled() const = 0;
  virtual void SetNavigationControlsShown(bool shown) = 0;
  virtual bool AreNavigationControlsShown() const = 0;

  virtual void SetViewport(IViewport* viewport) = 0;
  virtual void SetHolder(IViewportHolder* holder) = 0;
  /// Where Alt and Ctrl are read; null means no key is ever held.
  virtual void SetKeyState(const IKeyState* keys) = 0;
};

}  // namespace quillon
