#pragma once
// Vectors and quaternions for the camera moves of navigation.

#include <cmath>

namespace quillon::nav {

struct Vec3 {
  double x = 0, y = 0, z = 0;
};

inline Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator*(Vec3 a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline Vec3 cross(Vec3 a, Vec3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
inline double dot(Vec3 a, Vec3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// A rotation (x, y, z, w) as the camera interface hands it out.
struct Quat {
  double x = 0, y = 0, z = 0, w = 1;
};

inline Quat operator*(Quat a, Quat b) {
  return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
          a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

/// The rotation by `angle` radians about a unit axis.
inline Quat axisAngle(Vec3 axis, double angle) {
  const double s = std::sin(angle / 2);
  return {axis.x * s, axis.y * s, axis.z * s, std::cos(angle / 2)};
}

inline Vec3 rotate(Quat q, Vec3 v) {
  // v + 2w(u × v) + 2u × (u × v), with u the vector part
  const Vec3 u{q.x, q.y, q.z};
  const Vec3 t = cross(u, v) * 2.0;
  return v + t * q.w + cross(u, t);
}

}  // namespace quillon::nav
