#pragma once
// The row of mode buttons and the view-all button.

#include <QWidget>
#include <array>

#include "ui/qt/cAnimatedBitmapButton.h"

namespace quillon {

class IViewportManipulator;

/// One button for each manipulation mode, the one of the current mode shown pressed, and a
/// button that views the whole scene. A command of one of them, as a long press sends it,
/// does what a click on that button does.
class cNavigationButtonsWnd final : public QWidget, public ICommandTarget {
 public:
  cNavigationButtonsWnd(IViewportManipulator* manipulator, QWidget* parent = nullptr);

  bool onCommand(int commandId) override;

  /// Shows the button of that mode pressed and the others released.
  void showMode(int mode);
  cAnimatedBitmapButton* modeButton(int mode) const;
  cAnimatedBitmapButton* viewAllButton() const { return viewAll; }

 private:
  void selectMode(int mode);

  IViewportManipulator* manipulator;
  std::array<cAnimatedBitmapButton*, 5> modeButtons{};
  cAnimatedBitmapButton* viewAll = nullptr;
};

}  // namespace quillon
