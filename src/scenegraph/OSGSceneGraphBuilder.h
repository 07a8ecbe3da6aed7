#pragma once
// Turns a VRML97 node tree into the OpenSceneGraph scene that the holder displays.

#include <array>
#include <deque>
#include <map>
#include <memory>
#include <osg/BlendFunc>
#include <osg/Group>
#include <osg/LightModel>
#include <unordered_set>

#include "scenegraph/FaceCulling.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/osgBuilderStates.h"
#include "scenegraph/osgSceneRegistry.h"
#include "vrml/IVRMLVisitor.h"

namespace quillon {

class OSGSceneGraph;

/// Walks the VRML tree with a stack of builder states, one for each node on the way down.
/// A state whose check refuses its node drops that node and its subtree. The new scene and
/// its registries replace the holder's only when the tree yielded at least one node.
class OSGSceneGraphBuilder final : public VRML::IVRMLVisitor, public ISGBuilder {
 public:
  explicit OSGSceneGraphBuilder(OSGSceneGraph& holder);

  bool build(const VRML::Group& root) override;

  /// Builds the scene of the tree's children under a new root, recording into `registry`.
  /// Null when nothing was built. Touches no holder.
  osg::ref_ptr<osg::Group> buildScene(const VRML::Group& root, osgSceneRegistry& registry);

  void visitTransform(const VRML::Transform& node) override;
  void visitSwitch(const VRML::Switch& node) override;
  void visitSphere(const VRML::Sphere& node) override;
  void visitShape(const VRML::Shape& node) override;
  void visitNormal(const VRML::Normal& node) override;
  void visitMaterial(const VRML::Material& node) override;
  void visitIndexedLineSet(const VRML::IndexedLineSet& node) override;
  void visitIndexedFaceSet(const VRML::IndexedFaceSet& node) override;
  void visitGroup(const VRML::Group& node) override;
  void visitCylinder(const VRML::Cylinder& node) override;
  void visitCoordinate(const VRML::Coordinate& node) override;
  void visitCone(const VRML::Cone& node) override;
  void visitColor(const VRML::Color& node) override;
  void visitBox(const VRML::Box& node) override;
  void visitAppearance(const VRML::Appearance& node) override;

 private:
  /// Pushes the state; false (with the state popped again) when its check refuses the node.
  bool enter(std::unique_ptr<IOSGBuilderState> state, const VRML::Node& node);
  IOSGBuilderState& current() { return *states.back(); }
  IOSGBuilderState& parent() { return *states[states.size() - 2]; }
  void visitChildren(const VRML::MFNode* children);
  void visitChild(const VRML::SFNode* child);
  /// Adds the current state's node to its parent's group, records its name, pops the state.
  void leaveNode(NamedKind kind, osg::StateSet* stateSet = nullptr);
  /// Hands a geometry to the enclosing Shape.
  void addToShape(osg::Geometry* geometry);
  /// The primitive of that kind and those sizes: made once per scene and shared, since
  /// nothing changes a primitive's vertices after the build.
  template <class Make>
  osg::ref_ptr<osg::Geometry> primitive(int kind, std::array<float, 5> sizes, bool closed, Make make);

  OSGSceneGraph* holder;
  std::deque<std::unique_ptr<IOSGBuilderState>> states;
  osgSceneRegistry* registry = nullptr;
  // Shared by every appearance and transparent material of one scene.
  osg::ref_ptr<osg::LightModel> twoSidedLighting;
  osg::ref_ptr<osg::BlendFunc> blend;
  std::map<std::pair<int, std::array<float, 5>>, osg::ref_ptr<osg::Geometry>> primitives;
  // The primitives that enclose their inside, and what lets their shapes cull back faces.
  std::unordered_set<const osg::Drawable*> closedPrimitives;
  osg::ref_ptr<ClosedShapeCulling> closedCulling = new ClosedShapeCulling;
};

}  // namespace quillon
