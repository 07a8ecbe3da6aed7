#pragma once
// The camera as navigation and the viewer component see it.

namespace quillon {

/// Reads and moves the view's camera. Angles are in radians, lengths in scene units, the
/// orientation a unit quaternion (x, y, z, w). Getters leave their outputs untouched when
/// there is no camera behind the interface.
class ICamera {
 public:
  virtual void setPosition(double x, double y, double z) = 0;
  virtual void setOrientation(double x, double y, double z, double w) = 0;
  virtual void setOrientationAxisAngle(double x, double y, double z, double angle) = 0;
  virtual void setNearDistance(double d) = 0;
  virtual void setFarDistance(double d) = 0;
  virtual void setFocalDistance(double d) = 0;
  virtual void setFieldOfView(double angle) = 0;
  virtual void getPosition(double& x, double& y, double& z) const = 0;
  virtual void getOrientation(double& x, double& y, double& z, double& w) const = 0;
  virtual void getOrientationAxisAngle(double& x, double& y, double& z, double& angle) const = 0;
  virtual void getNearDistance(double& d) const = 0;
  virtual void getFarDistance(double& d) const = 0;
  virtual void getFocalDistance(double& d) const = 0;
  virtual void getFieldOfView(double& angle) const = 0;
  /// The sixteen numbers of the view-to-world matrix, row by row as the runtime keeps them.
  virtual void getViewToWorldMatrix(float m[16]) const = 0;
  virtual void zoom(double factor) = 0;
  virtual void zoomToSphere(double x, double y, double z, double radius) = 0;
  virtual void rotateX(double angle) = 0;
  virtual void rotateY(double angle) = 0;
  virtual void rotateZ(double angle) = 0;
  virtual void setAspectRatio(double ratio) = 0;
  /// The zoom factor that the camera position text reports and sets (1.0 at start).
  virtual void getZoomFactor(double& factor) const = 0;
  virtual void setZoomFactor(double factor) = 0;
  virtual ~ICamera() = default;
};

}  // namespace quillon
