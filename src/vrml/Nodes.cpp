// Visiting of the fifteen node types; their fields and defaults come from the grammar.
#include "vrml/Nodes.h"

namespace VRML {

void Appearance::accept(IVRMLVisitor& visitor) const { visitor.visitAppearance(*this); }
void Box::accept(IVRMLVisitor& visitor) const { visitor.visitBox(*this); }
void Color::accept(IVRMLVisitor& visitor) const { visitor.visitColor(*this); }
void Cone::accept(IVRMLVisitor& visitor) const { visitor.visitCone(*this); }
void Coordinate::accept(IVRMLVisitor& visitor) const { visitor.visitCoordinate(*this); }
void Cylinder::accept(IVRMLVisitor& visitor) const { visitor.visitCylinder(*this); }
void Group::accept(IVRMLVisitor& visitor) const { visitor.visitGroup(*this); }
void IndexedFaceSet::accept(IVRMLVisitor& visitor) const { visitor.visitIndexedFaceSet(*this); }
void IndexedLineSet::accept(IVRMLVisitor& visitor) const { visitor.visitIndexedLineSet(*this); }
void Material::accept(IVRMLVisitor& visitor) const { visitor.visitMaterial(*this); }
void Normal::accept(IVRMLVisitor& visitor) const { visitor.visitNormal(*this); }
void Shape::accept(IVRMLVisitor& visitor) const { visitor.visitShape(*this); }
void Sphere::accept(IVRMLVisitor& visitor) const { visitor.visitSphere(*this); }
void Switch::accept(IVRMLVisitor& visitor) const { visitor.visitSwitch(*this); }
void Transform::accept(IVRMLVisitor& visitor) const { visitor.visitTransform(*this); }

}  // namespace VRML
