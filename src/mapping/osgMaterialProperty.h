#pragma once
// The material through which a transform mapping shows the quality of its values.

#include <osg/Material>
#include <osg/Vec3f>
#include <osg/ref_ptr>

#include "mapping/IProperties.h"

namespace quillon {

/// Writes diffuse colour, emissive colour and transparency of one material, front and back.
/// The material starts light grey and opaque. A value equal to the last one written is not
/// written again, so a steady stream of good values costs nothing here.
class osgMaterialProperty final : public IMaterialProperty {
 public:
  explicit osgMaterialProperty(osg::Material* material);
  void SetDiffuseColor(float r, float g, float b) override;
  void SetEmissiveColor(float r, float g, float b) override;
  void SetTransparency(float transparency) override;

 private:
  osg::ref_ptr<osg::Material> material;
  osg::Vec3f diffuse{0.8f, 0.8f, 0.8f};
  osg::Vec3f emissive{0.0f, 0.0f, 0.0f};
  float transparency = 0.0f;
};

}  // namespace quillon
