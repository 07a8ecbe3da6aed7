#pragma once
// Geometry node types: the four primitives and the indexed face and line sets.

#include "vrml/Node.h"

namespace VRML {

/// An axis-aligned box centred on the origin, 2 x 2 x 2 by default.
class Box final : public NodeOf<Box, 1> {
 public:
  static constexpr std::string_view kTypeName = "Box";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"size"};
  enum : std::size_t { kSize };

  Box();
  void accept(IVRMLVisitor& visitor) const override;
  const SFVec3f* size() const { return valueAt<SFVec3f>(kSize); }
};

/// A cone along the y axis; radius 1, height 2 and both parts drawn by default.
class Cone final : public NodeOf<Cone, 4> {
 public:
  static constexpr std::string_view kTypeName = "Cone";
  static constexpr std::array<std::string_view, 4> kFieldNames = {"bottomRadius", "height", "side", "bottom"};
  enum : std::size_t { kBottomRadius, kHeight, kSide, kBottom };

  Cone();
  void accept(IVRMLVisitor& visitor) const override;
  const SFFloat* bottomRadius() const { return valueAt<SFFloat>(kBottomRadius); }
  const SFFloat* height() const { return valueAt<SFFloat>(kHeight); }
  const SFBool* side() const { return valueAt<SFBool>(kSide); }
  const SFBool* bottom() const { return valueAt<SFBool>(kBottom); }
};

/// A cylinder along the y axis; radius 1, height 2 and all parts drawn by default.
class Cylinder final : public NodeOf<Cylinder, 5> {
 public:
  static constexpr std::string_view kTypeName = "Cylinder";
  static constexpr std::array<std::string_view, 5> kFieldNames = {"bottom", "height", "radius", "side", "top"};
  enum : std::size_t { kBottom, kHeight, kRadius, kSide, kTop };

  Cylinder();
  void accept(IVRMLVisitor& visitor) const override;
  const SFBool* bottom() const { return valueAt<SFBool>(kBottom); }
  const SFFloat* height() const { return valueAt<SFFloat>(kHeight); }
  const SFFloat* radius() const { return valueAt<SFFloat>(kRadius); }
  const SFBool* side() const { return valueAt<SFBool>(kSide); }
  const SFBool* top() const { return valueAt<SFBool>(kTop); }
};

/// A sphere; an empty radius is left to the consumer's default.
class Sphere final : public NodeOf<Sphere, 1> {
 public:
  static constexpr std::string_view kTypeName = "Sphere";
  static constexpr std::array<std::string_view, 1> kFieldNames = {"radius"};
  enum : std::size_t { kRadius };

  void accept(IVRMLVisitor& visitor) const override;
  const SFFloat* radius() const { return valueAt<SFFloat>(kRadius); }
};

/// Polygons given by indices into a Coordinate node, -1 ending each polygon.
class IndexedFaceSet final : public NodeOf<IndexedFaceSet, 8> {
 public:
  static constexpr std::string_view kTypeName = "IndexedFaceSet";
  static constexpr std::array<std::string_view, 8> kFieldNames = {
      "color", "coord", "normal", "colorIndex", "colorPerVertex", "coordIndex", "normalIndex", "normalPerVertex"};
  enum : std::size_t {
    kColor,
    kCoord,
    kNormal,
    kColorIndex,
    kColorPerVertex,
    kCoordIndex,
    kNormalIndex,
    kNormalPerVertex
  };

  IndexedFaceSet();
  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* color() const { return valueAt<SFNode>(kColor); }
  const SFNode* coord() const { return valueAt<SFNode>(kCoord); }
  const SFNode* normal() const { return valueAt<SFNode>(kNormal); }
  const MFInt32* colorIndex() const { return valueAt<MFInt32>(kColorIndex); }
  const SFBool* colorPerVertex() const { return valueAt<SFBool>(kColorPerVertex); }
  const MFInt32* coordIndex() const { return valueAt<MFInt32>(kCoordIndex); }
  const MFInt32* normalIndex() const { return valueAt<MFInt32>(kNormalIndex); }
  const SFBool* normalPerVertex() const { return valueAt<SFBool>(kNormalPerVertex); }
};

/// Polylines given by indices into a Coordinate node, -1 ending each line.
class IndexedLineSet final : public NodeOf<IndexedLineSet, 5> {
 public:
  static constexpr std::string_view kTypeName = "IndexedLineSet";
  static constexpr std::array<std::string_view, 5> kFieldNames = {"color", "coord", "colorIndex", "colorPerVertex",
                                                                  "coordIndex"};
  enum : std::size_t { kColor, kCoord, kColorIndex, kColorPerVertex, kCoordIndex };

  IndexedLineSet();
  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* color() const { return valueAt<SFNode>(kColor); }
  const SFNode* coord() const { return valueAt<SFNode>(kCoord); }
  const MFInt32* colorIndex() const { return valueAt<MFInt32>(kColorIndex); }
  const SFBool* colorPerVertex() const { return valueAt<SFBool>(kColorPerVertex); }
  const MFInt32* coordIndex() const { return valueAt<MFInt32>(kCoordIndex); }
};

}  // namespace VRML
