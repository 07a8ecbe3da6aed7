#pragma once
// The viewer window as navigation sees it.

namespace quillon {

/// The window around the view, which carries the navigation controls.
class IViewportHolder {
 public:
  virtual ~IViewportHolder() = default;
  virtual void showNavigationControls(bool show) = 0;
};

}  // namespace quillon
