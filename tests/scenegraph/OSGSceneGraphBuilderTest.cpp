// Scenes built from VRML documents: the nodes, sizes and materials they get, the values OpenGL
// would refuse or choke on kept out of them, and the holder that swaps them.
#include <gtest/gtest.h>

#include <cmath>
#include <osg/BlendFunc>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/LightModel>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/Switch>
#include <string>

#include "scenegraph/FaceCulling.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OSGSceneGraphBuilder.h"
#include "scenegraph/TrafoTransform.h"
#include "scenegraph/osgFakeCamera.h"
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

osg::ref_ptr<osg::Group> Build(const std::string& body) { return Built(body).root; }

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

TEST(OSGSceneGraphBuilder, MakesOneNodeOfEachGroupingKindWithTheTransformInMillimetres) {
  Built b(
      "DEF G Group { children [ DEF T Transform { center 0.001 0 0 rotation 0 2 0 3.14159 scale 1 2 3 translation 1 "
      "2 3 children [ DEF S Switch { choice [ DEF Sh Shape { geometry Box { size 1 1 1 } } ] whichChoice 0 } ] } ] }");
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

  // The trafo keeps the parts in millimetres, the rotation axis as written.
  const Trafo& trafo = transform->getTrafo();
  EXPECT_EQ(trafo.getTranslation(), osg::Vec3d(1000, 2000, 3000));
  EXPECT_NEAR(trafo.getCenter().x(), 1.0, 1e-4);
  EXPECT_EQ(trafo.getScaling(), osg::Vec3d(1, 2, 3));
  const osg::Quat& q = trafo.getOrientation();
  EXPECT_NEAR(osg::Vec3d(q.x(), q.y(), q.z()).length(), 2 * std::sin(3.14159 / 2), 1e-6);
  EXPECT_NEAR(q.w(), std::cos(3.14159 / 2), 1e-6);
  EXPECT_EQ(transform->getMatrix(), trafo.getMatrix());
}

TEST(OSGSceneGraphBuilder, PrimitivesHaveTheirVrmlSizes) {
  Built b(
      "DEF Ball Shape { geometry Sphere { radius 0.05 } }\n"
      "DEF Brick Shape { geometry Box { size 0.1 0.2 0.3 } }\n"
      "DEF Tip Shape { geometry Cone { bottomRadius 0.1 height 0.4 } }\n"
      "DEF Can Shape { geometry Cylinder { radius 0.2 height 0.1 } }\n");
  ASSERT_TRUE(b.root);
  // The sphere: 1600 quads of four vertices each, from the upper pole.
  const osg::Geometry* sphere = OnlyGeometry(b.named<osg::Geode>("Ball"));
  ASSERT_TRUE(sphere);
  EXPECT_EQ(sphere->getVertexArray()->getNumElements(), 6400u);
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

// Whether a shape's back faces are culled in a frame where the eye is well outside it: it
// carries the closed-shape callback, and no state on its way down (its own included) forces
// both sides over what the callback pushes below it.
bool CullsFromOutside(const osg::Geode& shape) {
  if (!dynamic_cast<const ClosedShapeCulling*>(shape.getCullCallback())) return false;
  osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
  const osg::NodePathList paths = shape.getParentalNodePaths();
  for (const osg::Node* node : paths.at(0))
    if (node->getStateSet()) state->merge(*node->getStateSet());
  osg::ref_ptr<osg::StateSet> pushed = new osg::StateSet;
  pushed->setMode(GL_CULL_FACE, osg::StateAttribute::ON);
  state->merge(*pushed);
  return (state->getMode(GL_CULL_FACE) & osg::StateAttribute::ON) != 0;
}

TEST(OSGSceneGraphBuilder, OnlyOpaqueClosedPrimitivesCullTheirBackFaces) {
  const std::string opaque = "appearance Appearance { material Material { diffuseColor 1 1 1 } } ";
  const std::string glass = "appearance Appearance { material Material { transparency 0.5 } } ";
  const std::string face =
      "geometry IndexedFaceSet { coord Coordinate { point [0 0 0, 1 0 0, 0 1 0] } coordIndex [0 1 2] }";
  struct Case {
    std::string scene;
    bool culls;
  } cases[] = {
      {"DEF X Shape { " + opaque + "geometry Sphere { radius 1 } }", true},
      {"DEF X Shape { geometry Box { size 1 1 1 } }", true},
      {"DEF X Shape { " + opaque + "geometry Cone { height 2 } }", true},
      {"DEF X Shape { " + opaque + "geometry Cylinder { height 2 } }", true},
      // Open primitives and face sets show their inside.
      {"DEF X Shape { " + opaque + "geometry Cone { bottom FALSE } }", false},
      {"DEF X Shape { " + opaque + "geometry Cylinder { top FALSE } }", false},
      {"DEF X Shape { " + opaque + face + " }", false},
      // The far side shows through a transparent surface.
      {"DEF X Shape { " + glass + "geometry Sphere { radius 1 } }", false},
      // A mirror or a flattening scale turns the outside round, even further up the tree.
      {"Transform { scale 2 1 1 children [ DEF X Shape { geometry Box { size 1 1 1 } } ] }", true},
      {"Transform { scale -1 1 1 children [ DEF X Shape { geometry Box { size 1 1 1 } } ] }", false},
      {"Transform { scale 1 0 1 children [ DEF X Shape { geometry Box { size 1 1 1 } } ] }", false},
      {"Transform { scale -1 -1 1 children [ DEF X Shape { geometry Box { size 1 1 1 } } ] }", true},
      {"Transform { scale 1 1 -1 children [ Group { children [ DEF X Shape { geometry Sphere { radius 1 } } ] } ] }",
       false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.scene);
    Built b(c.scene);
    const auto* shape = b.named<osg::Geode>("X");
    ASSERT_TRUE(shape && shape->getNumDrawables() == 1);
    EXPECT_EQ(CullsFromOutside(*shape), c.culls);
  }

  // Spheres of one radius share their tessellation, culling and all, whatever their appearance.
  Built twins("DEF X Shape { " + glass + "geometry Sphere { radius 1 } } DEF Y Shape { " + opaque +
              "geometry Sphere { radius 1 } }");
  EXPECT_EQ(OnlyGeometry(twins.named<osg::Geode>("X")), OnlyGeometry(twins.named<osg::Geode>("Y")));
  EXPECT_FALSE(CullsFromOutside(*twins.named<osg::Geode>("X")));
  EXPECT_TRUE(CullsFromOutside(*twins.named<osg::Geode>("Y")));
}

// Culling changes no pixel only while the whole shape lies beyond the near plane: from inside,
// or with its front clipped away, the back faces are what shows.
TEST(ClosedShapeCulling, OnlyWhereTheEyeIsClearOfTheShape) {
  const osg::Matrixd perspective = osg::Matrixd::perspective(30, 1, 10, 1e5);
  const double nan = std::nan("");
  struct Case {
    const char* what;
    osg::BoundingSphere bound;
    osg::Matrixd modelView, projection;
    bool clear;
  } cases[] = {
      {"far ahead", {{0, 0, -1000}, 100}, {}, perspective, true},
      {"behind the eye, far", {{0, 0, 1000}, 100}, {}, perspective, true},
      {"around the eye", {{0, 0, -50}, 100}, {}, perspective, false},
      {"front within the near distance", {{0, 0, -105}, 100}, {}, perspective, false},
      // The bound grows by the model view's Frobenius norm: √3 for a rotation.
      {"front beyond the near distance", {{0, 0, -200}, 100}, {}, perspective, true},
      {"moved away by the model view", {{0, 0, 0}, 100}, osg::Matrixd::translate(0, 0, -500), perspective, true},
      // A shape scaled by 5 is 45 across in eye space; its bound is taken larger, never smaller.
      {"scaled up to the eye", {{0, 0, -10}, 9}, osg::Matrixd::scale(5, 5, 5), perspective, false},
      {"scaled, still clear", {{0, 0, -40}, 10}, osg::Matrixd::scale(3, 3, 3), perspective, true},
      {"orthographic", {{0, 0, -1000}, 100}, {}, osg::Matrixd::ortho(-1, 1, -1, 1, 1, 100), false},
      {"not a number", {{0, 0, -1000}, 100}, osg::Matrixd::translate(nan, 0, 0), perspective, false},
      {"no bound", {}, {}, perspective, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(EyeIsClearOf(c.bound, c.modelView, c.projection), c.clear);
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

  // A scene of skipped nodes builds nothing; one of line sets, or of a face set without points,
  // nothing to draw.
  EXPECT_FALSE(Built("WorldInfo { }\nViewpoint { }").root);
  for (const char* geometry : {"IndexedLineSet { coord Coordinate { point [ 0 0 0, 1 1 1 ] } coordIndex [ 0 1 ] }",
                               "IndexedFaceSet { coord Coordinate { point [ ] } coordIndex [ 0 1 2 ] }"}) {
    Built nothing(std::string("Shape { geometry ") + geometry + " }");
    ASSERT_TRUE(nothing.root);
    EXPECT_EQ(static_cast<osg::Geode*>(nothing.root->getChild(0))->getNumDrawables(), 0u) << geometry;
  }
}

// A switch counts only the choices that were built, and shows none for a choice out of range.
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
  const std::string points = "coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0 ] } ";
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
    Built b("DEF F Shape { geometry IndexedFaceSet { " + points + c.faceSet + " } }");
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

  // Colours and normals given per face reach every corner of its triangles.
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

// Documents whose values OpenGL would refuse or choke on: the built scene holds only values
// that it accepts, while the trafo keeps what the document said.

// Every vertex of every geometry below a node, in local coordinates.
struct Vertices : osg::NodeVisitor {
  Vertices() : osg::NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
  void apply(osg::Geometry& g) override {
    if (const auto* v = dynamic_cast<const osg::Vec3Array*>(g.getVertexArray()))
      all.insert(all.end(), v->begin(), v->end());
  }
  std::vector<osg::Vec3> all;
};

bool Finite(const osg::Vec4& v) {
  return std::isfinite(v.x()) && std::isfinite(v.y()) && std::isfinite(v.z()) && std::isfinite(v.w());
}

TEST(GlSafeValues, MaterialValuesAreBoundedWhereTheyReachTheRuntime) {
  struct Case {
    const char* name;
    const char* fields;
    float exponent;
    float alpha;
    bool blends;
    osg::Vec4 diffuse;
  } cases[] = {
      {"NegativeShininess", "shininess -3", 0.0f, 1.0f, false, {0.8f, 0.8f, 0.8f, 1.0f}},
      {"HugeShininess", "shininess 5", 128.0f, 1.0f, false, {0.8f, 0.8f, 0.8f, 1.0f}},
      {"ShininessNaN", "shininess nan", 0.0f, 1.0f, false, {0.8f, 0.8f, 0.8f, 1.0f}},
      {"NegativeTransparency", "transparency -1", 25.6f, 1.0f, false, {0.8f, 0.8f, 0.8f, 1.0f}},
      {"TransparencyAboveOne", "transparency 2", 25.6f, 0.0f, true, {0.8f, 0.8f, 0.8f, 0.0f}},
      {"TransparencyNaN", "transparency nan", 25.6f, 1.0f, false, {0.8f, 0.8f, 0.8f, 1.0f}},
      {"ColourNotFinite", "diffuseColor nan 0.5 inf ambientIntensity nan", 25.6f, 1.0f, false, {0, 0.5f, 0, 1}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto root = Build(std::string("Shape { appearance Appearance { material Material { ") + c.fields +
                      " } } geometry Box { size 2 2 2 } }");
    ASSERT_TRUE(root);
    osg::StateSet* stateSet = root->getChild(0)->getStateSet();
    ASSERT_TRUE(stateSet);
    const auto* m = dynamic_cast<const osg::Material*>(stateSet->getAttribute(osg::StateAttribute::MATERIAL));
    ASSERT_TRUE(m);
    EXPECT_FLOAT_EQ(m->getShininess(osg::Material::FRONT), c.exponent);
    EXPECT_FLOAT_EQ(m->getShininess(osg::Material::BACK), c.exponent);
    EXPECT_EQ(m->getDiffuse(osg::Material::BACK), c.diffuse);
    EXPECT_FLOAT_EQ(m->getAmbient(osg::Material::FRONT).a(), c.alpha);
    for (const osg::Vec4& colour : {m->getAmbient(osg::Material::FRONT), m->getEmission(osg::Material::FRONT),
                                    m->getSpecular(osg::Material::FRONT)})
      EXPECT_TRUE(Finite(colour));
    EXPECT_EQ(stateSet->getAttribute(osg::StateAttribute::BLENDFUNC) != nullptr, c.blends);
  }
}

TEST(GlSafeValues, PrimitiveSizesAndFaceSetPointsStayFinite) {
  // 3e38 metres is a float, but not once it is millimetres.
  auto root = Build(
      "Shape { geometry Box { size nan -1 1e39 } } "
      "Shape { geometry Sphere { radius inf } } "
      "Shape { geometry Cone { bottomRadius -2 height nan } } "
      "Shape { geometry Cylinder { radius 3e38 height 1 } } "
      "DEF F Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, nan 0 0, "
      "3e38 0 0 ] } "
      "coordIndex [ 0 1 2 -1 0 1 3 -1 0 1 4 -1 ] } } ");
  ASSERT_TRUE(root);
  Vertices v;
  root->accept(v);
  ASSERT_FALSE(v.all.empty());
  for (const osg::Vec3& p : v.all) EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z()));

  // Only the face of usable points is left, and the bounds stay finite.
  const auto* faces = root->getChild(4)->asGeode()->getDrawable(0)->asGeometry();
  ASSERT_TRUE(faces);
  EXPECT_EQ(faces->getPrimitiveSet(0)->getNumIndices(), 3u);
  EXPECT_TRUE(root->getBound().valid());
  EXPECT_TRUE(std::isfinite(root->getBound().radius()));
}

TEST(GlSafeValues, DegenerateTransformsGiveInvertibleMatricesButKeepTheirTrafo) {
  auto root = Build(
      "Transform { scale 0 0 0 children [ Shape { geometry Box { size 2 2 2 } } ] } "
      "Transform { scale 2 0 -1 rotation 0 0 0 1 children [ Shape { geometry Box { size 2 2 2 } } ] } "
      "Transform { scale nan 1 1 translation 3e38 0 0 center inf 0 0 children [ Shape { geometry Box { size 2 2 2 } } "
      "] } "
      "Transform { rotation 0 1 0 nan translation 1 0 0 children [ Shape { geometry Cone { height 2 } } ] } ");
  ASSERT_TRUE(root);
  ASSERT_EQ(root->getNumChildren(), 4u);
  const osg::Vec3d written[] = {{0, 0, 0}, {2, 0, -1}, {std::nan(""), 1, 1}, {1, 1, 1}};
  for (unsigned int i = 0; i < 4; ++i) {
    SCOPED_TRACE(i);
    auto* t = dynamic_cast<TrafoTransform*>(root->getChild(i));
    ASSERT_TRUE(t);
    const osg::Vec3d kept = t->getTrafo().getScaling();
    for (int k = 0; k < 3; ++k)
      EXPECT_TRUE(kept[k] == written[i][k] || (std::isnan(kept[k]) && std::isnan(written[i][k])));
    const osg::Matrixd m = t->getMatrix();
    EXPECT_TRUE(m.valid());
    osg::Matrixd inverse;
    EXPECT_TRUE(inverse.invert(m));
    EXPECT_TRUE(inverse.valid());
  }
  // A zero axis turns nothing, a negative scale still mirrors, and the scene stays in bounds.
  auto* mirrored = static_cast<TrafoTransform*>(root->getChild(1));
  EXPECT_EQ(mirrored->getTrafo().getOrientation(), QuatFromAxisAngle(0, 0, 0, 1));
  const osg::Vec3d x = osg::Vec3d(1, 0, 0) * mirrored->getMatrix();
  EXPECT_NEAR(x.x(), 2.0, 1e-9);
  EXPECT_NEAR((osg::Vec3d(0, 0, 1) * mirrored->getMatrix()).z(), -1.0, 1e-9);
  EXPECT_TRUE(std::isfinite(root->getBound().radius()));
  EXPECT_GT(root->getBound().radius(), 0.0f);
}

bool Load(OSGSceneGraph& holder, const char* vrml) {
  VRML::Group root;
  if (root.parse(vrml) != 0) return false;
  return holder.sceneGraphBuilder()->build(root);
}

TEST(OSGSceneGraph, WithoutSceneOrWindowEveryOperationIsHarmless) {
  OSGSceneGraph holder;
  float x = 1, y = 1, z = 1, r = 1;
  holder.boundingSphere(x, y, z, r);
  EXPECT_EQ(x + y + z + r, 0.0f);
  EXPECT_NE(dynamic_cast<osgFakeCamera*>(&holder.camera()), nullptr);
  holder.setBackgroundColours(1, 0, 0, 0, 0, 1);  // no scene: ignored
  EXPECT_EQ(holder.backgroundColour(), osg::Vec4(0.3f, 0.3f, 0.5f, 1.0f));
  holder.render();
  holder.refresh(1);
  EXPECT_FALSE(holder.setSwitchChoice("A", -1));
  holder.attachToWindow(nullptr);
  EXPECT_EQ(holder.renderArea(), nullptr);

  holder.initialize();
  holder.setBackgroundColours(1, 0, 0, 0, 0, 1);
  EXPECT_EQ(holder.backgroundColour(), osg::Vec4(0.5f, 0.0f, 0.5f, 1.0f));
}

TEST(OSGSceneGraph, FailedBuildKeepsTheSceneAndItsRegistries) {
  OSGSceneGraph holder;
  holder.initialize();
  ASSERT_TRUE(
      Load(holder, "#VRML V2.0 utf8\nDEF A Transform { children [ Shape { geometry Box { size 2 2 2 } } ] }\n"));
  osg::Group* first = holder.root();
  ASSERT_TRUE(holder.registry().findNamed("A"));

  // Only a line set, and a node of a kind that is skipped: nothing to show.
  EXPECT_FALSE(Load(holder, "#VRML V2.0 utf8\nWorldInfo { }\n"));
  EXPECT_FALSE(Load(holder, "#VRML V2.0 utf8\nDEF B Material { }\n"));
  EXPECT_EQ(holder.root(), first);
  EXPECT_TRUE(holder.registry().findNamed("A"));

  ASSERT_TRUE(Load(holder, "#VRML V2.0 utf8\nDEF C Group { }\n"));
  EXPECT_NE(holder.root(), first);
  EXPECT_FALSE(holder.registry().findNamed("A"));
  EXPECT_TRUE(holder.registry().findNamed("C"));
  holder.clearRegistries();
  EXPECT_FALSE(holder.registry().findNamed("C"));
}

}  // namespace
}  // namespace quillon
