#pragma once
// The render area of a window on the screen.

#include <QPointer>

#include "scenegraph/IRenderArea.h"
#include "ui/qt/cRenderAreaPanel.h"

namespace quillon {

/// The scene-graph holder's view of a render-area panel. The panel belongs to its window; this
/// object only refers to it and outlives it safely.
class cQtRenderArea final : public IRenderArea {
 public:
  explicit cQtRenderArea(cRenderAreaPanel* area) : panel(area) {}

  int width() const override { return panel ? panel->pixelWidth() : 0; }
  int height() const override { return panel ? panel->pixelHeight() : 0; }
  int logicalWidth() const override { return panel ? panel->width() : 0; }
  int logicalHeight() const override { return panel ? panel->height() : 0; }
  /// The window's layout sizes the panel; the next frame picks the size up.
  void resize(int, int) override {}
  bool makeCurrent() override { return panel && panel->makeAreaCurrent(); }
  /// The widget composes its framebuffer after each paint by itself.
  void present() override {}
  void triggerRedraw() override;
  bool readPixels(unsigned char* rgba, std::size_t size) override;
  osgViewer::GraphicsWindowEmbedded* graphicsWindow() override;

 private:
  QPointer<cRenderAreaPanel> panel;
};

}  // namespace quillon
