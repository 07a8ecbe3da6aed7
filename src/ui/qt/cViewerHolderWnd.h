#pragma once
// The viewer window: the render area with the navigation panels round it.

#include <QTimer>
#include <QWidget>

#include "ui/IViewportHolder.h"
#include "ui/qt/cAnimatedBitmapButton.h"
#include "ui/qt/cQtKeyState.h"

class QMenu;

namespace quillon {

class ISceneGraphImplementor;
class IViewportManipulator;
class cDownPanelDlg;
class cLeftPanelDlg;
class cNavigationButtonsWnd;
class cRenderAreaPanel;
class cRightPanelDlg;

/// Turns the mouse, the keys, the navigation panels and the context menu into calls of the
/// scene-graph holder's manipulator, and lets the scene-graph holder paint the render area.
class cViewerHolderWnd final : public QWidget, public IViewportHolder, public ICommandTarget {
 public:
  /// The context menu's commands.
  enum Command {
    ID_PAN = 32768,
    ID_ROTATE = 32769,
    ID_SET_ROTATION_POINT = 32770,
    ID_ZOOM = 32771,
    ID_DOLLY = 32772,
    ID_VIEW_ALL = 32773,
    ID_NAVIGATION_CONTROLS = 32774,
    ID_MOUSE_NAVIGATION = 32775,
  };
  static constexpr int kDragTimerId = 1234;
  static constexpr int kDragTimerMs = 100;
  static constexpr int kMinimalWidth = 463;
  static constexpr int kMinimalHeight = 480;

  explicit cViewerHolderWnd(ISceneGraphImplementor* sceneGraph, QWidget* parent = nullptr);
  ~cViewerHolderWnd() override;

  void showNavigationControls(bool show) override;
  bool onCommand(int commandId) override;

  /// Fills the menu with the context menu's items, checked as the manipulator stands.
  void fillContextMenu(QMenu& menu) const;
  /// Opens the context menu at a screen position and carries out the chosen command.
  void openContextMenu(const QPoint& globalPosition);

  cRenderAreaPanel* renderAreaPanel() const { return renderArea; }
  cLeftPanelDlg* leftPanel() const { return left; }
  cRightPanelDlg* rightPanel() const { return right; }
  cDownPanelDlg* downPanel() const { return down; }
  cNavigationButtonsWnd* navigationButtons() const;
  IViewportManipulator* viewportManipulator() const { return manipulator; }
  /// kDragTimerId while the drag timer runs, else 0.
  int dragTimer() const { return dragTimerId; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  bool renderAreaMouse(QEvent* event);
  void redraw();

  ISceneGraphImplementor* sceneGraph;
  IViewportManipulator* manipulator;
  cQtKeyState keys;
  cRenderAreaPanel* renderArea;
  cLeftPanelDlg* left;
  cRightPanelDlg* right;
  cDownPanelDlg* down;
  QTimer drag;
  int dragTimerId = 0;
};

}  // namespace quillon
