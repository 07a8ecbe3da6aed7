#include "scenegraph/osgSceneRegistry.h"

#include <algorithm>
#include <osg/Switch>

#include "scenegraph/GlValues.h"

namespace quillon {

osg::Group* NamedObject::parent() const {
  osg::Node* n = node();
  return n && n->getNumParents() > 0 ? n->getParent(0) : nullptr;
}

void osgSceneRegistry::addNamed(NamedObject entry) {
  firstNamed.try_emplace(entry.name, named.size());
  named.push_back(std::move(entry));
}

void osgSceneRegistry::addSwitchable(std::string name, osg::Node* node) {
  if (node) switchables.push_back({std::move(name), node});
}

void osgSceneRegistry::addColourable(osg::StateSet* stateSet, osg::Material* material) {
  if (stateSet && material) colourables.push_back({stateSet, material, nullptr});
}

const NamedObject* osgSceneRegistry::findNamed(std::string_view name) const {
  const auto it = firstNamed.find(name);
  return it == firstNamed.end() ? nullptr : &named[it->second];
}

bool osgSceneRegistry::setSwitchChoice(std::string_view name, int choice) {
  auto it = std::find_if(switchables.begin(), switchables.end(),
                         [&](const Switchable& s) { return !s.name.empty() && s.name == name; });
  if (it == switchables.end()) return false;
  osg::Node& node = *it->node;
  node.setDataVariance(osg::Object::DYNAMIC);
  if (auto* sw = node.asSwitch()) {
    if (choice < 0)
      sw->setAllChildrenOff();
    else
      sw->setSingleChildOn(static_cast<unsigned int>(choice));
  } else {
    node.setNodeMask(choice < 0 ? 0u : ~0u);
  }
  return true;
}

void osgSceneRegistry::setForegroundOverride(bool on, float r, float g, float b) {
  for (Colourable& c : colourables) {
    c.stateSet->setDataVariance(osg::Object::DYNAMIC);
    if (!on) {
      c.override = nullptr;
      c.stateSet->setAttribute(c.material.get());
      continue;
    }
    // The override starts from the material as it is now, so its opacity and shine stay.
    c.override = new osg::Material(*c.material, osg::CopyOp::SHALLOW_COPY);
    const float alpha = c.material->getDiffuse(osg::Material::FRONT).a();
    c.override->setDiffuse(osg::Material::FRONT_AND_BACK, GlColour(r, g, b, alpha));
    c.override->setAmbient(osg::Material::FRONT_AND_BACK, GlColour(r * 0.2f, g * 0.2f, b * 0.2f, alpha));
    c.stateSet->setAttribute(c.override.get());
  }
}

void osgSceneRegistry::clear() {
  named.clear();
  firstNamed.clear();
  switchables.clear();
  colourables.clear();
}

}  // namespace quillon
