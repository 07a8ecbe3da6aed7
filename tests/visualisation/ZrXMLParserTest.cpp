#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "core/Trace.h"
#include "core/ZrErrorHandler.h"
#include "core/ZrErrorMap.h"
#include "scenegraph/ISGBuilder.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "scenegraph/osgFakeCamera.h"
#include "visualisation/DocumentErrorCodes.h"
#include "visualisation/IMappingRegistrar.h"
#include "visualisation/ISceneMappingBuilder.h"
#include "visualisation/ZrXMLParser.h"
#include "vrml/GroupingNodes.h"

namespace quillon {
namespace {

const std::string kScene = "<Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\nDEF T Transform { }]]></Scene>";

std::string Doc(const std::string& body) { return "<Visualisation><Version>1.0</Version>" + body + "</Visualisation>"; }
std::string Route(const std::string& from, const std::string& to, const std::string& rest = "/>") {
  return "<ExternRoute from=\"" + from + "\" to=\"" + to + "\"" + rest;
}

struct Mapping : ZrValueDecodingCallbackInterface {
  ErrorCode AttachToDecoder(const std::string&, std::int32_t, std::uint32_t, IChannelgroupDecoder*) override {
    return 0;
  }
};

struct Registrar : IMappingRegistrar {
  ErrorCode RegisterInDecoder(const std::string& name, std::int32_t group, std::uint32_t channel,
                              std::unique_ptr<ZrValueDecodingCallbackInterface> mapping) override {
    registered.push_back(name + "/" + std::to_string(group) + "/" + std::to_string(channel));
    mappings.push_back(std::move(mapping));
    return static_cast<int>(registered.size()) == failAt ? RaiseRootError(1290301) : 0;
  }
  void ClearMappings() override { ++clears; }
  std::vector<std::string> registered;
  std::vector<std::unique_ptr<ZrValueDecodingCallbackInterface>> mappings;
  int clears = 0;
  int failAt = 0;
};

// A holder whose builders record their calls; the mapping builder binds every route whose
// field is not "unbound".
struct Holder : ISceneGraphImplementor, ISGBuilder, ISceneMappingBuilder {
  bool build(const VRML::Group& scene) override {
    topNames.clear();
    if (const VRML::MFNode* children = scene.children())
      for (const auto& node : children->nodes) topNames.push_back(node ? node->name() : "");
    return ++sceneBuilds, sceneOk;
  }
  bool build(std::vector<RouteRecord>& routes) override {
    for (RouteRecord& r : routes)
      if (r.targetFieldName != "unbound") r.mapping = std::make_unique<Mapping>();
    return true;
  }
  void initialize() override {}
  void terminate() override {}
  ICamera& camera() override { return fakeCamera; }
  ISGBuilder* sceneGraphBuilder() override { return this; }
  ISceneMappingBuilder* sceneMappingBuilder() override { return this; }
  IViewportManipulator* viewportManipulator() override { return nullptr; }
  void attachToWindow(std::unique_ptr<IRenderArea>) override {}
  void detachFromWindow() override {}
  void setBackgroundColours(float, float, float, float, float, float) override {}
  void clearRegistries() override {}
  void refresh(int) override {}
  void render() override {}
  void boundingSphere(float&, float&, float&, float&) override {}
  IRenderArea* renderArea() override { return nullptr; }
  bool setSwitchChoice(const std::string&, int) override { return false; }
  void setForegroundOverride(bool, float, float, float) override {}
  osgFakeCamera fakeCamera;
  int sceneBuilds = 0;
  bool sceneOk = true;
  std::vector<std::string> topNames;
};

struct Fault {
  const char* name;
  std::string document;
  ErrorCode code;
  std::optional<std::string> bracketed;  // the text between the markers; none: no annotation
};

// A fault in `marked`, which stands between `before` and `after` in a document and is marked.
Fault Marked(const char* name, const std::string& before, const std::string& marked, ErrorCode code,
             const std::string& after = "") {
  return {name, Doc(before + marked + after), code, marked};
}
Fault RouteFault(const char* name, const std::string& route, ErrorCode code) {
  return Marked(name, kScene, route, code);
}
Fault SettingsFault(const char* name, const std::string& before, const std::string& marked, ErrorCode code) {
  return Marked(name, "<Settings>" + before, marked, code, "</Settings>");
}

class ParseFault : public ::testing::TestWithParam<Fault> {};

TEST_P(ParseFault, RaisesItsCodeFirstAndMarksTheElement) {
  const Fault& f = GetParam();
  ZrXMLParser parser;
  Registrar registrar;
  std::string annotated = "stale", needed = "stale";
  EXPECT_EQ(parser.Parse(registrar, f.document, &annotated, &needed), f.code);
  ASSERT_GE(ZrErrorHandler::Instance().Count(), 1);
  EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(0), f.code);
  EXPECT_EQ(registrar.clears, 0);
  if (!f.bracketed) {
    EXPECT_EQ(annotated, "");
    return;
  }
  const std::string marked = "<!--begin_offending_input-->" + *f.bracketed + "<!--end_offending_input-->";
  EXPECT_NE(annotated.find(marked), std::string::npos) << annotated;
  // Apart from the markers, the document is handed back unchanged.
  std::string unmarked = annotated;
  for (const char* m : {"<!--begin_offending_input-->", "<!--end_offending_input-->"})
    unmarked.erase(unmarked.find(m), std::string(m).size());
  EXPECT_EQ(unmarked, f.document);
}

// The from attribute's rules are in ReadsTheFromAttributeWordForWord; here only where a bad one
// is marked: the second route, after a good one.
const std::string kBadFromDoc = Doc(kScene + Route("P[1][2][1D]", "T") + Route("Probe1 [2][5][1D]", "T"));
const std::string kRoute = Route("P[1][2][1D]", "T", "");

INSTANTIATE_TEST_SUITE_P(
    ZrXMLParser, ParseFault,
    ::testing::Values(
        Fault{"NotWellFormed", "<Visualisation>", 1290800, {}}, Fault{"OtherRoot", "<Visual/>", 1290805, {}},
        Fault{"TwoVisualisations", "<Visualisation><Visualisation></Visualisation></Visualisation>", 1290818,
              "<Visualisation><Visualisation></Visualisation></Visualisation>"},
        Marked("TwoLabels", "<Label>a</Label>", "<Label>b</Label>", 1290818),
        Fault{"NoVersion", "<Visualisation><Label>a</Label>" + kScene + "</Visualisation>", 1290818, ""},
        Fault{"VersionBeforeLabel", "<Visualisation><Version>1.0</Version><Label>a</Label></Visualisation>", 1290818,
              ""},
        Marked("TwoVersions", "", "<Version>1.0</Version>", 1290825),
        Fault{"VersionNotExact", "<Visualisation><Version>1.0 </Version></Visualisation>", 1290826,
              "<Version>1.0 </Version>"},
        Marked("TwoSettings", "<Settings/>", "<Settings/>", 1290820),
        SettingsFault("TwoRenderInvalids", "<RenderInvalids>hide</RenderInvalids>",
                      "<RenderInvalids>x</RenderInvalids>", 1290821),
        SettingsFault("RenderInvalidsCase", "", "<RenderInvalids>Hide</RenderInvalids>", 1290812),
        SettingsFault("ColourMapTwoColumns", "", "<ColourMap>[1, 0; 0, 1]</ColourMap>", 1290806),
        SettingsFault("TwoColourMaps", "<ColourMap>[1,0,0]</ColourMap>", "<ColourMap/>", 1290822),
        SettingsFault("InvalidColourTwoRows", "", "<InvalidColourMap>[1,0,0;0,1,0]</InvalidColourMap>", 1290807),
        SettingsFault("InvalidColourUnreadable", "", "<InvalidColourMap>[1,0,0</InvalidColourMap>", 1290807),
        SettingsFault("TwoInvalidColours", "<InvalidColourMap/>", "<InvalidColourMap/>", 1290823),
        Fault{"NoScene", Doc("<Settings/>"), 1290808, ""}, Marked("TwoScenes", kScene, "<Scene/>", 1290824),
        Marked("SceneFormatCase", "", "<Scene format='vrml97'>x</Scene>", 1290830),
        Marked("SceneWithoutFormat", "", "<Scene>x</Scene>", 1290830),
        Marked("SceneWithChildren", "", "<Scene format='VRML97'><a/></Scene>", 1290808),
        Fault{"SceneDoesNotRead", Doc("<Scene format='VRML97'>no scene here</Scene>"), 1290808, {}},
        RouteFault("NoFrom", "<ExternRoute to='T'/>", 1290801),
        Fault{"FromWithBlank", kBadFromDoc, 1290803, "<ExternRoute from=\"Probe1 [2][5][1D]\" to=\"T\"/>"},
        RouteFault("NoTo", "<ExternRoute from='P[1][2][1D]'/>", 1290802),
        RouteFault("ToWithBlank", Route("P[1][2][1D]", "T .x"), 1290804),
        RouteFault("ToTwoDots", Route("P[1][2][1D]", "T.x.y"), 1290804),
        RouteFault("ToNoNode", Route("P[1][2][1D]", ".x"), 1290804),
        Fault{"ToEndsInDot", Doc(kScene + Route("P[1][2][1D]", "T.")), 1290816, {}},
        Marked("RouteColourMap", kScene + kRoute + ">", "<ColourMap>[1]</ColourMap>", 1290806, "</ExternRoute>"),
        Marked("RouteTwoColourMaps", kScene + kRoute + "><ColourMap/>", "<ColourMap>2</ColourMap>", 1290828,
               "</ExternRoute>"),
        Marked("RouteTwoInvalidColours", kScene + kRoute + "><InvalidColourMap/>", "<InvalidColourMap/>", 1290829,
               "</ExternRoute>"),
        RouteFault("ScaleMinusZero", kRoute + " scale='-0'/>", 1290810),
        RouteFault("ScaleNotANumber", kRoute + " scale='nan'/>", 1290810),
        RouteFault("CascadingRoute", "<ExternRouteToChildren from='P' to='T'/>", 1290803)),
    [](const auto& param) { return std::string(param.param.name); });

TEST(ZrXMLParser, ReadsTheFromAttributeWordForWord) {
  const struct {
    const char* from;
    const char* name;
    std::int32_t group;
    std::uint32_t channel;
    ChannelKind kind;
    const char* needed;
  } good[] = {
      {"Probe1[2][5][1D]", "Probe1", 2, 5, ChannelKind::Kind1D, "[Probe1, 2]"},
      {"P[2][0][1D]", "P", 2, 0, ChannelKind::Kind1D, "[P, 2]"},
      {"p_1[3][1][3D]", "p_1", 3, 1, ChannelKind::Kind3D, "[p_1, 3]"},
      {"Probe1[-0][3][Time]", "Probe1", 0, 3, ChannelKind::KindTime, "[Probe1, -0]"},
      {"Probe1[007][6][1D]", "Probe1", 7, 6, ChannelKind::Kind1D, "[Probe1, 007]"},
      {"Probe1[12345678][2][6D]", "Probe1", 12345678, 2, ChannelKind::Kind6D, "[Probe1, 12345678]"},
      {"Probe1[-7][+0][3D]", "Probe1", -7, 0, ChannelKind::Kind3D, "[Probe1, -7]"},
  };
  for (const auto& c : good) {
    SCOPED_TRACE(c.from);
    ZrXMLParser parser;
    Registrar registrar;
    std::string needed;
    ASSERT_EQ(parser.Parse(registrar, Doc(kScene + Route(c.from, "T")), nullptr, &needed), 0);
    ASSERT_EQ(parser.Routes().size(), 1u);
    const RouteRecord& route = parser.Routes()[0];
    EXPECT_EQ(route.controlPathName, c.name);
    EXPECT_EQ(route.groupNumber, c.group);
    EXPECT_EQ(route.channelNumber, c.channel);
    EXPECT_EQ(route.channelKind, c.kind);
    EXPECT_EQ(needed, c.needed);
  }
  for (const char* from :
       {"Probe1 [2][5][1D]", "Probe1[2][1][1D] ", "Probe1[2][1] [1D]", "Probe1[2][1][1D]\t", "1Probe[2][1][1D]",
        "_Probe[2][1][1D]", "Pro-be[2][1][1D]", "[2][1][1D]", "Probe1", "Probe1[123456789][1][1D]",
        "Probe1[2][123456789][1D]", "Probe1[2][1][2D]", "Probe1[2][1][1d]", "Probe1[x][1][1D]", "Probe1[2][0x][1D]",
        "Probe1[][1][1D]", "Probe1[2][1]", "Probe1[2][1][1D"}) {
    ZrXMLParser parser;
    Registrar registrar;
    EXPECT_EQ(parser.Parse(registrar, Doc(kScene + Route(from, "T")), nullptr, nullptr),
              ZRVISUALISATIONXMLREADER_PARSE_BADFROMATTRIBUTE)
        << from;
  }
}

TEST(ZrXMLParser, CollectsSettingsOrTheirDefaultsAndRoutesInDocumentOrder) {
  const std::string document =
      Doc(kScene + "<ExternRouteToChildren from='Early[9][9][1D]' to='M'/>" +
          Route("Probe_1[2][5][3D]", "T.translation", " scale='2x'/>") +
          Route("P[-0][+0][Time]", "T", " scale='0.0'><ColourMap>[0,0,1]</ColourMap></ExternRoute>") +
          "<ExternRouteToChildren from='Q[7][1][1D]' to='M.diffuseColor'/>");
  ZrXMLParser parser;
  Registrar registrar;
  std::string annotated, needed;
  ASSERT_EQ(parser.Parse(registrar, document, &annotated, &needed), 0);
  EXPECT_EQ(annotated, "");
  EXPECT_EQ(needed, "[Probe_1, 2][P, -0][Q, 7]");
  EXPECT_TRUE(parser.RenderInvalidsHide());
  ASSERT_EQ(parser.DefaultColourMap().Rows(), 9u);
  EXPECT_EQ(parser.DefaultColourMap()(4, 0), 0.5);
  EXPECT_EQ(parser.DefaultColourMap()(4, 1), 1.0);
  EXPECT_EQ(parser.DefaultColourMap()(8, 0), 0.5);
  FltMatrix red(1, 3);
  red(0, 0) = 1;
  EXPECT_EQ(parser.DefaultInvalidColour(), red);

  const auto& routes = parser.Routes();
  ASSERT_EQ(routes.size(), 3u);  // a cascading route in front of the plain ones is not seen
  EXPECT_EQ(routes[0].controlPathName, "Probe_1");
  EXPECT_EQ(routes[0].targetNodeName, "T");
  EXPECT_EQ(routes[0].targetFieldName, "translation");
  EXPECT_EQ(routes[0].scale, 2.0);
  EXPECT_EQ(routes[0].colourMap, parser.DefaultColourMap());
  EXPECT_EQ(routes[1].targetFieldName, "");
  EXPECT_EQ(routes[1].scale, 0.0);
  EXPECT_EQ(routes[1].colourMap.Rows(), 1u);
  EXPECT_EQ(routes[1].colourMap(0, 2), 1.0);
  EXPECT_FALSE(routes[1].cascading);
  EXPECT_TRUE(routes[2].cascading);
  // Without a scene-graph holder nothing is bound, and so nothing is registered.
  EXPECT_EQ(registrar.clears, 1);
  EXPECT_TRUE(registrar.registered.empty());

  // The settings it is given replace the defaults, for the routes too.
  ZrXMLParser given;
  ASSERT_EQ(given.Parse(registrar,
                        "<Visualisation><Label>a &amp; b</Label><Version>1.0</Version><Settings>"
                        "<RenderInvalids>freeze</RenderInvalids><ColourMap>[0,0,0;1,1,1]</ColourMap>"
                        "<InvalidColourMap>[0, 1, 0]</InvalidColourMap></Settings>" +
                            kScene + Route("P[1][2][1D]", "T") + "</Visualisation>",
                        nullptr, nullptr),
            0);
  EXPECT_EQ(given.Label(), "a & b");
  EXPECT_FALSE(given.RenderInvalidsHide());
  EXPECT_EQ(given.DefaultColourMap().Rows(), 2u);
  EXPECT_EQ(given.DefaultInvalidColour()(0, 1), 1.0);
  ASSERT_EQ(given.Routes().size(), 1u);
  EXPECT_FALSE(given.Routes()[0].hide);
  EXPECT_EQ(given.Routes()[0].invalidColour, given.DefaultInvalidColour());
}

TEST(ZrXMLParser, RegistersWhatTheBuilderBoundAndGoesOnAfterAFailure) {
  Holder holder;
  ZrXMLParser parser(&holder);
  Registrar registrar;
  registrar.failAt = 1;
  const std::string document =
      Doc(kScene + Route("A[1][0][1D]", "T.x") + Route("B[1][1][1D]", "T.unbound") + Route("C[-3][2][6D]", "T"));
  ASSERT_EQ(parser.Parse(registrar, document, nullptr, nullptr), 0);
  EXPECT_EQ(holder.sceneBuilds, 1);
  EXPECT_EQ(registrar.clears, 1);
  EXPECT_EQ(registrar.registered, (std::vector<std::string>{"A/1/0", "C/-3/2"}));

  // Without routes the mappings registered before stay.
  ASSERT_EQ(parser.Parse(registrar, Doc(kScene), nullptr, nullptr), 0);
  EXPECT_EQ(registrar.clears, 1);

  holder.sceneOk = false;
  std::string annotated;
  EXPECT_EQ(parser.Parse(registrar, document, &annotated, nullptr), 1290808);
  EXPECT_EQ(annotated, "");
  EXPECT_EQ(registrar.clears, 1);
}

// The scene reads the same from a CDATA section, with blanks before it, and from plain text;
// text behind the section is not part of it, and the routes behind the scene still count.
TEST(ZrXMLParser, ReadsTheSceneTextWhereverItStands) {
  const std::string vrml = "#VRML V2.0 utf8\nDEF A Group { }\nDEF B Group { }\n";
  for (const std::string& scene : {"<![CDATA[" + vrml + "]]>", " \n\t<![CDATA[" + vrml + "]]>", vrml,
                                   "<![CDATA[" + vrml + "]]>DEF C Group { }\n"}) {
    SCOPED_TRACE(scene);
    Holder holder;
    ZrXMLParser parser(&holder);
    Registrar registrar;
    std::string needed;
    const std::string document = Doc("<Scene format=\"VRML97\">" + scene + "</Scene>" + Route("P[1][0][1D]", "A.x"));
    ASSERT_EQ(parser.Parse(registrar, document, nullptr, &needed), 0);
    EXPECT_EQ(holder.topNames, (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(registrar.registered, std::vector<std::string>{"P/1/0"});
    EXPECT_EQ(needed, "[P, 1]");
  }
}

TEST(ZrXMLParser, TracesBothLoadingTimes) {
  std::vector<std::string> lines;
  TraceSink previous = SetTraceSink([&](std::string_view line) { lines.emplace_back(line); });
  ZrXMLParser parser;
  Registrar registrar;
  EXPECT_EQ(parser.Parse(registrar, Doc(kScene), nullptr, nullptr), 0);
  SetTraceSink(previous);
  ASSERT_EQ(lines.size(), 2u);
  double seconds = -1;
  EXPECT_EQ(std::sscanf(lines[0].c_str(), "Loading of VRML scene took %lf secs.\n", &seconds), 1) << lines[0];
  EXPECT_GE(seconds, 0.0);
  EXPECT_TRUE(lines[0].ends_with(" secs.\n"));
  EXPECT_EQ(std::sscanf(lines[1].c_str(), "Total loading of scene took %lf secs\n", &seconds), 1) << lines[1];
  EXPECT_TRUE(lines[1].ends_with(" secs\n"));
}

TEST(ZrXMLParser, EveryCodeIsInTheMessageRegistry) {
  // A viewer's composition root registers the table; this test stands in for it.
  ZrErrorMap::Register(kDocumentErrors);
  for (const ErrorDefinition& d : kDocumentErrors) EXPECT_EQ(ZrErrorMap::GetMessage(d.code), d.message);
  EXPECT_EQ(kDocumentErrors.size(), 46u);
  EXPECT_EQ(ZrErrorMap::GetMessage(ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE),
            "ZrXMLParser::Parse() Error \n\t An empty target attribute name is forbidden. Leave away the dot after "
            "the target node name when you want to use optional target field names. "
            "(ZRVISUALISATIONXMLREADER_PARSE_EMPTYTARGETATTRIBUTE)");
  EXPECT_EQ(ZrErrorMap::GetMessage(ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE),
            "ZrXMLParser::ConstructListOfAllNamesInTree() Error \n\t "
            "(ZRVISUALISATIONXMLREADER_CONSTRUCTLISTOFALLNAMESINTREE)");
}

}  // namespace
}  // namespace quillon
