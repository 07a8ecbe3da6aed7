#include <gtest/gtest.h>

#include <osg/BlendFunc>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/LightModel>
#include <osg/Material>
#include <osg/Switch>
#include <string>

#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OSGSceneGraphBuilder.h"
#include "scenegraph/TrafoTransform.h"
#include "vrml/Nodes.h"

namespace quillon {
namespace {

// Builds a scene from VRML text (the header is added) without touching any holder.
struct Built {
  osg::ref_ptr<osg::Group> root;
  osgSceneRegistry registry;

  explicit Built(const std::string& body) {
    VRML::Group vrml;
    vrml.parse("#VRML V2.0 utf8\n" + body + "\n");
    OSGSceneGraph holder;
    OSGSceneGraphBuilder builder(holder);
    root = builder.buildScene(vrml, registry);
  }

  template <class T>
  T* named(const char* name) const {
    const NamedObject* entry = registry.findNamed(name);
    return entry ? dynamic_cast<T*>(entry->object.get()) : nullptr;
  }
};

osg::BoundingBox BoxOf(osg::Node& node) {
  osg::ComputeBoundsVisitor visitor;
  node.accept(visitor);
  return visitor.getBoundingBox();
}

const osg::Geometry* OnlyGeometry(const osg::Geode* geode) {
  if (!geode || geode->getNumDrawables() != 1) return nullptr;
  const osg::Drawable* drawable = geode->getDrawable(0);
  return drawable ? drawable->asGeometry() : nullptr;
}

std::size_t VertexCount(const osg::Geometry* g) {
  const osg::Array* vertices = g ? g->getVertexArray() : nullptr;
  return vertices ? vertices->getNumElements() : 0;
}

TEST(OSGSceneGraphBuilder, MakesOneNodeOfEachGroupingKindUnderTheRoot) {
  Built b(
      "DEF G Group { children [ DEF T Transform { children [ DEF S Switch { choice [ DEF Sh Shape { geometry Box { "
      "size 1 1 1 } } ] whichChoice 0 } ] } ] }");
  ASSERT_TRUE(b.root);
  ASSERT_EQ(b.root->getNumChildren(), 1u);
  auto* group = b.named<osg::Group>("G");
  auto* transform = b.named<TrafoTransform>("T");
  auto* sw = b.named<osg::Switch>("S");
  auto* shape = b.named<osg::Geode>("Sh");
  ASSERT_TRUE(group && transform && sw && shape);
  EXPECT_EQ(b.root->getChild(0), group);
  EXPECT_EQ(group->getChild(0), transform);
  EXPECT_EQ(transform->getChild(0), sw);
  EXPECT_EQ(sw->getChild(0), shape);
  EXPECT_TRUE(sw->getValue(0));
  EXPECT_EQ(b.registry.findNamed("Sh")->kind, NamedKind::Shape);
  EXPECT_EQ(b.registry.findNamed("T")->parent(), group);
  // The inner nodes are recorded first; every named grouping node can be hidden.
  EXPECT_EQ(b.registry.namedObjects().front().name, "Sh");
  EXPECT_EQ(b.registry.switchableCount(), 4u);
}

TEST(OSGSceneGraphBuilder, TransformKeepsItsPartsInMillimetres) {
  Built b("DEF T Transform { center 0.001 0 0 rotation 0 2 0 3.14159 scale 1 2 3 translation 1 2 3 }");
  auto* t = b.named<TrafoTransform>("T");
  ASSERT_TRUE(t);
  const Trafo& trafo = t->getTrafo();
  EXPECT_EQ(trafo.getTranslation(), osg::Vec3d(1000, 2000, 3000));
  EXPECT_NEAR(trafo.getCenter().x(), 1.0, 1e-4);
  EXPECT_EQ(trafo.getScaling(), osg::Vec3d(1, 2, 3));
  const osg::Quat& q = trafo.getOrientation();
  EXPECT_NEAR(osg::Vec3d(q.x(), q.y(), q.z()).length(), 2 * std::sin(3.14159 / 2), 1e-6);
  EXPECT_NEAR(q.w(), std::cos(3.14159 / 2), 1e-6);
  EXPECT_EQ(t->getMatrix(), trafo.getMatrix());
}

TEST(OSGSceneGraphBuilder, PrimitivesHaveTheirVrmlSizes) {
  Built b(
      "DEF Ball Shape { geometry Sphere { radius 0.05 } }\n"
      "DEF Brick Shape { geometry Box { size 0.1 0.2 0.3 } }\n"
      "DEF Tip Shape { geometry Cone { bottomRadius 0.1 height 0.4 } }\n"
      "DEF Can Shape { geometry Cylinder { radius 0.2 height 0.1 } }\n");
  ASSERT_TRUE(b.root);
  const osg::Geometry* sphere = OnlyGeometry(b.named<osg::Geode>("Ball"));
  EXPECT_EQ(VertexCount(sphere), 6400u);
  ASSERT_TRUE(sphere);
  EXPECT_EQ(sphere->getPrimitiveSet(0)->getMode(), GLenum(GL_QUADS));
  EXPECT_EQ(sphere->getPrimitiveSet(0)->getNumIndices(), 6400u);
  EXPECT_EQ((*static_cast<const osg::Vec3Array*>(sphere->getVertexArray()))[0], osg::Vec3(0, 50, 0));

  struct Expected {
    const char* name;
    osg::Vec3 min, max;
  } cases[] = {{"Ball", {-50, -50, -50}, {50, 50, 50}},
               {"Brick", {-50, -100, -150}, {50, 100, 150}},
               {"Tip", {-100, -200, -100}, {100, 200, 100}},
               {"Can", {-200, -50, -200}, {200, 50, 200}}};
  for (const Expected& e : cases) {
    SCOPED_TRACE(e.name);
    const osg::BoundingBox box = BoxOf(*b.named<osg::Geode>(e.name));
    for (int i = 0; i < 3; ++i) {
      EXPECT_NEAR(box._min[i], e.min[i], 0.01f);
      EXPECT_NEAR(box._max[i], e.max[i], 0.01f);
    }
  }
}

TEST(OSGSceneGraphBuilder, MaterialFollowsTheSixSteps) {
  Built b(
      "Shape { appearance DEF A Appearance { material DEF Opaque Material { diffuseColor 0.5 1 0 ambientIntensity "
      "0.5 emissiveColor 0.1 0.2 0.3 specularColor 1 1 1 shininess 0.2 transparency 0 } } geometry Box { size 1 1 1 } "
      "}\n"
      "Shape { appearance Appearance { material DEF Glass Material { transparency 0.5 } } geometry Box { size 1 1 1 } "
      "}\n");
  auto* opaque = b.named<osg::Material>("Opaque");
  auto* glass = b.named<osg::Material>("Glass");
  ASSERT_TRUE(opaque && glass);
  for (auto face : {osg::Material::FRONT, osg::Material::BACK}) {
    EXPECT_EQ(opaque->getAmbient(face), osg::Vec4(0.25f, 0.5f, 0.0f, 1.0f));
    EXPECT_EQ(opaque->getDiffuse(face), osg::Vec4(0.5f, 1.0f, 0.0f, 1.0f));
    EXPECT_EQ(opaque->getEmission(face), osg::Vec4(0.1f, 0.2f, 0.3f, 1.0f));
    EXPECT_EQ(opaque->getSpecular(face), osg::Vec4(1, 1, 1, 1));
    EXPECT_FLOAT_EQ(opaque->getShininess(face), 25.6f);
    EXPECT_FLOAT_EQ(glass->getDiffuse(face).a(), 0.5f);
    EXPECT_EQ(glass->getDiffuse(face), osg::Vec4(0.8f, 0.8f, 0.8f, 0.5f));  // the default colour
  }
  const osg::StateSet* opaqueState = b.registry.findNamed("Opaque")->stateSet.get();
  const osg::StateSet* glassState = b.registry.findNamed("Glass")->stateSet.get();
  ASSERT_TRUE(opaqueState && glassState);
  EXPECT_EQ(opaqueState->getAttribute(osg::StateAttribute::BLENDFUNC), nullptr);
  auto* blend = dynamic_cast<const osg::BlendFunc*>(glassState->getAttribute(osg::StateAttribute::BLENDFUNC));
  ASSERT_TRUE(blend);
  EXPECT_EQ(blend->getSource(), GLenum(GL_SRC_ALPHA));
  EXPECT_EQ(blend->getDestinationAlpha(), GLenum(GL_ONE_MINUS_SRC_ALPHA));
  EXPECT_EQ(glassState->getRenderingHint(), int(osg::StateSet::TRANSPARENT_BIN));
  // The appearance lights both sides and culls nothing.
  auto* lightModel = dynamic_cast<const osg::LightModel*>(opaqueState->getAttribute(osg::StateAttribute::LIGHTMODEL));
  ASSERT_TRUE(lightModel);
  EXPECT_TRUE(lightModel->getTwoSided());
  EXPECT_EQ(opaqueState->getMode(GL_CULL_FACE), osg::StateAttribute::OFF);
  EXPECT_EQ(b.registry.colourableCount(), 2u);
}

TEST(OSGSceneGraphBuilder, NodesInTheWrongPlaceAreDroppedWithTheirSubtree) {
  // A Shape inside a Shape's geometry slot, a Material as a scene child, a Coordinate outside
  // any face set: none of them may stand there; their siblings still build.
  Built b(
      "Shape { geometry Shape { geometry Box { size 1 1 1 } } }\n"
      "DEF Lost Material { }\n"
      "Coordinate { point [ 0 0 0 ] }\n"
      "DEF Kept Group { children [ WorldInfo { } DEF Inner Shape { geometry Box { size 1 1 1 } } ] }\n");
  ASSERT_TRUE(b.root);
  EXPECT_EQ(b.registry.findNamed("Lost"), nullptr);
  ASSERT_TRUE(b.named<osg::Group>("Kept"));
  EXPECT_EQ(b.named<osg::Group>("Kept")->getNumChildren(), 1u);
  EXPECT_TRUE(b.named<osg::Geode>("Inner"));
  EXPECT_EQ(b.root->getNumChildren(), 2u);  // the outer Shape, without geometry, and the Group
}

TEST(OSGSceneGraphBuilder, SceneOfSkippedNodesOrLineSetsOnlyBuildsNothingToDraw) {
  EXPECT_FALSE(Built("WorldInfo { }\nViewpoint { }").root);
  Built lines("Shape { geometry IndexedLineSet { coord Coordinate { point [ 0 0 0, 1 1 1 ] } coordIndex [ 0 1 ] } }");
  ASSERT_TRUE(lines.root);
  EXPECT_EQ(static_cast<osg::Geode*>(lines.root->getChild(0))->getNumDrawables(), 0u);
}

TEST(OSGSceneGraphBuilder, SwitchCountsOnlyTheChoicesBuilt) {
  Built b(
      "DEF S Switch { choice [ Shape { geometry Box { size 1 1 1 } } WorldInfo { } NULL USE Nowhere DEF Third Shape "
      "{ geometry Box { size 2 2 2 } } ] whichChoice 1 }\n"
      "DEF Off Switch { choice [ Shape { geometry Box { size 1 1 1 } } ] }\n"
      "DEF Past Switch { choice [ WorldInfo { } Shape { geometry Box { size 1 1 1 } } ] whichChoice 1 }\n"
      "DEF Negative Switch { choice [ Shape { geometry Box { size 1 1 1 } } ] whichChoice -5 }\n");
  auto* sw = b.named<osg::Switch>("S");
  ASSERT_TRUE(sw);
  ASSERT_EQ(sw->getNumChildren(), 2u);
  EXPECT_EQ(sw->getChild(1), b.named<osg::Geode>("Third"));
  EXPECT_FALSE(sw->getValue(0));
  EXPECT_TRUE(sw->getValue(1));
  for (const char* name : {"Off", "Past", "Negative"}) {
    auto* other = b.named<osg::Switch>(name);
    ASSERT_TRUE(other);
    ASSERT_EQ(other->getNumChildren(), 1u) << name;
    EXPECT_FALSE(other->getValue(0)) << name;
  }
}

TEST(OSGSceneGraphBuilder, FaceSetsBecomeTrianglesAndDropBadFaces) {
  struct Case {
    const char* name;
    const char* faceSet;
    unsigned int triangles;  // 0: no geometry at all
  } cases[] = {
      {"Quad", "coordIndex [ 0 1 2 3 -1 ]", 2},
      {"TwoFacesNoTrailingEnd", "coordIndex [ 0 1 2 -1 0 2 3 ]", 2},
      {"ShortFaces", "coordIndex [ 0 1 -1 2 -1 0 1 2 -1 ]", 1},
      {"OutOfRange", "coordIndex [ 0 1 9 -1 0 -5 2 -1 1 2 3 -1 ]", 1},
      {"NoIndices", "", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Built b(std::string("DEF F Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, 0 "
                        "1 0 ] } ") +
            c.faceSet + " } }");
    ASSERT_TRUE(b.root);
    const osg::Geometry* g = OnlyGeometry(b.named<osg::Geode>("F"));
    if (c.triangles == 0) {
      EXPECT_EQ(g, nullptr);
      continue;
    }
    ASSERT_TRUE(g);
    EXPECT_EQ(g->getPrimitiveSet(0)->getMode(), GLenum(GL_TRIANGLES));
    EXPECT_EQ(g->getPrimitiveSet(0)->getNumIndices(), 3 * c.triangles);
    // Generated normals face +z for this counter-clockwise square.
    const auto* normals = static_cast<const osg::Vec3Array*>(g->getNormalArray());
    ASSERT_TRUE(normals);
    EXPECT_NEAR((*normals)[2].z(), 1.0f, 1e-6f);
  }
  Built empty("Shape { geometry IndexedFaceSet { coord Coordinate { point [ ] } coordIndex [ 0 1 2 ] } }");
  ASSERT_TRUE(empty.root);
  EXPECT_EQ(static_cast<osg::Geode*>(empty.root->getChild(0))->getNumDrawables(), 0u);
}

TEST(OSGSceneGraphBuilder, FaceSetHonoursGivenColoursAndNormals) {
  const std::string points = "coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0 ] } ";
  Built perFace("DEF F Shape { geometry IndexedFaceSet { " + points +
                "color Color { color [ 1 0 0, 0 0 1 ] } colorPerVertex FALSE colorIndex [ 1 ] "
                "normal Normal { vector [ 0 0 -1 ] } normalIndex [ 0 0 0 0 -1 ] coordIndex [ 0 1 2 3 -1 ] } }");
  const osg::Geometry* g = OnlyGeometry(perFace.named<osg::Geode>("F"));
  ASSERT_TRUE(g);
  const auto* colours = static_cast<const osg::Vec4Array*>(g->getColorArray());
  const auto* normals = static_cast<const osg::Vec3Array*>(g->getNormalArray());
  ASSERT_TRUE(colours && normals);
  ASSERT_EQ(colours->size(), 6u);  // two triangles, corners of their own
  for (const osg::Vec4& c : *colours) EXPECT_EQ(c, osg::Vec4(0, 0, 1, 1));
  for (const osg::Vec3& n : *normals) EXPECT_EQ(n, osg::Vec3(0, 0, -1));

  // A colour index past the colours: the colours are ignored, the faces stay.
  Built badColours("DEF F Shape { geometry IndexedFaceSet { " + points +
                   "color Color { color [ 1 0 0 ] } coordIndex [ 0 1 2 3 -1 ] } }");
  g = OnlyGeometry(badColours.named<osg::Geode>("F"));
  ASSERT_TRUE(g);
  EXPECT_EQ(g->getColorArray(), nullptr);
  EXPECT_EQ(g->getPrimitiveSet(0)->getNumIndices(), 6u);
}

TEST(OSGSceneGraphBuilder, RegistriesSwitchAndRecolourByName) {
  Built b(
      "DEF Probe Transform { children [ Shape { appearance Appearance { material Material { diffuseColor 1 0 0 "
      "transparency 0.25 } } geometry Box { size 1 1 1 } } ] }\n"
      "DEF Sel Switch { choice [ Group { } Group { } ] whichChoice 1 }\n");
  auto* probe = b.named<TrafoTransform>("Probe");
  auto* sel = b.named<osg::Switch>("Sel");
  ASSERT_TRUE(probe && sel);
  EXPECT_FALSE(b.registry.setSwitchChoice("", -1));
  EXPECT_FALSE(b.registry.setSwitchChoice("probe", -1));
  EXPECT_TRUE(b.registry.setSwitchChoice("Probe", -1));
  EXPECT_TRUE(b.registry.setSwitchChoice("Probe", -1));
  EXPECT_EQ(probe->getNodeMask(), 0u);
  EXPECT_TRUE(b.registry.setSwitchChoice("Probe", 0));
  EXPECT_NE(probe->getNodeMask(), 0u);
  EXPECT_TRUE(b.registry.setSwitchChoice("Sel", 0));
  EXPECT_TRUE(sel->getValue(0));
  EXPECT_FALSE(sel->getValue(1));
  EXPECT_TRUE(b.registry.setSwitchChoice("Sel", -1));
  EXPECT_FALSE(sel->getValue(0));

  osg::StateSet* state = static_cast<osg::Geode*>(probe->getChild(0))->getStateSet();
  const osg::StateAttribute* original = state->getAttribute(osg::StateAttribute::MATERIAL);
  b.registry.setForegroundOverride(true, 0, 1, 0);
  auto* shown = dynamic_cast<const osg::Material*>(state->getAttribute(osg::StateAttribute::MATERIAL));
  ASSERT_TRUE(shown);
  EXPECT_NE(shown, original);
  EXPECT_EQ(shown->getDiffuse(osg::Material::FRONT), osg::Vec4(0, 1, 0, 0.75f));
  b.registry.setForegroundOverride(false, 0, 0, 0);
  EXPECT_EQ(state->getAttribute(osg::StateAttribute::MATERIAL), original);
}

}  // namespace
}  // namespace quillon
