#include "mapping/osgColorProperties.h"

#include "mapping/MaterialState.h"
#include "scenegraph/GlValues.h"

namespace quillon {

namespace {
constexpr osg::Material::Face kBothFaces = osg::Material::FRONT_AND_BACK;
}

osgMaterialColorProperty::osgMaterialColorProperty(osg::Material* m) : material(m) {
  if (material) MakeMaterialDynamic(*material);
}

void osgDiffuseColorProperty::SetColor(float r, float g, float b) {
  if (!material) return;
  material->setDiffuse(kBothFaces, GlColour(r, g, b, material->getDiffuse(osg::Material::FRONT).a()));
}

void osgEmissiveColorProperty::SetColor(float r, float g, float b) {
  if (!material) return;
  material->setEmission(kBothFaces, GlColour(r, g, b, material->getEmission(osg::Material::FRONT).a()));
}

void osgSpecularColorProperty::SetColor(float r, float g, float b) {
  if (!material) return;
  material->setSpecular(kBothFaces, GlColour(r, g, b, material->getSpecular(osg::Material::FRONT).a()));
}

}  // namespace quillon
