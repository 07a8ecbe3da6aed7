#pragma once
// The words of the VRML97 language that the node model and the reader know.

#include <array>
#include <string_view>

namespace VRML {

/// The twenty VRML97 field-type names. Only eleven of them have value classes.
inline constexpr std::array<std::string_view, 20> kFieldTypeNames = {
    "SFBool",   "SFColor",    "SFFloat",  "SFImage", "SFInt32", "SFNode",  "SFRotation",
    "SFString", "SFTime",     "SFVec2f",  "SFVec3f", "MFColor", "MFFloat", "MFInt32",
    "MFNode",   "MFRotation", "MFString", "MFTime",  "MFVec2f", "MFVec3f"};

/// The language's keywords; the last four are field access kinds.
inline constexpr std::array<std::string_view, 12> kKeywords = {
    "DEF", "USE", "VRML", "V2.0", "utf8", "TRUE", "FALSE", "NULL", "field", "exposedField", "eventIn", "eventOut"};

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

}  // namespace VRML
