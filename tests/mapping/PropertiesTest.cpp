#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <osg/BlendFunc>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/Switch>
#include <string>
#include <vector>

#include "mapping/MaterialFields.h"
#include "mapping/PropertyVisitor.h"
#include "mapping/osgColorProperties.h"
#include "mapping/osgFloatProperties.h"
#include "mapping/osgMaterialProperty.h"
#include "mapping/osgSwitchProperties.h"
#include "mapping/osgTransformProperties.h"

namespace quillon {
namespace {

// A material in a state set of its own, as the scene builder leaves it.
osg::ref_ptr<osg::StateSet> StateWith(osg::Material* material, int flags = osg::StateAttribute::ON) {
  osg::ref_ptr<osg::StateSet> stateSet = new osg::StateSet;
  stateSet->setAttributeAndModes(material, flags);
  return stateSet;
}

bool Blends(const osg::StateSet& s) {
  return s.getAttribute(osg::StateAttribute::BLENDFUNC) && (s.getMode(GL_BLEND) & osg::StateAttribute::ON) &&
         s.getRenderingHint() == osg::StateSet::TRANSPARENT_BIN;
}

TEST(MaterialProperties, ColoursReachBothFacesAndNumbersScaleAsTheFieldsDefine) {
  osg::ref_ptr<osg::Material> m = new osg::Material;
  m->setAlpha(osg::Material::FRONT_AND_BACK, 0.4f);
  MakeRef<osgDiffuseColorProperty>(m.get())->SetColor(0.1f, 0.2f, 0.3f);
  MakeRef<osgEmissiveColorProperty>(m.get())->SetColor(0.4f, 0.5f, 0.6f);
  MakeRef<osgSpecularColorProperty>(m.get())->SetColor(0.7f, 0.8f, 0.9f);
  for (auto face : {osg::Material::FRONT, osg::Material::BACK}) {
    EXPECT_EQ(m->getDiffuse(face), osg::Vec4(0.1f, 0.2f, 0.3f, 0.4f));
    EXPECT_EQ(m->getEmission(face), osg::Vec4(0.4f, 0.5f, 0.6f, 0.4f));
    EXPECT_EQ(m->getSpecular(face), osg::Vec4(0.7f, 0.8f, 0.9f, 0.4f));
  }
  EXPECT_EQ(m->getDataVariance(), osg::Object::DYNAMIC);

  // Numbers scale as the fields define them.
  m = new osg::Material;
  m->setDiffuse(osg::Material::FRONT_AND_BACK, osg::Vec4(0.5f, 0.6f, 0.8f, 1.0f));
  auto shininess = MakeRef<osgShininessFloatProperty>(m.get());
  shininess->SetValue(1.0f);
  EXPECT_FLOAT_EQ(m->getShininess(osg::Material::BACK), 128.0f);
  shininess->SetValue(3.0f);  // beyond the exponent's range
  EXPECT_FLOAT_EQ(m->getShininess(osg::Material::FRONT), 128.0f);
  shininess->SetValue(-1.0f);
  EXPECT_FLOAT_EQ(m->getShininess(osg::Material::FRONT), 0.0f);

  MakeRef<osgAmbientIntensityFloatProperty>(m.get())->SetValue(0.5f);
  EXPECT_EQ(m->getAmbient(osg::Material::BACK), osg::Vec4(0.25f, 0.3f, 0.4f, m->getAmbient(osg::Material::BACK).a()));
}

TEST(MaterialProperties, TransparencyKeepsBlendingRightBothWays) {
  osg::ref_ptr<osg::Material> m = new osg::Material;
  auto stateSet = StateWith(m.get());
  auto transparency = MakeRef<osgTransparencyFloatProperty>(m.get());
  EXPECT_EQ(stateSet->getDataVariance(), osg::Object::DYNAMIC);

  transparency->SetValue(0.25f);
  EXPECT_FLOAT_EQ(m->getDiffuse(osg::Material::FRONT).a(), 0.75f);
  EXPECT_FLOAT_EQ(m->getDiffuse(osg::Material::BACK).a(), 0.75f);
  ASSERT_TRUE(Blends(*stateSet));
  // Through a transparent surface the back faces show, even those of closed primitives below.
  EXPECT_EQ(stateSet->getMode(GL_CULL_FACE), osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
  auto* blend = dynamic_cast<osg::BlendFunc*>(stateSet->getAttribute(osg::StateAttribute::BLENDFUNC));
  ASSERT_NE(blend, nullptr);
  EXPECT_EQ(blend->getDestinationAlpha(), static_cast<GLenum>(GL_ONE_MINUS_SRC_ALPHA));
  EXPECT_EQ(blend->getSourceAlpha(), static_cast<GLenum>(GL_ONE));

  transparency->SetValue(0.0f);
  EXPECT_FLOAT_EQ(m->getDiffuse(osg::Material::FRONT).a(), 1.0f);
  EXPECT_FALSE(stateSet->getAttribute(osg::StateAttribute::BLENDFUNC));
  EXPECT_EQ(stateSet->getMode(GL_BLEND), osg::StateAttribute::INHERIT);
  EXPECT_EQ(stateSet->getRenderingHint(), osg::StateSet::DEFAULT_BIN);
  EXPECT_EQ(stateSet->getMode(GL_CULL_FACE), osg::StateAttribute::OFF);

  transparency->SetValue(7.0f);  // an opacity below 0 is clamped
  EXPECT_FLOAT_EQ(m->getDiffuse(osg::Material::FRONT).a(), 0.0f);
}

// Channels may carry anything; what reaches the material is still a value OpenGL takes.
TEST(MaterialProperties, ValuesThatAreNotNumbersNeverReachTheMaterial) {
  const float nan = std::nanf(""), inf = std::numeric_limits<float>::infinity();
  osg::ref_ptr<osg::Material> m = new osg::Material;
  auto stateSet = StateWith(m.get());
  MakeRef<osgShininessFloatProperty>(m.get())->SetValue(nan);
  EXPECT_FLOAT_EQ(m->getShininess(osg::Material::FRONT), 0.0f);
  MakeRef<osgTransparencyFloatProperty>(m.get())->SetValue(nan);
  EXPECT_FLOAT_EQ(m->getDiffuse(osg::Material::FRONT).a(), 1.0f);
  EXPECT_FALSE(Blends(*stateSet));
  MakeRef<osgDiffuseColorProperty>(m.get())->SetColor(nan, 0.5f, inf);
  EXPECT_EQ(m->getDiffuse(osg::Material::BACK), osg::Vec4(0, 0.5f, 0, 1));
  MakeRef<osgAmbientIntensityFloatProperty>(m.get())->SetValue(nan);
  EXPECT_EQ(m->getAmbient(osg::Material::BACK), osg::Vec4(0, 0, 0, m->getAmbient(osg::Material::BACK).a()));
  auto quality = MakeRef<osgMaterialProperty>(m.get());
  quality->SetEmissiveColor(-inf, nan, 1);
  quality->SetTransparency(nan);
  EXPECT_EQ(m->getEmission(osg::Material::FRONT), osg::Vec4(0, 0, 1, 1));
}

TEST(MaterialProperties, QualityMaterialStartsGreyAndBlendsItsWholeSubtree) {
  osg::ref_ptr<osg::Material> m = new osg::Material;
  const int flags = osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE | osg::StateAttribute::PROTECTED;
  auto stateSet = StateWith(m.get(), flags);
  auto property = MakeRef<osgMaterialProperty>(m.get());
  EXPECT_EQ(m->getDiffuse(osg::Material::FRONT), osg::Vec4(0.8f, 0.8f, 0.8f, 1.0f));

  property->SetDiffuseColor(1, 0, 0);
  property->SetEmissiveColor(0.25f, 0, 0);
  property->SetTransparency(0.5f);
  EXPECT_EQ(m->getDiffuse(osg::Material::BACK), osg::Vec4(1, 0, 0, 0.5f));
  EXPECT_EQ(m->getEmission(osg::Material::BACK), osg::Vec4(0.25f, 0, 0, 0.5f));
  ASSERT_TRUE(Blends(*stateSet));
  EXPECT_TRUE(stateSet->getMode(GL_BLEND) & osg::StateAttribute::OVERRIDE);
  property->SetTransparency(0.0f);
  EXPECT_FALSE(stateSet->getAttribute(osg::StateAttribute::BLENDFUNC));
}

osg::ref_ptr<osg::Switch> ThreeChildren() {
  osg::ref_ptr<osg::Switch> node = new osg::Switch;
  for (int i = 0; i < 3; ++i) node->addChild(new osg::Group);
  return node;
}

std::vector<bool> Shown(const osg::Switch& node) {
  std::vector<bool> shown;
  for (unsigned i = 0; i < node.getNumChildren(); ++i) shown.push_back(node.getValue(i));
  return shown;
}

TEST(SwitchProperties, ChoiceShowsOneChildOrNone) {
  auto node = ThreeChildren();
  auto property = MakeRef<osgSwitchInt32Property>(node.get());
  EXPECT_EQ(Shown(*node), (std::vector<bool>{false, false, false}));  // inactive from the start
  EXPECT_EQ(node->getDataVariance(), osg::Object::DYNAMIC);
  property->SetValue(1);
  EXPECT_EQ(Shown(*node), (std::vector<bool>{false, true, false}));
  for (int choice : {-1, 3, -7, INT_MAX, INT_MIN}) {
    property->SetValue(1);
    property->SetValue(choice);
    EXPECT_EQ(Shown(*node), (std::vector<bool>{false, false, false})) << choice;
    EXPECT_LE(node->getValueList().size(), 3u) << choice;
  }

  auto single = ThreeChildren();
  auto hide = MakeRef<osgSwitchProperty>(single.get());
  hide->SetChoice(osgSwitchProperty::kHide);
  EXPECT_EQ(Shown(*single), (std::vector<bool>{false, false, false}));
  hide->SetChoice(osgSwitchProperty::kShow);
  EXPECT_EQ(Shown(*single), (std::vector<bool>{true, false, false}));
}

TEST(TransformProperties, TranslationIsInMetresAndRotationTakesTheValuesMatrix) {
  osg::ref_ptr<TrafoTransform> transform = new TrafoTransform;
  Trafo trafo;
  trafo.setCenter(osg::Vec3d(5, 0, 0));
  trafo.setOrientation(QuatFromAxisAngle(0, 0, 1, osg::PI_2));
  transform->setTrafo(trafo);

  MakeRef<osgTranslationProperty>(transform.get())->SetTranslation(0.001f, 0.0f, 0.002f);
  EXPECT_EQ(transform->getDataVariance(), osg::Object::DYNAMIC);
  EXPECT_NEAR(transform->getTrafo().getTranslation().x(), 1.0, 1e-6);
  EXPECT_NEAR(transform->getTrafo().getTranslation().z(), 2.0, 1e-6);
  EXPECT_EQ(transform->getTrafo().getCenter(), osg::Vec3d(5, 0, 0));
  // The centre (5, 0, 0) stays where it is under the rotation; the translation adds to it.
  const osg::Vec3d centre = osg::Vec3d(5, 0, 0) * transform->getMatrix();
  EXPECT_NEAR((centre - osg::Vec3d(6, 0, 2)).length(), 0.0, 1e-5);

  // A quarter turn about z, column-vector convention: x goes to y.
  osg::ref_ptr<TrafoTransform> turned = new TrafoTransform;
  trafo = Trafo();
  trafo.setTranslation(osg::Vec3d(10, 0, 0));
  turned->setTrafo(trafo);
  MakeRef<osgRotationProperty>(turned.get())->SetRotation({0, -1, 0, 1, 0, 0, 0, 0, 1});
  const osg::Vec3d p = osg::Vec3d(1, 0, 0) * turned->getMatrix();
  EXPECT_NEAR((p - osg::Vec3d(10, 1, 0)).length(), 0.0, 1e-6);
}

// The visitor's composites forward to every member, in list order, and hold them: the colour set
// below reaches materials whose properties nothing else keeps.
TEST(MaterialPropertyVisitor, ReachesEveryMaterialBelowOnceButNotQualityMaterials) {
  osg::ref_ptr<osg::Group> root = new osg::Group;
  osg::ref_ptr<osg::Material> shared = new osg::Material, own = new osg::Material, quality = new osg::Material;
  quality->setName(kQualityMaterialName);
  osg::ref_ptr<osg::Geode> g1 = new osg::Geode, g2 = new osg::Geode;
  osg::ref_ptr<osg::Geometry> drawable = new osg::Geometry;
  g1->setStateSet(StateWith(shared.get()));
  g2->setStateSet(StateWith(shared.get()));  // the same material used twice
  drawable->setStateSet(StateWith(own.get()));
  g2->addDrawable(drawable.get());
  osg::ref_ptr<osg::Switch> hidden = new osg::Switch;  // switched-off children count too
  hidden->addChild(g2.get(), false);
  root->addChild(g1.get());
  root->addChild(hidden.get());
  root->setStateSet(StateWith(quality.get()));

  const struct {
    const char* field;
    std::size_t colours, floats;
  } cases[] = {{"diffuseColor", 2, 0},     {"specularColor", 2, 0}, {"transparency", 0, 2},
               {"ambientIntensity", 0, 2}, {"whichChoice", 0, 0},   {"", 0, 0}};
  for (const auto& c : cases) {
    osgSceneMappingBuilder_MaterialPropertyVisitor visitor(c.field);
    root->accept(visitor);
    EXPECT_EQ(visitor.Colors()->Count(), c.colours) << c.field;
    EXPECT_EQ(visitor.Floats()->Count(), c.floats) << c.field;
  }
  osgSceneMappingBuilder_MaterialPropertyVisitor visitor("emissiveColor");
  root->accept(visitor);
  visitor.Colors()->SetColor(0.5f, 0.5f, 0.5f);
  EXPECT_EQ(own->getEmission(osg::Material::FRONT).r(), 0.5f);
  EXPECT_EQ(shared->getEmission(osg::Material::FRONT).r(), 0.5f);
  EXPECT_NE(quality->getEmission(osg::Material::FRONT).r(), 0.5f);
}

}  // namespace
}  // namespace quillon
