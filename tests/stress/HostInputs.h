#pragma once
// What the random host hands the viewer: generated scenes with routes in every form, texts that
// no document should be, numbers, camera texts and channel messages, and the real inputs of the
// tree, all drawn from one random engine so that a seed makes them again.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "channels/MessageBuilder.h"

namespace quillon::stress {

using Random = std::mt19937_64;

enum class Kind { D1, D3, D6, Time };

/// A route that a document names in good form (it may still bind to nothing in the scene).
struct Route {
  std::string name;
  std::int32_t group = 0;
  std::uint32_t channel = 0;
  Kind kind = Kind::D1;
};

/// A document with what its host knows about it.
struct Document {
  std::string xml;
  std::vector<Route> routes;
  std::vector<std::string> names;  // DEF names of its scene
};

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

const std::vector<std::string> kMaterialFields = {"diffuseColor", "emissiveColor", "specularColor",
                                                  "shininess",    "transparency",  "ambientIntensity"};
const std::vector<std::string> kPathNames = {"Probe1", "Arm", "A_2"};
const std::vector<std::int32_t> kGroups = {0, 2, -1, 2147483647};
// A document around a VRML scene, before and after it.
const std::string kSceneHead =
    "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n";
const std::string kSceneTail = "]]></Scene></Visualisation>";

// Texts separated by '|', for long tables of short ones.
std::vector<std::string> Split(std::string_view text) {
  std::vector<std::string> parts(1);
  for (char c : text)
    if (c == '|')
      parts.emplace_back();
    else
      parts.back().push_back(c);
  return parts;
}

const std::vector<std::string> kBadFroms = Split(
    "Probe1 [2][0][1D]|Probe1[2][0]|Probe1[2][0][2D]|1Probe[2][0][1D]|[2][0][1D]|Probe1[][0][1D]|"
    "Probe1[123456789][0][1D]|Probe1[x][0][1D]|Probe1[2][0][1d]|Probe1[2[0]][1D]|Pro-be[2][0][3D]|Probe1]2[[0][1D]|"
    "Probe1[2][0][Time ]|Probe1[+0][-0][6D]|Probe1[2][0][3D]x||Probe1[2][4294967296][1D]");
const std::vector<std::string> kBadTos =
    Split("|.diffuseColor|M.|M.a.b|M .diffuseColor|Nowhere|Nowhere.translation|T0.whichChoice|S0.whichChoice|\xe9");
const std::vector<std::string> kScales = {"1",  "0.5",   "-2",  "0",   "0.0", "-0",     "abc",
                                          "2x", "1e308", "nan", "inf", "",    "1e-320", "   3"};

std::string Escaped(const std::string& text) {
  std::string out;
  for (char c : text) out += c == '<' ? "&lt;" : c == '&' ? "&amp;" : c == '"' ? "&quot;" : std::string(1, c);
  return out;
}

const char* KindText(Kind kind) { return std::array{"1D", "3D", "6D", "Time"}[static_cast<std::size_t>(kind)]; }

constexpr std::uint8_t TypeByte(Kind kind) { return static_cast<std::uint8_t>(static_cast<int>(kind) + 1); }

}  // namespace

/// Files of the source tree that hosts really send: example documents, VRML files and
/// recorded messages. Missing folders are passed over.
struct RealInputs {
  std::vector<std::string> documents;
  std::vector<std::vector<unsigned char>> messages;

  static RealInputs Load(const std::string& sourceDir) {
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
};

class InputMaker {
 public:
  InputMaker(Random& engine, const RealInputs& inputs) : random(engine), real(inputs) {}

  /// Any document: generated (mostly well-formed), real, mutated, an edge text or garbage.
  Document AnyDocument() {
    const int form = Pick(0, 99);
    if (form < 15) return GoodDocument();
    Document d;
    if (form < 30 && !real.documents.empty()) {
      d.xml = OneOf(real.documents);
      if (Chance(40)) d.xml = Mutated(d.xml);
      return d;
    }
    if (form < 40) {
      d.xml = EdgeText();
      return d;
    }
    // Generated, with faults here and there.
    Forget();
    const std::string scene = Scene(d, !Chance(20));
    std::string xml;
    if (Chance(70)) xml += "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n";
    xml += "<Visualisation>\n";
    if (Chance(50)) xml += "<Label>" + Escaped(Chance(90) ? "A label" : "L\xe9 <&> \x01") + "</Label>\n";
    if (Chance(95)) xml += "<Version>" + std::string(Chance(95) ? "1.0" : "1.00") + "</Version>\n";
    if (Chance(40)) {
      xml += "<Settings>";
      if (Chance(60))
        xml += "<RenderInvalids>" + OneOf(std::vector<std::string>{"hide", "freeze", "Hide", ""}) + "</RenderInvalids>";
      if (Chance(50)) xml += ColourMap("ColourMap", false);
      if (Chance(30)) xml += ColourMap("InvalidColourMap", true);
      xml += "</Settings>\n";
    }
    const bool cdata = Chance(80);
    xml += "<Scene format=\"" + std::string(Chance(95) ? "VRML97" : "vrml97") + "\">" +
           (cdata ? "<![CDATA[" + scene + "]]>" : Escaped(scene)) + "</Scene>\n";
    const int routes = Pick(0, 16);
    for (int i = 0; i < routes; ++i) xml += RouteElement(d, false);
    if (Chance(3)) xml += "<Scene format=\"VRML97\">#VRML V2.0 utf8\n</Scene>";
    d.xml = xml + "</Visualisation>\n";
    if (Chance(10)) d.xml = Mutated(d.xml);
    return d;
  }

  /// A generated document in good form whose routes all bind.
  Document GoodDocument() {
    Forget();
    Document d;
    // Copies would put a route's target into the scene more than once.
    allowUse = false;
    const std::string scene = Scene(d, true);
    allowUse = true;
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<Visualisation>\n  <Label>Stress</Label>\n"
        "  <Version>1.0</Version>\n";
    if (Chance(50)) {
      xml += "  <Settings><RenderInvalids>" + std::string(Chance(50) ? "hide" : "freeze") + "</RenderInvalids>";
      if (Chance(50)) xml += ColourMap("ColourMap", false);
      xml += "</Settings>\n";
    }
    xml += "  <Scene format=\"VRML97\"><![CDATA[" + scene + "]]></Scene>\n";
    // Routes to transforms first, so that no cascading route comes before a plain one.
    std::string plain, cascading;
    const int routes = Pick(0, 12);
    for (int i = 0; i < routes; ++i) {
      const std::string element = RouteElement(d, true);
      (element.find("ExternRouteToChildren") != std::string::npos ? cascading : plain) += element;
    }
    d.xml = xml + plain + cascading + "</Visualisation>\n";
    return d;
  }

  /// A message that the document's routes expect, one group of it, in the kinds they name.
  std::vector<unsigned char> MessageFor(const Document& document) {
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
      if (kind == Kind::D1) m.F64(value(-0.5, 1.5));
      if (kind == Kind::Time) m.F64(value(0.0, 1e6));
      if (kind == Kind::D3 || kind == Kind::D6) m.F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5)).F64(value(-0.5, 0.5));
      if (kind == Kind::D6) {
        // A turn about z, written column by column; now and then not a rotation at all.
        const double a = value(-3.2, 3.2), c = std::cos(a), s = std::sin(a);
        for (double r : {c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0}) m.F64(Chance(98) ? r : AnyDouble());
      }
      if (quality) m.F64(Chance(90) ? std::uniform_real_distribution<double>(-1.0, 150.0)(random) : AnyDouble());
      if (tail) m.U32(static_cast<std::uint32_t>(Pick(0, 3))).U32(static_cast<std::uint32_t>(Pick(0, INT_MAX)));
    }
    return std::move(m.bytes);
  }

  /// Any message: for this document or another, cut short, flipped, random or real.
  std::vector<unsigned char> AnyMessage(const Document& document, const Document& other) {
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
    const int lie = Pick(0, 4);
    if (lie == 0) m.Header(0x001D, "Probe1", 2, 65535);
    if (lie == 1) m.U16(0x000D).U16(65535).U8('P');
    if (lie == 2) m.Header(0xFFFF, "Arm", 0, 3).U8(1).F64(1.0);
    if (lie == 3) {
      const auto type = static_cast<std::uint8_t>(OneOf(std::vector<int>{0, 5, 255}));
      m.Header(0x000D, "A_2", -1, 3).U8(1).F64(0.5).U32(0).U32(0).U8(type).F64(1.0);
    }
    if (lie == 4) m.Header(0x0001, "", 0, 0);
    return std::move(m.bytes);
  }

  /// One of the six camera texts, slot 0 to 5, good or bad.
  std::string CameraText(int slot) {
    static const std::vector<std::string> odd = {"nan",    "inf",      "-inf",     "0",  "-1",   "1e308",
                                                 "-1e308", "4.9e-324", "1e-30",    "",   "x",    "%n%s%n",
                                                 "0x1p3",  "-0",       "infinity", " 1", "1,2,3"};
    if (Chance(5))
      return std::string(static_cast<std::size_t>(Pick(1, 5000)), static_cast<char>(Chance(50) ? '9' : ' '));
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

  /// A node name: one of the document's, a near miss, or nonsense.
  std::string NodeName(const Document& document) {
    const int form = Pick(0, 9);
    if (form < 6 && !document.names.empty()) return OneOf(document.names);
    if (form == 6) return "";
    if (form == 7) return "T1x";
    if (form == 8) return std::string(static_cast<std::size_t>(Pick(1, 10000)), 'N');
    std::string s(static_cast<std::size_t>(Pick(1, 16)), ' ');
    for (char& c : s) c = static_cast<char>(Pick(1, 255));
    return s;
  }

  /// A float for a threshold or a colour: ordinary, edge, or not a number.
  float AnyFloat() {
    using F = std::numeric_limits<float>;
    static const std::vector<float> edge = {F::quiet_NaN(), F::infinity(), -F::infinity(),  0.0f,  -0.0f,
                                            F::max(),       F::lowest(),   F::denorm_min(), 1e30f, 100.0f};
    if (Chance(70)) return std::uniform_real_distribution<float>(-1.0f, 2.0f)(random);
    return OneOf(edge);
  }

  double AnyDouble() {
    using D = std::numeric_limits<double>;
    static const std::vector<double> edge = {D::quiet_NaN(),  D::infinity(), -D::infinity(), D::max(), D::lowest(),
                                             D::denorm_min(), 1e39,          -1e39,          0.0,      -0.0};
    if (Chance(80)) return std::uniform_real_distribution<double>(-1.0, 2.0)(random);
    return OneOf(edge);
  }

  /// A window size: mostly small, sometimes zero, negative, or at the limits.
  int WindowSize() {
    static const std::vector<int> edge = {0, -1, -100, INT_MIN, INT_MAX, 16385, 1, 463, 480, 2048, 4096};
    return Chance(85) ? Pick(1, 300) : OneOf(edge);
  }

  int Pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); }
  bool Chance(int percent) { return Pick(0, 99) < percent; }
  template <class T>
  const T& OneOf(const std::vector<T>& v) {
    return v[static_cast<std::size_t>(Pick(0, static_cast<int>(v.size()) - 1))];
  }

 private:
  std::string Number() {
    static const std::vector<std::string> plain = {"0.1", "0.3", "0.5", "1", "2", "0.05", "-0.2"};
    static const std::vector<std::string> odd = {
        "0",    "-1",   "-3",    "128",  "1e30",  "nan", "-nan",  "inf",
        "-inf", "1e39", "-1e39", "3e38", "1e-45", "-0",  "0x1p3", "12345678901234567890"};
    return Chance(85) ? OneOf(plain) : OneOf(odd);
  }

  std::string Numbers(int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s += Number() + " ";
    return s;
  }

  std::string Name(const char* prefix) { return prefix + std::to_string(nextName++); }

  std::string Scene(Document& document, bool wellFormed) {
    std::string text = "#VRML V2.0 utf8\n";
    const int roots = Pick(1, 4);
    for (int i = 0; i < roots; ++i) text += Node(document, 0) + "\n";
    if (!wellFormed) {
      if (Chance(20)) text.resize(static_cast<std::size_t>(Pick(0, static_cast<int>(text.size()))));
      if (Chance(10)) text += " } ] DEF { USE ";
      if (Chance(10)) text.replace(0, 15, OneOf(std::vector<std::string>{"#VRML V1.0 ascii", "#VRML V2.0 utf8x", ""}));
    }
    return text;
  }

  std::string Node(Document& document, int depth) {
    const int kind = depth >= 4 ? 0 : Pick(0, 9);
    if (kind == 5) {
      // A copy of a finished group; never one of the transforms, which routes may move.
      if (allowUse && !groups.empty() && Chance(60)) return "USE " + OneOf(groups) + " ";
      return "WorldInfo { title \"x\" } ";
    }
    if (kind == 6) return Chance(50) ? "Viewpoint { position 0 0 10 } " : "PointLight { location 1 1 1 } ";
    if (kind == 0 || kind > 6) return Shape(document);
    const std::string name = Name(kind <= 2 ? "T" : kind == 3 ? "S" : "G");
    document.names.push_back(name);
    if (kind == 3) {
      switches.push_back(name);
      return "DEF " + name + " Switch { whichChoice " + std::to_string(Pick(-2, 3)) + " choice " +
             Children(document, depth) + "} ";
    }
    if (kind == 4) {
      std::string s = "DEF " + name + " Group { children " + Children(document, depth) + "} ";
      groups.push_back(name);
      return s;
    }
    std::string s = "DEF " + name + " Transform { translation " + Numbers(3);
    if (Chance(40)) s += "rotation " + Numbers(4) + "scale " + Numbers(3);
    if (Chance(20)) s += "center " + Numbers(3) + "scaleOrientation " + Numbers(4);
    s += "children " + Children(document, depth) + "} ";
    transforms.push_back(name);
    return s;
  }

  std::string Shape(Document& document) {
    std::string s = "Shape { ";
    if (Chance(80)) {
      s += "appearance Appearance { material ";
      if (Chance(60)) {
        const std::string name = Name("M");
        materials.push_back(name);
        document.names.push_back(name);
        s += "DEF " + name + " ";
      }
      s += "Material { ";
      for (const std::string& field : kMaterialFields) {
        if (Chance(50)) continue;
        s += field + " " + Numbers(field.find("Color") != std::string::npos ? 3 : 1);
      }
      s += "} } ";
    }
    if (Chance(95)) s += "geometry " + Geometry();
    return s + "} ";
  }

  std::string Geometry() {
    const int form = Pick(0, 5);
    if (form == 0) return "Box { size " + Numbers(3) + "} ";
    if (form == 1) return "Sphere { radius " + Number() + " } ";
    if (form == 2)
      return "Cone { bottomRadius " + Number() + " height " + Number() + " side " + (Chance(50) ? "TRUE" : "FALSE") +
             " } ";
    if (form == 3) return "Cylinder { radius " + Number() + " height " + Number() + " top FALSE } ";
    std::string s = Chance(80) ? "IndexedFaceSet { " : "IndexedLineSet { ";
    s += "coord Coordinate { point [ ";
    const int points = Pick(0, 8);
    for (int i = 0; i < points; ++i)
      s += (Chance(70) ? std::to_string(i % 3) + " " + std::to_string(i / 3) + " 0" : Numbers(3)) + ", ";
    s += "] } coordIndex [ ";
    const int indices = Pick(0, 16);
    for (int i = 0; i < indices; ++i)
      s += std::to_string(Chance(85) ? Pick(-1, points) : Pick(-1000, 1000) * 1000003) + " ";
    s += "] ";
    if (Chance(30)) s += "color Color { color [ " + Numbers(3) + ", " + Numbers(3) + "] } colorPerVertex FALSE ";
    if (Chance(20)) s += "normal Normal { vector [ " + Numbers(3) + "] } ";
    if (Chance(20)) s += "creaseAngle " + Number() + " ccw FALSE solid FALSE convex FALSE ";
    return s + "} ";
  }

  std::string Children(Document& document, int depth) {
    std::string s = "[ ";
    const int n = Pick(0, 3);
    for (int i = 0; i < n; ++i) s += Node(document, depth + 1);
    return s + "] ";
  }

  std::string RouteElement(Document& document, bool good) {
    // A target and a kind that fit it; a good route names each channel once.
    Route route;
    route.name = OneOf(kPathNames);
    route.group = OneOf(kGroups);
    std::string to, field;
    bool toChildren = false;
    const int target = Pick(0, 3);
    if (target == 0 && !transforms.empty()) {
      to = OneOf(transforms);
      route.kind = Chance(50) ? Kind::D3 : Kind::D6;
      if (Chance(70)) to += route.kind == Kind::D3 ? ".translation" : ".rotation";
    } else if (target == 1 && !switches.empty()) {
      to = OneOf(switches);
      route.kind = Kind::D1;
    } else if (target == 2 && !groups.empty()) {
      to = OneOf(groups) + "." + OneOf(kMaterialFields);
      route.kind = Kind::D1;
      toChildren = true;
    } else if (!materials.empty()) {
      to = OneOf(materials) + "." + OneOf(kMaterialFields);
      route.kind = Kind::D1;
    } else {
      to = "Nowhere";
      route.kind = Kind::Time;
    }
    if (!good) {
      if (Chance(15)) route.kind = static_cast<Kind>(Pick(0, 3));
      if (Chance(15)) to = OneOf(kBadTos);
      if (Chance(10)) toChildren = !toChildren;
    }
    if (good) {
      // One route a target: a second would be refused.
      if (std::find(targets.begin(), targets.end(), to) != targets.end()) return {};
      targets.push_back(to);
    }
    route.channel = static_cast<std::uint32_t>(document.routes.size());
    if (!good && Chance(5)) route.channel = OneOf(std::vector<std::uint32_t>{0, 65534, 65535, 99999999});
    const std::string element = toChildren ? "ExternRouteToChildren" : "ExternRoute";
    std::string s =
        "  <" + element + " from=\"" + Escaped(From(route, good || Chance(80))) + "\" to=\"" + Escaped(to) + "\"";
    if (Chance(30)) s += " scale=\"" + Escaped(good ? "0.5" : OneOf(kScales)) + "\"";
    std::string maps;
    if (Chance(15)) maps += ColourMap("ColourMap", false);
    if (Chance(10)) maps += ColourMap("InvalidColourMap", true);
    if (!good && Chance(3)) maps += ColourMap("ColourMap", false);
    s += maps.empty() ? "/>\n" : ">" + maps + "</" + element + ">\n";
    document.routes.push_back(route);
    return s;
  }

  std::string From(const Route& route, bool good) {
    if (!good && Chance(70)) return OneOf(kBadFroms);
    return route.name + "[" + std::to_string(route.group) + "][" + std::to_string(route.channel) + "][" +
           KindText(route.kind) + "]";
  }

  std::string ColourMap(const char* element, bool invalidOnly) {
    static const std::vector<std::string> good = {"[0, 0, 1; 0, 1, 0; 1, 0, 0]", "[0.5, 0.5, 0.5]", "[1, 0, 0]"};
    static const std::vector<std::string> bad = {
        "[0, 0; 1, 1]", "[", "[nan, inf, -1]", "[1e308, -1e308, 0]", "", "[1, 0, 0; 0, 1, 0]", "[a, b, c]", "[1,,2]",
        "[;;;]",        "]["};
    std::string map = invalidOnly ? good[2] : OneOf(good);
    if (Chance(15)) map = OneOf(bad);
    if (Chance(3)) {
      map = "[";
      const int rows = Pick(1, 3000);
      for (int i = 0; i < rows; ++i) map += (i ? "; " : "") + Numbers(3);
      map += "]";
    }
    return "<" + std::string(element) + ">" + Escaped(map) + "</" + element + ">";
  }

  std::string EdgeText() {
    const int form = Pick(0, 11);
    if (form == 0) {
      static const std::vector<std::string> small = Split(
          "| |<|>|<Visualisation>|<Visualisation></Visualisation>|<?xml?>|<!---->|<![CDATA[|&|&#0;|&#xFFFFFFFF;|"
          "<a b='|<Visualisation><Version>1.0</Version></Visualisation>|"
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"></Scene></Visualisation>");
      return OneOf(small);
    }
    if (form == 1 || form == 2) {
      const int depth = Pick(100, 30000);
      std::string s =
          form == 1 ? "" : "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n";
      for (int i = 0; i < depth; ++i) s += form == 1 ? "<Visualisation>" : "Group { children [ ";
      if (form == 1) return s;
      for (int i = 0; i < depth && Chance(99); ++i) s += "] } ";
      return s + "</Scene></Visualisation>";
    }
    if (form == 3) {
      // Copies of copies: each level holds the one below four times.
      std::string s = kSceneHead + "DEF L0 Shape { geometry Box { } } ";
      const int levels = Pick(2, 9);
      for (int i = 1; i <= levels; ++i) {
        const std::string below = "USE L" + std::to_string(i - 1) + " ";
        s += "DEF L" + std::to_string(i) + " Group { children [ " + below + below + below + below + "] } ";
      }
      return s + kSceneTail;
    }
    if (form == 4)
      return kSceneHead +
             "DEF A Group { children [ USE A Shape { geometry Box { } } ] } DEF B Transform { children USE B } "
             "]]></Scene><ExternRoute from=\"A[0][0][1D]\" to=\"A.diffuseColor\"/></Visualisation>";
    if (form == 5) {
      std::string s(static_cast<std::size_t>(Pick(1, 4000)), ' ');
      for (char& c : s) c = static_cast<char>(Pick(1, 255));
      return s;
    }
    if (form == 6) {
      std::string s =
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n"
          "DEF M Material { } Shape { appearance Appearance { material USE M } geometry Box { } }</Scene>";
      const int routes = Pick(100, 5000);
      for (int i = 0; i < routes; ++i)
        s += "<ExternRoute from=\"A[0][" + std::to_string(i % 70000) + "][1D]\" to=\"M.diffuseColor\"/>";
      return s + "</Visualisation>";
    }
    if (form == 7) return std::string(static_cast<std::size_t>(Pick(1, 1 << 20)), 'a');
    if (form == 8) {
      std::string s = kSceneHead + "Shape { geometry IndexedFaceSet { coord Coordinate { point [ ";
      const int points = Pick(1, 20000);
      for (int i = 0; i < points; ++i) s += Numbers(3);
      s += "] } coordIndex [ ";
      for (int i = 0; i < points; ++i) s += std::to_string(Pick(-1, points + 2)) + " ";
      return s + "] } } " + kSceneTail;
    }
    if (form == 9)
      return "<Visualisation><Label>" + std::string(static_cast<std::size_t>(Pick(1, 100000)), '\xe9') +
             "</Label><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n</Scene></Visualisation>";
    if (form == 10)
      return kSceneHead +
             "PROTO P [ field SFColor c 1 0 0 ] { Group { } } EXTERNPROTO Q [ ] \"q.wrl\" P { } ROUTE A.b TO C.d\n"
             "Anchor { children [ Inline { url \"x.wrl\" } ] } Script { } Text { string [ \"a\" ] }" +
             kSceneTail;
    return "<?xml version=\"1.0\" encoding=\"" +
           OneOf(std::vector<std::string>{"UTF-8", "ISO-8859-1", "UTF-16", "bogus", ""}) +
           "\"?><Visualisation><Version>1.0</Version><Version>1.0</Version></Visualisation>";
  }

  std::string Mutated(std::string text) {
    const int edits = Pick(1, 8);
    for (int i = 0; i < edits && !text.empty(); ++i) {
      const auto at = static_cast<std::size_t>(Pick(0, static_cast<int>(text.size()) - 1));
      const int edit = Pick(0, 4);
      if (edit == 0) text.resize(at);
      if (edit == 1) text[at] = static_cast<char>(Pick(1, 255));
      if (edit == 2)
        text.insert(at, OneOf(std::vector<std::string>{"<", ">", "]]>", "{", "}", "[", "]", " USE ", " DEF ", "\"",
                                                       "<![CDATA[", "&", "nan", "-1e39", "<Scene>"}));
      if (edit == 3) text.erase(at, static_cast<std::size_t>(Pick(1, 64)));
      if (edit == 4) text.insert(at, text.substr(at, static_cast<std::size_t>(Pick(1, 256))));
    }
    return text;
  }

  void Forget() {
    transforms.clear();
    materials.clear();
    switches.clear();
    groups.clear();
    targets.clear();
  }

  Random& random;
  const RealInputs& real;
  std::vector<std::string> transforms, materials, switches, groups, targets;
  int nextName = 0;
  bool allowUse = true;
};

}  // namespace quillon::stress
