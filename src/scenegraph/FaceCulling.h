#pragma once
// Which faces are drawn. Closed primitives (a whole box, sphere, cone or cylinder) show only
// their outside, as VRML97 has it, so their back faces are culled, but only in frames where
// that changes no pixel: the eye well outside the shape. Everything else shows both sides.
// Transparency and mirroring transforms bring the back faces back: through a transparent
// surface the far side shows, and a mirror turns the outside's winding round.

#include <osg/BoundingSphere>
#include <osg/Matrixd>
#include <osg/NodeCallback>
#include <osg/StateSet>
#include <osg/ref_ptr>

namespace quillon {

/// A cull callback for the shape of a closed primitive: culls its back faces in each frame
/// where the eye is clear of the shape by more than the near distance, so that neither the
/// inside nor a near-clipped front could show. One object serves every such shape.
class ClosedShapeCulling final : public osg::NodeCallback {
 public:
  ClosedShapeCulling();
  void operator()(osg::Node* node, osg::NodeVisitor* visitor) override;

 private:
  osg::ref_ptr<osg::StateSet> cullBack;
};

/// Whether every point within `bound` (in the shape's own space) lies further from the eye
/// than the near plane of a perspective `projection`, with room to spare; false for any other
/// projection and wherever a value is not a number.
bool EyeIsClearOf(const osg::BoundingSphere& bound, const osg::Matrixd& modelView, const osg::Matrixd& projection);

/// Draws both sides of everything in the subtree, whatever its closed shapes would cull.
inline void ShowBackFaces(osg::StateSet& subtree) {
  subtree.setMode(GL_CULL_FACE, osg::StateAttribute::OFF | osg::StateAttribute::OVERRIDE);
}

/// Both sides, except where a closed shape below culls.
inline void LetClosedShapesCull(osg::StateSet& subtree) { subtree.setMode(GL_CULL_FACE, osg::StateAttribute::OFF); }

}  // namespace quillon
