// Numbers, texts and channel messages for the random host, and the real inputs of the tree.
#include "HostInputs.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

#include "channels/MessageBuilder.h"

namespace quillon::stress {
namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<fs::path> FilesIn(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(folder, ec))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());  // the same order on every machine, for replays
  return files;
}

// The messages of a .qcs recording; a cut-short record ends the list.
void AddRecording(const std::string& bytes, std::vector<std::vector<unsigned char>>& messages) {
  if (bytes.compare(0, 4, "QCS1") != 0) return;
  std::size_t at = 4;
  while (at + 12 <= bytes.size()) {
    std::uint32_t n = 0;
    for (int i = 3; i >= 0; --i) n = (n << 8) | static_cast<unsigned char>(bytes[at + 8 + static_cast<std::size_t>(i)]);
    at += 12;
    if (n > bytes.size() - at) return;
    messages.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                          bytes.begin() + static_cast<std::ptrdiff_t>(at + n));
    at += n;
  }
}

constexpr std::uint8_t TypeByte(Kind kind) { return static_cast<std::uint8_t>(static_cast<int>(kind) + 1); }

}  // namespace

RealInputs RealInputs::Load(const std::string& sourceDir) {
  RealInputs real;
  const fs::path root(sourceDir);
  for (const fs::path& f : FilesIn(root / "examples")) {
    if (f.extension() == ".xml") real.documents.push_back(ReadFile(f));
    if (f.extension() == ".qcs") AddRecording(ReadFile(f), real.messages);
  }
  for (const char* folder : {"tests/visualisation/corpus/fuzz_document", "tests/visualisation/corpus/fuzz_markup"})
    for (const fs::path& f : FilesIn(root / folder)) real.documents.push_back(ReadFile(f));
  for (const fs::path& f : FilesIn(root / "tests/vrml/corpus"))
    real.documents.push_back("<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[" + ReadFile(f) +
                             "]]></Scene></Visualisation>");
  for (const fs::path& f : FilesIn(root / "tests/channels/corpus/fuzz_channelgroup_decoder")) {
    const std::string bytes = ReadFile(f);
    real.messages.emplace_back(bytes.begin(), bytes.end());
  }
  return real;
}

std::string InputMaker::Number() {
  static const std::vector<std::string> plain = {"0.1", "0.3", "0.5", "1", "2", "0.05", "-0.2"};
  static const std::vector<std::string> odd = {
      "0",    "-1",   "-3",    "128",  "1e30",  "nan", "-nan",  "inf",
      "-inf", "1e39", "-1e39", "3e38", "1e-45", "-0",  "0x1p3", "12345678901234567890"};
  return Chance(85) ? OneOf(plain) : OneOf(odd);
}

std::string InputMaker::Numbers(int n) {
  std::string s;
  for (int i = 0; i < n; ++i) s += Number() + " ";
  return s;
}

float InputMaker::AnyFloat() {
  static const std::vector<float> edge = {std::numeric_limits<float>::quiet_NaN(),
                                          std::numeric_limits<float>::infinity(),
                                          -std::numeric_limits<float>::infinity(),
                                          0.0f,
                                          -0.0f,
                                          std::numeric_limits<float>::max(),
                                          std::numeric_limits<float>::lowest(),
                                          std::numeric_limits<float>::denorm_min(),
                                          1e30f,
                                          100.0f};
  if (Chance(70)) return std::uniform_real_distribution<float>(-1.0f, 2.0f)(random);
  return OneOf(edge);
}

double InputMaker::AnyDouble() {
  static const std::vector<double> edge = {std::numeric_limits<double>::quiet_NaN(),
                                           std::numeric_limits<double>::infinity(),
                                           -std::numeric_limits<double>::infinity(),
                                           std::numeric_limits<double>::max(),
                                           std::numeric_limits<double>::lowest(),
                                           std::numeric_limits<double>::denorm_min(),
                                           1e39,
                                           -1e39,
                                           0.0,
                                           -0.0};
  if (Chance(80)) return std::uniform_real_distribution<double>(-1.0, 2.0)(random);
  return OneOf(edge);
}

int InputMaker::WindowSize() {
  static const std::vector<int> edge = {0, -1, -100, INT_MIN, INT_MAX, 16385, 1, 463, 480, 2048, 4096};
  return Chance(85) ? Pick(1, 300) : OneOf(edge);
}

std::string InputMaker::CameraText(int slot) {
  static const std::vector<std::string> odd = {"nan",    "inf",      "-inf",     "0",  "-1",   "1e308",
                                               "-1e308", "4.9e-324", "1e-30",    "",   "x",    "%n%s%n",
                                               "0x1p3",  "-0",       "infinity", " 1", "1,2,3"};
  if (Chance(5)) return std::string(static_cast<std::size_t>(Pick(1, 5000)), static_cast<char>(Chance(50) ? '9' : ' '));
  const int count = slot == 0 ? 3 : slot == 1 ? 4 : 1;
  std::string text;
  const int written = Chance(90) ? count : Pick(0, count + 1);
  for (int i = 0; i < written; ++i) {
    if (i) text += " ";
    if (Chance(85)) {
      double v = std::uniform_real_distribution<double>(-5.0, 5.0)(random);
      if (slot >= 2) v = std::abs(v) + (slot == 3 ? 10.0 : 0.01);
      text += std::to_string(v);
    } else {
      text += OneOf(odd);
    }
  }
  return text;
}

std::string InputMaker::NodeName(const Document& document) {
  const int form = Pick(0, 9);
  if (form < 6 && !document.names.empty()) return OneOf(document.names);
  if (form == 6) return "";
  if (form == 7) return "T1x";
  if (form == 8) return std::string(static_cast<std::size_t>(Pick(1, 10000)), 'N');
  std::string s(static_cast<std::size_t>(Pick(1, 16)), ' ');
  for (char& c : s) c = static_cast<char>(Pick(1, 255));
  return s;
}

std::vector<unsigned char> InputMaker::MessageFor(const Document& document) {
  test::MessageBuilder m;
  std::string name = "Probe1";
  std::int32_t group = 2;
  std::map<std::uint32_t, Kind> kinds;
  if (!document.routes.empty()) {
    const Route& chosen = OneOf(document.routes);
    name = chosen.name;
    group = chosen.group;
    for (const Route& r : document.routes)
      if (r.name == name && r.group == group && r.channel < 4096) kinds[r.channel] = r.kind;
  }
  const std::uint32_t count = kinds.empty() ? static_cast<std::uint32_t>(Pick(0, 8)) : kinds.rbegin()->first + 1;
  const bool quality = Chance(70);
  const bool tail = Chance(85);
  const auto flags = static_cast<std::uint16_t>(0x0001 | (tail ? 0x000C : 0) | (quality ? 0x0010 : 0));
  m.Header(flags, name, group, static_cast<std::uint16_t>(count));
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto found = kinds.find(i);
    const Kind kind = found != kinds.end() ? found->second : static_cast<Kind>(Pick(0, 3));
    m.U8(TypeByte(kind));
    auto value = [&](double lo, double hi) {
      return Chance(95) ? std::uniform_real_distribution<double>(lo, hi)(random) : AnyDouble();
    };
    switch (kind) {
      case Kind::D1:
        m.F64(value(-0.5, 1.5));
        break;
      case Kind::D3:
        m.F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5));
        break;
      case Kind::D6: {
        m.F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5));
        // A turn about z, written column by column; now and then not a rotation at all.
        const double a = value(-3.2, 3.2), c = std::cos(a), s = std::sin(a);
        for (double r : {c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0}) m.F64(Chance(98) ? r : AnyDouble());
        break;
      }
      case Kind::Time:
        m.F64(value(0.0, 1e6));
        break;
    }
    if (quality) m.F64(Chance(90) ? std::uniform_real_distribution<double>(-1.0, 150.0)(random) : AnyDouble());
    if (tail) m.U32(static_cast<std::uint32_t>(Pick(0, 3))).U32(static_cast<std::uint32_t>(Pick(0, INT_MAX)));
  }
  return std::move(m.bytes);
}

std::vector<unsigned char> InputMaker::AnyMessage(const Document& document, const Document& other) {
  const int form = Pick(0, 99);
  if (form < 45) return MessageFor(document);
  if (form < 55) return MessageFor(other);
  if (form < 65) {
    std::vector<unsigned char> m = MessageFor(document);
    m.resize(static_cast<std::size_t>(Pick(0, static_cast<int>(m.size()))));
    return m;
  }
  if (form < 72) {
    std::vector<unsigned char> m = MessageFor(document);
    const int flips = Pick(1, 6);
    for (int i = 0; i < flips && !m.empty(); ++i)
      m[static_cast<std::size_t>(Pick(0, static_cast<int>(m.size()) - 1))] = static_cast<unsigned char>(Pick(0, 255));
    return m;
  }
  if (form < 80) {
    std::vector<unsigned char> m(static_cast<std::size_t>(Pick(0, 300)));
    for (unsigned char& b : m) b = static_cast<unsigned char>(Pick(0, 255));
    return m;
  }
  if (form < 90 && !real.messages.empty()) return OneOf(real.messages);
  // Headers that promise what the bytes do not hold.
  test::MessageBuilder m;
  switch (Pick(0, 4)) {
    case 0:
      m.Header(0x001D, "Probe1", 2, 65535);
      break;
    case 1:
      m.U16(0x000D).U16(65535).U8('P');
      break;
    case 2:
      m.Header(0xFFFF, "Arm", 0, 3).U8(1).F64(1.0);
      break;
    case 3:
      m.Header(0x000D, "A_2", -1, 3)
          .U8(1)
          .F64(0.5)
          .U32(0)
          .U32(0)
          .U8(static_cast<std::uint8_t>(OneOf(std::vector<int>{0, 5, 255})))
          .F64(1.0);
      break;
    default:
      m.Header(0x0001, "", 0, 0);
  }
  return std::move(m.bytes);
}

}  // namespace quillon::stress
