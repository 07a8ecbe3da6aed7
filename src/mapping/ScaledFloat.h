#pragma once
// Scaling a channel number into the 32-bit floats that properties take.

#include <cmath>
#include <limits>

namespace quillon {

/// Sets `out` to value × scale and returns true when the product is a finite number that a
/// float holds; NaN and infinities never reach a property.
inline bool ScaledFloat(double value, float scale, float& out) {
  const double x = value * static_cast<double>(scale);
  if (!(std::fabs(x) <= static_cast<double>(std::numeric_limits<float>::max()))) return false;
  out = static_cast<float>(x);
  return true;
}

}  // namespace quillon
