#include "ui/qt/cRenderAreaPanel.h"

#include <QElapsedTimer>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>
#include <algorithm>
#include <osgViewer/GraphicsWindow>

namespace quillon {

cRenderAreaPanel::cRenderAreaPanel(QWidget* parent)
    : QOpenGLWidget(parent), window(new osgViewer::GraphicsWindowEmbedded(0, 0, 1, 1)) {
  // OpenSceneGraph draws with the fixed-function pipeline, which a core profile lacks.
  QSurfaceFormat format = QSurfaceFormat::defaultFormat();
  format.setProfile(QSurfaceFormat::CompatibilityProfile);
  format.setDepthBufferSize(24);
  format.setSamples(4);
  setFormat(format);
  setFocusPolicy(Qt::ClickFocus);
  setMinimumSize(64, 64);
}

cRenderAreaPanel::~cRenderAreaPanel() = default;

osgViewer::GraphicsWindowEmbedded* cRenderAreaPanel::graphicsWindow() { return window.get(); }

int cRenderAreaPanel::pixelWidth() const { return static_cast<int>(width() * devicePixelRatioF()); }

int cRenderAreaPanel::pixelHeight() const { return static_cast<int>(height() * devicePixelRatioF()); }

void cRenderAreaPanel::syncWindow() {
  window->setDefaultFboId(defaultFramebufferObject());
  const int w = pixelWidth(), h = pixelHeight();
  const osg::GraphicsContext::Traits* traits = window->getTraits();
  if (!traits || traits->width != w || traits->height != h) window->resized(0, 0, w, h);
}

bool cRenderAreaPanel::makeAreaCurrent() {
  if (!context() || !isValid()) return false;
  makeCurrent();
  syncWindow();
  return true;
}

void cRenderAreaPanel::initializeGL() { syncWindow(); }

void cRenderAreaPanel::resizeGL(int, int) { syncWindow(); }

void cRenderAreaPanel::paintGL() {
  syncWindow();
  if (painter) {
    QElapsedTimer clock;
    clock.start();
    painter();
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    ++stats.frames;
    stats.totalMs += ms;
    stats.longestMs = std::max(stats.longestMs, ms);
    return;
  }
  QOpenGLFunctions* gl = context()->functions();
  gl->glClearColor(0.3f, 0.3f, 0.5f, 1.0f);
  gl->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

}  // namespace quillon
