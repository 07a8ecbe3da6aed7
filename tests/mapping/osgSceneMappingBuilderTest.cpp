#include <gtest/gtest.h>

#include <osg/Geode>
#include <osg/Material>
#include <osg/Switch>
#include <vector>

#include "channels/ZrValue1D.h"
#include "mapping/MaterialFields.h"
#include "mapping/ZrSceneMapping1D.h"
#include "mapping/ZrSceneMapping3D.h"
#include "mapping/ZrSceneMapping6D.h"
#include "mapping/osgSceneMappingBuilder.h"
#include "scenegraph/TrafoTransform.h"
#include "scenegraph/osgSceneRegistry.h"

namespace quillon {
namespace {

// root ─ Base (transform) ─┬ shape with material "Paint"
//      │                   └ Link (transform) ─ shape with its own material
//      ├ Gripper (switch of two)
//      └ Twice (transform used in two places)
struct Scene {
  Scene() {
    paint->setName("paint");
    base->addChild(Shape(paint.get()));
    base->addChild(link.get());
    link->addChild(Shape(new osg::Material));
    root->addChild(base.get());
    gripper->addChild(new osg::Group);
    gripper->addChild(new osg::Group);
    root->addChild(gripper.get());
    root->addChild(twice.get());
    base->addChild(twice.get());
    registry.addNamed({"Base", NamedKind::Transform, base.get(), nullptr});
    registry.addNamed({"Link", NamedKind::Transform, link.get(), nullptr});
    registry.addNamed({"Twice", NamedKind::Transform, twice.get(), nullptr});
    registry.addNamed({"Gripper", NamedKind::Switch, gripper.get(), nullptr});
    registry.addNamed({"Paint", NamedKind::Material, paint.get(), paint->getParent(0)});
  }
  static osg::Geode* Shape(osg::Material* material) {
    auto* geode = new osg::Geode;
    geode->getOrCreateStateSet()->setAttribute(material);
    return geode;
  }
  osg::ref_ptr<osg::Group> root = new osg::Group;
  osg::ref_ptr<TrafoTransform> base = new TrafoTransform, link = new TrafoTransform, twice = new TrafoTransform;
  osg::ref_ptr<osg::Switch> gripper = new osg::Switch;
  osg::ref_ptr<osg::Material> paint = new osg::Material;
  osgSceneRegistry registry;
};

RouteRecord Route(const char* node, const char* field, ChannelKind kind, bool hide = false, bool cascading = false) {
  RouteRecord route;
  route.targetNodeName = node;
  route.targetFieldName = field;
  route.channelKind = kind;
  route.hide = hide;
  route.cascading = cascading;
  route.colourMap = FltMatrix(1, 3, 0.5);
  route.invalidColour = FltMatrix(1, 3, 0.0);
  return route;
}

template <class T>
bool Is(const RouteRecord& route) {
  return dynamic_cast<const T*>(route.mapping.get()) != nullptr;
}

TEST(SceneMappingBuilder, BindsByTheKindOfTheNamedNode) {
  using K = ChannelKind;
  const struct {
    const char *node, *field;
    ChannelKind kind;
    bool hide, cascading;
    bool (*bound)(const RouteRecord&);  // null: left unbound
  } cases[] = {
      {"Paint", "diffuseColor", K::Kind1D, false, false, &Is<ZrSceneMapping1DSFColor>},
      {"Paint", "transparency", K::Kind1D, false, false, &Is<ZrSceneMapping1DSFFloat>},
      {"Paint", "diffuseColor", K::Kind3D, false, false, nullptr},  // wrong kind
      {"Paint", "radius", K::Kind1D, false, false, nullptr},        // no such field
      {"Gripper", "", K::Kind1D, false, false, &Is<ZrSceneMapping1DSFInt32>},
      {"Gripper", "whichChoice", K::Kind1D, false, false, nullptr},  // by design
      {"Base", "", K::Kind3D, false, false, &Is<ZrSceneMapping3DFreeze>},
      {"Link", "", K::Kind6D, true, false, &Is<ZrSceneMapping6DHide>},
      {"Base", "", K::Kind6D, false, false, nullptr},   // already driven
      {"Twice", "", K::Kind3D, false, false, nullptr},  // used in two places
      {"Base", "translation", K::Kind1D, false, false, nullptr},
      {"Nowhere", "diffuseColor", K::Kind1D, false, false, nullptr},
      {"Gripper", "", K::KindTime, false, false, nullptr},
      {"Base", "emissiveColor", K::Kind1D, false, true, &Is<ZrSceneMapping1DSFColor>},  // cascade
      {"Base", "whichChoice", K::Kind1D, false, true, nullptr},                         // cascade, no material field
  };
  Scene scene;
  std::vector<RouteRecord> routes;
  for (const auto& c : cases) routes.push_back(Route(c.node, c.field, c.kind, c.hide, c.cascading));
  osgSceneMappingBuilder::Bind(scene.registry, routes);
  for (std::size_t i = 0; i < routes.size(); ++i)
    EXPECT_EQ(cases[i].bound ? cases[i].bound(routes[i]) : !routes[i].mapping, true) << i;
  // The switch route made the switch show nothing until its first value.
  EXPECT_FALSE(scene.gripper->getValue(0) || scene.gripper->getValue(1));
}

TEST(SceneMappingBuilder, MappedTransformGetsOneSwitchAndAQualityMaterial) {
  Scene scene;
  std::vector<RouteRecord> routes;
  routes.push_back(Route("Base", "", ChannelKind::Kind3D));
  routes.push_back(Route("Paint", "diffuseColor", ChannelKind::Kind1D));
  osgSceneMappingBuilder::Bind(scene.registry, routes);

  ASSERT_EQ(scene.root->getNumChildren(), 3u);  // siblings keep their places
  auto* inserted = dynamic_cast<osg::Switch*>(scene.root->getChild(0));
  ASSERT_NE(inserted, nullptr);
  EXPECT_EQ(scene.root->getChild(1), scene.gripper.get());
  ASSERT_EQ(inserted->getNumChildren(), 1u);
  EXPECT_EQ(inserted->getChild(0), scene.base.get());
  EXPECT_TRUE(inserted->getValue(0));
  ASSERT_EQ(scene.base->getNumParents(), 1u);

  auto* quality = dynamic_cast<osg::Material*>(inserted->getStateSet()->getAttribute(osg::StateAttribute::MATERIAL));
  ASSERT_NE(quality, nullptr);
  EXPECT_EQ(quality->getName(), kQualityMaterialName);

  // A routed material below keeps its own colour: it is protected from the quality material.
  const auto* pair = scene.paint->getParent(0)->getAttributePair(osg::StateAttribute::MATERIAL);
  ASSERT_NE(pair, nullptr);
  EXPECT_TRUE(pair->second & osg::StateAttribute::PROTECTED);
  ZrValue1D colour;
  colour.SetValue(0.3);
  colour.SetQuality(0);
  dynamic_cast<ZrSceneMapping1DSFColor&>(*routes[1].mapping).ValueDecoded(&colour);
  EXPECT_EQ(scene.paint->getDiffuse(osg::Material::BACK), osg::Vec4(0.5f, 0.5f, 0.5f, 1.0f));
}

TEST(SceneMappingBuilder, TransformsBelowObserveTheOnesAbove) {
  Scene scene;
  osg::ref_ptr<TrafoTransform> tip = new TrafoTransform;
  scene.link->addChild(tip.get());
  scene.registry.addNamed({"Tip", NamedKind::Transform, tip.get(), nullptr});
  std::vector<RouteRecord> routes;
  routes.push_back(Route("Tip", "", ChannelKind::Kind3D));  // listed first: the order of routes does not matter
  routes.push_back(Route("Base", "", ChannelKind::Kind3D));
  routes.push_back(Route("Link", "", ChannelKind::Kind3D));
  osgSceneMappingBuilder::Bind(scene.registry, routes);
  auto& tipMapping = dynamic_cast<ZrSceneMapping3D&>(*routes[0].mapping);
  auto& baseMapping = dynamic_cast<ZrSceneMapping3D&>(*routes[1].mapping);
  auto& linkMapping = dynamic_cast<ZrSceneMapping3D&>(*routes[2].mapping);
  // Each mapping links only the nearest mapped transforms below; the tip hears of the base
  // through the link (what a link carries is pinned by the mapping tests).
  EXPECT_EQ(baseMapping.GetObservers(), std::vector<ZrSceneMapping*>{&linkMapping});
  EXPECT_EQ(linkMapping.GetObservers(), std::vector<ZrSceneMapping*>{&tipMapping});
  EXPECT_TRUE(tipMapping.GetObservers().empty());
}

}  // namespace
}  // namespace quillon
