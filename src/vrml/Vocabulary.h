#pragma once
// The words of the VRML97 language that the node model and the reader know.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace VRML {

/// The twenty VRML97 field types, in the order of kFieldTypeNames. Only eleven of them have value
/// classes; the others are never stored.
enum class FieldType : std::uint8_t {
  SFBool,
  SFColor,
  SFFloat,
  SFImage,
  SFInt32,
  SFNode,
  SFRotation,
  SFString,
  SFTime,
  SFVec2f,
  SFVec3f,
  MFColor,
  MFFloat,
  MFInt32,
  MFNode,
  MFRotation,
  MFString,
  MFTime,
  MFVec2f,
  MFVec3f
};

inline constexpr std::array<std::string_view, 20> kFieldTypeNames = {
    "SFBool",   "SFColor",    "SFFloat",  "SFImage", "SFInt32", "SFNode",  "SFRotation",
    "SFString", "SFTime",     "SFVec2f",  "SFVec3f", "MFColor", "MFFloat", "MFInt32",
    "MFNode",   "MFRotation", "MFString", "MFTime",  "MFVec2f", "MFVec3f"};

/// The name of a field type as the text writes it, e.g. "SFVec3f".
constexpr std::string_view fieldTypeName(FieldType type) { return kFieldTypeNames[static_cast<std::size_t>(type)]; }

/// The language's keywords, in the order of kKeywords; the last four are the field access kinds.
enum class Keyword : std::uint8_t {
  kDef,
  kUse,
  kVrml,
  kVersion,
  kEncoding,
  kTrue,
  kFalse,
  kNull,
  kField,
  kExposedField,
  kEventIn,
  kEventOut
};

inline constexpr std::array<std::string_view, 12> kKeywords = {
    "DEF", "USE", "VRML", "V2.0", "utf8", "TRUE", "FALSE", "NULL", "field", "exposedField", "eventIn", "eventOut"};

/// A keyword as the text writes it.
constexpr std::string_view keyword(Keyword word) { return kKeywords[static_cast<std::size_t>(word)]; }

}  // namespace VRML
