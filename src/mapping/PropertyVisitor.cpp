#include "mapping/PropertyVisitor.h"

#include <osg/Material>
#include <osg/StateSet>
#include <utility>

#include "mapping/MaterialFields.h"

namespace quillon {

PropertyVisitor::PropertyVisitor() : osg::NodeVisitor(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN) {}

void PropertyVisitor::apply(osg::Node& node) {
  applyStateSet(node.getStateSet());
  traverse(node);
}

void PropertyVisitor::applyStateSet(osg::StateSet* stateSet) {
  if (!stateSet) return;
  auto* material = dynamic_cast<osg::Material*>(stateSet->getAttribute(osg::StateAttribute::MATERIAL));
  if (material && seen.insert(material).second) applyMaterial(*material);
}

osgSceneMappingBuilder_MaterialPropertyVisitor::osgSceneMappingBuilder_MaterialPropertyVisitor(std::string name)
    : fieldName(std::move(name)) {}

void osgSceneMappingBuilder_MaterialPropertyVisitor::applyMaterial(osg::Material& material) {
  if (material.getName() == kQualityMaterialName) return;
  if (auto colour = MakeMaterialColorProperty(fieldName, &material))
    colors->Append(std::move(colour));
  else if (auto number = MakeMaterialFloatProperty(fieldName, &material))
    floats->Append(std::move(number));
  else
    return;
  materials.push_back(&material);
}

}  // namespace quillon
