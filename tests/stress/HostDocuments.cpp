// Documents for the random host: generated scenes with routes in every form, real files, and
// texts that no document should be.
#include <algorithm>
#include <string>

#include "HostInputs.h"

namespace quillon::stress {
namespace {

const std::vector<std::string> kMaterialFields = {"diffuseColor", "emissiveColor", "specularColor",
                                                  "shininess",    "transparency",  "ambientIntensity"};
const std::vector<std::string> kPathNames = {"Probe1", "Arm", "A_2"};
const std::vector<std::int32_t> kGroups = {0, 2, -1, 2147483647};
const std::vector<std::string> kBadFroms = {"Probe1 [2][0][1D]",
                                            "Probe1[2][0]",
                                            "Probe1[2][0][2D]",
                                            "1Probe[2][0][1D]",
                                            "[2][0][1D]",
                                            "Probe1[][0][1D]",
                                            "Probe1[123456789][0][1D]",
                                            "Probe1[x][0][1D]",
                                            "Probe1[2][0][1d]",
                                            "Probe1[2[0]][1D]",
                                            "Pro-be[2][0][3D]",
                                            "Probe1]2[[0][1D]",
                                            "Probe1[2][0][Time ]",
                                            "Probe1[+0][-0][6D]",
                                            "Probe1[2][0][3D]x",
                                            "",
                                            "Probe1[2][4294967296][1D]"};
const std::vector<std::string> kBadTos = {"",
                                          ".diffuseColor",
                                          "M.",
                                          "M.a.b",
                                          "M .diffuseColor",
                                          "Nowhere",
                                          "Nowhere.translation",
                                          "T0.whichChoice",
                                          "S0.whichChoice",
                                          "\xe9"};
const std::vector<std::string> kScales = {"1",  "0.5",   "-2",  "0",   "0.0", "-0",     "abc",
                                          "2x", "1e308", "nan", "inf", "",    "1e-320", "   3"};

std::string Escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    switch (c) {
      case '<':
        out += "&lt;";
        break;
      case '&':
        out += "&amp;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

const char* KindText(Kind kind) {
  switch (kind) {
    case Kind::D1:
      return "1D";
    case Kind::D3:
      return "3D";
    case Kind::D6:
      return "6D";
    default:
      return "Time";
  }
}

}  // namespace

std::string InputMaker::Name(const char* prefix) { return prefix + std::to_string(nextName++); }

std::string InputMaker::Geometry() {
  switch (Pick(0, 5)) {
    case 0:
      return "Box { size " + Numbers(3) + "} ";
    case 1:
      return "Sphere { radius " + Number() + " } ";
    case 2:
      return "Cone { bottomRadius " + Number() + " height " + Number() + " side " + (Chance(50) ? "TRUE" : "FALSE") +
             " } ";
    case 3:
      return "Cylinder { radius " + Number() + " height " + Number() + " top FALSE } ";
    default: {
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
  }
}

std::string InputMaker::Shape(Document& document) {
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

std::string InputMaker::Children(Document& document, int depth) {
  std::string s = "[ ";
  const int n = Pick(0, 3);
  for (int i = 0; i < n; ++i) s += Node(document, depth + 1);
  return s + "] ";
}

std::string InputMaker::Node(Document& document, int depth) {
  const int kind = depth >= 4 ? 0 : Pick(0, 9);
  switch (kind) {
    case 1:
    case 2: {
      const std::string name = Name("T");
      document.names.push_back(name);
      std::string s = "DEF " + name + " Transform { translation " + Numbers(3);
      if (Chance(40)) s += "rotation " + Numbers(4) + "scale " + Numbers(3);
      if (Chance(20)) s += "center " + Numbers(3) + "scaleOrientation " + Numbers(4);
      s += "children " + Children(document, depth) + "} ";
      transforms.push_back(name);
      return s;
    }
    case 3: {
      const std::string name = Name("S");
      document.names.push_back(name);
      switches.push_back(name);
      return "DEF " + name + " Switch { whichChoice " + std::to_string(Pick(-2, 3)) + " choice " +
             Children(document, depth) + "} ";
    }
    case 4: {
      const std::string name = Name("G");
      document.names.push_back(name);
      std::string s = "DEF " + name + " Group { children " + Children(document, depth) + "} ";
      groups.push_back(name);
      return s;
    }
    case 5:
      // A copy of a finished group; never one of the transforms, which routes may move.
      if (allowUse && !groups.empty() && Chance(60)) return "USE " + OneOf(groups) + " ";
      return "WorldInfo { title \"x\" } ";
    case 6:
      return Chance(50) ? "Viewpoint { position 0 0 10 } " : "PointLight { location 1 1 1 } ";
    default:
      return Shape(document);
  }
}

std::string InputMaker::Scene(Document& document, bool wellFormed) {
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

std::string InputMaker::From(const Route& route, bool good) {
  if (!good && Chance(70)) return OneOf(kBadFroms);
  return route.name + "[" + std::to_string(route.group) + "][" + std::to_string(route.channel) + "][" +
         KindText(route.kind) + "]";
}

std::string InputMaker::ColourMap(const char* element, bool invalidOnly) {
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

std::string InputMaker::RouteElement(Document& document, bool good) {
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

std::string InputMaker::EdgeText() {
  switch (Pick(0, 11)) {
    case 0: {
      static const std::vector<std::string> small = {
          "",
          " ",
          "<",
          ">",
          "<Visualisation>",
          "<Visualisation></Visualisation>",
          "<?xml?>",
          "<!---->",
          "<![CDATA[",
          "&",
          "&#0;",
          "&#xFFFFFFFF;",
          "<a b='",
          "<Visualisation><Version>1.0</Version></Visualisation>",
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"></Scene></Visualisation>"};
      return OneOf(small);
    }
    case 1: {
      const int depth = Pick(100, 30000);
      std::string s;
      for (int i = 0; i < depth; ++i) s += "<Visualisation>";
      return s;
    }
    case 2: {
      const int depth = Pick(100, 30000);
      std::string s = "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n";
      for (int i = 0; i < depth; ++i) s += "Group { children [ ";
      for (int i = 0; i < depth && Chance(99); ++i) s += "] } ";
      return s + "</Scene></Visualisation>";
    }
    case 3: {
      // Copies of copies: each level holds the one below four times.
      std::string s =
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
          "DEF L0 Shape { geometry Box { } } ";
      const int levels = Pick(2, 9);
      for (int i = 1; i <= levels; ++i) {
        const std::string below = "USE L" + std::to_string(i - 1) + " ";
        s += "DEF L" + std::to_string(i) + " Group { children [ " + below + below + below + below + "] } ";
      }
      return s + "]]></Scene></Visualisation>";
    }
    case 4:
      return "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
             "DEF A Group { children [ USE A Shape { geometry Box { } } ] } DEF B Transform { children USE B } "
             "]]></Scene><ExternRoute from=\"A[0][0][1D]\" to=\"A.diffuseColor\"/></Visualisation>";
    case 5: {
      std::string s(static_cast<std::size_t>(Pick(1, 4000)), ' ');
      for (char& c : s) c = static_cast<char>(Pick(1, 255));
      return s;
    }
    case 6: {
      std::string s =
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n"
          "DEF M Material { } Shape { appearance Appearance { material USE M } geometry Box { } }"
          "</Scene>";
      const int routes = Pick(100, 5000);
      for (int i = 0; i < routes; ++i)
        s += "<ExternRoute from=\"A[0][" + std::to_string(i % 70000) + "][1D]\" to=\"M.diffuseColor\"/>";
      return s + "</Visualisation>";
    }
    case 7:
      return std::string(static_cast<std::size_t>(Pick(1, 1 << 20)), 'a');
    case 8: {
      std::string s =
          "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
          "Shape { geometry IndexedFaceSet { coord Coordinate { point [ ";
      const int points = Pick(1, 20000);
      for (int i = 0; i < points; ++i) s += Numbers(3);
      s += "] } coordIndex [ ";
      for (int i = 0; i < points; ++i) s += std::to_string(Pick(-1, points + 2)) + " ";
      return s + "] } } ]]></Scene></Visualisation>";
    }
    case 9:
      return "<Visualisation><Label>" + std::string(static_cast<std::size_t>(Pick(1, 100000)), '\xe9') +
             "</Label><Version>1.0</Version><Scene format=\"VRML97\">#VRML V2.0 utf8\n</Scene></Visualisation>";
    case 10:
      return "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
             "PROTO P [ field SFColor c 1 0 0 ] { Group { } } EXTERNPROTO Q [ ] \"q.wrl\" P { } ROUTE A.b TO C.d\n"
             "Anchor { children [ Inline { url \"x.wrl\" } ] } Script { } Text { string [ \"a\" ] }"
             "]]></Scene></Visualisation>";
    default:
      return "<?xml version=\"1.0\" encoding=\"" +
             OneOf(std::vector<std::string>{"UTF-8", "ISO-8859-1", "UTF-16", "bogus", ""}) +
             "\"?><Visualisation><Version>1.0</Version><Version>1.0</Version></Visualisation>";
  }
}

std::string InputMaker::Mutated(std::string text) {
  const int edits = Pick(1, 8);
  for (int i = 0; i < edits && !text.empty(); ++i) {
    const auto at = static_cast<std::size_t>(Pick(0, static_cast<int>(text.size()) - 1));
    switch (Pick(0, 4)) {
      case 0:
        text.resize(at);
        break;
      case 1:
        text[at] = static_cast<char>(Pick(1, 255));
        break;
      case 2:
        text.insert(at, OneOf(std::vector<std::string>{"<", ">", "]]>", "{", "}", "[", "]", " USE ", " DEF ", "\"",
                                                       "<![CDATA[", "&", "nan", "-1e39", "<Scene>"}));
        break;
      case 3:
        text.erase(at, static_cast<std::size_t>(Pick(1, 64)));
        break;
      default:
        text.insert(at, text.substr(at, static_cast<std::size_t>(Pick(1, 256))));
    }
  }
  return text;
}

void InputMaker::Forget() {
  transforms.clear();
  materials.clear();
  switches.clear();
  groups.clear();
  targets.clear();
}

Document InputMaker::GoodDocument() {
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

Document InputMaker::AnyDocument() {
  const int form = Pick(0, 99);
  if (form < 15) return GoodDocument();
  if (form < 30 && !real.documents.empty()) {
    Document d;
    d.xml = OneOf(real.documents);
    if (Chance(40)) d.xml = Mutated(d.xml);
    return d;
  }
  if (form < 40) {
    Document d;
    d.xml = EdgeText();
    return d;
  }
  // Generated, with faults here and there.
  Forget();
  Document d;
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

}  // namespace quillon::stress
