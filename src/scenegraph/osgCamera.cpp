#include "scenegraph/osgCamera.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <osg/Camera>

namespace quillon {
namespace {

bool finite(double v) { return std::isfinite(v); }

// A double that a float can hold without overflowing to infinity.
bool fitsFloat(double v) { return finite(v) && std::abs(v) <= static_cast<double>(std::numeric_limits<float>::max()); }

float toFloat(double v) { return static_cast<float>(v); }

}  // namespace

osgCamera::osgCamera() : fieldOfView(toFloat(std::numbers::pi / 4)) {}

osg::Matrixd osgCamera::viewToWorld() const {
  return osg::Matrixd::rotate(rotation()) * osg::Matrixd::translate(eye());
}

void osgCamera::setPosition(double x, double y, double z) {
  if (fitsFloat(x) && fitsFloat(y) && fitsFloat(z)) position.set(toFloat(x), toFloat(y), toFloat(z));
}

void osgCamera::setOrientation(double x, double y, double z, double w) {
  const double length = std::sqrt(x * x + y * y + z * z + w * w);
  if (!finite(length) || length <= 0) return;
  orientation.set(toFloat(x / length), toFloat(y / length), toFloat(z / length), toFloat(w / length));
}

void osgCamera::setOrientationAxisAngle(double x, double y, double z, double angle) {
  const double s = std::sin(angle / 2);
  setOrientation(s * x, s * y, s * z, std::cos(angle / 2));
}

void osgCamera::setNearDistance(double d) {
  if (fitsFloat(d)) nearDistance = toFloat(d);
}

void osgCamera::setFarDistance(double d) {
  if (fitsFloat(d)) farDistance = toFloat(d);
}

void osgCamera::setFocalDistance(double d) {
  if (fitsFloat(d)) focalDistance = toFloat(d);
}

void osgCamera::setFieldOfView(double angle) {
  if (finite(angle) && angle > 0 && angle < std::numbers::pi) fieldOfView = toFloat(angle);
}

void osgCamera::getPosition(double& x, double& y, double& z) const {
  x = position.x();
  y = position.y();
  z = position.z();
}

void osgCamera::getOrientation(double& x, double& y, double& z, double& w) const {
  x = orientation.x();
  y = orientation.y();
  z = orientation.z();
  w = orientation.w();
}

void osgCamera::getOrientationAxisAngle(double& x, double& y, double& z, double& angle) const {
  const osg::Quat q = rotation();
  const double w = std::clamp(q.w(), -1.0, 1.0);
  angle = 2 * std::acos(w);
  const double s = std::sqrt(1 - w * w);
  // Near a zero rotation the axis is meaningless; it is given undivided.
  const double divisor = s > 0.001 ? s : 1.0;
  x = q.x() / divisor;
  y = q.y() / divisor;
  z = q.z() / divisor;
}

void osgCamera::getNearDistance(double& d) const { d = nearDistance; }
void osgCamera::getFarDistance(double& d) const { d = farDistance; }
void osgCamera::getFocalDistance(double& d) const { d = focalDistance; }
void osgCamera::getFieldOfView(double& angle) const { angle = fieldOfView; }

void osgCamera::getViewToWorldMatrix(float m[16]) const {
  const osg::Matrixd matrix = viewToWorld();
  const double* p = matrix.ptr();
  for (int i = 0; i < 16; ++i) m[i] = toFloat(p[i]);
}

// The zoom widens or narrows the view: the half-angle's tangent scales with the factor.
void osgCamera::zoom(double factor) {
  if (!finite(factor) || factor <= 0) return;
  const double view = fieldOfView, present = zoomFactor;
  const double angle = 2 * std::atan(std::tan(view / 2) * factor);
  if (!(angle > 0 && angle < std::numbers::pi)) return;
  const double zoomed = present * factor;
  if (!fitsFloat(zoomed) || !(toFloat(zoomed) > 0)) return;
  fieldOfView = toFloat(angle);
  zoomFactor = toFloat(zoomed);
}

void osgCamera::zoomToSphere(double x, double y, double z, double radius) {
  if (!(radius > 0) || !finite(x) || !finite(y) || !finite(z) || !finite(radius)) return;
  // A quarter smaller than the bounds: the scene fills the view a little more.
  const double r = radius - 0.25 * radius;
  if (!(r > 0)) return;
  const double view = fieldOfView, ratio = aspect;
  const double halfHeight = view / 2;
  const double halfWidth = std::atan(std::tan(halfHeight) * ratio);
  const double distance = r / std::sin(std::min(halfHeight, halfWidth));
  const osg::Vec3d direction = rotation() * osg::Vec3d(0, 0, -1);
  const osg::Vec3d eyeAt = osg::Vec3d(x, y, z) - direction * distance;
  if (!fitsFloat(eyeAt.x()) || !fitsFloat(eyeAt.y()) || !fitsFloat(eyeAt.z()) || !fitsFloat(distance)) return;
  position.set(toFloat(eyeAt.x()), toFloat(eyeAt.y()), toFloat(eyeAt.z()));
  focalDistance = toFloat(distance);
}

void osgCamera::rotate(const osg::Vec3d& axis, double angle) {
  if (!finite(angle)) return;
  // The axis is the camera's own: the turn comes first, then the present orientation.
  osg::Quat q = osg::Quat(angle, axis) * rotation();
  setOrientation(q.x(), q.y(), q.z(), q.w());
}

void osgCamera::rotateX(double angle) { rotate(osg::Vec3d(1, 0, 0), angle); }
void osgCamera::rotateY(double angle) { rotate(osg::Vec3d(0, 1, 0), angle); }
void osgCamera::rotateZ(double angle) { rotate(osg::Vec3d(0, 0, 1), angle); }

void osgCamera::setAspectRatio(double ratio) {
  if (fitsFloat(ratio) && ratio > 0) aspect = toFloat(ratio);
}

void osgCamera::getZoomFactor(double& factor) const { factor = zoomFactor; }

void osgCamera::setZoomFactor(double factor) {
  const double present = zoomFactor;
  if (finite(factor) && factor > 0) zoom(factor / present);
}

void osgCamera::clipPlanes(const osg::BoundingSphere& scene, double& nearPlane, double& farPlane) const {
  nearPlane = nearDistance;
  farPlane = farDistance;
  if (!autoClipPlanes || !scene.valid()) return;
  const osg::Vec3d centre = scene.center();
  const double radius = static_cast<double>(scene.radius());
  if (!finite(centre.x()) || !finite(centre.y()) || !finite(centre.z()) || !finite(radius)) return;
  const double depth = (centre - eye()) * (rotation() * osg::Vec3d(0, 0, -1));
  const double far = (depth + radius) * 1.01 + 1e-3;
  if (!(far > 0)) return;
  farPlane = far;
  nearPlane = std::max((depth - radius) * 0.99, far * 1e-4);
}

void osgCamera::applyTo(osg::Camera& camera, const osg::BoundingSphere& scene) const {
  double nearPlane = 0, farPlane = 0;
  clipPlanes(scene, nearPlane, farPlane);
  if (!(nearPlane > 0) || !(farPlane > nearPlane)) {
    nearPlane = 0.5;
    farPlane = 10.0;
  }
  camera.setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
  camera.setProjectionMatrixAsPerspective(osg::RadiansToDegrees(static_cast<double>(fieldOfView)), aspect, nearPlane,
                                          farPlane);
  camera.setViewMatrix(osg::Matrixd::inverse(viewToWorld()));
}

}  // namespace quillon
