#pragma once
// Geometry node types: the four primitives and the indexed face and line sets.

#include "vrml/Node.h"

namespace VRML {

/// An axis-aligned box centred on the origin, 2 x 2 x 2 by default.
class Box final : public NodeOf<Box, grammar::kBox> {
 public:
  enum : std::size_t { kSize };

  void accept(IVRMLVisitor& visitor) const override;
  const SFVec3f* size() const { return valueAt<SFVec3f>(kSize); }
};

/// A cone along the y axis; radius 1, height 2 and both parts drawn by default.
class Cone final : public NodeOf<Cone, grammar::kCone> {
 public:
  enum : std::size_t { kBottomRadius, kHeight, kSide, kBottom };

  void accept(IVRMLVisitor& visitor) const override;
  const SFFloat* bottomRadius() const { return valueAt<SFFloat>(kBottomRadius); }
  const SFFloat* height() const { return valueAt<SFFloat>(kHeight); }
  const SFBool* side() const { return valueAt<SFBool>(kSide); }
  const SFBool* bottom() const { return valueAt<SFBool>(kBottom); }
};

/// A cylinder along the y axis; radius 1, height 2 and all parts drawn by default.
class Cylinder final : public NodeOf<Cylinder, grammar::kCylinder> {
 public:
  enum : std::size_t { kBottom, kHeight, kRadius, kSide, kTop };

  void accept(IVRMLVisitor& visitor) const override;
  const SFBool* bottom() const { return valueAt<SFBool>(kBottom); }
  const SFFloat* height() const { return valueAt<SFFloat>(kHeight); }
  const SFFloat* radius() const { return valueAt<SFFloat>(kRadius); }
  const SFBool* side() const { return valueAt<SFBool>(kSide); }
  const SFBool* top() const { return valueAt<SFBool>(kTop); }
};

/// A sphere; an empty radius is left to the consumer's default.
class Sphere final : public NodeOf<Sphere, grammar::kSphere> {
 public:
  enum : std::size_t { kRadius };

  void accept(IVRMLVisitor& visitor) const override;
  const SFFloat* radius() const { return valueAt<SFFloat>(kRadius); }
};

/// Polygons given by indices into a Coordinate node, -1 ending each polygon.
class IndexedFaceSet final : public NodeOf<IndexedFaceSet, grammar::kIndexedFaceSet> {
 public:
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
class IndexedLineSet final : public NodeOf<IndexedLineSet, grammar::kIndexedLineSet> {
 public:
  enum : std::size_t { kColor, kCoord, kColorIndex, kColorPerVertex, kCoordIndex };

  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* color() const { return valueAt<SFNode>(kColor); }
  const SFNode* coord() const { return valueAt<SFNode>(kCoord); }
  const MFInt32* colorIndex() const { return valueAt<MFInt32>(kColorIndex); }
  const SFBool* colorPerVertex() const { return valueAt<SFBool>(kColorPerVertex); }
  const MFInt32* coordIndex() const { return valueAt<MFInt32>(kCoordIndex); }
};

}  // namespace VRML
