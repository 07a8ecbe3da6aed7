// Defaults and visiting of the fifteen node types.
#include "vrml/Nodes.h"

namespace VRML {

namespace {
template <class T, class... Args>
void store(Field& record, Args... args) {
  record.value = std::make_unique<T>(args...);
}
}  // namespace

void Group::accept(IVRMLVisitor& visitor) const { visitor.visitGroup(*this); }

Switch::Switch() { store<SFInt32>(fields()[kWhichChoice], -1); }
void Switch::accept(IVRMLVisitor& visitor) const { visitor.visitSwitch(*this); }

Transform::Transform() {
  auto slots = fields();
  store<SFVec3f>(slots[kCenter], 0.0f, 0.0f, 0.0f);
  store<SFRotation>(slots[kRotation], 0.0f, 0.0f, 1.0f, 0.0f);
  store<SFVec3f>(slots[kScale], 1.0f, 1.0f, 1.0f);
  store<SFRotation>(slots[kScaleOrientation], 0.0f, 0.0f, 1.0f, 0.0f);
}
void Transform::accept(IVRMLVisitor& visitor) const { visitor.visitTransform(*this); }

void Shape::accept(IVRMLVisitor& visitor) const { visitor.visitShape(*this); }

Box::Box() { store<SFVec3f>(fields()[kSize], 2.0f, 2.0f, 2.0f); }
void Box::accept(IVRMLVisitor& visitor) const { visitor.visitBox(*this); }

Cone::Cone() {
  auto slots = fields();
  store<SFFloat>(slots[kBottomRadius], 1.0f);
  store<SFFloat>(slots[kHeight], 2.0f);
  store<SFBool>(slots[kSide], true);
  store<SFBool>(slots[kBottom], true);
}
void Cone::accept(IVRMLVisitor& visitor) const { visitor.visitCone(*this); }

Cylinder::Cylinder() {
  auto slots = fields();
  store<SFBool>(slots[kBottom], true);
  store<SFFloat>(slots[kHeight], 2.0f);
  store<SFFloat>(slots[kRadius], 1.0f);
  store<SFBool>(slots[kSide], true);
  store<SFBool>(slots[kTop], true);
}
void Cylinder::accept(IVRMLVisitor& visitor) const { visitor.visitCylinder(*this); }

void Sphere::accept(IVRMLVisitor& visitor) const { visitor.visitSphere(*this); }

IndexedFaceSet::IndexedFaceSet() {
  auto slots = fields();
  store<SFBool>(slots[kColorPerVertex], true);
  store<SFBool>(slots[kNormalPerVertex], true);
}
void IndexedFaceSet::accept(IVRMLVisitor& visitor) const { visitor.visitIndexedFaceSet(*this); }

IndexedLineSet::IndexedLineSet() { store<SFBool>(fields()[kColorPerVertex], true); }
void IndexedLineSet::accept(IVRMLVisitor& visitor) const { visitor.visitIndexedLineSet(*this); }

void Appearance::accept(IVRMLVisitor& visitor) const { visitor.visitAppearance(*this); }
void Material::accept(IVRMLVisitor& visitor) const { visitor.visitMaterial(*this); }
void Color::accept(IVRMLVisitor& visitor) const { visitor.visitColor(*this); }
void Coordinate::accept(IVRMLVisitor& visitor) const { visitor.visitCoordinate(*this); }
void Normal::accept(IVRMLVisitor& visitor) const { visitor.visitNormal(*this); }

}  // namespace VRML
