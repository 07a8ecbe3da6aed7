#pragma once
// The interface through which consumers walk the VRML97 node model.

#include "vrml/GeometryNodes.h"
#include "vrml/GroupingNodes.h"
#include "vrml/PropertyNodes.h"

namespace VRML {

/// One operation per modelled node type, in reverse alphabetical order of the type names; the
/// order is kept exactly so. A visitor decides itself whether to descend into a node's children.
class IVRMLVisitor {
 public:
  virtual ~IVRMLVisitor() = default;
  virtual void visitTransform(const Transform& node) = 0;
  virtual void visitSwitch(const Switch& node) = 0;
  virtual void visitSphere(const Sphere& node) = 0;
  virtual void visitShape(const Shape& node) = 0;
  virtual void visitNormal(const Normal& node) = 0;
  virtual void visitMaterial(const Material& node) = 0;
  virtual void visitIndexedLineSet(const IndexedLineSet& node) = 0;
  virtual void visitIndexedFaceSet(const IndexedFaceSet& node) = 0;
  virtual void visitGroup(const Group& node) = 0;
  virtual void visitCylinder(const Cylinder& node) = 0;
  virtual void visitCoordinate(const Coordinate& node) = 0;
  virtual void visitCone(const Cone& node) = 0;
  virtual void visitColor(const Color& node) = 0;
  virtual void visitBox(const Box& node) = 0;
  virtual void visitAppearance(const Appearance& node) = 0;
};

/// A visitor whose every operation falls back to visitNode, which does nothing; a small visitor
/// overrides only what it needs.
class NodeVisitor : public IVRMLVisitor {
 public:
  virtual void visitNode(const Node&) {}
  void visitTransform(const Transform& node) override { visitNode(node); }
  void visitSwitch(const Switch& node) override { visitNode(node); }
  void visitSphere(const Sphere& node) override { visitNode(node); }
  void visitShape(const Shape& node) override { visitNode(node); }
  void visitNormal(const Normal& node) override { visitNode(node); }
  void visitMaterial(const Material& node) override { visitNode(node); }
  void visitIndexedLineSet(const IndexedLineSet& node) override { visitNode(node); }
  void visitIndexedFaceSet(const IndexedFaceSet& node) override { visitNode(node); }
  void visitGroup(const Group& node) override { visitNode(node); }
  void visitCylinder(const Cylinder& node) override { visitNode(node); }
  void visitCoordinate(const Coordinate& node) override { visitNode(node); }
  void visitCone(const Cone& node) override { visitNode(node); }
  void visitColor(const Color& node) override { visitNode(node); }
  void visitBox(const Box& node) override { visitNode(node); }
  void visitAppearance(const Appearance& node) override { visitNode(node); }
};

}  // namespace VRML
