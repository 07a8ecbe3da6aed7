// The C interface from C++: null controls, bad arguments, and the round trips a host relies on.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quillon/quillon.h"

namespace {

struct Owned {
  char* p = nullptr;
  ~Owned() { quillon_free(p); }
};

TEST(CApi, EveryFunctionAcceptsANullControl) {
  EXPECT_EQ(quillon_SupportsVersion(nullptr, 1), 0);
  EXPECT_NE(quillon_create_window(nullptr, 0, 10, 10), 0);
  EXPECT_NE(quillon_render_rgba(nullptr, nullptr, 0), 0);
  EXPECT_EQ(quillon_error_text(nullptr), nullptr);
  EXPECT_EQ(quillon_GetMinimalWindowWidth_v1(nullptr), 0);
  EXPECT_EQ(quillon_GetMinimalWindowHeight_v1(nullptr), 0);
  EXPECT_EQ(quillon_SendChannels_v1(nullptr, nullptr, 5).data, nullptr);
  EXPECT_EQ(quillon_InitializeViewer_v1(nullptr, nullptr, nullptr, nullptr).data, nullptr);
  EXPECT_EQ(quillon_GetCameraPosition_v1(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(quillon_SetCameraPosition_v1(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(quillon_HideNode_v1(nullptr, nullptr), 0);
  EXPECT_EQ(quillon_UnhideNode_v1(nullptr, nullptr), 0);
  char* untouched = nullptr;
  EXPECT_EQ(quillon_load_document(nullptr, "<Visualisation/>", &untouched, &untouched), 1290303);
  EXPECT_EQ(untouched, nullptr);
  quillon_resize(nullptr, 1, 1);
  quillon_SetBackgroundColour_v1(nullptr, 0, 0, 0, 0, 0, 0);
  quillon_SetForegroundColour_v1(nullptr, 0, 0, 0);
  quillon_SetMeaningfulThreshold(nullptr, 1);
  quillon_SetNominalThreshold(nullptr, 1);
  quillon_SetViewportManipulationMode(nullptr, 1);
  for (auto f : {quillon_destroy_window, quillon_RemoveForegroundColour_v1, quillon_EnableContextMenu_v1,
                 quillon_DisableContextMenu_v1, quillon_EnableNavigationControls_v1,
                 quillon_DisableNavigationControls_v1, quillon_EnableMouseNavigation_v2,
                 quillon_DisableMouseNavigation_v2, quillon_ViewAll_v2, quillon_process_events, quillon_destroy})
    f(nullptr);
  quillon_free(nullptr);
}

TEST(CApi, BadArgumentsReturnCleanly) {
  QuillonCtrl* ctrl = quillon_create();
  ASSERT_NE(ctrl, nullptr);
  for (auto [w, h] : {std::pair{0, 10}, {10, -1}, {-5, -5}, {1 << 30, 10}})
    EXPECT_NE(quillon_create_window(ctrl, 0, w, h), 0);
  quillon_resize(ctrl, -1, -1);
  unsigned char pixel[4];
  EXPECT_NE(quillon_render_rgba(ctrl, pixel, 0), 0);
  EXPECT_NE(quillon_render_rgba(ctrl, nullptr, 1 << 20), 0);
  quillon_destroy_window(ctrl);
  quillon_destroy_window(ctrl);

  EXPECT_EQ(quillon_HideNode_v1(ctrl, nullptr), 0);
  char* empty = nullptr;
  EXPECT_EQ(quillon_HideNode_v1(ctrl, &empty), 0);
  char blank[] = "";
  char* blankp = blank;
  EXPECT_EQ(quillon_UnhideNode_v1(ctrl, &blankp), 0);

  quillon_destroy(ctrl);
}

// A box whose colour and position two channels of Probe1, group 2 drive.
std::string Document(const std::string& routes) {
  return R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version><Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
DEF Probe Transform { children [ Shape {
  appearance Appearance { material DEF Skin Material { diffuseColor 1 0 0 } }
  geometry Box { size 0.1 0.1 0.1 } } ] }
]]></Scene>)" +
         routes + "</Visualisation>";
}

struct Load {
  int code = -1;
  std::string annotated, groups;
};

Load LoadDocument(QuillonCtrl* ctrl, const std::string& xml) {
  Owned annotated, groups;
  Load result;
  result.code = quillon_load_document(ctrl, xml.c_str(), &annotated.p, &groups.p);
  result.annotated = annotated.p ? annotated.p : "(null)";
  result.groups = groups.p ? groups.p : "(null)";
  return result;
}

// The outcome that InitializeViewer_v1 keeps to itself, error list or not: a good document after
// a bad one reports 0 although the list still holds the old fault.
TEST(CApi, LoadDocumentSaysHowTheLoadWent) {
  QuillonCtrl* ctrl = quillon_create();
  const std::string routes = R"(<ExternRoute from="Probe1[2][0][3D]" to="Probe"/>)"
                             R"(<ExternRoute from="Probe1[2][1][1D]" to="Skin.diffuseColor"/>)";
  Load good = LoadDocument(ctrl, Document(routes));
  EXPECT_EQ(good.code, 0);
  EXPECT_EQ(good.groups, "[Probe1, 2][Probe1, 2]");
  EXPECT_EQ(good.annotated, "");

  Load malformed = LoadDocument(ctrl, "not a document");
  EXPECT_EQ(malformed.code, 1290800);
  EXPECT_EQ(malformed.annotated, "");

  std::string badVersion = Document(routes);
  badVersion.replace(badVersion.find("1.0</Version>"), 3, "2.0");
  Load located = LoadDocument(ctrl, badVersion);
  EXPECT_EQ(located.code, 1290826);
  EXPECT_NE(located.annotated.find("<!--begin_offending_input--><Version>2.0</Version><!--end_offending_input-->"),
            std::string::npos)
      << located.annotated;
  EXPECT_EQ(located.groups, "");

  EXPECT_EQ(LoadDocument(ctrl, Document(routes)).code, 0);
  Owned errors{quillon_error_text(ctrl)};
  EXPECT_EQ(std::string(errors.p).rfind("1290826", 0), 0u);  // the list is only replaced by the next error

  // Two routes on one channel: the document loads, the second route stays without effect.
  const std::string twice = R"(<ExternRoute from="Probe1[2][0][3D]" to="Probe"/>)"
                            R"(<ExternRoute from="Probe1[2][0][1D]" to="Skin.diffuseColor"/>)";
  EXPECT_EQ(LoadDocument(ctrl, Document(twice)).code, 1290102);
  quillon_destroy(ctrl);
}

struct TraceLines {
  std::vector<std::string> lines;
  static void Take(const char* line, void* user) { static_cast<TraceLines*>(user)->lines.emplace_back(line); }
};

TEST(CApi, TraceLinesReachTheHostsCallbackUntilItIsRemoved) {
  QuillonCtrl* ctrl = quillon_create();
  TraceLines trace;
  quillon_set_trace_callback(&TraceLines::Take, &trace);
  ASSERT_EQ(LoadDocument(ctrl, Document("")).code, 0);
  ASSERT_FALSE(trace.lines.empty());  // what they say is checked from Python

  quillon_set_trace_callback(nullptr, nullptr);
  const std::size_t seen = trace.lines.size();
  LoadDocument(ctrl, Document(""));
  EXPECT_EQ(trace.lines.size(), seen);
  quillon_destroy(ctrl);
}

}  // namespace
