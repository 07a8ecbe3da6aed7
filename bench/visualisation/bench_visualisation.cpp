// The XML reader on a 50 MB document, and a document of 10,000 routes read without a scene
// graph behind it.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "visualisation/CMarkupSTL.h"
#include "visualisation/IMappingRegistrar.h"
#include "visualisation/ZrXMLParser.h"

namespace {

// Plain nested elements with attributes, about 50 MB.
std::string NestedDocument(std::size_t bytes) {
  std::string doc = "<?xml version=\"1.0\"?>\n<Measurements>\n";
  for (int group = 0; doc.size() < bytes; ++group) {
    doc += "  <Group id=\"" + std::to_string(group) + "\" name=\"station\" unit='mm'>\n";
    for (int item = 0; item < 8; ++item) {
      doc += "    <Item index=\"" + std::to_string(item) +
             "\" value=\"12.5\" quality=\"nominal\">\n"
             "      <Limits low=\"-1.0\" high=\"1.0\"/>\n"
             "      <Note author=\"x\">reading &amp; check</Note>\n"
             "    </Item>\n";
    }
    doc += "  </Group>\n";
  }
  doc += "</Measurements>\n";
  return doc;
}

void BM_LoadText50MB(benchmark::State& state) {
  const std::string doc = NestedDocument(50u << 20);
  quillon::CMarkupSTL xml;
  for (auto _ : state) {
    std::string copy = doc;
    benchmark::DoNotOptimize(xml.LoadText(std::move(copy)));
  }
  if (!xml.IsWellFormed()) state.SkipWithError("document did not load");
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(doc.size()));
}
BENCHMARK(BM_LoadText50MB)->Unit(benchmark::kMillisecond);

struct Registrar : quillon::IMappingRegistrar {
  quillon::ErrorCode RegisterInDecoder(const std::string&, std::int32_t, std::uint32_t,
                                       std::unique_ptr<quillon::ZrValueDecodingCallbackInterface>) override {
    return 0;
  }
  void ClearMappings() override {}
};

void BM_Parse10000Routes(benchmark::State& state) {
  std::string doc =
      "<Visualisation><Label>routes</Label><Version>1.0</Version><Settings><RenderInvalids>freeze"
      "</RenderInvalids></Settings><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\nDEF T Transform { }]]>"
      "</Scene>\n";
  for (int i = 0; i < 10000; ++i)
    doc += "  <ExternRoute from=\"Probe" + std::to_string(i % 50) + "[" + std::to_string(i / 100) + "][" +
           std::to_string(i % 100) + "][1D]\" to=\"Node" + std::to_string(i) + ".diffuseColor\" scale=\"0.5\"/>\n";
  doc += "</Visualisation>\n";
  quillon::ZrXMLParser parser;  // no scene graph: the scene is read, not built
  Registrar registrar;
  std::string annotated, needed;
  for (auto _ : state) benchmark::DoNotOptimize(parser.Parse(registrar, doc, &annotated, &needed));
  if (parser.Routes().size() != 10000) state.SkipWithError("routes missing");
}
BENCHMARK(BM_Parse10000Routes)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
