#include "scenegraph/osgPrimitiveShapes.h"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "scenegraph/GlValues.h"

namespace quillon {
namespace {

constexpr int kSphereBands = 40;
// Four corners for each quad of the sphere, indexed by 16 bits.
constexpr std::size_t kSphereVertices = std::size_t{kSphereBands} * kSphereBands * 4;
static_assert(kSphereVertices <= 65536);
constexpr int kRoundSegments = 32;

// Vertices and normals gathered for one primitive set of independent polygons.
struct Mesh {
  osg::ref_ptr<osg::Vec3Array> vertices = new osg::Vec3Array();
  osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array();
  void add(const osg::Vec3& v, const osg::Vec3& n) {
    vertices->push_back(v);
    normals->push_back(n);
  }
  osg::ref_ptr<osg::Geometry> finish(GLenum mode) const {
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry();
    PrepareGeometry(*geometry);
    geometry->setVertexArray(vertices.get());
    geometry->setNormalArray(normals.get(), osg::Array::BIND_PER_VERTEX);
    geometry->addPrimitiveSet(new osg::DrawArrays(mode, 0, static_cast<GLsizei>(vertices->size())));
    return geometry;
  }
};

// A point of the unit circle in the x-z plane; angles grow so that polygons listed in that
// order face outward.
osg::Vec3 around(double phi) {
  return osg::Vec3(static_cast<float>(std::sin(phi)), 0, static_cast<float>(std::cos(phi)));
}

}  // namespace

void PrepareGeometry(osg::Geometry& geometry) {
  geometry.setUseDisplayList(false);
  geometry.setUseVertexBufferObjects(true);
}

osg::ref_ptr<osg::Geometry> MakeSphere(float radius) {
  radius = GlLength(radius);
  constexpr double kPolarStep = std::numbers::pi / kSphereBands;
  constexpr double kAzimuthStep = 2 * std::numbers::pi / kSphereBands;
  auto unit = [](int band, int segment) {
    const double theta = band * kPolarStep, phi = segment * kAzimuthStep;
    return osg::Vec3(static_cast<float>(std::sin(theta) * std::cos(phi)), static_cast<float>(std::cos(theta)),
                     static_cast<float>(std::sin(theta) * std::sin(phi)));
  };
  Mesh mesh;
  mesh.vertices->reserve(kSphereVertices);
  mesh.normals->reserve(kSphereVertices);
  for (int band = 0; band < kSphereBands; ++band) {
    for (int segment = 0; segment < kSphereBands; ++segment) {
      for (const auto& [b, s] :
           {std::pair{band, segment}, {band, segment + 1}, {band + 1, segment + 1}, {band + 1, segment}}) {
        const osg::Vec3 n = unit(b, s);
        mesh.add(n * radius, n);
      }
    }
  }
  osg::ref_ptr<osg::Geometry> geometry = mesh.finish(GL_QUADS);
  // The quads' indices, in order, as the primitive set of the sphere.
  osg::ref_ptr<osg::DrawElementsUShort> quads = new osg::DrawElementsUShort(GL_QUADS);
  quads->reserve(mesh.vertices->size());
  for (std::size_t i = 0; i < mesh.vertices->size(); ++i) quads->push_back(static_cast<unsigned short>(i));
  geometry->setPrimitiveSet(0, quads.get());
  return geometry;
}

osg::ref_ptr<osg::Geometry> MakeBox(float sizeX, float sizeY, float sizeZ) {
  const osg::Vec3 half(GlLength(sizeX) / 2, GlLength(sizeY) / 2, GlLength(sizeZ) / 2);
  auto scaled = [&](const osg::Vec3& v) { return osg::Vec3(v.x() * half.x(), v.y() * half.y(), v.z() * half.z()); };
  // Each face: its normal n and two edges u, v with u x v = n, so u, v list it outward.
  const osg::Vec3 faces[6][3] = {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}, {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                                 {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                                 {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},  {{0, 0, -1}, {-1, 0, 0}, {0, 1, 0}}};
  Mesh mesh;
  for (const auto& [n, u, v] : faces) {
    for (const auto& [su, sv] : {std::pair{-1.0f, -1.0f}, {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}})
      mesh.add(scaled(n + u * su + v * sv), n);
  }
  return mesh.finish(GL_QUADS);
}

osg::ref_ptr<osg::Geometry> MakeCone(float bottomRadius, float height, bool side, bool bottom) {
  bottomRadius = GlLength(bottomRadius);
  height = GlLength(height);
  const float y0 = -height / 2, y1 = height / 2;
  constexpr double kStep = 2 * std::numbers::pi / kRoundSegments;
  Mesh mesh;
  for (int i = 0; i < kRoundSegments; ++i) {
    const double phi0 = i * kStep, phi1 = (i + 1) * kStep;
    const osg::Vec3 a = around(phi0), b = around(phi1);
    if (side) {
      // The slanted normal leans up by the ratio of radius to height.
      auto slant = [&](const osg::Vec3& radial) {
        osg::Vec3 n(radial.x() * height, bottomRadius, radial.z() * height);
        n.normalize();
        return n;
      };
      mesh.add(a * bottomRadius + osg::Vec3(0, y0, 0), slant(a));
      mesh.add(b * bottomRadius + osg::Vec3(0, y0, 0), slant(b));
      mesh.add(osg::Vec3(0, y1, 0), slant(around((phi0 + phi1) / 2)));
    }
    if (bottom) {
      const osg::Vec3 down(0, -1, 0);
      mesh.add(osg::Vec3(0, y0, 0), down);
      mesh.add(b * bottomRadius + osg::Vec3(0, y0, 0), down);
      mesh.add(a * bottomRadius + osg::Vec3(0, y0, 0), down);
    }
  }
  return mesh.finish(GL_TRIANGLES);
}

osg::ref_ptr<osg::Geometry> MakeCylinder(float radius, float height, bool side, bool top, bool bottom) {
  radius = GlLength(radius);
  height = GlLength(height);
  const osg::Vec3 low(0, -height / 2, 0), high(0, height / 2, 0);
  constexpr double kStep = 2 * std::numbers::pi / kRoundSegments;
  Mesh mesh;
  for (int i = 0; i < kRoundSegments; ++i) {
    const osg::Vec3 a = around(i * kStep), b = around((i + 1) * kStep);
    if (side) {
      mesh.add(a * radius + low, a);
      mesh.add(b * radius + low, b);
      mesh.add(b * radius + high, b);
      mesh.add(a * radius + low, a);
      mesh.add(b * radius + high, b);
      mesh.add(a * radius + high, a);
    }
    if (top) {
      const osg::Vec3 up(0, 1, 0);
      mesh.add(high, up);
      mesh.add(a * radius + high, up);
      mesh.add(b * radius + high, up);
    }
    if (bottom) {
      const osg::Vec3 down(0, -1, 0);
      mesh.add(low, down);
      mesh.add(b * radius + low, down);
      mesh.add(a * radius + low, down);
    }
  }
  return mesh.finish(GL_TRIANGLES);
}

}  // namespace quillon
