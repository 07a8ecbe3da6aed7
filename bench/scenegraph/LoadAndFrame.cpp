// Generates the big test documents, and times loading one and drawing it at 800 x 600.
//   scenegraph_load_frame mesh TRIANGLES OUT.xml   a height field of about that many triangles
//   scenegraph_load_frame parts COUNT OUT.xml      boxes, spheres, cones and cylinders in a grid
//   scenegraph_load_frame measure DOC.xml          load time, peak memory, frame times
//   scenegraph_load_frame touch MEGABYTES          what a first write costs on this machine,
//                                                  with small pages and with huge pages
#include <sys/mman.h>
#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "quillon/quillon.h"

namespace {

void writeDocument(const std::string& path, const std::string& label, const std::string& scene) {
  std::ofstream out(path, std::ios::binary);
  out << "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation>\n  <Label>" << label
      << "</Label>\n  <Version>1.0</Version>\n  <Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
      << "Transform { rotation 1 0 0 1.0 children [\n"  // tilted, so that the view sees its face
      << scene << "] }\n]]></Scene>\n</Visualisation>\n";
}

std::string meshScene(long triangles) {
  const long cols = std::max(1L, static_cast<long>(std::sqrt(static_cast<double>(triangles))));
  const long rows = std::max(1L, triangles / (2 * cols));
  std::string s = "Shape { appearance Appearance { material Material { diffuseColor 0.6 0.7 0.9 } }\n";
  s += "geometry IndexedFaceSet { coord Coordinate { point [\n";
  char buffer[96];
  for (long r = 0; r <= rows; ++r)
    for (long c = 0; c <= cols; ++c) {
      const double x = static_cast<double>(c) / static_cast<double>(cols),
                   z = static_cast<double>(r) / static_cast<double>(rows);
      const double y = 0.05 * std::sin(x * 12.0) * std::cos(z * 9.0);
      s.append(buffer, static_cast<std::size_t>(std::snprintf(buffer, sizeof buffer, "%.5f %.5f %.5f,\n", x, y, z)));
    }
  s += "] }\ncoordIndex [\n";
  for (long r = 0; r < rows; ++r)
    for (long c = 0; c < cols; ++c) {
      const long a = r * (cols + 1) + c, b = a + 1, d = a + cols + 1, e = d + 1;
      s.append(buffer, static_cast<std::size_t>(
                           std::snprintf(buffer, sizeof buffer, "%ld %ld %ld -1 %ld %ld %ld -1\n", a, d, e, a, e, b)));
    }
  s += "] } }\n";
  return s;
}

std::string partsScene(long count) {
  const long side = static_cast<long>(std::ceil(std::sqrt(static_cast<double>(count))));
  std::string s;
  char geometry[128], part[512];
  for (long i = 0; i < count; ++i) {
    const double size = 0.01 + 0.02 * static_cast<double>((i * 7919) % 100) / 100.0;
    switch (i % 4) {
      case 0:
        std::snprintf(geometry, sizeof geometry, "Box { size %.3f %.3f %.3f }", size, size * 1.5, size * 0.7);
        break;
      case 1:
        std::snprintf(geometry, sizeof geometry, "Sphere { radius %.3f }", size * 0.6);
        break;
      case 2:
        std::snprintf(geometry, sizeof geometry, "Cone { bottomRadius %.3f height %.3f }", size * 0.5, size * 1.5);
        break;
      default:
        std::snprintf(geometry, sizeof geometry, "Cylinder { radius %.3f height %.3f }", size * 0.5, size * 1.5);
        break;
    }
    const int n = std::snprintf(
        part, sizeof part,
        "DEF Part%ld Transform { translation %.3f 0 %.3f rotation 0 1 0 %.3f children [ Shape { "
        "appearance Appearance { material Material { diffuseColor %.2f %.2f %.2f } } geometry %s "
        "} ] }\n",
        i, 0.05 * static_cast<double>(i % side), 0.05 * static_cast<double>(i / side),
        0.01 * static_cast<double>(i % 314), 0.3 + 0.7 * static_cast<double>(i % 5) / 5.0,
        0.3 + 0.7 * static_cast<double>(i % 7) / 7.0, 0.3 + 0.7 * static_cast<double>(i % 3) / 3.0, geometry);
    s.append(part, static_cast<std::size_t>(n));
  }
  return s;
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int measure(const std::string& path) {
  // The document is held once, as a host would hold it.
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return 2;
  std::string xml(static_cast<std::size_t>(in.tellg()), '\0');
  in.seekg(0);
  in.read(xml.data(), static_cast<std::streamsize>(xml.size()));

  QuillonCtrl* ctrl = quillon_create();
  constexpr int kWidth = 800, kHeight = 600;
  if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) {
    std::fprintf(stderr, "no offscreen render area\n");
    return 1;
  }
  std::vector<unsigned char> pixels(static_cast<std::size_t>(kWidth) * kHeight * 4);
  quillon_render_rgba(ctrl, pixels.data(), pixels.size());
  const double before = peakMegabytes();

  char* document = xml.data();
  char* annotated = nullptr;
  char* groups = nullptr;
  const auto start = std::chrono::steady_clock::now();
  QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  const double load = secondsSince(start);
  const double peak = peakMegabytes();
  const bool refused = annotated && *annotated;
  quillon_free(result.data);
  quillon_free(annotated);
  quillon_free(groups);
  xml.clear();
  xml.shrink_to_fit();
  quillon_ViewAll_v2(ctrl);

  auto frame = [&] {
    const auto t = std::chrono::steady_clock::now();
    quillon_render_rgba(ctrl, pixels.data(), pixels.size());
    return secondsSince(t);
  };
  const double first = frame();
  constexpr int kFrames = 10;
  double total = 0;
  for (int i = 0; i < kFrames; ++i) total += frame();
  std::printf(
      "%s: %s  InitializeViewer %.3f s  peak RSS %.0f MB after loading, %.0f MB after drawing (%.0f MB before "
      "loading)  first frame %.1f ms  frame %.1f ms\n",
      path.c_str(), refused ? "REFUSED" : "loaded", load, peak, peakMegabytes(), before, first * 1000,
      total / kFrames * 1000);
  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
  return refused ? 1 : 0;
}

// Writes one byte per 4 KiB page of a fresh mapping; with `huge`, after advising huge pages.
double firstTouchSeconds(std::size_t bytes, bool huge) {
  void* mapping = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapping == MAP_FAILED) return -1;
  const auto start = std::chrono::steady_clock::now();
  if (huge) madvise(mapping, bytes, MADV_HUGEPAGE);
  auto* bytesOf = static_cast<volatile unsigned char*>(mapping);
  for (std::size_t i = 0; i < bytes; i += 4096) bytesOf[i] = 1;
  const double seconds = secondsSince(start);
  munmap(mapping, bytes);
  return seconds;
}

int touch(long megabytes) {
  const std::size_t bytes = static_cast<std::size_t>(std::max(2L, megabytes)) << 20;
  for (int round = 0; round < 3; ++round) {
    const double small = firstTouchSeconds(bytes, false), huge = firstTouchSeconds(bytes, true);
    std::printf("first write of %zu MB: %.1f ms in 4 KiB pages (%.2f us a page), %.1f ms with huge pages advised\n",
                bytes >> 20, small * 1000, small * 1e6 / static_cast<double>(bytes / 4096), huge * 1000);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "mesh") {
    writeDocument(argv[3], "A height field", meshScene(std::atol(argv[2])));
    return 0;
  }
  if (argc == 4 && std::string(argv[1]) == "parts") {
    writeDocument(argv[3], "Many parts", partsScene(std::atol(argv[2])));
    return 0;
  }
  if (argc == 3 && std::string(argv[1]) == "measure") return measure(argv[2]);
  if (argc == 3 && std::string(argv[1]) == "touch") return touch(std::atol(argv[2]));
  std::fprintf(stderr, "usage: %s mesh TRIANGLES OUT.xml | parts COUNT OUT.xml | measure DOC.xml | touch MEGABYTES\n",
               argv[0]);
  return 2;
}
