#pragma once
// The property interfaces: each writes one kind of value into one field of a scene object.

#include <array>
#include <cstdint>

#include "mapping/Property.h"

namespace quillon {

/// Writes a colour.
class IColorProperty : public Property {
 public:
  virtual void SetColor(float r, float g, float b) = 0;
};

/// Writes one number.
class IFloatProperty : public Property {
 public:
  virtual void SetValue(float value) = 0;
};

/// Writes one integer.
class IInt32Property : public Property {
 public:
  virtual void SetValue(std::int32_t value) = 0;
};

/// Writes a translation given in metres.
class ITranslationProperty : public Property {
 public:
  virtual void SetTranslation(float x, float y, float z) = 0;
};

/// A 3 × 3 rotation row by row: element (row, column) at row × 3 + column. It maps a point of
/// the child frame into the parent frame as a column vector, the way a 6D value holds it.
using RotationMatrix = std::array<float, 9>;

/// Writes a rotation taken from a 6D value.
class IRotationProperty : public Property {
 public:
  virtual void SetRotation(const RotationMatrix& rotation) = 0;
};

/// Shows or hides the children of a switch.
class ISwitchProperty : public Property {
 public:
  /// The index of the child to show; any other number shows none.
  virtual void SetChoice(std::int32_t choice) = 0;
};

/// Writes the colours and transparency by which a mapping shows a value's quality.
class IMaterialProperty : public Property {
 public:
  virtual void SetDiffuseColor(float r, float g, float b) = 0;
  virtual void SetEmissiveColor(float r, float g, float b) = 0;
  virtual void SetTransparency(float transparency) = 0;
};

}  // namespace quillon
