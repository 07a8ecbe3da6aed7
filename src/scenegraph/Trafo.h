#pragma once
// The five parts of a transform, kept as they were given, and the matrix they make.

#include <osg/Matrixd>
#include <osg/Quat>
#include <osg/Vec3d>

namespace quillon {

/// A transform as VRML97 defines it: translation · centre · rotation · scale orientation ·
/// scale · inverse scale orientation · inverse centre. The quaternions stay exactly as they
/// were built, unnormalised; only the matrix normalises them.
class Trafo {
 public:
  void setIdentity() { *this = Trafo(); }

  const osg::Vec3d& getCenter() const { return center; }
  const osg::Quat& getOrientation() const { return orientation; }
  const osg::Vec3d& getScaling() const { return scaling; }
  const osg::Quat& getScaleOrientation() const { return scaleOrientation; }
  const osg::Vec3d& getTranslation() const { return translation; }

  void setCenter(const osg::Vec3d& c) { center = c; }
  void setOrientation(const osg::Quat& q) { orientation = q; }
  void setScaling(const osg::Vec3d& s) { scaling = s; }
  void setScaleOrientation(const osg::Quat& q) { scaleOrientation = q; }
  void setTranslation(const osg::Vec3d& t) { translation = t; }

  /// The matrix in OpenSceneGraph's row-vector convention. A part that is not finite in single
  /// precision (or a quaternion of length 0) counts as its identity, and a scale factor of 0
  /// as a tiny one, so the matrix is always finite and invertible.
  osg::Matrixd getMatrix() const;
  /// Replaces the parts by those of the matrix: translation, rotation and scale, with the
  /// centre and the scale orientation reset.
  void setMatrix(const osg::Matrixd& m);

  bool operator==(const Trafo&) const = default;

 private:
  osg::Vec3d center{0, 0, 0};
  osg::Quat orientation{0, 0, 0, 1};
  osg::Vec3d scaling{1, 1, 1};
  osg::Quat scaleOrientation{0, 0, 0, 1};
  osg::Vec3d translation{0, 0, 0};
};

/// The quaternion (x·sin(a/2), y·sin(a/2), z·sin(a/2), cos(a/2)) of an axis and angle, the
/// axis used as given.
osg::Quat QuatFromAxisAngle(double x, double y, double z, double angle);

}  // namespace quillon
