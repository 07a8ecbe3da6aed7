#pragma once
// What the Qt window tests share: the application, and the holder window round a manipulator
// whose keys the tests hold. Run under a display (xvfb-run -a without one).

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <memory>

#include "NavigationDoubles.h"
#include "ui/cViewportManipulator.h"
#include "ui/qt/cViewerHolderWnd.h"

namespace quillon::test {

/// Never destroyed before the tests are done; Qt reads a scale factor only when it starts.
inline QApplication& app(const char* scaleFactor = nullptr) {
  if (scaleFactor) qputenv("QT_SCALE_FACTOR", scaleFactor);
  static int argc = 1;
  static char name[] = "quillon_ui_test";
  static char* argv[] = {name, nullptr};
  static QApplication application(argc, argv);
  return application;
}

/// A manipulator over `viewport`, in a holder window of the given size over `holder`.
class HolderWindowFixture : public ::testing::Test {
 protected:
  void open(IViewport& viewport, TestHolder& holder, int width, int height) {
    resetModes(manipulator);
    manipulator.SetViewport(&viewport);
    holder.manipulator = &manipulator;
    window = std::make_unique<cViewerHolderWnd>(&holder);
    beforeShow();
    window->resize(width, height);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    manipulator.SetKeyState(&keys);  // the tests hold the keys, not the window system
  }

  virtual void beforeShow() {}
  void TearDown() override { window.reset(); }  // before the holder and viewport it points to

  cViewportManipulator manipulator;
  TestKeys keys;
  std::unique_ptr<cViewerHolderWnd> window;
};

}  // namespace quillon::test
