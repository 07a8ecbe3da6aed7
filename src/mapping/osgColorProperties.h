#pragma once
// Colour properties over one osg::Material, applied to front and back faces.

#include <osg/Material>
#include <osg/ref_ptr>

#include "mapping/IProperties.h"

namespace quillon {

/// Common part: holds the material and marks it dynamic.
class osgMaterialColorProperty : public IColorProperty {
 protected:
  explicit osgMaterialColorProperty(osg::Material* material);
  osg::ref_ptr<osg::Material> material;
};

/// Sets the diffuse colour; the alpha (the opacity) is kept.
class osgDiffuseColorProperty final : public osgMaterialColorProperty {
 public:
  explicit osgDiffuseColorProperty(osg::Material* m) : osgMaterialColorProperty(m) {}
  void SetColor(float r, float g, float b) override;
};

/// Sets the emissive colour.
class osgEmissiveColorProperty final : public osgMaterialColorProperty {
 public:
  explicit osgEmissiveColorProperty(osg::Material* m) : osgMaterialColorProperty(m) {}
  void SetColor(float r, float g, float b) override;
};

/// Sets the specular colour.
class osgSpecularColorProperty final : public osgMaterialColorProperty {
 public:
  explicit osgSpecularColorProperty(osg::Material* m) : osgMaterialColorProperty(m) {}
  void SetColor(float r, float g, float b) override;
};

}  // namespace quillon
