#include "ui/qt/cNavigationButtonsWnd.h"

#include <QHBoxLayout>
#include <QIcon>

#include "core/Trace.h"
#include "ui/IViewportManipulator.h"
#include "ui/qt/cAnimatedBitmapButton.h"
#include "ui/qt/cViewerHolderWnd.h"

namespace quillon {

namespace {
struct ModeButton {
  const char* image;
  const char* tip;
  const char* name;
};
// In the order of the manipulator's mode table.
constexpr ModeButton kModeButtons[] = {
    {"BUTTONPANU", "Pan", "MODE_PAN"},
    {"BUTTONROTATEU", "Rotate", "MODE_ROTATE"},
    {"BUTTONROTCENTREU", "Set rotation point", "MODE_SELECT_ROT_CENTRE"},
    {"BUTTONZOOMU", "Zoom", "MODE_ZOOM"},
    {"BUTTONDOLLYU", "Dolly", "MODE_DOLLY"},
};

cAnimatedBitmapButton* makeButton(QWidget* parent, const char* image, const char* tip, int command) {
  auto* button = new cAnimatedBitmapButton(parent);
  button->setIcon(QIcon(QString(":/quillon/%1.svg").arg(image)));
  button->setIconSize(QSize(24, 24));
  button->setToolTip(QString::fromUtf8(tip));
  button->setAutoRaise(true);
  button->setCommandId(command);
  return button;
}
}  // namespace

cNavigationButtonsWnd::cNavigationButtonsWnd(IViewportManipulator* m, QWidget* parent)
    : QWidget(parent), manipulator(m) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->setSpacing(2);
  for (int mode = 0; mode < static_cast<int>(modeButtons.size()); ++mode) {
    const ModeButton& b = kModeButtons[mode];
    cAnimatedBitmapButton* button = makeButton(this, b.image, b.tip, cViewerHolderWnd::ID_PAN + mode);
    button->setCheckable(true);
    QObject::connect(button, &QToolButton::clicked, this, [this, mode] { selectMode(mode); });
    layout->addWidget(button);
    modeButtons[static_cast<std::size_t>(mode)] = button;
  }
  viewAll = makeButton(this, "BUTTONZOOMALLU", "View all", cViewerHolderWnd::ID_VIEW_ALL);
  QObject::connect(viewAll, &QToolButton::clicked, this, [this] { onCommand(cViewerHolderWnd::ID_VIEW_ALL); });
  layout->addWidget(viewAll);
  showMode(manipulator ? manipulator->GetModeInfo() : IViewportManipulator::MODE_NONE);
}

cAnimatedBitmapButton* cNavigationButtonsWnd::modeButton(int mode) const {
  return mode >= 0 && mode < static_cast<int>(modeButtons.size()) ? modeButtons[static_cast<std::size_t>(mode)]
                                                                  : nullptr;
}

void cNavigationButtonsWnd::showMode(int mode) {
  for (int i = 0; i < static_cast<int>(modeButtons.size()); ++i)
    modeButtons[static_cast<std::size_t>(i)]->setChecked(i == mode);
}

bool cNavigationButtonsWnd::onCommand(int commandId) {
  const int mode = commandId - cViewerHolderWnd::ID_PAN;
  if (mode >= 0 && mode < static_cast<int>(modeButtons.size())) {
    selectMode(mode);
    return true;
  }
  if (commandId != cViewerHolderWnd::ID_VIEW_ALL) return false;
  if (manipulator) manipulator->ViewAll();
  return true;
}

void cNavigationButtonsWnd::selectMode(int mode) {
  Trace("Setting target mode %s\n", kModeButtons[mode].name);
  showMode(mode);
  if (manipulator) manipulator->SetMode(mode);
}

}  // namespace quillon
