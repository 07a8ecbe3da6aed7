#pragma once
// The geometry of a VRML97 IndexedFaceSet: its faces as triangle fans, lit by given or
// generated normals.

#include <cstdint>
#include <osg/Geometry>
#include <osg/ref_ptr>
#include <span>

#include "vrml/FieldValue.h"

namespace quillon {

/// What an IndexedFaceSet hands over; an empty span means the field is not there.
struct FaceSetInput {
  std::span<const VRML::Vec3f> points;
  std::span<const std::int32_t> coordIndex;
  std::span<const VRML::Color3f> colours;
  std::span<const std::int32_t> colourIndex;
  bool colourPerVertex = true;
  std::span<const VRML::Vec3f> normals;
  std::span<const std::int32_t> normalIndex;
  bool normalPerVertex = true;
  float scale = 1000.0f;  // metres to scene units
};

/// Triangles of every usable face, or null when there is none. A face with fewer than three
/// indices, an index outside the points or a point that is not finite is dropped; colours or
/// normals whose indices do not fit are ignored as a whole, and missing normals are generated
/// smooth, weighted by the triangles' areas.
osg::ref_ptr<osg::Geometry> MakeFaceSet(const FaceSetInput& input);

}  // namespace quillon
