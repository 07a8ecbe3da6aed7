#include "ui/cSceneViewport.h"

#include <cmath>

#include "scenegraph/ICamera.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/NavigationMath.h"
#include "ui/cViewportManipulator.h"

namespace quillon {

namespace {
// What a camera that reports nothing is taken to have.
constexpr double kDefaultFieldOfView = 0.785398;
constexpr double kDefaultFocalDistance = 5.0;
}  // namespace

ICamera& cSceneViewport::camera() { return sceneGraph.camera(); }

void cSceneViewport::getWindowSize(int& width, int& height) const {
  IRenderArea* area = sceneGraph.renderArea();
  width = area ? area->logicalWidth() : 0;
  height = area ? area->logicalHeight() : 0;
}

void cSceneViewport::unproject(int x, int y, int depth, double& wx, double& wy, double& wz) const {
  ICamera& cam = sceneGraph.camera();
  nav::Vec3 position;
  nav::Quat orientation;
  double fieldOfView = kDefaultFieldOfView;
  cam.getPosition(position.x, position.y, position.z);
  cam.getOrientation(orientation.x, orientation.y, orientation.z, orientation.w);
  cam.getFieldOfView(fieldOfView);
  int width = 0, height = 0;
  getWindowSize(width, height);
  if (width < 1) width = 1;
  if (height < 1) height = 1;

  const double halfHeight = depth * std::tan(fieldOfView / 2);
  const double halfWidth = halfHeight * width / height;
  const nav::Vec3 inView{(2.0 * x / width - 1) * halfWidth, (1 - 2.0 * y / height) * halfHeight, -double(depth)};
  const nav::Vec3 world = position + nav::rotate(orientation, inView);
  wx = world.x;
  wy = world.y;
  wz = world.z;
}

double cSceneViewport::focalPlane() const {
  double focalDistance = kDefaultFocalDistance;
  sceneGraph.camera().getFocalDistance(focalDistance);
  return -focalDistance;
}

void cSceneViewport::sceneBoundingSphere(float& x, float& y, float& z, float& radius) {
  sceneGraph.boundingSphere(x, y, z, radius);
}

void cSceneViewport::fitToSphere(double x, double y, double z, double radius) {
  sceneGraph.camera().zoomToSphere(x, y, z, radius);
}

void cSceneViewport::redraw() { sceneGraph.refresh(0); }

}  // namespace quillon

namespace quillon {

namespace {
/// A manipulator together with the viewport it moves.
class cSceneManipulator final : public cViewportManipulator {
 public:
  explicit cSceneManipulator(ISceneGraphImplementor& sceneGraph) : viewport(sceneGraph) { SetViewport(&viewport); }

 private:
  cSceneViewport viewport;
};
}  // namespace

std::shared_ptr<IViewportManipulator> MakeViewportManipulator(ISceneGraphImplementor& sceneGraph) {
  return std::make_shared<cSceneManipulator>(sceneGraph);
}

}  // namespace quillon
