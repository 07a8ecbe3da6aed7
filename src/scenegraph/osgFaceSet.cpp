#include "scenegraph/osgFaceSet.h"

#include <cmath>
#include <vector>

#include "core/LargeBuffers.h"
#include "scenegraph/GlValues.h"
#include "scenegraph/osgPrimitiveShapes.h"

namespace quillon {
namespace {

struct Face {
  std::size_t begin;   // position of its first index in coordIndex
  std::size_t end;     // one past its last
  std::size_t number;  // its place among all faces, usable or not
};

osg::Vec3 toScene(const VRML::Vec3f& p, float scale) { return osg::Vec3(p.x * scale, p.y * scale, p.z * scale); }

// A point is usable when it is finite in scene units, where a large one may overflow.
bool usablePoint(const FaceSetInput& in, std::size_t i) { return GlFinite(toScene(in.points[i], in.scale)); }

std::vector<Face> usableFaces(const FaceSetInput& in) {
  std::vector<Face> faces;
  // A face has three indices at least, and all but the last a -1 after them.
  ReserveLarge(faces, (in.coordIndex.size() + 1) / 4);
  const auto pointCount = static_cast<std::int64_t>(in.points.size());
  std::size_t begin = 0, number = 0;
  bool usable = true;
  for (std::size_t i = 0; i <= in.coordIndex.size(); ++i) {
    const bool last = i == in.coordIndex.size();
    if (last || in.coordIndex[i] == -1) {
      if (last && i == begin) break;
      if (usable && i - begin >= 3) faces.push_back({begin, i, number});
      ++number;
      begin = i + 1;
      usable = true;
      continue;
    }
    const std::int32_t index = in.coordIndex[i];
    if (index < 0 || index >= pointCount || !usablePoint(in, static_cast<std::size_t>(index))) usable = false;
  }
  return faces;
}

// Where each corner (a position in coordIndex) or each face takes its colour or normal from;
// empty when the values cannot serve every usable face.
template <class Value>
std::vector<std::uint32_t> attributeIndices(std::span<const Value> values, std::span<const std::int32_t> index,
                                            bool perVertex, const FaceSetInput& in, const std::vector<Face>& faces) {
  std::vector<std::uint32_t> result;
  if (values.empty()) return result;
  auto lookup = [&](std::size_t at, std::int32_t fallback, std::uint32_t& out) {
    const std::int32_t i = index.empty() ? fallback : (at < index.size() ? index[at] : -1);
    if (i < 0 || static_cast<std::size_t>(i) >= values.size()) return false;
    out = static_cast<std::uint32_t>(i);
    return true;
  };
  if (perVertex) {
    result.assign(in.coordIndex.size(), 0);
    for (const Face& f : faces)
      for (std::size_t k = f.begin; k < f.end; ++k)
        if (!lookup(k, in.coordIndex[k], result[k])) return {};
  } else {
    result.assign(faces.empty() ? 0 : faces.back().number + 1, 0);
    for (const Face& f : faces)
      if (!lookup(f.number, static_cast<std::int32_t>(f.number), result[f.number])) return {};
  }
  return result;
}

std::size_t triangleCount(const std::vector<Face>& faces) {
  std::size_t count = 0;
  for (const Face& f : faces) count += f.end - f.begin - 2;
  return count;
}

osg::Vec3 toVec(const VRML::Vec3f& p) { return osg::Vec3(p.x, p.y, p.z); }
osg::Vec4 toColour(const VRML::Color3f& c) { return GlColour(c.red, c.green, c.blue, 1.0f); }

// Smooth normals of the points: each triangle adds its area-weighted normal to its corners.
std::vector<osg::Vec3> smoothNormals(const FaceSetInput& in, const std::vector<Face>& faces) {
  std::vector<osg::Vec3> normals;
  ReserveLarge(normals, in.points.size());
  normals.resize(in.points.size(), osg::Vec3());
  for (const Face& f : faces) {
    const auto a = static_cast<std::size_t>(in.coordIndex[f.begin]);
    const osg::Vec3 pa = toVec(in.points[a]);
    for (std::size_t k = f.begin + 1; k + 1 < f.end; ++k) {
      const auto b = static_cast<std::size_t>(in.coordIndex[k]), c = static_cast<std::size_t>(in.coordIndex[k + 1]);
      const osg::Vec3 n = (toVec(in.points[b]) - pa) ^ (toVec(in.points[c]) - pa);
      normals[a] += n;
      normals[b] += n;
      normals[c] += n;
    }
  }
  for (osg::Vec3& n : normals)
    if (n.normalize() <= 0 || !std::isfinite(n.x())) n.set(0, 1, 0);
  return normals;
}

}  // namespace

osg::ref_ptr<osg::Geometry> MakeFaceSet(const FaceSetInput& in) {
  const std::vector<Face> faces = usableFaces(in);
  if (faces.empty()) return nullptr;
  const auto colourAt = attributeIndices(in.colours, in.colourIndex, in.colourPerVertex, in, faces);
  const auto normalAt = attributeIndices(in.normals, in.normalIndex, in.normalPerVertex, in, faces);
  const bool hasColours = !colourAt.empty(), hasNormals = !normalAt.empty();

  osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry();
  PrepareGeometry(*geometry);
  osg::ref_ptr<osg::Vec3Array> vertices = new osg::Vec3Array();
  osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array();
  osg::ref_ptr<osg::Vec4Array> colours = hasColours ? new osg::Vec4Array() : nullptr;

  // Colours and normals that follow the points (no index lists of their own) let the
  // vertices be shared; anything else gives every corner a vertex of its own. Shared vertices
  // are all the points, used or not, so an unusable one among them forbids sharing.
  bool allUsable = true;
  for (std::size_t i = 0; i < in.points.size() && allUsable; ++i) allUsable = usablePoint(in, i);
  const bool shared = allUsable && (!hasColours || (in.colourPerVertex && in.colourIndex.empty())) &&
                      (!hasNormals || (in.normalPerVertex && in.normalIndex.empty()));
  if (shared) {
    ReserveLarge(vertices->asVector(), in.points.size());
    for (const VRML::Vec3f& p : in.points) vertices->push_back(toScene(p, in.scale));
    std::vector<osg::Vec3> smooth;
    if (!hasNormals) smooth = smoothNormals(in, faces);
    ReserveLarge(normals->asVector(), in.points.size());
    normals->resize(in.points.size(), osg::Vec3(0, 1, 0));
    if (hasColours) {
      ReserveLarge(colours->asVector(), in.points.size());
      colours->resize(in.points.size(), osg::Vec4(1, 1, 1, 1));
    }
    osg::ref_ptr<osg::DrawElementsUInt> triangles = new osg::DrawElementsUInt(GL_TRIANGLES);
    ReserveLarge(triangles->asVector(), 3 * triangleCount(faces));
    for (const Face& f : faces) {
      const auto a = static_cast<std::uint32_t>(in.coordIndex[f.begin]);
      for (std::size_t k = f.begin + 1; k + 1 < f.end; ++k) {
        triangles->push_back(a);
        triangles->push_back(static_cast<std::uint32_t>(in.coordIndex[k]));
        triangles->push_back(static_cast<std::uint32_t>(in.coordIndex[k + 1]));
      }
      for (std::size_t k = f.begin; k < f.end; ++k) {
        const auto v = static_cast<std::size_t>(in.coordIndex[k]);
        (*normals)[v] = hasNormals ? toVec(in.normals[normalAt[k]]) : smooth[v];
        if (hasColours) (*colours)[v] = toColour(in.colours[colourAt[k]]);
      }
    }
    geometry->addPrimitiveSet(triangles.get());
  } else {
    std::vector<osg::Vec3> smooth;
    if (!hasNormals) smooth = smoothNormals(in, faces);
    const std::size_t corners = 3 * triangleCount(faces);
    ReserveLarge(vertices->asVector(), corners);
    ReserveLarge(normals->asVector(), corners);
    if (hasColours) ReserveLarge(colours->asVector(), corners);
    auto corner = [&](const Face& f, std::size_t k) {
      const auto v = static_cast<std::size_t>(in.coordIndex[k]);
      vertices->push_back(toScene(in.points[v], in.scale));
      if (!hasNormals)
        normals->push_back(smooth[v]);
      else
        normals->push_back(toVec(in.normals[normalAt[in.normalPerVertex ? k : f.number]]));
      if (hasColours) colours->push_back(toColour(in.colours[colourAt[in.colourPerVertex ? k : f.number]]));
    };
    for (const Face& f : faces) {
      for (std::size_t k = f.begin + 1; k + 1 < f.end; ++k) {
        corner(f, f.begin);
        corner(f, k);
        corner(f, k + 1);
      }
    }
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertices->size())));
  }
  geometry->setVertexArray(vertices.get());
  geometry->setNormalArray(normals.get(), osg::Array::BIND_PER_VERTEX);
  if (hasColours) geometry->setColorArray(colours.get(), osg::Array::BIND_PER_VERTEX);
  return geometry;
}

}  // namespace quillon
