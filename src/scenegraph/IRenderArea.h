#pragma once
// A surface that the scene-graph holder draws into: offscreen, or a window on the screen.

#include <cstddef>

namespace osgViewer {
class GraphicsWindowEmbedded;
}

namespace quillon {

/// One OpenGL drawing surface with its own context. The holder makes it current, draws, and
/// asks it to present; an offscreen area can hand back its pixels.
class IRenderArea {
 public:
  virtual ~IRenderArea() = default;
  /// The drawing size in pixels of the framebuffer.
  virtual int width() const = 0;
  virtual int height() const = 0;
  /// The size in the unit of the window's pointer positions, which navigation works in. A
  /// window on a scaled screen draws more pixels than its pointer crosses.
  virtual int logicalWidth() const { return width(); }
  virtual int logicalHeight() const { return height(); }
  virtual void resize(int width, int height) = 0;
  /// Makes the area's context current; false when it cannot draw.
  virtual bool makeCurrent() = 0;
  /// Gives the thread back the context that was current before makeCurrent, once a piece of
  /// work is done. A window system that owns its contexts (Qt) needs nothing here.
  virtual void doneCurrent() {}
  /// After a frame: resolve, present, or schedule the repaint.
  virtual void present() = 0;
  /// Asks for a frame at the next opportunity (a paint, or the next read of the pixels).
  virtual void triggerRedraw() = 0;
  /// Copies width × height × 4 bytes of RGBA, rows from top to bottom; false when it cannot.
  virtual bool readPixels(unsigned char* rgba, std::size_t size) = 0;
  /// The embedded window that OpenSceneGraph's viewer draws through.
  virtual osgViewer::GraphicsWindowEmbedded* graphicsWindow() = 0;
};

}  // namespace quillon
