#include "SoakDocument.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "channels/MessageBuilder.h"

namespace quillon::stress {
namespace {

const char* const kMaterialFields[] = {"transparency", "emissiveColor", "shininess"};

std::string Box(int t, double x, double y) {
  const std::string n = std::to_string(t);
  return "DEF T" + n + " Transform { translation " + std::to_string(x) + " " + std::to_string(y) +
         " 0 children [ Shape { appearance Appearance { material DEF M" + n +
         " Material { diffuseColor 0.8 0.8 0.8 } } geometry Box { size 0.02 0.02 0.02 } } ] } ";
}

double GridX(int i) { return (i % 20) * 0.05; }
double GridY(int i) { return (i / 20) * 0.05; }

}  // namespace

SoakDocument::SoakDocument(int count) : switches(count) {
  std::string scene = "#VRML V2.0 utf8\n";
  std::string routes;
  for (int i = 0; i < switches; ++i) {
    const int a = 2 * i, b = 2 * i + 1;
    scene += "DEF S" + std::to_string(i) + " Switch { whichChoice 0 choice [ " + Box(a, GridX(i), GridY(i)) +
             Box(b, GridX(i), GridY(i)) + "] }\n";
    auto from = [&](int slot, const char* kind) {
      return "Soak[1][" + std::to_string(5 * i + slot) + "][" + kind + "]";
    };
    routes += "  <ExternRoute from=\"" + from(0, "3D") + "\" to=\"T" + std::to_string(a) + ".translation\"/>\n";
    routes += "  <ExternRoute from=\"" + from(1, "6D") + "\" to=\"T" + std::to_string(b) + ".rotation\"/>\n";
    routes += "  <ExternRoute from=\"" + from(2, "1D") + "\" to=\"M" + std::to_string(a) + ".diffuseColor\"/>\n";
    routes += "  <ExternRoute from=\"" + from(3, "1D") + "\" to=\"M" + std::to_string(b) + "." +
              kMaterialFields[i % 3] + "\"/>\n";
    routes += "  <ExternRoute from=\"" + from(4, "1D") + "\" to=\"S" + std::to_string(i) + "\"/>\n";
  }
  text =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation>\n  <Label>Soak</Label>\n"
      "  <Version>1.0</Version>\n  <Settings><RenderInvalids>freeze</RenderInvalids></Settings>\n"
      "  <Scene format=\"VRML97\"><![CDATA[" +
      scene + "]]></Scene>\n" + routes + "</Visualisation>\n";
}

const std::vector<unsigned char>& SoakDocument::Message(std::uint64_t n) {
  test::MessageBuilder m;
  m.bytes.reserve(bytes.capacity());
  m.Header(0x001D, "Soak", 1, static_cast<std::uint16_t>(channels()));
  const double t = static_cast<double>(n) * 0.001;
  const auto stamp = static_cast<std::uint32_t>(n);
  // One block in 97 reports a quality between the thresholds, beyond them, or none at all.
  const int odd = static_cast<int>(n % 97);
  for (int i = 0; i < switches; ++i) {
    double quality = 0.0;
    if (i == odd) {
      const double odds[] = {50.0, 1000.0, std::numeric_limits<double>::quiet_NaN()};
      quality = odds[n % 3];
    }
    const double wave = std::sin(t + i);
    m.U8(2).F64(GridX(i) + 0.01 * wave).F64(GridY(i)).F64(0.01 * wave).F64(quality).U32(0).U32(stamp);
    const double c = std::cos(t + i), s = std::sin(t + i);
    m.U8(3).F64(GridX(i)).F64(GridY(i)).F64(0.0);
    for (double r : {c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0}) m.F64(r);
    m.F64(quality).U32(0).U32(stamp);
    m.U8(1).F64(0.5 + 0.5 * wave).F64(quality).U32(0).U32(stamp);
    m.U8(1).F64(0.25 + 0.25 * wave).F64(quality).U32(0).U32(stamp);
    m.U8(1).F64(wave > 0 ? 1.0 : 0.0).F64(quality).U32(0).U32(stamp);
  }
  bytes = std::move(m.bytes);
  return bytes;
}

std::vector<unsigned char> PlainMessage(const std::string& name, std::int32_t group, const std::string& kinds,
                                        std::uint64_t n) {
  std::vector<std::string> list;
  for (std::size_t at = 0; at < kinds.size();) {
    const std::size_t end = std::min(kinds.find(' ', at), kinds.size());
    if (end > at) list.push_back(kinds.substr(at, end - at));
    at = end + 1;
  }
  test::MessageBuilder m;
  m.Header(0x001D, name, group, static_cast<std::uint16_t>(list.size()));
  const double wave = std::sin(static_cast<double>(n) * 0.01);
  for (const std::string& kind : list) {
    if (kind == "3D") {
      m.U8(2).F64(0.05 * wave).F64(0.0).F64(0.0);
    } else if (kind == "6D") {
      m.U8(3).F64(0.0).F64(0.0).F64(0.0);
      for (double r : {std::cos(wave), std::sin(wave), 0.0, -std::sin(wave), std::cos(wave), 0.0, 0.0, 0.0, 1.0})
        m.F64(r);
    } else {
      m.U8(1).F64(0.5 + 0.5 * wave);
    }
    m.F64(0.0).U32(0).U32(static_cast<std::uint32_t>(n));
  }
  return std::move(m.bytes);
}

std::size_t ResidentBytes() {
  std::FILE* f = std::fopen("/proc/self/statm", "r");
  if (!f) return 0;
  unsigned long size = 0, resident = 0;
  const int read = std::fscanf(f, "%lu %lu", &size, &resident);
  std::fclose(f);
  return read == 2 ? resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) : 0;
}

}  // namespace quillon::stress
