// The whole viewer in a real window: run under a display (xvfb-run -a without one).
#include <gtest/gtest.h>

#include <QImage>
#include <QScreen>
#include <string>

#include "HolderWindowSupport.h"
#include "control/QuillonComponent.h"
#include "ui/qt/cRenderAreaPanel.h"
#include "widget/QuillonWidget.h"

namespace quillon::test {
namespace {

constexpr const char* kRedBox = R"(<?xml version="1.0"?>
<Visualisation>
  <Label>Red box</Label>
  <Version>1.0</Version>
  <Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape {
  appearance Appearance { material Material { diffuseColor 1 0 0 emissiveColor 0.6 0 0 } }
  geometry Box { size 0.1 0.1 0.1 }
}
]]></Scene>
</Visualisation>
)";

// The mean colour of a rectangle: Qt's smooth scaling averages what it shrinks.
QColor meanOf(const QImage& image, const QRect& rect) {
  return image.copy(rect).scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
}

// The bounding rectangle of the box's red pixels.
QRect redExtent(const QImage& image) {
  QRect extent;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (const QRgb p = image.pixel(x, y); qRed(p) > 100 && qGreen(p) < 60 && qBlue(p) < 60)
        extent |= QRect(x, y, 1, 1);
  return extent;
}

class ViewerWidgetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    app();
    widget = std::make_unique<QuillonWidget>();
    ASSERT_TRUE(widget->hasRenderArea());
    std::string annotated, groups;
    widget->initializeViewer(kRedBox, annotated, groups);
    widget->component().DisableNavigationControls();  // the render area fills the window
    widget->resize(900, 480);
    widget->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
    // Half a metre in front of the 10 cm cube, looking at it along -z.
    const QuillonComponent::CameraTexts camera = {"0 0 0.5", "0 1 0 0", "0.01", "10", "0.5", "1"};
    ASSERT_TRUE(widget->component().SetCameraPosition(camera));
  }

  cRenderAreaPanel* panel() { return widget->holderWindow()->renderAreaPanel(); }

  // What the X server shows of the render area once the pending paints are done.
  QImage shownOnScreen() {
    QTest::qWait(200);
    const QPoint origin = panel()->mapTo(widget->window(), QPoint(0, 0));
    return widget->window()
        ->screen()
        ->grabWindow(widget->window()->winId(), origin.x(), origin.y(), panel()->width(), panel()->height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
  }

  std::unique_ptr<QuillonWidget> widget;
};

// The cube faces the camera: its front face must come out square whatever the window's shape,
// wide or tall, which it does only when the projection follows the area's aspect ratio.
TEST_F(ViewerWidgetTest, WindowShowsTheBoxOnTheBackgroundAtTheAreasAspect) {
  for (const QSize size : {QSize(900, 480), QSize(463, 760)}) {
    SCOPED_TRACE(size.width());
    widget->resize(size);
    const QImage image = shownOnScreen();
    ASSERT_EQ(image.width() > image.height(), size.width() > size.height());

    const QColor border = meanOf(image, QRect(0, 0, image.width(), 8));
    EXPECT_NEAR(border.redF(), 0.3, 0.03);
    EXPECT_NEAR(border.greenF(), 0.3, 0.03);
    EXPECT_NEAR(border.blueF(), 0.5, 0.03);
    const QColor middle = meanOf(image, QRect(image.width() / 2 - 4, image.height() / 2 - 4, 8, 8));
    EXPECT_GT(middle.redF(), 0.4);
    EXPECT_LT(middle.greenF(), 0.2);
    EXPECT_LT(middle.blueF(), 0.2);

    const QRect box = redExtent(image);
    ASSERT_FALSE(box.isEmpty());
    EXPECT_NEAR(box.width(), box.height(), 0.08 * box.height()) << box.width() << "x" << box.height();
    EXPECT_NEAR(box.center().x(), image.width() / 2, 3);
  }
}

}  // namespace
}  // namespace quillon::test
