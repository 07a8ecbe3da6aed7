#pragma once
// The tessellated VRML97 primitives, centred on the origin, in scene units. A size that is
// negative or not finite counts as 0.

#include <osg/Geometry>
#include <osg/ref_ptr>

namespace quillon {

/// 40 latitude bands of 40 quads from the pole at +y to the pole at -y; each quad has four
/// vertices of its own (6400 in all) with outward normals.
osg::ref_ptr<osg::Geometry> MakeSphere(float radius);
/// A closed box of 6 quads with face normals.
osg::ref_ptr<osg::Geometry> MakeBox(float sizeX, float sizeY, float sizeZ);
/// A cone along y, apex at +height/2; side and bottom as asked.
osg::ref_ptr<osg::Geometry> MakeCone(float bottomRadius, float height, bool side, bool bottom);
/// A cylinder along y; side, top and bottom as asked.
osg::ref_ptr<osg::Geometry> MakeCylinder(float radius, float height, bool side, bool top, bool bottom);

/// Settings that every geometry of the scene shares: vertex buffers, no display lists.
void PrepareGeometry(osg::Geometry& geometry);

}  // namespace quillon
