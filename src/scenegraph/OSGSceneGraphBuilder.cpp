#include "scenegraph/OSGSceneGraphBuilder.h"

#include <algorithm>
#include <cmath>
#include <osg/Geode>
#include <osg/Material>
#include <osg/Switch>

#include "core/Trace.h"
#include "scenegraph/FaceCulling.h"
#include "scenegraph/GlValues.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/TrafoTransform.h"
#include "scenegraph/osgFaceSet.h"
#include "scenegraph/osgPrimitiveShapes.h"

namespace quillon {
namespace {

// The scene language is in metres, the scene graph in millimetres.
constexpr float kToScene = 1000.0f;

template <class T>
const T* given(const T* value) {
  return value && value->set ? value : nullptr;
}

float floatOr(const VRML::SFFloat* v, float fallback) { return given(v) ? v->value : fallback; }
bool boolOr(const VRML::SFBool* v, bool fallback) { return given(v) ? v->value : fallback; }
osg::Vec4 colourOr(const VRML::SFColor* v, const osg::Vec4& fallback) {
  return given(v) ? GlColour(v->value.red, v->value.green, v->value.blue, 1.0f) : fallback;
}
osg::Vec3d metres(const VRML::Vec3f& v) {
  return osg::Vec3d(static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)) *
         static_cast<double>(kToScene);
}
osg::Quat rotation(const VRML::SFRotation& r) {
  return QuatFromAxisAngle(static_cast<double>(r.x), static_cast<double>(r.y), static_cast<double>(r.z),
                           static_cast<double>(r.angle));
}
// A usable length in scene units: finite and not negative, else 0.
float length(float metresValue) { return GlLength(metresValue * kToScene); }

}  // namespace

OSGSceneGraphBuilder::OSGSceneGraphBuilder(OSGSceneGraph& h) : holder(&h) {}

bool OSGSceneGraphBuilder::build(const VRML::Group& root) {
  const std::uint32_t start = GetTickCount();
  osgSceneRegistry built;
  osg::ref_ptr<osg::Group> scene = buildScene(root, built);
  Trace("Parsing the VRML scene to OSG scene graph took %lf secs.\n", ElapsedSeconds(start, GetTickCount()));
  if (!scene) return false;
  holder->replaceScene(scene, std::move(built));
  return true;
}

osg::ref_ptr<osg::Group> OSGSceneGraphBuilder::buildScene(const VRML::Group& root, osgSceneRegistry& into) {
  registry = &into;
  twoSidedLighting = new osg::LightModel();
  twoSidedLighting->setTwoSided(true);
  twoSidedLighting->setAmbientIntensity(osg::Vec4(0.1f, 0.1f, 0.1f, 1.0f));
  blend = new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);

  osg::ref_ptr<osg::Group> scene = new osg::Group();
  states.clear();
  states.push_back(std::make_unique<osgBuilderStateNone>());
  current().setObject(scene.get());
  visitChildren(root.children());
  states.clear();
  primitives.clear();
  closedPrimitives.clear();
  registry = nullptr;
  return scene->getNumChildren() > 0 ? scene : nullptr;
}

bool OSGSceneGraphBuilder::enter(std::unique_ptr<IOSGBuilderState> state, const VRML::Node& node) {
  if (states.empty()) return false;
  if (!state->check(current())) return false;
  state->setName(node.name());
  states.push_back(std::move(state));
  return true;
}

void OSGSceneGraphBuilder::visitChildren(const VRML::MFNode* children) {
  if (!children) return;
  for (const auto& child : children->nodes)
    if (child) child->accept(*this);
}

void OSGSceneGraphBuilder::visitChild(const VRML::SFNode* child) {
  if (child && child->node) child->node->accept(*this);
}

void OSGSceneGraphBuilder::leaveNode(NamedKind kind, osg::StateSet* stateSet) {
  IOSGBuilderState& state = current();
  auto* node = dynamic_cast<osg::Node*>(state.object());
  if (node && builder_checks::isGrouping(parent())) {
    if (osg::Group* group = parent().group()) group->addChild(node);
  }
  if (!state.name().empty() && state.object()) {
    registry->addNamed({state.name(), kind, state.object(), stateSet});
    // Geometry may be shared between shapes, so only the nodes of the tree can be hidden.
    if (node && kind != NamedKind::Geometry) registry->addSwitchable(state.name(), node);
  }
  states.pop_back();
}

void OSGSceneGraphBuilder::visitGroup(const VRML::Group& node) {
  if (!enter(std::make_unique<osgBuilderStateGroup>(), node)) return;
  current().setObject(new osg::Group());
  visitChildren(node.children());
  leaveNode(NamedKind::Group);
}

void OSGSceneGraphBuilder::visitTransform(const VRML::Transform& node) {
  if (!enter(std::make_unique<osgBuilderStateTransform>(), node)) return;
  osg::ref_ptr<TrafoTransform> transform = new TrafoTransform();
  current().setObject(transform.get());
  visitChildren(node.children());

  Trafo trafo;
  trafo.setIdentity();
  if (const auto* c = given(node.center())) trafo.setCenter(metres(c->value));
  if (const auto* r = given(node.rotation())) trafo.setOrientation(rotation(*r));
  if (const auto* s = given(node.scale()))
    trafo.setScaling(
        osg::Vec3d(static_cast<double>(s->value.x), static_cast<double>(s->value.y), static_cast<double>(s->value.z)));
  if (const auto* so = given(node.scaleOrientation())) trafo.setScaleOrientation(rotation(*so));
  if (const auto* t = given(node.translation())) trafo.setTranslation(metres(t->value));
  transform->setTrafo(trafo);
  // A scale that mirrors (or flattens) turns the outside of closed shapes round.
  const osg::Vec3d& s = trafo.getScaling();
  if (!(s.x() * s.y() * s.z() > 0)) ShowBackFaces(*transform->getOrCreateStateSet());
  leaveNode(NamedKind::Transform);
}

void OSGSceneGraphBuilder::visitSwitch(const VRML::Switch& node) {
  if (!enter(std::make_unique<osgBuilderStateSwitch>(), node)) return;
  osg::ref_ptr<osg::Switch> sw = new osg::Switch();
  current().setObject(sw.get());
  // A choice that builds nothing leaves no child, so whichChoice counts only the children built.
  visitChildren(node.choice());
  const auto* which = given(node.whichChoice());
  if (which && which->value >= 0 && static_cast<unsigned int>(which->value) < sw->getNumChildren())
    sw->setSingleChildOn(static_cast<unsigned int>(which->value));
  else
    sw->setAllChildrenOff();
  leaveNode(NamedKind::Switch);
}

void OSGSceneGraphBuilder::visitShape(const VRML::Shape& node) {
  if (!enter(std::make_unique<osgBuilderStateShape>(), node)) return;
  osg::ref_ptr<osg::Geode> geode = new osg::Geode();
  current().setObject(geode.get());
  visitChild(node.appearance());
  visitChild(node.geometry());

  // Colours per vertex or face stand for the diffuse colour, as VRML97 has it.
  bool coloured = false;
  for (unsigned int i = 0; i < geode->getNumDrawables(); ++i) {
    const osg::Geometry* g = geode->getDrawable(i)->asGeometry();
    coloured = coloured || (g && g->getColorArray());
  }
  if (coloured) {
    osg::StateSet* ss = geode->getOrCreateStateSet();
    auto* material = dynamic_cast<osg::Material*>(ss->getAttribute(osg::StateAttribute::MATERIAL));
    if (!material) {
      material = new osg::Material();
      ss->setAttribute(material);
    }
    material->setColorMode(osg::Material::AMBIENT_AND_DIFFUSE);
  }
  if (geode->getNumDrawables() == 1 && closedPrimitives.contains(geode->getDrawable(0)))
    geode->addCullCallback(closedCulling.get());
  leaveNode(NamedKind::Shape, geode->getStateSet());
}

void OSGSceneGraphBuilder::visitAppearance(const VRML::Appearance& node) {
  if (!enter(std::make_unique<osgBuilderStateAppearance>(), node)) return;
  osg::ref_ptr<osg::StateSet> stateSet = new osg::StateSet();
  current().setObject(stateSet.get());
  // Both sides are lit, and only closed primitives cull, so open and inside-out surfaces
  // still show.
  LetClosedShapesCull(*stateSet);
  stateSet->setAttribute(twoSidedLighting.get());
  visitChild(node.material());
  if (auto* geode = dynamic_cast<osg::Geode*>(parent().object())) geode->setStateSet(stateSet.get());
  leaveNode(NamedKind::Appearance, stateSet.get());
}

void OSGSceneGraphBuilder::visitMaterial(const VRML::Material& node) {
  if (!enter(std::make_unique<osgBuilderStateMaterial>(), node)) return;
  osg::ref_ptr<osg::Material> material = new osg::Material();
  current().setObject(material.get());
  constexpr auto kBoth = osg::Material::FRONT_AND_BACK;
  const osg::Vec4 diffuse = colourOr(node.diffuseColor(), osg::Vec4(0.8f, 0.8f, 0.8f, 1.0f));
  const float ambientIntensity = floatOr(node.ambientIntensity(), 0.2f);
  material->setColorMode(osg::Material::OFF);
  material->setAmbient(kBoth, GlColour(diffuse.r() * ambientIntensity, diffuse.g() * ambientIntensity,
                                       diffuse.b() * ambientIntensity, 1.0f));
  material->setDiffuse(kBoth, diffuse);
  material->setEmission(kBoth, colourOr(node.emissiveColor(), osg::Vec4(0, 0, 0, 1)));
  material->setSpecular(kBoth, colourOr(node.specularColor(), osg::Vec4(0, 0, 0, 1)));
  material->setShininess(kBoth, GlSpecularExponent(floatOr(node.shininess(), 0.2f)));
  const float opacity = 1.0f - floatOr(node.transparency(), 0.0f);
  const bool transparent = opacity < 1.0f;  // false for NaN too
  material->setAlpha(kBoth, GlOpacity(opacity));

  auto* stateSet = dynamic_cast<osg::StateSet*>(parent().object());
  if (stateSet) {
    stateSet->setAttribute(material.get());
    if (transparent) {
      stateSet->setAttributeAndModes(blend.get(), osg::StateAttribute::ON);
      stateSet->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
      ShowBackFaces(*stateSet);
    }
    registry->addColourable(stateSet, material.get());
  }
  leaveNode(NamedKind::Material, stateSet);
}

void OSGSceneGraphBuilder::addToShape(osg::Geometry* geometry) {
  if (!geometry) return;
  // The geometry's own state is the shape's: the geometry is added under the shape.
  if (auto* geode = dynamic_cast<osg::Geode*>(parent().object())) geode->addDrawable(geometry);
}

template <class Make>
osg::ref_ptr<osg::Geometry> OSGSceneGraphBuilder::primitive(int kind, std::array<float, 5> sizes, bool closed,
                                                            Make make) {
  osg::ref_ptr<osg::Geometry>& geometry = primitives[{kind, sizes}];
  if (!geometry) {
    geometry = make();
    if (closed) closedPrimitives.insert(geometry.get());
  }
  return geometry;
}

void OSGSceneGraphBuilder::visitSphere(const VRML::Sphere& node) {
  if (!enter(std::make_unique<osgBuilderStateSphere>(), node)) return;
  const float radius = length(floatOr(node.radius(), 1.0f));
  osg::ref_ptr<osg::Geometry> geometry = primitive(0, {radius}, true, [&] { return MakeSphere(radius); });
  current().setObject(geometry.get());
  addToShape(geometry.get());
  leaveNode(NamedKind::Geometry);
}

void OSGSceneGraphBuilder::visitBox(const VRML::Box& node) {
  if (!enter(std::make_unique<osgBuilderStateBox>(), node)) return;
  VRML::Vec3f size{2, 2, 2};
  if (const auto* s = given(node.size())) size = s->value;
  const std::array<float, 5> sizes{length(size.x), length(size.y), length(size.z)};
  osg::ref_ptr<osg::Geometry> geometry =
      primitive(1, sizes, true, [&] { return MakeBox(sizes[0], sizes[1], sizes[2]); });
  current().setObject(geometry.get());
  addToShape(geometry.get());
  leaveNode(NamedKind::Geometry);
}

void OSGSceneGraphBuilder::visitCone(const VRML::Cone& node) {
  if (!enter(std::make_unique<osgBuilderStateCone>(), node)) return;
  const float radius = length(floatOr(node.bottomRadius(), 1.0f)), height = length(floatOr(node.height(), 2.0f));
  const bool side = boolOr(node.side(), true), bottom = boolOr(node.bottom(), true);
  osg::ref_ptr<osg::Geometry> geometry =
      primitive(2, {radius, height, side ? 1.0f : 0.0f, bottom ? 1.0f : 0.0f}, side && bottom,
                [&] { return MakeCone(radius, height, side, bottom); });
  current().setObject(geometry.get());
  addToShape(geometry.get());
  leaveNode(NamedKind::Geometry);
}

void OSGSceneGraphBuilder::visitCylinder(const VRML::Cylinder& node) {
  if (!enter(std::make_unique<osgBuilderStateCylinder>(), node)) return;
  const float radius = length(floatOr(node.radius(), 1.0f)), height = length(floatOr(node.height(), 2.0f));
  const bool side = boolOr(node.side(), true), top = boolOr(node.top(), true), bottom = boolOr(node.bottom(), true);
  osg::ref_ptr<osg::Geometry> geometry =
      primitive(3, {radius, height, side ? 1.0f : 0.0f, top ? 1.0f : 0.0f, bottom ? 1.0f : 0.0f}, side && top && bottom,
                [&] { return MakeCylinder(radius, height, side, top, bottom); });
  current().setObject(geometry.get());
  addToShape(geometry.get());
  leaveNode(NamedKind::Geometry);
}

void OSGSceneGraphBuilder::visitIndexedFaceSet(const VRML::IndexedFaceSet& node) {
  if (!enter(std::make_unique<osgBuilderStateIndexedFaceSet>(), node)) return;
  auto& state = static_cast<osgBuilderStateIndexedSet&>(current());
  visitChild(node.coord());
  visitChild(node.color());
  visitChild(node.normal());

  FaceSetInput input;
  if (state.points) input.points = state.points->values;
  if (const auto* i = given(node.coordIndex())) input.coordIndex = i->values;
  if (state.colours) input.colours = state.colours->values;
  if (const auto* i = given(node.colorIndex())) input.colourIndex = i->values;
  input.colourPerVertex = boolOr(node.colorPerVertex(), true);
  if (state.normals) input.normals = state.normals->values;
  if (const auto* i = given(node.normalIndex())) input.normalIndex = i->values;
  input.normalPerVertex = boolOr(node.normalPerVertex(), true);
  input.scale = kToScene;

  osg::ref_ptr<osg::Geometry> geometry = MakeFaceSet(input);
  current().setObject(geometry.get());
  addToShape(geometry.get());
  leaveNode(NamedKind::Geometry);
}

// Line sets are read but never drawn.
void OSGSceneGraphBuilder::visitIndexedLineSet(const VRML::IndexedLineSet&) {}

void OSGSceneGraphBuilder::visitCoordinate(const VRML::Coordinate& node) {
  if (!enter(std::make_unique<osgBuilderStateCoordinate>(), node)) return;
  static_cast<osgBuilderStateIndexedSet&>(parent()).points = given(node.point());
  states.pop_back();
}

void OSGSceneGraphBuilder::visitColor(const VRML::Color& node) {
  if (!enter(std::make_unique<osgBuilderStateColor>(), node)) return;
  static_cast<osgBuilderStateIndexedSet&>(parent()).colours = given(node.color());
  states.pop_back();
}

void OSGSceneGraphBuilder::visitNormal(const VRML::Normal& node) {
  if (!enter(std::make_unique<osgBuilderStateNormal>(), node)) return;
  static_cast<osgBuilderStateIndexedSet&>(parent()).normals = given(node.vector());
  states.pop_back();
}

}  // namespace quillon
