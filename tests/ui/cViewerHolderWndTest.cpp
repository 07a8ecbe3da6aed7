// The viewer window in a real window: run under a display (xvfb-run -a without one).
#include <QMenu>
#include <QTimer>
#include <QWheelEvent>
#include <cmath>
#include <osgViewer/GraphicsWindow>
#include <string>
#include <vector>

#include "HolderWindowSupport.h"
#include "ui/qt/cNavigationButtonsWnd.h"
#include "ui/qt/cPanelDlg.h"
#include "ui/qt/cQtRenderArea.h"
#include "ui/qt/cRenderAreaPanel.h"

namespace quillon::test {
namespace {

using M = IViewportManipulator;

class RecordingTarget final : public ICommandTarget {
 public:
  std::vector<int> commands;
  bool onCommand(int id) override {
    commands.push_back(id);
    return true;
  }
};

class HolderWindowTest : public HolderWindowFixture {
 protected:
  void SetUp() override {
    app();
    open(viewport, sceneGraph, 640, 560);
  }
  QWidget* area() { return window->renderAreaPanel(); }

  TestViewport viewport;
  TestCamera& camera = viewport.cam;
  TestHolder sceneGraph;
};

TEST_F(HolderWindowTest, LayoutKeepsTheMinimalSizeAndHidesThePanelsWithTheControls) {
  EXPECT_EQ(window->minimumSize(), QSize(463, 480));
  EXPECT_TRUE(window->leftPanel()->isVisible());
  EXPECT_TRUE(window->downPanel()->isVisible());
  const int shownWidth = area()->width();

  manipulator.SetNavigationControlsShown(false);
  QTest::qWait(50);
  EXPECT_FALSE(window->leftPanel()->isVisible());
  EXPECT_FALSE(window->rightPanel()->isVisible());
  EXPECT_FALSE(window->downPanel()->isVisible());
  EXPECT_TRUE(area()->isVisible());
  EXPECT_GT(area()->width(), shownWidth);  // the render area takes the room

  manipulator.SetNavigationControlsShown(true);
  EXPECT_TRUE(window->rightPanel()->isVisible());
}

// The left button runs the drag timer that glides the rotation centre; the middle button and
// the wheel reach the manipulator too.
TEST_F(HolderWindowTest, ButtonsAndWheelReachTheManipulator) {
  manipulator.SetMode(M::MODE_SELECT_ROT_CENTRE);
  const QPoint centre(area()->width() / 2, area()->height() / 2);
  viewport.width = area()->width();
  viewport.height = area()->height();
  QTest::mousePress(area(), Qt::LeftButton, {}, centre + QPoint(60, 80));  // 100 steps away
  EXPECT_EQ(window->dragTimer(), 1234);
  EXPECT_TRUE(manipulator.firstButton().pressed);
  EXPECT_EQ(manipulator.firstButton().x, centre.x() + 60);
  EXPECT_EQ(window->focusWidget(), area());

  QTest::qWait(350);  // about three ticks of 100 ms
  const nav::Vec3 moved = camera.position;
  EXPECT_NE(moved.x, 0.0);
  QTest::mouseRelease(area(), Qt::LeftButton, {}, centre + QPoint(60, 80));
  EXPECT_EQ(window->dragTimer(), 0);
  EXPECT_FALSE(manipulator.firstButton().pressed);
  QTest::qWait(250);  // released: the glide stops where it is
  EXPECT_EQ(camera.position.x, moved.x);

  camera.position = {0, 0, 100};
  manipulator.SetMode(M::MODE_ROTATE);
  keys.alt = true;
  QTest::mousePress(area(), Qt::MiddleButton, {}, QPoint(100, 100));
  EXPECT_TRUE(manipulator.secondButton().pressed);
  QTest::mouseMove(area(), QPoint(120, 100));
  EXPECT_NEAR(camera.position.x, -2.0, 1e-9);  // Alt with the middle button pans
  QTest::mouseRelease(area(), Qt::MiddleButton, {}, QPoint(120, 100));
  EXPECT_FALSE(manipulator.secondButton().pressed);
  EXPECT_GE(sceneGraph.refreshes, 2);

  const QPointF at(50, 50);
  QWheelEvent wheel(at, area()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(area(), &wheel);
  EXPECT_EQ(camera.zooms, std::vector<double>{0.95});
}

TEST_F(HolderWindowTest, ModeButtonsTraceAndSelectTheirMode) {
  Trace trace;
  cNavigationButtonsWnd* buttons = window->navigationButtons();
  EXPECT_TRUE(buttons->modeButton(M::MODE_ROTATE)->isChecked());
  const char* names[] = {"MODE_PAN", "MODE_ROTATE", "MODE_SELECT_ROT_CENTRE", "MODE_ZOOM", "MODE_DOLLY"};
  for (int mode = 0; mode < M::MODE_NONE; ++mode) {
    QTest::mouseClick(buttons->modeButton(mode), Qt::LeftButton);
    EXPECT_EQ(manipulator.GetModeInfo(), mode);
    for (int other = 0; other < M::MODE_NONE; ++other)
      EXPECT_EQ(buttons->modeButton(other)->isChecked(), other == mode) << mode << " " << other;
    EXPECT_EQ(trace.lines.back(), std::string("Setting target mode ") + names[mode] + "\n");
  }

  viewport.sphere[3] = 7;
  QTest::mouseClick(buttons->viewAllButton(), Qt::LeftButton);
  EXPECT_DOUBLE_EQ(camera.sphereRadius, 7);
}

TEST_F(HolderWindowTest, ThumbwheelsTurnAndDollyByTag) {
  auto turn = [](QWidget* wheel, QPoint from, QPoint to) {
    QTest::mousePress(wheel, Qt::LeftButton, {}, from);
    QTest::mouseMove(wheel, to);
    QTest::mouseRelease(wheel, Qt::LeftButton, {}, to);
  };
  turn(window->leftPanel()->wheel(), {10, 20}, {10, 30});  // 10 pixels of 360: 10 degrees
  ASSERT_EQ(camera.turnsX.size(), 1u);
  EXPECT_DOUBLE_EQ(camera.turnsX[0], 10 * 0.017444445);
  turn(window->downPanel()->wheel(), {40, 10}, {35, 10});
  ASSERT_EQ(camera.turnsY.size(), 1u);
  EXPECT_DOUBLE_EQ(camera.turnsY[0], -5 * 0.017444445);
  turn(window->rightPanel()->wheel(), {10, 20}, {10, 21});  // one pixel of 36: ten steps
  const nav::Vec3 moved = camera.position - nav::Vec3{0, 0, 100};
  EXPECT_NEAR(std::sqrt(nav::dot(moved, moved)), 0.1 * 10 * 480 * 0.0027777778, 1e-9);

  // A report with a tag no panel knows is left alone.
  EXPECT_FALSE(window->leftPanel()->rotatingButtonMessage(1152, 45, 0x77777777));
  EXPECT_EQ(camera.turnsX.size(), 1u);
}

TEST_F(HolderWindowTest, ContextMenuShowsCommandsWithTheirCheckMarksAndTheyAct) {
  manipulator.SetMode(M::MODE_ZOOM);
  manipulator.SetMouseNavigationEnabled(false);
  QMenu menu;
  window->fillContextMenu(menu);
  // Each item as its command, text and check mark; a separator as a dash.
  QStringList items;
  for (const QAction* action : menu.actions())
    items << (action->isSeparator()
                  ? QStringLiteral("-")
                  : QStringLiteral("%1 %2%3")
                        .arg(action->data().toInt())
                        .arg(action->text(), action->isChecked() ? QStringLiteral(" [x]") : QString()));
  EXPECT_EQ(items.join(" | ").toStdString(),
            "32768 &Pan | 32769 &Rotate | 32770 &Set rotation point | 32771 &Zoom [x] | 32772 &Dolly | - | 32773 View "
            "&All | - | 32774 Show &navigation controls [x] | 32775 Enable &mouse navigation");

  // The commands act on the manipulator and the buttons.
  manipulator.SetMouseNavigationEnabled(true);
  for (int command = 32768; command <= 32772; ++command) {
    EXPECT_TRUE(window->onCommand(command));
    EXPECT_EQ(manipulator.GetModeInfo(), command - 32768);
    EXPECT_TRUE(window->navigationButtons()->modeButton(command - 32768)->isChecked());
  }
  viewport.sphere[3] = 3;
  EXPECT_TRUE(window->onCommand(32773));
  EXPECT_DOUBLE_EQ(camera.sphereRadius, 3);
  EXPECT_TRUE(window->onCommand(32774));
  EXPECT_FALSE(manipulator.AreNavigationControlsShown());
  EXPECT_FALSE(window->downPanel()->isVisible());
  EXPECT_TRUE(window->onCommand(32775));
  EXPECT_FALSE(manipulator.IsMouseNavigationEnabled());
  EXPECT_FALSE(window->onCommand(32776));
}

TEST_F(HolderWindowTest, RightClickOpensTheMenuOnlyWhileItIsEnabled) {
  bool menuSeen = false;
  auto chooseZoom = [&menuSeen] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu) return;
    menuSeen = true;
    for (QAction* action : menu->actions())
      if (action->data().toInt() == 32771) menu->setActiveAction(action);
    QTest::keyClick(menu, Qt::Key_Return);
  };

  manipulator.SetContextMenuEnabled(false);
  QTimer::singleShot(200, area(), chooseZoom);
  QTest::mouseClick(area(), Qt::RightButton, {}, QPoint(30, 30));
  QTest::qWait(300);
  EXPECT_FALSE(menuSeen);
  EXPECT_EQ(manipulator.GetModeInfo(), M::MODE_ROTATE);

  manipulator.SetContextMenuEnabled(true);
  QTimer::singleShot(200, area(), chooseZoom);
  QTest::mouseClick(area(), Qt::RightButton, {}, QPoint(30, 30));
  EXPECT_TRUE(menuSeen);
  EXPECT_EQ(manipulator.GetModeInfo(), M::MODE_ZOOM);
}

TEST_F(HolderWindowTest, LongPressSendsTheCommandOnceToTheOwnerOrTheParent) {
  RecordingTarget owner;
  cNavigationButtonsWnd* buttons = window->navigationButtons();
  cAnimatedBitmapButton* button = buttons->viewAllButton();
  button->setOwner(&owner);
  QTest::mousePress(button, Qt::LeftButton);
  EXPECT_EQ(button->pressTimer(), 1);
  QTest::qWait(1200);
  EXPECT_EQ(owner.commands, std::vector<int>{32773});
  EXPECT_EQ(button->pressTimer(), 0);
  QTest::mouseRelease(button, Qt::LeftButton);

  QTest::mousePress(button, Qt::LeftButton);  // a short press sends nothing
  QTest::mouseRelease(button, Qt::LeftButton);
  QTest::qWait(600);
  EXPECT_EQ(owner.commands.size(), 1u);
  button->setOwner(nullptr);

  // Without an owner the command goes to the button's parent widget and no further up. The
  // checks come while the button is still down, before a release could click it.
  auto holdDown = [](QWidget* pressed) {
    QTest::mousePress(pressed, Qt::LeftButton);
    QTest::qWait(700);
  };
  holdDown(buttons->modeButton(M::MODE_ZOOM));
  EXPECT_EQ(manipulator.GetModeInfo(), M::MODE_ZOOM);
  EXPECT_FALSE(buttons->modeButton(M::MODE_ROTATE)->isChecked());
  QTest::mouseRelease(buttons->modeButton(M::MODE_ZOOM), Qt::LeftButton);

  // The panel round it takes no commands, so the holder window above never sees this one.
  auto* stray = new cAnimatedBitmapButton(window->leftPanel());
  stray->setCommandId(cViewerHolderWnd::ID_PAN);
  stray->show();
  holdDown(stray);
  EXPECT_EQ(manipulator.GetModeInfo(), M::MODE_ZOOM);
  QTest::mouseRelease(stray, Qt::LeftButton);
  EXPECT_FALSE(buttons->onCommand(cViewerHolderWnd::ID_MOUSE_NAVIGATION));  // not one of its buttons
  EXPECT_TRUE(manipulator.IsMouseNavigationEnabled());
}

TEST_F(HolderWindowTest, KeysAreTracedAndPassedOn) {
  Trace trace;
  QTest::keyPress(window.get(), Qt::Key_Alt);
  QTest::keyRelease(window.get(), Qt::Key_Alt);
  EXPECT_EQ(trace.lines, (std::vector<std::string>{"cViewerHolderWnd::OnKeyDown()\n", "Alt key down\n",
                                                   "cViewerHolderWnd::OnKeyUp()\n", "Alt key up\n"}));
}

TEST_F(HolderWindowTest, RenderAreaPaintsThroughTheHolderAndHandsBackItsPixels) {
  cQtRenderArea renderArea(window->renderAreaPanel());
  EXPECT_EQ(renderArea.width(), window->renderAreaPanel()->pixelWidth());
  ASSERT_NE(renderArea.graphicsWindow(), nullptr);
  const int rendersBefore = sceneGraph.renders;
  std::vector<unsigned char> pixels(static_cast<std::size_t>(renderArea.width() * renderArea.height() * 4));
  EXPECT_TRUE(renderArea.readPixels(pixels.data(), pixels.size()));
  EXPECT_GT(sceneGraph.renders, rendersBefore);
  EXPECT_FALSE(renderArea.readPixels(pixels.data(), pixels.size() - 1));
  EXPECT_TRUE(renderArea.makeCurrent());
  EXPECT_EQ(renderArea.graphicsWindow()->getTraits()->width, renderArea.width());

  window.reset();  // the panel is gone; the area says so instead of crashing
  EXPECT_EQ(renderArea.width(), 0);
  EXPECT_FALSE(renderArea.makeCurrent());
  EXPECT_FALSE(renderArea.readPixels(pixels.data(), pixels.size()));
}

}  // namespace
}  // namespace quillon::test
