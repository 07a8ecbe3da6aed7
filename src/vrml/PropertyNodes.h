#pragma once
// Node types that describe how geometry looks or where its vertices lie.

#include "vrml/Node.h"

namespace VRML {

/// The look of a Shape; only its material is modelled.
class Appearance final : public NodeOf<Appearance, 1> {
 public:
  static constexpr std::string_view kTypeName = "Appearance";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"material"};
  enum : std::size_t { kMaterial };

  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* material() const { return valueAt<SFNode>(kMaterial); }
};

/// Surface colours; every field stays empty until the text gives it, and the consumer
/// applies its own defaults.
class Material final : public NodeOf<Material, 6> {
 public:
  static constexpr std::string_view kTypeName = "Material";
  static constexpr std::array<std::string_view, 6> kFieldNames = {"ambientIntensity", "diffuseColor",  "emissiveColor",
                                                                  "shininess",        "specularColor", "transparency"};
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
class Color final : public NodeOf<Color, 1> {
 public:
  static constexpr std::string_view kTypeName = "Color";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"color"};
  enum : std::size_t { kColor };

  void accept(IVRMLVisitor& visitor) const override;
  const MFColor* color() const { return valueAt<MFColor>(kColor); }
};

/// The vertices of an indexed set.
class Coordinate final : public NodeOf<Coordinate, 1> {
 public:
  static constexpr std::string_view kTypeName = "Coordinate";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"point"};
  enum : std::size_t { kPoint };

  void accept(IVRMLVisitor& visitor) const override;
  const MFVec3f* point() const { return valueAt<MFVec3f>(kPoint); }
};

/// Normals for the faces or vertices of an indexed face set.
class Normal final : public NodeOf<Normal, 1> {
 public:
  static constexpr std::string_view kTypeName = "Normal";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"vector"};
  enum : std::size_t { kVector };

  void accept(IVRMLVisitor& visitor) const override;
  const MFVec3f* vector() const { return valueAt<MFVec3f>(kVector); }
};

}  // namespace VRML
