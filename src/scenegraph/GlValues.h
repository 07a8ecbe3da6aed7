#pragma once
// Values on their way into OpenGL, brought within what it accepts. Documents and channels may
// say anything; the node model and the trafo keep what was said, and only the copy handed to
// the runtime is bounded.

#include <algorithm>
#include <cmath>
#include <limits>
#include <osg/Vec3d>
#include <osg/Vec4>

namespace quillon {

/// The specular exponent of a VRML shininess (0..1 stands for 0..128). OpenGL refuses
/// exponents outside 0..128; one that is not a number becomes 0.
inline float GlSpecularExponent(float shininess) {
  const float exponent = shininess * 128.0f;
  return std::isnan(exponent) ? 0.0f : std::clamp(exponent, 0.0f, 128.0f);
}

/// An alpha of 0..1; an opacity that is not a number counts as opaque.
inline float GlOpacity(float opacity) { return std::isnan(opacity) ? 1.0f : std::clamp(opacity, 0.0f, 1.0f); }

/// A colour component that lighting can work with: one that is not finite becomes 0, which
/// would otherwise turn every lit pixel of the surface into NaN.
inline float GlComponent(float c) { return std::isfinite(c) ? c : 0.0f; }

inline osg::Vec4 GlColour(float r, float g, float b, float a) {
  return osg::Vec4(GlComponent(r), GlComponent(g), GlComponent(b), GlComponent(a));
}

/// A size of a primitive: finite and not negative, else 0.
inline float GlLength(float v) { return std::isfinite(v) && v > 0.0f ? v : 0.0f; }

/// Whether a position or vector is still finite once OpenGL holds it in single precision.
inline bool GlFinite(double v) { return std::abs(v) <= static_cast<double>(std::numeric_limits<float>::max()); }
inline bool GlFinite(const osg::Vec3d& v) { return GlFinite(v.x()) && GlFinite(v.y()) && GlFinite(v.z()); }

}  // namespace quillon
