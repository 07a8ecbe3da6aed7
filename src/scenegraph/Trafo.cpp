#include "scenegraph/Trafo.h"

#include <cmath>

#include "scenegraph/GlValues.h"

namespace quillon {
namespace {

osg::Vec3d orDefault(const osg::Vec3d& v, const osg::Vec3d& fallback) { return GlFinite(v) ? v : fallback; }

// A scale factor of (next to) 0 would make the matrix singular, and the normals that lighting
// derives from its inverse infinite. It keeps its sign and shrinks the shape to all but
// nothing instead.
double invertible(double s) {
  constexpr double kSmallest = 1e-12;
  return std::abs(s) >= kSmallest ? s : std::copysign(kSmallest, s);
}

osg::Vec3d scaleFactors(const osg::Vec3d& s) {
  if (!GlFinite(s)) return osg::Vec3d(1, 1, 1);
  return osg::Vec3d(invertible(s.x()), invertible(s.y()), invertible(s.z()));
}

// The unit quaternion of the same rotation, or the identity for one that names no rotation.
osg::Quat unit(const osg::Quat& q) {
  const double length = q.length();
  if (!std::isfinite(length) || length < 1e-12) return osg::Quat();
  return q / length;
}

}  // namespace

osg::Quat QuatFromAxisAngle(double x, double y, double z, double angle) {
  const double s = std::sin(angle / 2);
  return osg::Quat(x * s, y * s, z * s, std::cos(angle / 2));
}

osg::Matrixd Trafo::getMatrix() const {
  const osg::Vec3d c = orDefault(center, osg::Vec3d());
  const osg::Quat so = unit(scaleOrientation);
  return osg::Matrixd::translate(-c) * osg::Matrixd::rotate(so.inverse()) * osg::Matrixd::scale(scaleFactors(scaling)) *
         osg::Matrixd::rotate(so) * osg::Matrixd::rotate(unit(orientation)) * osg::Matrixd::translate(c) *
         osg::Matrixd::translate(orDefault(translation, osg::Vec3d()));
}

void Trafo::setMatrix(const osg::Matrixd& m) {
  osg::Vec3d t, s;
  osg::Quat r, so;
  m.decompose(t, r, s, so);
  *this = Trafo();
  translation = t;
  orientation = r;
  scaling = s;
}

}  // namespace quillon
