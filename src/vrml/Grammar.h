#pragma once
// The VRML97 subset as data: for each modelled node type the fields it accepts, their types and
// defaults, and the words allowed ahead of them; and the node types that are passed over. The
// node model takes its field names and defaults from here, and the reader checks a text against it.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "vrml/Vocabulary.h"

namespace VRML {

/// The access words that a node type accepts, optionally, ahead of a field.
struct AccessWords {
  bool field = false;
  bool exposedField = false;
  bool eventIn = false;
};

inline constexpr AccessWords kFieldOnly{true, false, false};
inline constexpr AccessWords kExposedFieldOnly{false, true, false};
inline constexpr AccessWords kAnyInputAccess{true, true, true};

/// What a node's constructor stores in a field: nothing, so that the slot stays empty until the
/// text gives a value, or the numbers of a value of the field's type (a boolean as 0 or 1, an
/// integer as a float that holds it exactly).
struct FieldDefault {
  bool given = false;
  std::array<float, 4> numbers{};
};

constexpr FieldDefault initially(float a, float b = 0.0f, float c = 0.0f, float d = 0.0f) {
  return {true, {a, b, c, d}};
}
inline constexpr FieldDefault kInitiallyTrue = initially(1.0f);

/// What the reader does with a field's value.
enum class FieldUse : std::uint8_t {
  kKept,       // stored in the node's field record
  kForgiving,  // stored; a value that does not read leaves the default in place
  kDiscarded,  // read so that the position stays right, then thrown away
};

/// One field that a node type accepts.
struct FieldRule {
  std::string_view name;
  FieldType type;
  FieldUse use = FieldUse::kKept;
  FieldDefault initial = {};
};

/// One modelled node type. Its kept fields come first, in the order of the node's field records,
/// then the fields that are read and thrown away.
struct NodeRule {
  constexpr NodeRule(std::string_view name, std::span<const FieldRule> accepted, AccessWords words, std::size_t limit,
                     bool single = false)
      : typeName(name),
        fields(accepted),
        keptCount(static_cast<std::size_t>(std::count_if(
            accepted.begin(), accepted.end(), [](const FieldRule& f) { return f.use != FieldUse::kDiscarded; }))),
        access(words),
        fieldLimit(limit),
        singleField(single) {}

  std::string_view typeName;
  std::span<const FieldRule> fields;
  std::size_t keptCount;
  AccessWords access;
  /// The reader stops after this many fields and passes over the rest of the body.
  std::size_t fieldLimit;
  /// The body holds exactly one field, read once; an empty body fails.
  bool singleField;
};

namespace grammar {

inline constexpr FieldRule kAppearanceFields[] = {{"material", FieldType::SFNode},
                                                  {"texture", FieldType::SFNode, FieldUse::kDiscarded},
                                                  {"textureTransform", FieldType::SFNode, FieldUse::kDiscarded}};

inline constexpr FieldRule kBoxFields[] = {{"size", FieldType::SFVec3f, FieldUse::kKept, initially(2, 2, 2)}};

inline constexpr FieldRule kColorFields[] = {{"color", FieldType::MFColor}};

// A bad radius, height or part flag of a Cone or Cylinder keeps the default.
inline constexpr FieldRule kConeFields[] = {{"bottomRadius", FieldType::SFFloat, FieldUse::kForgiving, initially(1)},
                                            {"height", FieldType::SFFloat, FieldUse::kForgiving, initially(2)},
                                            {"side", FieldType::SFBool, FieldUse::kForgiving, kInitiallyTrue},
                                            {"bottom", FieldType::SFBool, FieldUse::kForgiving, kInitiallyTrue}};

inline constexpr FieldRule kCoordinateFields[] = {{"point", FieldType::MFVec3f}};

inline constexpr FieldRule kCylinderFields[] = {{"bottom", FieldType::SFBool, FieldUse::kForgiving, kInitiallyTrue},
                                                {"height", FieldType::SFFloat, FieldUse::kForgiving, initially(2)},
                                                {"radius", FieldType::SFFloat, FieldUse::kForgiving, initially(1)},
                                                {"side", FieldType::SFBool, FieldUse::kForgiving, kInitiallyTrue},
                                                {"top", FieldType::SFBool, FieldUse::kForgiving, kInitiallyTrue}};

inline constexpr FieldRule kGroupFields[] = {{"children", FieldType::MFNode},
                                             {"bboxCenter", FieldType::SFVec3f, FieldUse::kDiscarded},
                                             {"bboxSize", FieldType::SFVec3f, FieldUse::kDiscarded},
                                             {"addChildren", FieldType::MFNode, FieldUse::kDiscarded},
                                             {"removeChildren", FieldType::MFNode, FieldUse::kDiscarded}};

inline constexpr FieldRule kIndexedFaceSetFields[] = {
    {"color", FieldType::SFNode},
    {"coord", FieldType::SFNode},
    {"normal", FieldType::SFNode},
    {"colorIndex", FieldType::MFInt32},
    {"colorPerVertex", FieldType::SFBool, FieldUse::kKept, kInitiallyTrue},
    {"coordIndex", FieldType::MFInt32},
    {"normalIndex", FieldType::MFInt32},
    {"normalPerVertex", FieldType::SFBool, FieldUse::kKept, kInitiallyTrue},
    {"texCoord", FieldType::SFNode, FieldUse::kDiscarded},
    {"texCoordIndex", FieldType::MFInt32, FieldUse::kDiscarded},
    {"ccw", FieldType::SFBool, FieldUse::kDiscarded},
    {"convex", FieldType::SFBool, FieldUse::kDiscarded},
    {"solid", FieldType::SFBool, FieldUse::kDiscarded},
    {"creaseAngle", FieldType::SFFloat, FieldUse::kDiscarded},
    {"set_colorIndex", FieldType::MFInt32, FieldUse::kDiscarded},
    {"set_coordIndex", FieldType::MFInt32, FieldUse::kDiscarded},
    {"set_normalIndex", FieldType::MFInt32, FieldUse::kDiscarded},
    {"set_texCoordIndex", FieldType::MFInt32, FieldUse::kDiscarded}};

inline constexpr FieldRule kIndexedLineSetFields[] = {
    {"color", FieldType::SFNode},
    {"coord", FieldType::SFNode},
    {"colorIndex", FieldType::MFInt32},
    {"colorPerVertex", FieldType::SFBool, FieldUse::kKept, kInitiallyTrue},
    {"coordIndex", FieldType::MFInt32},
    {"set_colorIndex", FieldType::MFInt32, FieldUse::kDiscarded},
    {"set_coordIndex", FieldType::MFInt32, FieldUse::kDiscarded}};

inline constexpr FieldRule kMaterialFields[] = {
    {"ambientIntensity", FieldType::SFFloat}, {"diffuseColor", FieldType::SFColor},
    {"emissiveColor", FieldType::SFColor},    {"shininess", FieldType::SFFloat},
    {"specularColor", FieldType::SFColor},    {"transparency", FieldType::SFFloat}};

inline constexpr FieldRule kNormalFields[] = {{"vector", FieldType::MFVec3f}};

inline constexpr FieldRule kShapeFields[] = {{"appearance", FieldType::SFNode}, {"geometry", FieldType::SFNode}};

inline constexpr FieldRule kSphereFields[] = {{"radius", FieldType::SFFloat}};

inline constexpr FieldRule kSwitchFields[] = {{"choice", FieldType::MFNode},
                                              {"whichChoice", FieldType::SFInt32, FieldUse::kKept, initially(-1)}};

inline constexpr FieldRule kTransformFields[] = {
    {"center", FieldType::SFVec3f, FieldUse::kKept, initially(0, 0, 0)},
    {"children", FieldType::MFNode},
    {"rotation", FieldType::SFRotation, FieldUse::kKept, initially(0, 0, 1, 0)},
    {"scale", FieldType::SFVec3f, FieldUse::kKept, initially(1, 1, 1)},
    {"scaleOrientation", FieldType::SFRotation, FieldUse::kKept, initially(0, 0, 1, 0)},
    {"translation", FieldType::SFVec3f},
    {"bboxCenter", FieldType::SFVec3f, FieldUse::kDiscarded},
    {"bboxSize", FieldType::SFVec3f, FieldUse::kDiscarded}};

// Field limits equal the number of accepted names, except Material's: it accepts six names but
// stops after five fields, so of a Material that gives all six the last one given is passed over
// with the rest of the body. Transform's limit of ten is never reached.
inline constexpr NodeRule kAppearance{"Appearance", kAppearanceFields, kExposedFieldOnly, 3};
inline constexpr NodeRule kBox{"Box", kBoxFields, kFieldOnly, 1, true};
inline constexpr NodeRule kColor{"Color", kColorFields, kExposedFieldOnly, 1, true};
inline constexpr NodeRule kCone{"Cone", kConeFields, kFieldOnly, 4};
inline constexpr NodeRule kCoordinate{"Coordinate", kCoordinateFields, kExposedFieldOnly, 1, true};
inline constexpr NodeRule kCylinder{"Cylinder", kCylinderFields, kFieldOnly, 5};
inline constexpr NodeRule kGroup{"Group", kGroupFields, kAnyInputAccess, 5};
inline constexpr NodeRule kIndexedFaceSet{"IndexedFaceSet", kIndexedFaceSetFields, kAnyInputAccess, 18};
inline constexpr NodeRule kIndexedLineSet{"IndexedLineSet", kIndexedLineSetFields, kAnyInputAccess, 7};
inline constexpr NodeRule kMaterial{"Material", kMaterialFields, kExposedFieldOnly, 5};
inline constexpr NodeRule kNormal{"Normal", kNormalFields, kExposedFieldOnly, 1, true};
inline constexpr NodeRule kShape{"Shape", kShapeFields, kExposedFieldOnly, 2};
inline constexpr NodeRule kSphere{"Sphere", kSphereFields, kFieldOnly, 1, true};
inline constexpr NodeRule kSwitch{"Switch", kSwitchFields, kExposedFieldOnly, 2};
inline constexpr NodeRule kTransform{"Transform", kTransformFields, kAnyInputAccess, 10};

/// VRML97 node types that the reader recognises and passes over without modelling them.
inline constexpr std::array<std::string_view, 39> kUnmodelledNodeTypes = {"Anchor",
                                                                          "AudioClip",
                                                                          "Background",
                                                                          "Billboard",
                                                                          "Collision",
                                                                          "ColorInterpolator",
                                                                          "CoordinateInterpolator",
                                                                          "CylinderSensor",
                                                                          "DirectionalLight",
                                                                          "ElevationGrid",
                                                                          "Extrusion",
                                                                          "Fog",
                                                                          "FontStyle",
                                                                          "ImageTexture",
                                                                          "Inline",
                                                                          "LOD",
                                                                          "MovieTexture",
                                                                          "NavigationInfo",
                                                                          "NormalInterpolator",
                                                                          "OrientationInterpolator",
                                                                          "PixelTexture",
                                                                          "PlaneSensor",
                                                                          "PointLight",
                                                                          "PointSet",
                                                                          "PositionInterpolator",
                                                                          "ProximitySensor",
                                                                          "ScalarInterpolator",
                                                                          "Script",
                                                                          "Sound",
                                                                          "SphereSensor",
                                                                          "SpotLight",
                                                                          "Text",
                                                                          "TextureCoordinate",
                                                                          "TextureTransform",
                                                                          "TimeSensor",
                                                                          "TouchSensor",
                                                                          "Viewpoint",
                                                                          "VisibilitySensor",
                                                                          "WorldInfo"};

/// The rules that the node model and the reader rely on: kept fields first, so that a field's
/// index is its record's; at most 32 names, since the reader marks the ones seen in 32 bits; and
/// a default wherever a bad value falls back to it, which only a boolean or a float can do.
constexpr bool wellFormed(const NodeRule& rule) {
  if (rule.fields.size() > 32) return false;
  for (std::size_t i = 0; i < rule.fields.size(); ++i) {
    const FieldRule& field = rule.fields[i];
    if ((field.use == FieldUse::kDiscarded) != (i >= rule.keptCount)) return false;
    if (field.use == FieldUse::kForgiving &&
        (!field.initial.given || (field.type != FieldType::SFBool && field.type != FieldType::SFFloat)))
      return false;
  }
  return true;
}

static_assert(wellFormed(kAppearance) && wellFormed(kBox) && wellFormed(kColor) && wellFormed(kCone) &&
              wellFormed(kCoordinate) && wellFormed(kCylinder) && wellFormed(kGroup) && wellFormed(kIndexedFaceSet) &&
              wellFormed(kIndexedLineSet) && wellFormed(kMaterial) && wellFormed(kNormal) && wellFormed(kShape) &&
              wellFormed(kSphere) && wellFormed(kSwitch) && wellFormed(kTransform));

}  // namespace grammar
}  // namespace VRML
