#include "ui/qt/cPanelDlg.h"

#include <QBoxLayout>

#include "ui/IViewportManipulator.h"
#include "ui/qt/cNavigationButtonsWnd.h"

namespace quillon {

cPanelDlg::cPanelDlg(IViewportManipulator* m, QWidget* parent) : QFrame(parent), manipulator(m) {
  setFrameShape(QFrame::StyledPanel);
}

void cPanelDlg::attach(cRotatingButton* button, std::uint32_t tag, int length) {
  button->setTarget(this);
  button->setTag(tag);
  button->setLength(length);
}

bool cPanelDlg::rotatingButtonMessage(unsigned int, int value, std::uint32_t tag) {
  if (!manipulator) return false;
  switch (tag) {
    case kRotateXTag:
      manipulator->RotateX(value);
      return true;
    case kRotateYTag:
      manipulator->RotateY(value);
      return true;
    case kDollyTag:
      manipulator->Dolly(value);
      return true;
    default:
      return false;
  }
}

cLeftPanelDlg::cLeftPanelDlg(IViewportManipulator* m, QWidget* parent)
    : cPanelDlg(m, parent), rotateX(new cVerticalRotatingButton(":/quillon/BUTTON_ROTX", this)) {
  attach(rotateX, kRotateXTag, kRotateLength);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3, 3, 3, 3);
  layout->addStretch();
  layout->addWidget(rotateX);
  layout->addStretch();
}

cRightPanelDlg::cRightPanelDlg(IViewportManipulator* m, QWidget* parent)
    : cPanelDlg(m, parent), dolly(new cVerticalRotatingButton(":/quillon/BUTTON_DOLLY", this)) {
  attach(dolly, kDollyTag, kDollyLength);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(3, 3, 3, 3);
  layout->addStretch();
  layout->addWidget(dolly);
  layout->addStretch();
}

cDownPanelDlg::cDownPanelDlg(IViewportManipulator* m, QWidget* parent)
    : cPanelDlg(m, parent),
      rotateY(new cHorizontalRotatingButton(":/quillon/BUTTON_ROTY", this)),
      buttons(new cNavigationButtonsWnd(m, this)) {
  attach(rotateY, kRotateYTag, kRotateLength);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(3, 3, 3, 3);
  layout->addWidget(rotateY);
  layout->addStretch();
  layout->addWidget(buttons);
}

}  // namespace quillon
