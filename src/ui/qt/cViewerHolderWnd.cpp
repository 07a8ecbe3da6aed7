#include "ui/qt/cViewerHolderWnd.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>

#include "core/Trace.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/IViewportManipulator.h"
#include "ui/qt/cNavigationButtonsWnd.h"
#include "ui/qt/cPanelDlg.h"
#include "ui/qt/cRenderAreaPanel.h"

namespace quillon {

namespace {
// The key codes of the Alt and Ctrl keys that the manipulator knows.
constexpr unsigned int kVirtualAlt = 18;
constexpr unsigned int kVirtualCtrl = 17;

unsigned int virtualKey(const QKeyEvent& event) {
  if (event.key() == Qt::Key_Alt) return kVirtualAlt;
  if (event.key() == Qt::Key_Control) return kVirtualCtrl;
  return static_cast<unsigned int>(event.key());
}

struct MenuItem {
  int command;
  const char* text;
};
constexpr MenuItem kModeItems[] = {{cViewerHolderWnd::ID_PAN, "&Pan"},
                                   {cViewerHolderWnd::ID_ROTATE, "&Rotate"},
                                   {cViewerHolderWnd::ID_SET_ROTATION_POINT, "&Set rotation point"},
                                   {cViewerHolderWnd::ID_ZOOM, "&Zoom"},
                                   {cViewerHolderWnd::ID_DOLLY, "&Dolly"}};
}  // namespace

cViewerHolderWnd::cViewerHolderWnd(ISceneGraphImplementor* sg, QWidget* parent)
    : QWidget(parent),
      sceneGraph(sg),
      manipulator(sg ? sg->viewportManipulator() : nullptr),
      renderArea(new cRenderAreaPanel(this)),
      left(new cLeftPanelDlg(manipulator, this)),
      right(new cRightPanelDlg(manipulator, this)),
      down(new cDownPanelDlg(manipulator, this)) {
  setMinimumSize(kMinimalWidth, kMinimalHeight);
  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(left, 0, 0);
  layout->addWidget(renderArea, 0, 1);
  layout->addWidget(right, 0, 2);
  layout->addWidget(down, 1, 0, 1, 3);
  layout->setColumnStretch(1, 1);
  layout->setRowStretch(0, 1);

  if (sceneGraph) renderArea->setPainter([this] { sceneGraph->render(); });
  renderArea->installEventFilter(this);
  drag.setInterval(kDragTimerMs);
  QObject::connect(&drag, &QTimer::timeout, this, [this] {
    if (manipulator) manipulator->Apply();
  });
  if (manipulator) {
    manipulator->SetHolder(this);
    manipulator->SetKeyState(&keys);
    showNavigationControls(manipulator->AreNavigationControlsShown());
  }
}

cViewerHolderWnd::~cViewerHolderWnd() {
  if (manipulator) {
    manipulator->SetHolder(nullptr);
    manipulator->SetKeyState(nullptr);
  }
}

cNavigationButtonsWnd* cViewerHolderWnd::navigationButtons() const { return down->navigationButtons(); }

void cViewerHolderWnd::showNavigationControls(bool show) {
  left->setVisible(show);
  right->setVisible(show);
  down->setVisible(show);
}

void cViewerHolderWnd::redraw() {
  if (sceneGraph) sceneGraph->refresh(0);
}

bool cViewerHolderWnd::onCommand(int commandId) {
  if (!manipulator) return false;
  switch (commandId) {
    case ID_PAN:
    case ID_ROTATE:
    case ID_SET_ROTATION_POINT:
    case ID_ZOOM:
    case ID_DOLLY:
      manipulator->SetMode(commandId - ID_PAN);
      navigationButtons()->showMode(manipulator->GetModeInfo());
      break;
    case ID_VIEW_ALL:
      manipulator->ViewAll();
      break;
    case ID_NAVIGATION_CONTROLS:
      manipulator->SetNavigationControlsShown(!manipulator->AreNavigationControlsShown());
      break;
    case ID_MOUSE_NAVIGATION:
      manipulator->SetMouseNavigationEnabled(!manipulator->IsMouseNavigationEnabled());
      break;
    default:
      return false;
  }
  redraw();
  return true;
}

void cViewerHolderWnd::fillContextMenu(QMenu& menu) const {
  const int mode = manipulator ? manipulator->GetModeInfo() : IViewportManipulator::MODE_NONE;
  auto add = [&menu](int command, const char* text, bool checked) {
    QAction* action = menu.addAction(QString::fromUtf8(text));
    action->setData(command);
    action->setCheckable(true);
    action->setChecked(checked);
  };
  for (const MenuItem& item : kModeItems) add(item.command, item.text, item.command - ID_PAN == mode);
  menu.addSeparator();
  menu.addAction(QStringLiteral("View &All"))->setData(static_cast<int>(ID_VIEW_ALL));
  menu.addSeparator();
  add(ID_NAVIGATION_CONTROLS, "Show &navigation controls", manipulator && manipulator->AreNavigationControlsShown());
  add(ID_MOUSE_NAVIGATION, "Enable &mouse navigation", manipulator && manipulator->IsMouseNavigationEnabled());
}

void cViewerHolderWnd::openContextMenu(const QPoint& globalPosition) {
  if (!manipulator) return;
  QMenu menu(this);
  fillContextMenu(menu);
  const int command = manipulator->ShowContextMenu(
      [&menu](int x, int y) {
        QAction* chosen = menu.exec(QPoint(x, y));
        return chosen ? chosen->data().toInt() : 0;
      },
      globalPosition.x(), globalPosition.y());
  if (command > 0) onCommand(command);
}

bool cViewerHolderWnd::eventFilter(QObject* watched, QEvent* event) {
  if (watched == renderArea && renderAreaMouse(event)) return true;
  return QWidget::eventFilter(watched, event);
}

bool cViewerHolderWnd::renderAreaMouse(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      auto* mouse = static_cast<QMouseEvent*>(event);
      const QPoint p = mouse->position().toPoint();
      if (mouse->button() == Qt::LeftButton) {
        if (dragTimerId == 0) {
          drag.start();
          dragTimerId = kDragTimerId;
        }
        renderArea->setFocus();
        if (manipulator) manipulator->FirstButtonDown(p.x(), p.y());
      } else if (mouse->button() == Qt::MiddleButton) {
        if (manipulator) manipulator->SecondButtonDown(p.x(), p.y());
        redraw();
      } else if (mouse->button() == Qt::RightButton) {
        openContextMenu(mouse->globalPosition().toPoint());
      }
      return true;
    }
    case QEvent::MouseButtonRelease: {
      auto* mouse = static_cast<QMouseEvent*>(event);
      const QPoint p = mouse->position().toPoint();
      if (mouse->button() == Qt::LeftButton) {
        drag.stop();
        dragTimerId = 0;
        if (manipulator) manipulator->FirstButtonUp(p.x(), p.y());
      } else if (mouse->button() == Qt::MiddleButton) {
        if (manipulator) manipulator->SecondButtonUp(p.x(), p.y());
        redraw();
      }
      return true;
    }
    case QEvent::MouseMove: {
      const QPoint p = static_cast<QMouseEvent*>(event)->position().toPoint();
      if (manipulator) manipulator->MouseMove(p.x(), p.y());
      return true;
    }
    case QEvent::Wheel: {
      auto* wheel = static_cast<QWheelEvent*>(event);
      const QPoint p = wheel->position().toPoint();
      if (manipulator) manipulator->MouseWheel(p.x(), p.y(), wheel->angleDelta().y());
      return true;
    }
    default:
      return false;
  }
}

void cViewerHolderWnd::keyPressEvent(QKeyEvent* event) {
  Trace("cViewerHolderWnd::OnKeyDown()\n");
  if (manipulator) manipulator->KeyDown(virtualKey(*event));
}

void cViewerHolderWnd::keyReleaseEvent(QKeyEvent* event) {
  Trace("cViewerHolderWnd::OnKeyUp()\n");
  if (manipulator) manipulator->KeyUp(virtualKey(*event));
}

}  // namespace quillon
