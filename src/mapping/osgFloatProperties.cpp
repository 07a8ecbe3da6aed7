#include "mapping/osgFloatProperties.h"

#include <algorithm>

#include "mapping/MaterialState.h"

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
  const float exponent = value * 128.0f;
  material->setShininess(kBothFaces, exponent >= 0.0f ? std::min(exponent, 128.0f) : 0.0f);
}

void osgTransparencyFloatProperty::SetValue(float value) {
  if (!material) return;
  SetMaterialOpacity(*material, 1.0f - value);
}

void osgAmbientIntensityFloatProperty::SetValue(float value) {
  if (!material) return;
  const osg::Vec4& diffuse = material->getDiffuse(osg::Material::FRONT);
  const float alpha = material->getAmbient(osg::Material::FRONT).a();
  material->setAmbient(kBothFaces, osg::Vec4(diffuse.r() * value, diffuse.g() * value, diffuse.b() * value, alpha));
}

}  // namespace quillon
