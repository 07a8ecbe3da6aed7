#pragma once
// The viewport of the scene-graph holder's view.

#include <memory>

#include "ui/IViewport.h"

namespace quillon {

class ISceneGraphImplementor;

/// The view of a scene-graph holder as navigation sees it: its camera, the size of its render
/// area, and a perspective projection of the camera's vertical field of view over that area.
class cSceneViewport final : public IViewport {
 public:
  explicit cSceneViewport(ISceneGraphImplementor& holder) : sceneGraph(holder) {}

  ICamera& camera() override;
  void getWindowSize(int& width, int& height) const override;
  void unproject(int x, int y, int depth, double& wx, double& wy, double& wz) const override;
  double focalPlane() const override;
  void sceneBoundingSphere(float& x, float& y, float& z, float& radius) override;
  void fitToSphere(double x, double y, double z, double radius) override;
  void redraw() override;

 private:
  ISceneGraphImplementor& sceneGraph;
};

}  // namespace quillon

namespace quillon {

class IViewportManipulator;

/// A manipulator that moves the view of that holder, for the holder to hand out.
std::shared_ptr<IViewportManipulator> MakeViewportManipulator(ISceneGraphImplementor& sceneGraph);

}  // namespace quillon
