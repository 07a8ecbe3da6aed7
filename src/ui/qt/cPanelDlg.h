#pragma once
// The three panels of navigation controls round the render area.

#include <QFrame>

#include "ui/qt/cRotatingButton.h"

namespace quillon {

class IViewportManipulator;
class cNavigationButtonsWnd;

/// A panel holding rotating buttons; turns their reports into manipulator calls by tag.
class cPanelDlg : public QFrame, public IRotatingButtonTarget {
 public:
  static constexpr std::uint32_t kRotateXTag = 0x2b2b2b2b;
  static constexpr std::uint32_t kRotateYTag = 0xb2b2b2b2;
  static constexpr std::uint32_t kDollyTag = 0x12121212;
  /// Pixels of drag for a whole turn: a degree a pixel for the rotations, ten steps a pixel
  /// for the dolly.
  static constexpr int kRotateLength = 360;
  static constexpr int kDollyLength = 36;

  bool rotatingButtonMessage(unsigned int message, int value, std::uint32_t tag) override;

 protected:
  cPanelDlg(IViewportManipulator* manipulator, QWidget* parent);
  void attach(cRotatingButton* button, std::uint32_t tag, int length);

  IViewportManipulator* manipulator;
};

/// Left of the render area: the wheel that turns the view about its horizontal axis.
class cLeftPanelDlg final : public cPanelDlg {
 public:
  explicit cLeftPanelDlg(IViewportManipulator* manipulator, QWidget* parent = nullptr);
  cVerticalRotatingButton* wheel() const { return rotateX; }

 private:
  cVerticalRotatingButton* rotateX;
};

/// Right of the render area: the dolly wheel.
class cRightPanelDlg final : public cPanelDlg {
 public:
  explicit cRightPanelDlg(IViewportManipulator* manipulator, QWidget* parent = nullptr);
  cVerticalRotatingButton* wheel() const { return dolly; }

 private:
  cVerticalRotatingButton* dolly;
};

/// Below the render area: the wheel that turns about the vertical axis, and the mode buttons.
class cDownPanelDlg final : public cPanelDlg {
 public:
  explicit cDownPanelDlg(IViewportManipulator* manipulator, QWidget* parent = nullptr);
  cHorizontalRotatingButton* wheel() const { return rotateY; }
  cNavigationButtonsWnd* navigationButtons() const { return buttons; }

 private:
  cHorizontalRotatingButton* rotateY;
  cNavigationButtonsWnd* buttons;
};

}  // namespace quillon
