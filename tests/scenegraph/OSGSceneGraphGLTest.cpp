// The holder drawing into an offscreen render area: what it shows, the OpenGL errors it names,
// and the contexts it leaves current. These tests need OpenGL.
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

#include <osg/Geode>
#include <osg/LineWidth>
#include <osg/ShapeDrawable>
#include <string>
#include <vector>

#include "RenderHelpers.h"
#include "scenegraph/GlErrorLog.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OffscreenRenderArea.h"
#include "scenegraph/osgFakeCamera.h"
#include "vrml/Nodes.h"

namespace quillon {
namespace {

using test::MeanColour;

constexpr int kWidth = 160, kHeight = 120;

osg::ref_ptr<osg::Group> BoxScene(osg::StateAttribute* attribute = nullptr) {
  osg::ref_ptr<osg::Geode> geode = new osg::Geode;
  geode->addDrawable(new osg::ShapeDrawable(new osg::Box(osg::Vec3(), 1.0f)));
  if (attribute) geode->getOrCreateStateSet()->setAttributeAndModes(attribute);
  osg::ref_ptr<osg::Group> root = new osg::Group;
  root->addChild(geode);
  return root;
}

class OffscreenHolder : public ::testing::Test {
 protected:
  void SetUp() override {
    holder.initialize();
    auto area = OffscreenRenderArea::create(kWidth, kHeight);
    if (!area) GTEST_SKIP() << "no offscreen render area here";
    holder.attachToWindow(std::move(area));
    ASSERT_NE(holder.renderArea(), nullptr);
  }

  bool Load(const char* vrml) {
    VRML::Group root;
    if (root.parse(vrml) != 0) return false;
    return holder.sceneGraphBuilder()->build(root);
  }
  // A unit box, with whatever attribute its state set is given.
  void ShowBox(osg::StateAttribute* attribute = nullptr) {
    holder.replaceScene(BoxScene(attribute), {});
    holder.camera().zoomToSphere(0, 0, 0, 1);
  }
  std::vector<unsigned char> Render() {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(kWidth) * kHeight * 4);
    holder.render();
    EXPECT_TRUE(holder.renderArea()->readPixels(pixels.data(), pixels.size()));
    return pixels;
  }
  test::Rgb Centre() {
    return MeanColour(Render(), kWidth, kWidth / 2 - 5, kHeight / 2 - 5, kWidth / 2 + 5, kHeight / 2 + 5);
  }

  OSGSceneGraph holder;
};

// Hiding by name is checked through the C interface; here the hue and the colour override.
TEST_F(OffscreenHolder, ShowsTheBoxInItsHueOrTheOverrideAndNothingOnceDetached) {
  ASSERT_TRUE(
      Load("#VRML V2.0 utf8\n"
           "DEF Probe Transform { children [ Shape {\n"
           "  appearance Appearance { material Material { diffuseColor 1 0 0 emissiveColor 0.5 0 0 } }\n"
           "  geometry Box { size 0.1 0.1 0.1 } } ] }\n"));
  float x, y, z, r;
  holder.boundingSphere(x, y, z, r);
  holder.camera().zoomToSphere(x, y, z, r);
  auto centre = Centre();
  EXPECT_GT(centre.r, 120);
  EXPECT_LT(centre.g, 30);
  EXPECT_LT(centre.b, 30);

  holder.setForegroundOverride(true, 0, 1, 0);
  centre = Centre();
  EXPECT_GT(centre.g, centre.b);
  holder.setForegroundOverride(false, 0, 0, 0);
  EXPECT_GT(Centre().r, 120);

  holder.detachFromWindow();
  EXPECT_EQ(holder.renderArea(), nullptr);
  EXPECT_NE(dynamic_cast<osgFakeCamera*>(&holder.camera()), nullptr);
  holder.render();
}

// In builds that look for OpenGL errors, an error made while a frame is drawn is recorded with
// the attribute that made it; a clean frame records nothing. The error line that the bad frame
// provokes is captured, since such a line fails any test.
TEST_F(OffscreenHolder, AnAttributeThatOpenGlRefusesIsNamedAndCleanFramesRecordNothing) {
  if (!GlErrorChecksEnabled()) GTEST_SKIP() << "built without QUILLON_CHECK_GL";
  ShowBox(new osg::LineWidth(2.0f));
  std::size_t before = GlErrorCount();
  Render();
  Render();
  EXPECT_EQ(GlErrorCount(), before) << LastGlError();

  ShowBox(new osg::LineWidth(-1.0f));  // glLineWidth takes only widths above 0
  before = GlErrorCount();
  ::testing::internal::CaptureStderr();
  Render();
  const std::string said = ::testing::internal::GetCapturedStderr();
  EXPECT_GT(GlErrorCount(), before);
  EXPECT_NE(LastGlError().find("LineWidth"), std::string::npos) << LastGlError();
  EXPECT_NE(said.find("OpenGL error 'invalid value' after applying attribute LineWidth"), std::string::npos) << said;

  // What the bad frame left was read then, and is not blamed on the next one.
  ShowBox(new osg::LineWidth(2.0f));
  before = GlErrorCount();
  Render();
  EXPECT_EQ(GlErrorCount(), before) << LastGlError();
}

// The offscreen area makes its context current only while it works, and gives the host's thread
// back whatever was current before: nothing, or the host's own OpenGL context. A few frames, a
// read of the pixels and a new size use the area every way there is.
TEST(OffscreenContext, WhatWasCurrentBeforeIsCurrentAgain) {
  auto useArea = [](EGLContext current) {
    auto area = OffscreenRenderArea::create(64, 64);
    if (!area && current == EGL_NO_CONTEXT) GTEST_SKIP() << "no offscreen render area here";
    ASSERT_NE(area, nullptr) << "no offscreen render area beside the host's context";
    EXPECT_EQ(eglGetCurrentContext(), current);
    {
      OSGSceneGraph holder;
      holder.initialize();
      holder.attachToWindow(std::move(area));
      EXPECT_EQ(eglGetCurrentContext(), current);
      holder.replaceScene(BoxScene(), {});
      std::vector<unsigned char> pixels(64 * 64 * 4);
      holder.render();
      EXPECT_TRUE(holder.renderArea()->readPixels(pixels.data(), pixels.size()));
      holder.renderArea()->resize(32, 48);
      holder.render();
      EXPECT_EQ(eglGetCurrentContext(), current);
    }
    EXPECT_EQ(eglGetCurrentContext(), current);
  };
  useArea(EGL_NO_CONTEXT);
  if (::testing::Test::IsSkipped()) return;

  auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  EGLDisplay display =
      getDisplay ? getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr) : EGL_NO_DISPLAY;
  EGLint major = 0, minor = 0;
  if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor) || !eglBindAPI(EGL_OPENGL_API))
    GTEST_SKIP() << "no surfaceless EGL here";
  const EGLContext host = eglCreateContext(display, nullptr, EGL_NO_CONTEXT, nullptr);
  if (host == EGL_NO_CONTEXT) GTEST_SKIP() << "no OpenGL context for the host";
  ASSERT_TRUE(eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, host));
  useArea(host);
  EXPECT_EQ(eglQueryAPI(), static_cast<EGLenum>(EGL_OPENGL_API));
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, host);
}

}  // namespace
}  // namespace quillon
