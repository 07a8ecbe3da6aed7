#pragma once
// The viewer window inside a native X11 window of a host that is not a Qt program.

#include <QWindow>
#include <memory>

#include "scenegraph/IRenderArea.h"
#include "ui/qt/cQtRenderArea.h"

namespace quillon {

class ISceneGraphImplementor;
class cViewerHolderWnd;

/// A viewer window (render area and navigation panels) made a child of a host's native window,
/// seen by the scene-graph holder as its render area. Qt needs a widget application on the
/// calling thread: when the host has none, the first embedding makes one, and its events are
/// then handled whenever the viewer asks for a redraw, and by a GLib main loop of the host.
class cEmbeddedViewer final : public IRenderArea {
 public:
  /// Null where it cannot embed: no X11 display, a parent that is not a window, or a Qt
  /// application of another kind, platform or thread.
  static std::unique_ptr<cEmbeddedViewer> create(ISceneGraphImplementor& sceneGraph, unsigned long parent, int width,
                                                 int height);
  ~cEmbeddedViewer() override;
  cEmbeddedViewer(const cEmbeddedViewer&) = delete;
  cEmbeddedViewer& operator=(const cEmbeddedViewer&) = delete;

  cViewerHolderWnd* holderWindow() const { return holder.get(); }

  int width() const override { return area.width(); }
  int height() const override { return area.height(); }
  int logicalWidth() const override { return area.logicalWidth(); }
  int logicalHeight() const override { return area.logicalHeight(); }
  void resize(int width, int height) override;
  bool makeCurrent() override;
  void present() override {}
  void triggerRedraw() override;
  bool readPixels(unsigned char* rgba, std::size_t size) override;
  osgViewer::GraphicsWindowEmbedded* graphicsWindow() override { return area.graphicsWindow(); }

 private:
  cEmbeddedViewer(std::unique_ptr<QWindow> parent, std::unique_ptr<cViewerHolderWnd> window);
  bool stillShown();

  // Declared in this order so that the viewer window goes before the parent it is a child of.
  std::unique_ptr<QWindow> nativeParent;
  std::unique_ptr<cViewerHolderWnd> holder;
  cQtRenderArea area;
  bool destroyed = false;  // with the host's window: nothing is drawn any more
};

}  // namespace quillon
