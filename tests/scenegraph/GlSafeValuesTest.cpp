// Documents whose values OpenGL would refuse or choke on: the built scene holds only values
// that it accepts, while the trafo keeps what the document said.
#include <gtest/gtest.h>

#include <cmath>
#include <osg/Geode>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <string>

#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OSGSceneGraphBuilder.h"
#include "scenegraph/TrafoTransform.h"
#include "scenegraph/osgFaceSet.h"
#include "vrml/Nodes.h"

namespace quillon {
namespace {

osg::ref_ptr<osg::Group> Build(const std::string& body) {
  VRML::Group vrml;
  vrml.parse("#VRML V2.0 utf8\n" + body + "\n");
  OSGSceneGraph holder;
  osgSceneRegistry registry;
  return OSGSceneGraphBuilder(holder).buildScene(vrml, registry);
}

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
      "DEF F Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 1 1 0, nan 0 0, 3e38 0 0 ] } "
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
      "] } ");
  ASSERT_TRUE(root);
  ASSERT_EQ(root->getNumChildren(), 3u);
  const osg::Vec3d written[] = {{0, 0, 0}, {2, 0, -1}, {std::nan(""), 1, 1}};
  for (unsigned int i = 0; i < 3; ++i) {
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
}

}  // namespace
}  // namespace quillon
