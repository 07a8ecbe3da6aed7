#include "ui/qt/cQtRenderArea.h"

#include <QImage>
#include <cstring>

namespace quillon {

void cQtRenderArea::triggerRedraw() {
  if (panel) panel->update();
}

bool cQtRenderArea::readPixels(unsigned char* rgba, std::size_t size) {
  if (!panel || !rgba) return false;
  const QImage image = panel->grabFramebuffer().convertToFormat(QImage::Format_RGBA8888);
  if (image.isNull() || image.width() != width() || image.height() != height()) return false;
  const auto row = static_cast<std::size_t>(image.width()) * 4;
  if (size < row * static_cast<std::size_t>(image.height())) return false;
  for (int y = 0; y < image.height(); ++y)
    std::memcpy(rgba + row * static_cast<std::size_t>(y), image.constScanLine(y), row);
  return true;
}

osgViewer::GraphicsWindowEmbedded* cQtRenderArea::graphicsWindow() { return panel ? panel->graphicsWindow() : nullptr; }

}  // namespace quillon
