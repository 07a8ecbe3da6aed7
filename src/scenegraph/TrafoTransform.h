#pragma once
// The scene's transform node: a matrix transform that remembers the trafo it was made from.

#include <osg/MatrixTransform>

#include "scenegraph/GlValues.h"
#include "scenegraph/Trafo.h"

namespace quillon {

/// A MatrixTransform whose matrix always follows its trafo. Changes go through setTrafo, so
/// that the parts (and the unnormalised quaternion) survive a read-modify-write.
class TrafoTransform : public osg::MatrixTransform {
 public:
  TrafoTransform();
  TrafoTransform(const TrafoTransform& other, const osg::CopyOp& copyop = osg::CopyOp::SHALLOW_COPY)
      : osg::MatrixTransform(other, copyop), trafo(other.trafo), translationOffset(other.translationOffset) {}
  // What META_Node would give, less an accept() of its own: visitors see a MatrixTransform.
  osg::Object* cloneType() const override { return new TrafoTransform(); }
  osg::Object* clone(const osg::CopyOp& copyop) const override { return new TrafoTransform(*this, copyop); }
  bool isSameKindAs(const osg::Object* obj) const override { return dynamic_cast<const TrafoTransform*>(obj); }
  const char* libraryName() const override { return "quillon"; }
  const char* className() const override { return "TrafoTransform"; }

  const Trafo& getTrafo() const { return trafo; }
  void setTrafo(const Trafo& t) {
    trafo = t;
    const osg::Matrixd m = trafo.getMatrix();
    // The matrix leaves out a translation that is not finite, and so must the offset, or the
    // next move would carry its infinity into the matrix.
    const osg::Vec3d& translation = trafo.getTranslation();
    translationOffset = m.getTrans() - (GlFinite(translation) ? translation : osg::Vec3d());
    setMatrix(m);
  }
  /// Moves the transform without rebuilding its matrix: the translation enters the matrix
  /// only as an offset, so a stream of positions costs one vector addition each.
  void setTranslation(const osg::Vec3d& t) {
    trafo.setTranslation(t);
    const osg::Vec3d moved = GlFinite(t) ? translationOffset + t : translationOffset;  // as the trafo's matrix would
    if (_matrix.getTrans() == moved) return;  // the same matrix: no bound to dirty
    // What setMatrix does, without copying the whole matrix twice.
    _matrix.setTrans(moved);
    _inverseDirty = true;
    dirtyBound();
  }

 protected:
  ~TrafoTransform() override;

 private:
  Trafo trafo;
  osg::Vec3d translationOffset;  // what the other parts add to the matrix's translation
};

}  // namespace quillon
