#include "SceneGenerator.h"

#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace quillon::bench {

namespace {

constexpr const char* kHeader = "#VRML V2.0 utf8\n";

// A small linear congruential generator, so that every run writes the same text.
struct Random {
  std::uint64_t state = 0x5eed;
  double next() {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state >> 11) / 9007199254740992.0;
  }
};

__attribute__((format(printf, 2, 3))) void append(std::string& out, const char* format, ...) {
  char buffer[256];
  va_list args;
  va_start(args, format);
  const int length = std::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  if (length > 0) out.append(buffer, static_cast<std::size_t>(length));
}

}  // namespace

std::string meshScene(int triangles) {
  const int cells = static_cast<int>(std::ceil(std::sqrt(triangles / 2.0)));
  const int columns = cells + 1;
  Random random;
  std::string out = kHeader;
  out.reserve(static_cast<std::size_t>(triangles) * 46);
  out += "Shape {\n  appearance Appearance {\n    material Material { diffuseColor 0.8 0.8 0.8 }\n  }\n";
  out += "  geometry IndexedFaceSet {\n    coord Coordinate {\n      point [\n";
  for (int row = 0; row < columns; ++row) {
    for (int column = 0; column < columns; ++column) {
      append(out, "      %.3f %.3f %.3f,\n", column * 0.5, row * 0.5, random.next() * 10.0 - 5.0);
    }
  }
  out += "      ]\n    }\n    coordIndex [\n";
  int written = 0;
  for (int row = 0; row < cells && written < triangles; ++row) {
    for (int column = 0; column < cells && written < triangles; ++column) {
      const int a = row * columns + column;
      append(out, "    %d, %d, %d, -1,\n", a, a + 1, a + columns + 1);
      if (++written < triangles) append(out, "    %d, %d, %d, -1,\n", a, a + columns + 1, a + columns);
      ++written;
    }
  }
  out += "    ]\n  }\n}\n";
  return out;
}

namespace {

void appendShape(std::string& out, Random& random, int kind, const char* indent) {
  append(out, "%sShape {\n%s  appearance Appearance {\n", indent, indent);
  append(out, "%s    material Material {\n%s      diffuseColor %.3f %.3f %.3f\n", indent, indent, random.next(),
         random.next(), random.next());
  append(out, "%s      emissiveColor 0 0 0\n%s      shininess %.2f\n%s      transparency %.2f\n%s    }\n", indent,
         indent, random.next(), indent, random.next() * 0.5, indent);
  append(out, "%s  }\n", indent);
  switch (kind % 4) {
    case 0:
      append(out, "%s  geometry Box { size %.3f %.3f %.3f }\n", indent, random.next() + 0.1, random.next() + 0.1,
             random.next() + 0.1);
      break;
    case 1:
      append(out, "%s  geometry Sphere { radius %.3f }\n", indent, random.next() + 0.1);
      break;
    case 2:
      append(out, "%s  geometry Cone { bottomRadius %.3f height %.3f }\n", indent, random.next() + 0.1,
             random.next() + 0.5);
      break;
    default:
      append(out, "%s  geometry Cylinder { radius %.3f height %.3f }\n", indent, random.next() + 0.1,
             random.next() + 0.5);
      break;
  }
  append(out, "%s}\n", indent);
}

}  // namespace

std::string partsScene(int groups, int partsPerGroup) {
  Random random;
  std::string out = kHeader;
  for (int g = 0; g < groups; ++g) {
    append(out, "DEF Assembly_%d Group {\n  children [\n", g);
    for (int p = 0; p < partsPerGroup; ++p) {
      append(out, "    DEF Part_%d_%d Transform {\n", g, p);
      append(out, "      translation %.3f %.3f %.3f\n", random.next() * 100.0, random.next() * 100.0,
             random.next() * 100.0);
      append(out, "      rotation 0 1 0 %.4f\n      scale 1 1 1\n      scaleOrientation 0 0 1 0\n      children [\n",
             random.next() * 6.28);
      appendShape(out, random, p, "        ");
      out += "      ]\n    }\n";
    }
    out += "  ]\n}\n";
  }
  return out;
}

std::string chainsScene(int chains, int depth) {
  Random random;
  std::string out = kHeader;
  for (int c = 0; c < chains; ++c) {
    for (int d = 0; d < depth; ++d) {
      append(out, "DEF Link_%d_%d Transform {\n", c, d);
      append(out,
             "  translation 0 %.3f 0\n  rotation 0 0 1 %.4f\n  center 0 0 0\n  scale 1 1 1\n"
             "  scaleOrientation 0 0 1 0\n  children [\n",
             random.next() + 0.5, random.next() - 0.5);
      appendShape(out, random, d, "    ");
    }
    for (int d = 0; d < depth; ++d) out += "  ]\n}\n";
  }
  return out;
}

}  // namespace quillon::bench
