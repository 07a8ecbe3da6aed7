#pragma once
// Node types that hold other nodes: Group, Switch, Transform and Shape.

#include <string>

#include "vrml/Node.h"

namespace VRML {

/// A list of children. The root of a parsed scene is a Group.
class Group final : public NodeOf<Group, grammar::kGroup> {
 public:
  enum : std::size_t { kChildren };

  void accept(IVRMLVisitor& visitor) const override;
  const MFNode* children() const { return valueAt<MFNode>(kChildren); }

  /// Nesting limit of the reader: a node nested deeper than this fails the read.
  static constexpr int kMaxDepth = 1000;

  /// Reads a VRML97 scene into this group's `children` (made empty first when it has no value).
  /// `text` must be NUL-terminated; nothing past the first NUL is read, so a text may end
  /// anywhere, even right on a closing brace. Returns 0 when `children` ended up with at least one
  /// entry (empty entries, left by skipped or failed nodes, included), 1 otherwise, e.g. for a
  /// bad header. A read that fails part way keeps what was read before the failure.
  int parse(const char* text);
  int parse(const std::string& text) { return parse(text.c_str()); }
};

/// Shows one of its choices, or none when whichChoice is out of range (-1 by default).
class Switch final : public NodeOf<Switch, grammar::kSwitch> {
 public:
  enum : std::size_t { kChoice, kWhichChoice };

  void accept(IVRMLVisitor& visitor) const override;
  const MFNode* choice() const { return valueAt<MFNode>(kChoice); }
  const SFInt32* whichChoice() const { return valueAt<SFInt32>(kWhichChoice); }
};

/// A coordinate system for its children. An empty translation means no translation.
class Transform final : public NodeOf<Transform, grammar::kTransform> {
 public:
  enum : std::size_t { kCenter, kChildren, kRotation, kScale, kScaleOrientation, kTranslation };

  void accept(IVRMLVisitor& visitor) const override;
  const SFVec3f* center() const { return valueAt<SFVec3f>(kCenter); }
  const MFNode* children() const { return valueAt<MFNode>(kChildren); }
  const SFRotation* rotation() const { return valueAt<SFRotation>(kRotation); }
  const SFVec3f* scale() const { return valueAt<SFVec3f>(kScale); }
  const SFRotation* scaleOrientation() const { return valueAt<SFRotation>(kScaleOrientation); }
  const SFVec3f* translation() const { return valueAt<SFVec3f>(kTranslation); }
};

/// A geometry with its appearance.
class Shape final : public NodeOf<Shape, grammar::kShape> {
 public:
  enum : std::size_t { kAppearance, kGeometry };

  void accept(IVRMLVisitor& visitor) const override;
  const SFNode* appearance() const { return valueAt<SFNode>(kAppearance); }
  const SFNode* geometry() const { return valueAt<SFNode>(kGeometry); }
};

}  // namespace VRML
