#include "mapping/osgFloatProperties.h"

#include "mapping/MaterialState.h"
#include "scenegraph/GlValues.h"

namespace quillon {

namespace {
constexpr osg::Material::Face kBothFaces = osg::Material::FRONT_AND_BACK;
}

osgMaterialFloatProperty::osgMaterialFloatProperty(osg::Material* m) : material(m) {
  if (material) MakeMaterialDynamic(*material);
}

void osgShininessFloatProperty::SetValue(float value) {
  if (!material) return;
  // The runtime would clamp too, but with a console warning for every value.
  material->setShininess(kBothFaces, GlSpecularExponent(value));
}

void osgTransparencyFloatProperty::SetValue(float value) {
  if (!material) return;
  SetMaterialOpacity(*material, 1.0f - value);
}

void osgAmbientIntensityFloatProperty::SetValue(float value) {
  if (!material) return;
  const osg::Vec4& diffuse = material->getDiffuse(osg::Material::FRONT);
  const float alpha = material->getAmbient(osg::Material::FRONT).a();
  material->setAmbient(kBothFaces, GlColour(diffuse.r() * value, diffuse.g() * value, diffuse.b() * value, alpha));
}

}  // namespace quillon
