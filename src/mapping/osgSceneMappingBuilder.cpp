#include "mapping/osgSceneMappingBuilder.h"

#include <memory>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/Switch>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "mapping/MaterialFields.h"
#include "mapping/PropertyVisitor.h"
#include "mapping/ZrSceneMapping1D.h"
#include "mapping/ZrSceneMapping3D.h"
#include "mapping/ZrSceneMapping6D.h"
#include "mapping/osgMaterialProperty.h"
#include "mapping/osgSwitchProperties.h"
#include "mapping/osgTransformProperties.h"
#include "scenegraph/OSGSceneGraph.h"

namespace quillon {

namespace {

using MappingPtr = std::unique_ptr<ZrValueDecodingCallbackInterface>;
using TransformMappings = std::unordered_map<const osg::Node*, ZrSceneMapping*>;

// A material that a route colours keeps its own colour under the quality material of a
// mapped transform above it.
void Protect(osg::Material& material) {
  for (osg::StateSet* stateSet : material.getParents()) {
    osg::StateSet::RefAttributePair* pair = stateSet->getAttributePair(osg::StateAttribute::MATERIAL);
    if (pair && pair->first.get() == &material) pair->second |= osg::StateAttribute::PROTECTED;
  }
}

MappingPtr MaterialMapping(const RouteRecord& route, osg::Material* material) {
  const float scale = static_cast<float>(route.scale);
  if (auto colour = MakeMaterialColorProperty(route.targetFieldName, material))
    return std::make_unique<ZrSceneMapping1DSFColor>(std::move(colour), scale, route.colourMap, route.invalidColour);
  if (auto number = MakeMaterialFloatProperty(route.targetFieldName, material))
    return std::make_unique<ZrSceneMapping1DSFFloat>(std::move(number), scale);
  return nullptr;
}

// Every material in the subtree of the target (or the target's own material), gathered in
// one composite property.
MappingPtr CascadingMapping(const RouteRecord& route, const NamedObject& target) {
  osgSceneMappingBuilder_MaterialPropertyVisitor visitor(route.targetFieldName);
  if (osg::Node* node = target.node())
    node->accept(visitor);
  else
    visitor.applyStateSet(target.stateSet.get());  // a material or an appearance
  for (osg::Material* material : visitor.Materials()) Protect(*material);
  const float scale = static_cast<float>(route.scale);
  if (visitor.Colors()->Count() > 0)
    return std::make_unique<ZrSceneMapping1DSFColor>(visitor.Colors(), scale, route.colourMap, route.invalidColour);
  if (visitor.Floats()->Count() > 0) return std::make_unique<ZrSceneMapping1DSFFloat>(visitor.Floats(), scale);
  return nullptr;
}

// Where each child stands under its group, learnt once per group: a group of many mapped
// transforms would otherwise be searched again for every one of them.
class ChildSlots {
 public:
  void replace(osg::Group& parent, osg::Node& child, osg::Node& replacement) {
    if (indexed.insert(&parent).second)
      for (unsigned int i = 0; i < parent.getNumChildren(); ++i) slots.emplace(parent.getChild(i), i);
    const auto it = slots.find(&child);
    if (it == slots.end() || parent.getChild(it->second) != &child) {
      parent.replaceChild(&child, &replacement);
      return;
    }
    const unsigned int slot = it->second;
    slots.erase(it);
    parent.setChild(slot, &replacement);
    slots.emplace(&replacement, slot);
  }

 private:
  std::unordered_set<const osg::Group*> indexed;
  std::unordered_map<const osg::Node*, unsigned int> slots;
};

// Puts a new switch in the transform's place, with the transform as its only child, and a
// new quality material in the switch's state set that colours the whole subtree.
std::pair<MappingPtr, ZrSceneMapping*> TransformMapping(const RouteRecord& route, TrafoTransform& transform,
                                                        ChildSlots& slots) {
  osg::ref_ptr<osg::Switch> node = new osg::Switch;
  osg::ref_ptr<TrafoTransform> keep = &transform;
  slots.replace(*transform.getParent(0), transform, *node);
  node->addChild(&transform, true);

  osg::ref_ptr<osg::Material> material = new osg::Material;
  material->setName(kQualityMaterialName);
  node->getOrCreateStateSet()->setAttributeAndModes(
      material.get(), osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE | osg::StateAttribute::PROTECTED);

  const float scale = static_cast<float>(route.scale);
  Ref<ITranslationProperty> translation = MakeRef<osgTranslationProperty>(&transform);
  Ref<IMaterialProperty> quality = MakeRef<osgMaterialProperty>(material.get());
  if (route.channelKind == ChannelKind::Kind3D) {
    if (route.hide) {
      auto m = std::make_unique<ZrSceneMapping3DHide>(std::move(translation), scale, std::move(quality),
                                                      MakeRef<osgSwitchProperty>(node.get()));
      ZrSceneMapping* base = m.get();
      return {std::move(m), base};
    }
    auto m = std::make_unique<ZrSceneMapping3DFreeze>(std::move(translation), scale, std::move(quality));
    ZrSceneMapping* base = m.get();
    return {std::move(m), base};
  }
  Ref<IRotationProperty> rotation = MakeRef<osgRotationProperty>(&transform);
  if (route.hide) {
    auto m = std::make_unique<ZrSceneMapping6DHide>(std::move(translation), std::move(rotation), scale,
                                                    std::move(quality), MakeRef<osgSwitchProperty>(node.get()));
    ZrSceneMapping* base = m.get();
    return {std::move(m), base};
  }
  auto m =
      std::make_unique<ZrSceneMapping6DFreeze>(std::move(translation), std::move(rotation), scale, std::move(quality));
  ZrSceneMapping* base = m.get();
  return {std::move(m), base};
}

// Collects the mappings of the nearest mapped transforms below a node: the search stops at
// each, since what it observes reaches the mappings below it through its own observers.
class NearestMappedBelow final : public osg::NodeVisitor {
 public:
  NearestMappedBelow(const TransformMappings& all, const osg::Node& start)
      : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN), mapped(all), top(start) {}
  using osg::NodeVisitor::apply;
  void apply(osg::Node& node) override {
    if (&node != &top) {
      if (auto it = mapped.find(&node); it != mapped.end()) {
        found.push_back(it->second);
        return;
      }
    }
    traverse(node);
  }
  std::vector<ZrSceneMapping*> found;

 private:
  const TransformMappings& mapped;
  const osg::Node& top;
};

bool IsMaterialField(const std::string& name) {
  for (const char* field :
       {"ambientIntensity", "diffuseColor", "emissiveColor", "shininess", "specularColor", "transparency"})
    if (name == field) return true;
  return false;
}

}  // namespace

bool osgSceneMappingBuilder::build(std::vector<RouteRecord>& routes) {
  if (!holder.root()) return false;
  Bind(holder.registry(), routes);
  return true;
}

void osgSceneMappingBuilder::Bind(const osgSceneRegistry& registry, std::vector<RouteRecord>& routes) {
  TransformMappings mapped;
  std::vector<std::pair<osg::Node*, ZrSceneMapping*>> inRouteOrder;
  ChildSlots slots;
  for (RouteRecord& route : routes) {
    route.mapping.reset();
    const NamedObject* target = registry.findNamed(route.targetNodeName);
    if (!target || !target->object) continue;
    const bool oneD = route.channelKind == ChannelKind::Kind1D;

    if (route.cascading && oneD && IsMaterialField(route.targetFieldName)) {
      route.mapping = CascadingMapping(route, *target);
    } else if (target->kind == NamedKind::Material && oneD && !route.cascading) {
      auto* material = dynamic_cast<osg::Material*>(target->object.get());
      if (material && (route.mapping = MaterialMapping(route, material))) Protect(*material);
    } else if (target->kind == NamedKind::Switch && oneD) {
      auto* node = dynamic_cast<osg::Switch*>(target->object.get());
      if (node && route.targetFieldName != "whichChoice")
        route.mapping = std::make_unique<ZrSceneMapping1DSFInt32>(MakeRef<osgSwitchInt32Property>(node),
                                                                  static_cast<float>(route.scale));
    } else if (target->kind == NamedKind::Transform &&
               (route.channelKind == ChannelKind::Kind3D || route.channelKind == ChannelKind::Kind6D)) {
      // A transform used in several places, or one that a route already drives, is left alone.
      auto* transform = dynamic_cast<TrafoTransform*>(target->object.get());
      if (!transform || transform->getNumParents() != 1 || mapped.count(transform)) continue;
      auto [mapping, base] = TransformMapping(route, *transform, slots);
      route.mapping = std::move(mapping);
      mapped.emplace(transform, base);
      inRouteOrder.emplace_back(transform, base);
    }
  }

  for (const auto& [transform, mapping] : inRouteOrder) {
    NearestMappedBelow below(mapped, *transform);
    transform->accept(below);
    for (ZrSceneMapping* observer : below.found) mapping->AddObserver(observer);
  }
}

}  // namespace quillon
