#pragma once
// The view's camera: our own model of it, written into OpenSceneGraph's camera each frame.

#include <osg/BoundingSphere>
#include <osg/Matrixd>
#include <osg/Quat>
#include <osg/Vec3d>
#include <osg/Vec3f>
#include <osg/Vec4f>

#include "scenegraph/ICamera.h"

namespace osg {
class Camera;
}

namespace quillon {

/// The camera "ViewCamera": position, orientation, near, far and focal distance, field of
/// view, aspect ratio and zoom factor, with clip planes fitted to the scene's bounds when
/// automatic clip planes are on. Lengths are scene units (millimetres). Values arrive and
/// leave as doubles but are kept as floats, so a getter reports what a float holds.
class osgCamera final : public ICamera {
 public:
  static constexpr const char* kName = "ViewCamera";

  /// Made with the set-up values of the view: aspect ratio 1, near 0.5, far 10, focal
  /// distance 5, automatic clip planes.
  osgCamera();

  void setPosition(double x, double y, double z) override;
  void setOrientation(double x, double y, double z, double w) override;
  void setOrientationAxisAngle(double x, double y, double z, double angle) override;
  void setNearDistance(double d) override;
  void setFarDistance(double d) override;
  void setFocalDistance(double d) override;
  void setFieldOfView(double angle) override;
  void getPosition(double& x, double& y, double& z) const override;
  void getOrientation(double& x, double& y, double& z, double& w) const override;
  void getOrientationAxisAngle(double& x, double& y, double& z, double& angle) const override;
  void getNearDistance(double& d) const override;
  void getFarDistance(double& d) const override;
  void getFocalDistance(double& d) const override;
  void getFieldOfView(double& angle) const override;
  void getViewToWorldMatrix(float m[16]) const override;
  void zoom(double factor) override;
  void zoomToSphere(double x, double y, double z, double radius) override;
  void rotateX(double angle) override;
  void rotateY(double angle) override;
  void rotateZ(double angle) override;
  void setAspectRatio(double ratio) override;
  void getZoomFactor(double& factor) const override;
  void setZoomFactor(double factor) override;

  void setAutoClipPlanes(bool on) { autoClipPlanes = on; }
  double aspectRatio() const { return aspect; }
  /// The near and far planes that a frame uses: fitted round the scene's bounds when
  /// automatic clip planes are on and the scene lies in front, else the stored distances.
  void clipPlanes(const osg::BoundingSphere& scene, double& nearPlane, double& farPlane) const;
  /// Writes view and projection into the runtime's camera.
  void applyTo(osg::Camera& camera, const osg::BoundingSphere& scene) const;

 private:
  void rotate(const osg::Vec3d& axis, double angle);
  osg::Vec3d eye() const { return osg::Vec3d(position); }
  osg::Quat rotation() const { return osg::Quat(orientation.x(), orientation.y(), orientation.z(), orientation.w()); }
  osg::Matrixd viewToWorld() const;

  osg::Vec3f position{0, 0, 0};
  osg::Vec4f orientation{0, 0, 0, 1};  // x, y, z, w
  float nearDistance = 0.5f;
  float farDistance = 10.0f;
  float focalDistance = 5.0f;
  float fieldOfView;  // vertical, radians
  float aspect = 1.0f;
  float zoomFactor = 1.0f;
  bool autoClipPlanes = true;
};

}  // namespace quillon
