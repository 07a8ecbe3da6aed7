#include "scenegraph/FaceCulling.h"

#include <cmath>
#include <osgUtil/CullVisitor>

namespace quillon {

// The bound is taken to eye space; its radius grows by the matrix's Frobenius norm, which no
// stretch of the model view exceeds.
bool EyeIsClearOf(const osg::BoundingSphere& bound, const osg::Matrixd& modelView, const osg::Matrixd& projection) {
  double fovy = 0, aspect = 0, zNear = 0, zFar = 0;
  if (!bound.valid() || !projection.getPerspective(fovy, aspect, zNear, zFar)) return false;
  double stretch = 0;
  for (int row = 0; row < 3; ++row)
    for (int column = 0; column < 3; ++column) stretch += modelView(row, column) * modelView(row, column);
  const double radius = static_cast<double>(bound.radius()) * std::sqrt(stretch);
  const double distance = (osg::Vec3d(bound.center()) * modelView).length();
  return distance - radius > zNear * 1.01 + 1e-6;
}

ClosedShapeCulling::ClosedShapeCulling() : cullBack(new osg::StateSet) {
  cullBack->setMode(GL_CULL_FACE, osg::StateAttribute::ON);
}

void ClosedShapeCulling::operator()(osg::Node* node, osg::NodeVisitor* visitor) {
  osgUtil::CullVisitor* cull = visitor ? visitor->asCullVisitor() : nullptr;
  const bool outside = cull && node && cull->getModelViewMatrix() && cull->getProjectionMatrix() &&
                       EyeIsClearOf(node->getBound(), *cull->getModelViewMatrix(), *cull->getProjectionMatrix());
  if (outside) cull->pushStateSet(cullBack.get());
  traverse(node, visitor);
  if (outside) cull->popStateSet();
}

}  // namespace quillon
