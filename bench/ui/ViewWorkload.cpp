// Writes the workload of the viewer's frame-rate benchmark: a document of many parts whose
// materials follow 1D channels, and a recorded stream that sets every channel at a fixed rate.
//   ui_view_workload DOC.xml STREAM.qcs PARTS CHANNELS RATE_HZ SECONDS
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include "channels/ChannelStream.h"

namespace {

constexpr const char* kControlPath = "Bench";
constexpr int kGroup = 1;

bool writeDocument(const std::string& path, long parts, long channels) {
  std::ofstream out(path, std::ios::binary);
  out << "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation>\n  <Label>" << parts << " parts, "
      << channels
      << " channels</Label>\n  <Version>1.0</Version>\n  <Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n";
  const long side = static_cast<long>(std::ceil(std::sqrt(static_cast<double>(parts))));
  static const char* const shapes[] = {"Box { size 0.03 0.04 0.02 }", "Sphere { radius 0.015 }",
                                       "Cone { bottomRadius 0.015 height 0.04 }",
                                       "Cylinder { radius 0.015 height 0.04 }"};
  char part[512];
  for (long i = 0; i < parts; ++i) {
    const int n =
        std::snprintf(part, sizeof part,
                      "Transform { translation %.3f 0 %.3f rotation 0 1 0 %.2f children [ Shape { "
                      "appearance Appearance { material DEF Mat%ld Material { diffuseColor %.2f %.2f %.2f } "
                      "} geometry %s } ] }\n",
                      0.05 * static_cast<double>(i % side), 0.05 * static_cast<double>(i / side),
                      0.01 * static_cast<double>(i % 314), i, 0.3 + 0.1 * static_cast<double>(i % 7),
                      0.3 + 0.1 * static_cast<double>(i % 5), 0.3 + 0.1 * static_cast<double>(i % 3), shapes[i % 4]);
    out.write(part, n);
  }
  out << "]]></Scene>\n";
  for (long c = 0; c < channels; ++c)
    out << "  <ExternRoute from=\"" << kControlPath << "[" << kGroup << "][" << c << "][1D]\" to=\"Mat"
        << c * parts / channels << ".diffuseColor\"/>\n";
  out << "</Visualisation>\n";
  return static_cast<bool>(out);
}

void put(std::vector<unsigned char>& m, std::uint64_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) m.push_back(static_cast<unsigned char>(v >> (8 * i)));
}

// One message setting every channel: values only (flags 0x0001), each record a type byte 1 and
// a double.
std::vector<unsigned char> message(long channels, double seconds) {
  std::vector<unsigned char> m;
  const std::string name = kControlPath;
  put(m, 0x0001, 2);
  put(m, name.size(), 2);
  m.insert(m.end(), name.begin(), name.end());
  put(m, kGroup, 4);
  put(m, static_cast<std::uint64_t>(channels), 2);
  for (long c = 0; c < channels; ++c) {
    const double phase = static_cast<double>(c) / static_cast<double>(channels);
    const double value = 0.5 + 0.5 * std::sin(2 * std::numbers::pi * (0.5 * seconds + phase));
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    m.push_back(1);
    put(m, bits, 8);
  }
  return m;
}

bool writeStream(const std::string& path, long channels, long rate, double seconds) {
  std::ofstream out(path, std::ios::binary);
  quillon::ChannelStreamWriter writer(out);
  const long count = static_cast<long>(static_cast<double>(rate) * seconds);
  for (long i = 0; i < count; ++i) {
    const double t = static_cast<double>(i) / static_cast<double>(rate);
    const std::vector<unsigned char> m = message(channels, t);
    if (!writer.Write(static_cast<std::uint64_t>(std::llround(t * 1e6)), m.data(), m.size())) return false;
  }
  return writer.Good();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 7) {
    std::fprintf(stderr, "usage: ui_view_workload DOC.xml STREAM.qcs PARTS CHANNELS RATE_HZ SECONDS\n");
    return 2;
  }
  const long parts = std::atol(argv[3]), channels = std::atol(argv[4]), rate = std::atol(argv[5]);
  const double seconds = std::atof(argv[6]);
  if (parts < 1 || channels < 1 || channels > parts || channels > 65535 || rate < 1 || !(seconds > 0)) {
    std::fprintf(stderr, "ui_view_workload: need 1 <= CHANNELS <= PARTS, CHANNELS < 65536, RATE_HZ >= 1\n");
    return 2;
  }
  if (!writeDocument(argv[1], parts, channels) || !writeStream(argv[2], channels, rate, seconds)) {
    std::fprintf(stderr, "ui_view_workload: cannot write the workload\n");
    return 1;
  }
  return 0;
}
