#include "mapping/osgTransformProperties.h"

#include <osg/Matrixf>

namespace quillon {

osgTranslationProperty::osgTranslationProperty(TrafoTransform* t) : transform(t) {
  if (transform) transform->setDataVariance(osg::Object::DYNAMIC);
}

void osgTranslationProperty::SetTranslation(float x, float y, float z) {
  if (!transform) return;
  transform->setTranslation(osg::Vec3d(static_cast<double>(x), static_cast<double>(y), static_cast<double>(z)) *
                            1000.0);
}

osgRotationProperty::osgRotationProperty(TrafoTransform* t) : transform(t) {
  if (transform) transform->setDataVariance(osg::Object::DYNAMIC);
}

void osgRotationProperty::SetRotation(const RotationMatrix& r) {
  if (!transform) return;
  // The runtime multiplies row vectors from the left, so its matrix is the transpose.
  const osg::Matrixf m(r[0], r[3], r[6], 0.0f,  //
                       r[1], r[4], r[7], 0.0f,  //
                       r[2], r[5], r[8], 0.0f,  //
                       0.0f, 0.0f, 0.0f, 1.0f);
  Trafo trafo = transform->getTrafo();
  trafo.setOrientation(m.getRotate());
  transform->setTrafo(trafo);
}

}  // namespace quillon
