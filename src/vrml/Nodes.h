#pragma once
// The whole VRML97 node model: every node type and the visitor.

#include "vrml/GeometryNodes.h"
#include "vrml/GroupingNodes.h"
#include "vrml/IVRMLVisitor.h"
#include "vrml/PropertyNodes.h"
