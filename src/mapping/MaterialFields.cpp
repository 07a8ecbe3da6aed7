#include "mapping/MaterialFields.h"

#include "mapping/osgColorProperties.h"
#include "mapping/osgFloatProperties.h"

namespace quillon {

// The names are compared in the order "ambientIntensity", "diffuseColor", "emissiveColor",
// "shininess", "specularColor", "transparency"; each is a distinct exact match, so splitting
// them by kind changes no outcome.
Ref<IColorProperty> MakeMaterialColorProperty(std::string_view fieldName, osg::Material* material) {
  if (fieldName == "diffuseColor") return MakeRef<osgDiffuseColorProperty>(material);
  if (fieldName == "emissiveColor") return MakeRef<osgEmissiveColorProperty>(material);
  if (fieldName == "specularColor") return MakeRef<osgSpecularColorProperty>(material);
  return {};
}

Ref<IFloatProperty> MakeMaterialFloatProperty(std::string_view fieldName, osg::Material* material) {
  if (fieldName == "ambientIntensity") return MakeRef<osgAmbientIntensityFloatProperty>(material);
  if (fieldName == "shininess") return MakeRef<osgShininessFloatProperty>(material);
  if (fieldName == "transparency") return MakeRef<osgTransparencyFloatProperty>(material);
  return {};
}

}  // namespace quillon
