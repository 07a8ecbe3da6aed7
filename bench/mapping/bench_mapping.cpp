// Channel values a second from quillon_SendChannels_v1 into the scene, with no render in
// between: N mapped transforms (3D freeze routes) or N colour routes, good quality. The floor
// beside them reads the same messages with a decoder that knows their layout and calls the
// scene graph's own setters with the same values.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <osg/Group>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <string>
#include <vector>

#include "quillon/quillon.h"

namespace {

// A scene of `count` boxes, each its own named transform with its own material, and one route
// per box: 3D to the transform, or 1D to the material's diffuse colour.
std::string Document(int count, bool colour) {
  std::string scene, routes;
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(i);
    scene += "DEF T" + n + " Transform { translation " + std::to_string(i % 100 * 0.03) + " " +
             std::to_string(i / 100 * 0.03) + " 0 children [ Shape { appearance Appearance { material DEF M" + n +
             " Material { } } geometry Box { size 0.01 0.01 0.01 } } ] }\n";
    routes += colour ? "<ExternRoute from=\"Bench[0][" + n + "][1D]\" to=\"M" + n + ".diffuseColor\"/>\n"
                     : "<ExternRoute from=\"Bench[0][" + n + "][3D]\" to=\"T" + n + ".translation\"/>\n";
  }
  return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation><Version>1.0</Version>"
         "<Settings><RenderInvalids>freeze</RenderInvalids></Settings>"
         "<Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" +
         scene + "]]></Scene>\n" + routes + "</Visualisation>\n";
}

void PutDouble(std::vector<unsigned char>& m, double d) {
  unsigned char bytes[8];
  std::memcpy(bytes, &d, 8);
  m.insert(m.end(), bytes, bytes + 8);
}

// One message with a value for every channel; `step` makes each message differ.
std::vector<unsigned char> Message(int count, bool colour, int step) {
  std::vector<unsigned char> m = {0x01,
                                  0x00,
                                  5,
                                  0,
                                  'B',
                                  'e',
                                  'n',
                                  'c',
                                  'h',
                                  0,
                                  0,
                                  0,
                                  0,
                                  static_cast<unsigned char>(count & 0xFF),
                                  static_cast<unsigned char>(count >> 8)};
  for (int i = 0; i < count; ++i) {
    const double v = ((i + step) % 97) / 97.0;
    if (colour) {
      m.push_back(1);
      PutDouble(m, v);
    } else {
      m.push_back(2);
      PutDouble(m, v);
      PutDouble(m, 0.5 * v);
      PutDouble(m, 0.0);
    }
  }
  return m;
}

void SendChannels(benchmark::State& state, bool colour) {
  const int count = static_cast<int>(state.range(0));
  QuillonCtrl* ctrl = quillon_create();
  const std::string text = Document(count, colour);
  char* doc = const_cast<char*>(text.c_str());
  QuillonBytes r = quillon_InitializeViewer_v1(ctrl, &doc, nullptr, nullptr);
  quillon_free(r.data);
  // The messages carry no quality; infinite thresholds make the decoder's one nominal.
  quillon_SetMeaningfulThreshold(ctrl, std::numeric_limits<float>::infinity());
  quillon_SetNominalThreshold(ctrl, std::numeric_limits<float>::infinity());
  const std::vector<unsigned char> messages[2] = {Message(count, colour, 0), Message(count, colour, 1)};
  int which = 0;
  for (auto _ : state) {
    const auto& m = messages[which ^= 1];
    QuillonBytes result = quillon_SendChannels_v1(ctrl, m.data(), static_cast<long>(m.size()));
    if (result.size != 0) {
      state.SkipWithError(std::string(reinterpret_cast<char*>(result.data), result.size).c_str());
      quillon_free(result.data);
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * count);
  quillon_destroy(ctrl);
}

double GetDouble(const unsigned char* p) {
  double d;
  std::memcpy(&d, p, 8);
  return d;
}

// The built-in blue-to-red map of nine colours, as the colour routes use it.
constexpr float kMap[9][3] = {{0, 0, 0.5f}, {0, 0, 1},    {0, 0.5f, 1}, {0, 1, 1},   {0.5f, 1, 0.5f},
                              {1, 1, 0},    {1, 0.5f, 0}, {1, 0, 0},    {0.5f, 0, 0}};

void Floor(benchmark::State& state, bool colour) {
  const int count = static_cast<int>(state.range(0));
  osg::ref_ptr<osg::Group> root = new osg::Group;
  std::vector<osg::ref_ptr<osg::MatrixTransform>> transforms;
  std::vector<osg::ref_ptr<osg::Material>> materials;
  for (int i = 0; i < count; ++i) {
    transforms.push_back(new osg::MatrixTransform);
    transforms.back()->setDataVariance(osg::Object::DYNAMIC);
    materials.push_back(new osg::Material);
    materials.back()->setDataVariance(osg::Object::DYNAMIC);
    transforms.back()->getOrCreateStateSet()->setAttribute(materials.back().get());
    root->addChild(transforms.back().get());
  }
  const std::vector<unsigned char> messages[2] = {Message(count, colour, 0), Message(count, colour, 1)};
  int which = 0;
  for (auto _ : state) {
    const auto& m = messages[which ^= 1];
    const unsigned char* p = m.data() + 15;
    for (int i = 0; i < count; ++i) {
      if (colour) {
        const double x = std::clamp(GetDouble(p + 1), 0.0, 1.0);
        const float* c = kMap[std::min(8, static_cast<int>(std::floor(x * 9.0)))];
        materials[static_cast<std::size_t>(i)]->setDiffuse(osg::Material::FRONT_AND_BACK,
                                                           osg::Vec4(c[0], c[1], c[2], 1.0f));
        p += 9;
      } else {
        transforms[static_cast<std::size_t>(i)]->setMatrix(
            osg::Matrix::translate(GetDouble(p + 1) * 1000.0, GetDouble(p + 9) * 1000.0, GetDouble(p + 17) * 1000.0));
        p += 25;
      }
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * count);
}

// Loading and binding: N routes, one transform each, side by side or nested in one chain.
std::string RoutesDocument(int count, bool nested) {
  std::string scene, routes;
  for (int i = 0; i < count; ++i) {
    const std::string n = std::to_string(i);
    scene += "DEF T" + n + " Transform { translation 0 0.001 0 children [\n";
    if (!nested) scene += "] }\n";
    routes += "<ExternRoute from=\"Bench[0][" + n + "][3D]\" to=\"T" + n + ".translation\"/>\n";
  }
  if (nested)
    for (int i = 0; i < count; ++i) scene += "] }\n";
  return "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" + scene +
         "]]></Scene>\n" + routes + "</Visualisation>\n";
}

void LoadRoutes(benchmark::State& state, bool nested) {
  const std::string text = RoutesDocument(static_cast<int>(state.range(0)), nested);
  QuillonCtrl* ctrl = quillon_create();
  for (auto _ : state) {
    char* doc = const_cast<char*>(text.c_str());
    char* groups = nullptr;
    QuillonBytes r = quillon_InitializeViewer_v1(ctrl, &doc, nullptr, &groups);
    quillon_free(r.data);
    if (!groups || !*groups) state.SkipWithError("the document did not load");
    quillon_free(groups);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  quillon_destroy(ctrl);
}

void BM_LoadRoutes(benchmark::State& state) { LoadRoutes(state, false); }
void BM_LoadNestedRoutes(benchmark::State& state) { LoadRoutes(state, true); }

void BM_TranslationRoutes(benchmark::State& state) { SendChannels(state, false); }
void BM_TranslationFloor(benchmark::State& state) { Floor(state, false); }
void BM_ColourRoutes(benchmark::State& state) { SendChannels(state, true); }
void BM_ColourFloor(benchmark::State& state) { Floor(state, true); }

}  // namespace

BENCHMARK(BM_LoadRoutes)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadNestedRoutes)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TranslationRoutes)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TranslationFloor)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ColourRoutes)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ColourFloor)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
