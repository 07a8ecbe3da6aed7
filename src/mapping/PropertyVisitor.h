#pragma once
// Walks a subtree and makes properties for the scene objects it meets.

#include <osg/NodeVisitor>
#include <set>
#include <string>
#include <vector>

#include "mapping/CompositeProperties.h"

namespace osg {
class Material;
class StateSet;
}  // namespace osg

namespace quillon {

/// Visits every material below (and at) the start node once, in traversal order, whether
/// it sits in a node's or a drawable's state set, switched on or not.
class PropertyVisitor : public osg::NodeVisitor {
 public:
  PropertyVisitor();
  using osg::NodeVisitor::apply;
  void apply(osg::Node& node) override;
  /// Visits the material of one state set, for a walk that starts below the nodes.
  void applyStateSet(osg::StateSet* stateSet);

 protected:
  virtual void applyMaterial(osg::Material& material) = 0;

 private:
  std::set<const osg::Material*> seen;
};

/// Makes, for each material it visits, the property of the route's target field
/// ("ambientIntensity", "diffuseColor", "emissiveColor", "shininess", "specularColor",
/// "transparency") and appends it to the matching composite. Any other field makes nothing.
/// The materials by which transform mappings show quality are passed over.
class osgSceneMappingBuilder_MaterialPropertyVisitor final : public PropertyVisitor {
 public:
  explicit osgSceneMappingBuilder_MaterialPropertyVisitor(std::string targetFieldName);

  /// Every colour property made, for a colour field; empty otherwise.
  const Ref<CompositeColorProperty>& Colors() const { return colors; }
  /// Every number property made, for a number field; empty otherwise.
  const Ref<CompositeFloatProperty>& Floats() const { return floats; }
  /// The materials that got a property, in visiting order.
  const std::vector<osg::Material*>& Materials() const { return materials; }

 protected:
  void applyMaterial(osg::Material& material) override;

 private:
  std::string fieldName;
  Ref<CompositeColorProperty> colors = MakeRef<CompositeColorProperty>();
  Ref<CompositeFloatProperty> floats = MakeRef<CompositeFloatProperty>();
  std::vector<osg::Material*> materials;
};

}  // namespace quillon
