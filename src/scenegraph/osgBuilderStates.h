#pragma once
// The states of the scene-graph builder: one for each VRML97 node type on the builder's stack.

#include <osg/Object>
#include <osg/ref_ptr>
#include <string>

#include "vrml/FieldValue.h"

namespace osg {
class Group;
}

namespace quillon {

/// A node being built: its kind, its DEF name, and whether it may stand under its parent.
class ISGBuilderState {
 public:
  /// The grouping states use 1 to 3 and the Appearance 4; the others follow.
  enum Kind : int {
    kNone = 0,
    kGroup = 1,
    kTransform = 2,
    kSwitch = 3,
    kAppearance = 4,
    kShape = 5,
    kMaterial = 6,
    kGeometry = 7,
    kIndexedSet = 8,
    kVertexData = 9,
  };

  explicit ISGBuilderState(Kind k) : stateKind(k) {}
  virtual ~ISGBuilderState() = default;
  Kind kind() const { return stateKind; }
  const std::string& name() const { return stateName; }
  void setName(const char* n) { stateName = n ? n : ""; }
  /// False when the node may not stand under that parent; it is then dropped with its subtree.
  virtual bool check(const ISGBuilderState& parent) const = 0;

 private:
  Kind stateKind;
  std::string stateName;
};

/// A state that keeps the scene-graph object its node made.
class IOSGBuilderState : public ISGBuilderState {
 public:
  using ISGBuilderState::ISGBuilderState;
  osg::Object* object() const { return made.get(); }
  void setObject(osg::Object* o) { made = o; }
  /// The group that children of this state are added to, or null.
  osg::Group* group() const;

 private:
  osg::ref_ptr<osg::Object> made;
};

namespace builder_checks {
inline bool isGrouping(const ISGBuilderState& p) {
  return p.kind() == ISGBuilderState::kNone || p.kind() == ISGBuilderState::kGroup ||
         p.kind() == ISGBuilderState::kTransform || p.kind() == ISGBuilderState::kSwitch;
}
}  // namespace builder_checks

/// The bottom of the stack; its object is the new scene's root group.
class osgBuilderStateNone final : public IOSGBuilderState {
 public:
  osgBuilderStateNone() : IOSGBuilderState(kNone) {}
  bool check(const ISGBuilderState&) const override { return true; }
};

/// Nodes that hang in the scene tree: under the root or another grouping node.
template <ISGBuilderState::Kind K>
class osgBuilderStateGrouping : public IOSGBuilderState {
 public:
  osgBuilderStateGrouping() : IOSGBuilderState(K) {}
  bool check(const ISGBuilderState& parent) const override { return builder_checks::isGrouping(parent); }
};

class osgBuilderStateGroup final : public osgBuilderStateGrouping<ISGBuilderState::kGroup> {};
class osgBuilderStateTransform final : public osgBuilderStateGrouping<ISGBuilderState::kTransform> {};
class osgBuilderStateSwitch final : public osgBuilderStateGrouping<ISGBuilderState::kSwitch> {};
class osgBuilderStateShape final : public osgBuilderStateGrouping<ISGBuilderState::kShape> {};

/// Nodes that only a Shape may hold: its appearance and its geometry.
template <ISGBuilderState::Kind K>
class osgBuilderStateInShape : public IOSGBuilderState {
 public:
  osgBuilderStateInShape() : IOSGBuilderState(K) {}
  bool check(const ISGBuilderState& parent) const override { return parent.kind() == kShape; }
};

class osgBuilderStateAppearance final : public osgBuilderStateInShape<ISGBuilderState::kAppearance> {};
class osgBuilderStateBox final : public osgBuilderStateInShape<ISGBuilderState::kGeometry> {};
class osgBuilderStateCone final : public osgBuilderStateInShape<ISGBuilderState::kGeometry> {};
class osgBuilderStateCylinder final : public osgBuilderStateInShape<ISGBuilderState::kGeometry> {};
class osgBuilderStateSphere final : public osgBuilderStateInShape<ISGBuilderState::kGeometry> {};

/// The indexed sets collect the values of their Coordinate, Color and Normal nodes, which
/// stay alive (in the VRML tree) for the whole build.
class osgBuilderStateIndexedSet : public osgBuilderStateInShape<ISGBuilderState::kIndexedSet> {
 public:
  const VRML::MFVec3f* points = nullptr;
  const VRML::MFColor* colours = nullptr;
  const VRML::MFVec3f* normals = nullptr;
};
class osgBuilderStateIndexedFaceSet final : public osgBuilderStateIndexedSet {};
class osgBuilderStateIndexedLineSet final : public osgBuilderStateIndexedSet {};

/// A Material belongs in an Appearance.
class osgBuilderStateMaterial final : public IOSGBuilderState {
 public:
  osgBuilderStateMaterial() : IOSGBuilderState(kMaterial) {}
  bool check(const ISGBuilderState& parent) const override { return parent.kind() == kAppearance; }
};

/// Coordinate, Color and Normal belong in an indexed set.
template <int Tag>
class osgBuilderStateVertexData : public IOSGBuilderState {
 public:
  osgBuilderStateVertexData() : IOSGBuilderState(kVertexData) {}
  bool check(const ISGBuilderState& parent) const override { return parent.kind() == kIndexedSet; }
};

class osgBuilderStateCoordinate final : public osgBuilderStateVertexData<0> {};
class osgBuilderStateColor final : public osgBuilderStateVertexData<1> {};
class osgBuilderStateNormal final : public osgBuilderStateVertexData<2> {};

}  // namespace quillon
