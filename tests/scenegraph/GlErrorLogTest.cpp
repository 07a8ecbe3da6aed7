// In builds that look for OpenGL errors, an error made while a frame is drawn is recorded with
// the attribute that made it; a clean frame records nothing.
#include <gtest/gtest.h>

#include <osg/Geode>
#include <osg/LineWidth>
#include <osg/ShapeDrawable>
#include <vector>

#include "scenegraph/GlErrorLog.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OffscreenRenderArea.h"

namespace quillon {
namespace {

class GlErrors : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!GlErrorChecksEnabled()) GTEST_SKIP() << "built without QUILLON_CHECK_GL";
    auto area = OffscreenRenderArea::create(64, 64);
    if (!area) GTEST_SKIP() << "no offscreen render area here";
    holder.initialize();
    holder.attachToWindow(std::move(area));
  }

  // A box, with whatever the state set is given.
  void Show(osg::StateAttribute* attribute) {
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(new osg::ShapeDrawable(new osg::Box(osg::Vec3(), 1.0f)));
    if (attribute) geode->getOrCreateStateSet()->setAttributeAndModes(attribute);
    osg::ref_ptr<osg::Group> root = new osg::Group;
    root->addChild(geode);
    holder.replaceScene(root, {});
    holder.camera().zoomToSphere(0, 0, 0, 1);
  }

  void Draw() {
    std::vector<unsigned char> pixels(64 * 64 * 4);
    holder.render();
    ASSERT_TRUE(holder.renderArea()->readPixels(pixels.data(), pixels.size()));
  }

  OSGSceneGraph holder;
};

TEST_F(GlErrors, CleanFramesRecordNothing) {
  Show(new osg::LineWidth(2.0f));
  const std::size_t before = GlErrorCount();
  Draw();
  Draw();
  EXPECT_EQ(GlErrorCount(), before) << LastGlError();
}

// The error line that this frame provokes is captured, since such a line fails any test.
TEST_F(GlErrors, AnAttributeThatOpenGlRefusesIsNamed) {
  Show(new osg::LineWidth(-1.0f));  // glLineWidth takes only widths above 0
  const std::size_t before = GlErrorCount();
  ::testing::internal::CaptureStderr();
  Draw();
  const std::string said = ::testing::internal::GetCapturedStderr();
  EXPECT_GT(GlErrorCount(), before);
  EXPECT_NE(LastGlError().find("LineWidth"), std::string::npos) << LastGlError();
  EXPECT_NE(said.find("OpenGL error 'invalid value' after applying attribute LineWidth"), std::string::npos) << said;

  // What the bad frame left was read then, and is not blamed on the next one.
  Show(new osg::LineWidth(2.0f));
  const std::size_t after = GlErrorCount();
  Draw();
  EXPECT_EQ(GlErrorCount(), after) << LastGlError();
}

}  // namespace
}  // namespace quillon
