#pragma once
// A render area without a display: an EGL context drawing into framebuffer objects.

#include <memory>
#include <osg/ref_ptr>

#include "scenegraph/IRenderArea.h"

namespace quillon {

/// Draws into a 4-sample framebuffer object of the area's size and resolves it into a
/// single-sample one, whose pixels can be read back. The context is desktop OpenGL in the
/// compatibility profile, from Mesa's surfaceless platform or an EGL device; no display and
/// no GPU are needed.
class OffscreenRenderArea final : public IRenderArea {
 public:
  /// Null when no context or framebuffer of that size can be made.
  static std::unique_ptr<OffscreenRenderArea> create(int width, int height);
  ~OffscreenRenderArea() override;
  OffscreenRenderArea(const OffscreenRenderArea&) = delete;
  OffscreenRenderArea& operator=(const OffscreenRenderArea&) = delete;

  int width() const override { return w; }
  int height() const override { return h; }
  void resize(int width, int height) override;
  bool makeCurrent() override;
  void doneCurrent() override;
  void present() override;
  // Offscreen, a frame is drawn when the host asks for its pixels; there is nothing to schedule.
  void triggerRedraw() override {}
  bool readPixels(unsigned char* rgba, std::size_t size) override;
  osgViewer::GraphicsWindowEmbedded* graphicsWindow() override;

  /// Samples of the framebuffer drawn into (1 when multisampling was not available).
  int samples() const { return sampleCount; }

 private:
  struct Gl;
  /// What was current on the thread before the area took it: the host's own OpenGL must find
  /// its thread as it left it, and one API's context left current keeps another's out.
  struct Previous {
    unsigned int api = 0;
    void* display = nullptr;
    void* draw = nullptr;
    void* read = nullptr;
    void* context = nullptr;
  };
  OffscreenRenderArea() = default;
  bool bind();
  bool createBuffers();
  void deleteBuffers();

  void* display = nullptr;
  void* context = nullptr;
  Previous previous;
  unsigned int bindError = 0;  // why bind() last failed, for the trace
  std::unique_ptr<Gl> gl;
  unsigned int drawFbo = 0, drawColour = 0, drawDepth = 0;
  unsigned int resolveFbo = 0, resolveColour = 0;
  int w = 0, h = 0;
  int sampleCount = 1;
  osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window;
};

}  // namespace quillon
