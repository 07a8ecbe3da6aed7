#include "mapping/osgMaterialProperty.h"

#include "mapping/MaterialState.h"
#include "scenegraph/GlValues.h"

namespace quillon {

namespace {
constexpr osg::Material::Face kBothFaces = osg::Material::FRONT_AND_BACK;
}

osgMaterialProperty::osgMaterialProperty(osg::Material* m) : material(m) {
  if (!material) return;
  MakeMaterialDynamic(*material);
  const float alpha = material->getDiffuse(osg::Material::FRONT).a();
  material->setDiffuse(kBothFaces, osg::Vec4(diffuse, alpha));
  emissive =
      osg::Vec3f(material->getEmission(osg::Material::FRONT).r(), material->getEmission(osg::Material::FRONT).g(),
                 material->getEmission(osg::Material::FRONT).b());
  transparency = 1.0f - alpha;
}

void osgMaterialProperty::SetDiffuseColor(float r, float g, float b) {
  const osg::Vec3f colour(r, g, b);
  if (!material || colour == diffuse) return;
  diffuse = colour;
  material->setDiffuse(kBothFaces, GlColour(r, g, b, material->getDiffuse(osg::Material::FRONT).a()));
}

void osgMaterialProperty::SetEmissiveColor(float r, float g, float b) {
  const osg::Vec3f colour(r, g, b);
  if (!material || colour == emissive) return;
  emissive = colour;
  material->setEmission(kBothFaces, GlColour(r, g, b, material->getEmission(osg::Material::FRONT).a()));
}

void osgMaterialProperty::SetTransparency(float t) {
  if (!material || t == transparency) return;
  transparency = t;
  SetMaterialOpacity(*material, 1.0f - t);
}

}  // namespace quillon
