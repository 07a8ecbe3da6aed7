#pragma once
// Number properties over one osg::Material, applied to front and back faces.

#include <osg/Material>
#include <osg/ref_ptr>

#include "mapping/IProperties.h"

namespace quillon {

/// Common part: holds the material and marks it dynamic.
class osgMaterialFloatProperty : public IFloatProperty {
 protected:
  explicit osgMaterialFloatProperty(osg::Material* material);
  osg::ref_ptr<osg::Material> material;
};

/// Sets the specular exponent to value × 128 (the exponent's range is 0..128).
class osgShininessFloatProperty final : public osgMaterialFloatProperty {
 public:
  explicit osgShininessFloatProperty(osg::Material* m) : osgMaterialFloatProperty(m) {}
  void SetValue(float value) override;
};

/// Sets the opacity to 1 − value, with blending while the material is see-through.
class osgTransparencyFloatProperty final : public osgMaterialFloatProperty {
 public:
  explicit osgTransparencyFloatProperty(osg::Material* m) : osgMaterialFloatProperty(m) {}
  void SetValue(float value) override;
};

/// Sets the ambient colour to the diffuse colour of the moment × value.
class osgAmbientIntensityFloatProperty final : public osgMaterialFloatProperty {
 public:
  explicit osgAmbientIntensityFloatProperty(osg::Material* m) : osgMaterialFloatProperty(m) {}
  void SetValue(float value) override;
};

}  // namespace quillon
