#pragma once
// The panel of the viewer window in which the scene is drawn.

#include <QOpenGLWidget>
#include <functional>
#include <osg/ref_ptr>

namespace osgViewer {
class GraphicsWindowEmbedded;
}

namespace quillon {

/// An OpenGL widget in the compatibility profile that OpenSceneGraph draws into through an
/// embedded graphics window. A paint asks its painter (the scene-graph holder) for a frame.
class cRenderAreaPanel final : public QOpenGLWidget {
 public:
  explicit cRenderAreaPanel(QWidget* parent = nullptr);
  ~cRenderAreaPanel() override;

  void setPainter(std::function<void()> paint) { painter = std::move(paint); }
  osgViewer::GraphicsWindowEmbedded* graphicsWindow();
  /// The size in device pixels, which is what OpenGL draws.
  int pixelWidth() const;
  int pixelHeight() const;
  /// Makes the widget's context current with its framebuffer bound; false before it has one.
  bool makeAreaCurrent();

  /// What the paints have cost so far, for reports of the frame rate.
  struct FrameStats {
    long frames = 0;
    double totalMs = 0;
    double longestMs = 0;
  };
  const FrameStats& frameStats() const { return stats; }
  void resetFrameStats() { stats = {}; }

 protected:
  void initializeGL() override;
  void resizeGL(int width, int height) override;
  void paintGL() override;

 private:
  void syncWindow();

  std::function<void()> painter;
  osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window;
  FrameStats stats;
};

}  // namespace quillon
