#pragma once
// Node types that describe how geometry looks or where its vertices lie.

#include "vrml/Node.h"

namespace VRML {

/// The look of a Shape; only its material is modelled.
class Appearance final : public NodeOf<Appearance, grammar::kAppearance> {
 public:
  enum : std::size_t { kMaterial };

  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* material() const { return valueAt<SFNode>(kMaterial); }
};

/// Surface colours; every field stays empty until the text gives it, and the consumer
/// applies its own defaults.
class Material final : public NodeOf<Material, grammar::kMaterial> {
 public:
  enum : std::size_t { kAmbientIntensity, kDiffuseColor, kEmissiveColor, kShininess, kSpecularColor, kTransparency };

  void accept(IVRMLVisitor& visitor) const override;
  const SFFloat* ambientIntensity() const { return valueAt<SFFloat>(kAmbientIntensity); }
  const SFColor* diffuseColor() const { return valueAt<SFColor>(kDiffuseColor); }
  const SFColor* emissiveColor() const { return valueAt<SFColor>(kEmissiveColor); }
  const SFFloat* shininess() const { return valueAt<SFFloat>(kShininess); }
  const SFColor* specularColor() const { return valueAt<SFColor>(kSpecularColor); }
  const SFFloat* transparency() const { return valueAt<SFFloat>(kTransparency); }
};

/// Colours for the faces or vertices of an indexed set.
class Color final : public NodeOf<Color, grammar::kColor> {
 public:
  enum : std::size_t { kColor };

  void accept(IVRMLVisitor& visitor) const override;
  const MFColor* color() const { return valueAt<MFColor>(kColor); }
};

/// The vertices of an indexed set.
class Coordinate final : public NodeOf<Coordinate, grammar::kCoordinate> {
 public:
  enum : std::size_t { kPoint };

  void accept(IVRMLVisitor& visitor) const override;
  const MFVec3f* point() const { return valueAt<MFVec3f>(kPoint); }
};

/// Normals for the faces or vertices of an indexed face set.
class Normal final : public NodeOf<Normal, grammar::kNormal> {
 public:
  enum : std::size_t { kVector };

  void accept(IVRMLVisitor& visitor) const override;
  const MFVec3f* vector() const { return valueAt<MFVec3f>(kVector); }
};

}  // namespace VRML
