#pragma once
// Properties that move and turn one transform node of the scene.

#include <osg/ref_ptr>

#include "mapping/IProperties.h"
#include "scenegraph/TrafoTransform.h"

namespace quillon {

/// Sets the transform's translation from metres: the scene is in millimetres, so each
/// component is multiplied by 1000. The other parts of the trafo stay as they are.
class osgTranslationProperty final : public ITranslationProperty {
 public:
  explicit osgTranslationProperty(TrafoTransform* transform);
  void SetTranslation(float x, float y, float z) override;

 private:
  osg::ref_ptr<TrafoTransform> transform;
};

/// Sets the transform's rotation from a rotation matrix. The other parts of the trafo stay.
class osgRotationProperty final : public IRotationProperty {
 public:
  explicit osgRotationProperty(TrafoTransform* transform);
  void SetRotation(const RotationMatrix& rotation) override;

 private:
  osg::ref_ptr<TrafoTransform> transform;
};

}  // namespace quillon
