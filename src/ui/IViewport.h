#pragma once
// The view that navigation moves: its camera, its window and the scene in it.

namespace quillon {

class ICamera;

/// What the viewport manipulator needs of a view. Window positions and the window size are
/// in the pointer's pixels (not the framebuffer's, on a scaled screen) with the origin at the
/// top left; world points are in scene units.
class IViewport {
 public:
  virtual ~IViewport() = default;
  /// The camera of the view; never null (a camera that does nothing while there is none).
  virtual ICamera& camera() = 0;
  virtual void getWindowSize(int& width, int& height) const = 0;
  /// The world point under window position (x, y) at `depth` scene units in front of the camera.
  virtual void unproject(int x, int y, int depth, double& wx, double& wy, double& wz) const = 0;
  /// The view-space z of the focal plane: negative, since the camera looks down its -z axis.
  virtual double focalPlane() const = 0;
  /// Centre and radius of the displayed scene; four zeros without a scene.
  virtual void sceneBoundingSphere(float& x, float& y, float& z, float& radius) = 0;
  /// Moves the camera so that the sphere fills the view.
  virtual void fitToSphere(double x, double y, double z, double radius) = 0;
  /// Schedules a redraw; never waits for it.
  virtual void redraw() = 0;
};

}  // namespace quillon
