// The offscreen area makes its context current only while it works, and gives the host's
// thread back whatever was current before: a host's own OpenGL, or another window system's,
// must find the thread as it left it.
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <gtest/gtest.h>

#include <osg/Geode>
#include <osg/ShapeDrawable>
#include <vector>

#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OffscreenRenderArea.h"

namespace quillon {
namespace {

// A few frames, a read of the pixels and a new size: every way the area is used.
void UseArea(OSGSceneGraph& holder) {
  osg::ref_ptr<osg::Geode> geode = new osg::Geode;
  geode->addDrawable(new osg::ShapeDrawable(new osg::Box(osg::Vec3(), 1.0f)));
  osg::ref_ptr<osg::Group> root = new osg::Group;
  root->addChild(geode);
  holder.replaceScene(root, {});
  std::vector<unsigned char> pixels(64 * 64 * 4);
  holder.render();
  EXPECT_TRUE(holder.renderArea()->readPixels(pixels.data(), pixels.size()));
  holder.renderArea()->resize(32, 48);
  holder.render();
}

TEST(OffscreenContext, NothingStaysCurrentAfterTheAreasWork) {
  auto area = OffscreenRenderArea::create(64, 64);
  if (!area) GTEST_SKIP() << "no offscreen render area here";
  EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
  {
    OSGSceneGraph holder;
    holder.initialize();
    holder.attachToWindow(std::move(area));
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
    UseArea(holder);
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
  }
  EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
}

TEST(OffscreenContext, TheHostsOwnContextIsCurrentAgain) {
  auto getDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  EGLDisplay display =
      getDisplay ? getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr) : EGL_NO_DISPLAY;
  EGLint major = 0, minor = 0;
  if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor) || !eglBindAPI(EGL_OPENGL_API))
    GTEST_SKIP() << "no surfaceless EGL here";
  const EGLContext host = eglCreateContext(display, nullptr, EGL_NO_CONTEXT, nullptr);
  if (host == EGL_NO_CONTEXT) GTEST_SKIP() << "no OpenGL context for the host";
  ASSERT_TRUE(eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, host));

  auto area = OffscreenRenderArea::create(64, 64);
  ASSERT_NE(area, nullptr);
  EXPECT_EQ(eglGetCurrentContext(), host);
  {
    OSGSceneGraph holder;
    holder.initialize();
    holder.attachToWindow(std::move(area));
    UseArea(holder);
    EXPECT_EQ(eglGetCurrentContext(), host);
  }
  EXPECT_EQ(eglGetCurrentContext(), host);
  EXPECT_EQ(eglQueryAPI(), static_cast<EGLenum>(EGL_OPENGL_API));
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, host);
}

}  // namespace
}  // namespace quillon
