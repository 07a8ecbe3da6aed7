// The C interface from C++: null controls, bad arguments, and the round trips a host relies on.
#include <gtest/gtest.h>

#include <string>

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
  QuillonBytes b = quillon_SendChannels_v1(nullptr, nullptr, 5);
  EXPECT_EQ(b.data, nullptr);
  b = quillon_InitializeViewer_v1(nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(b.data, nullptr);
  EXPECT_EQ(quillon_GetCameraPosition_v1(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(quillon_SetCameraPosition_v1(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(quillon_HideNode_v1(nullptr, nullptr), 0);
  EXPECT_EQ(quillon_UnhideNode_v1(nullptr, nullptr), 0);
  quillon_resize(nullptr, 1, 1);
  quillon_destroy_window(nullptr);
  quillon_SetBackgroundColour_v1(nullptr, 0, 0, 0, 0, 0, 0);
  quillon_SetForegroundColour_v1(nullptr, 0, 0, 0);
  quillon_RemoveForegroundColour_v1(nullptr);
  quillon_EnableContextMenu_v1(nullptr);
  quillon_DisableContextMenu_v1(nullptr);
  quillon_EnableNavigationControls_v1(nullptr);
  quillon_DisableNavigationControls_v1(nullptr);
  quillon_EnableMouseNavigation_v2(nullptr);
  quillon_DisableMouseNavigation_v2(nullptr);
  quillon_ViewAll_v2(nullptr);
  quillon_SetMeaningfulThreshold(nullptr, 1);
  quillon_SetNominalThreshold(nullptr, 1);
  quillon_SetViewportManipulationMode(nullptr, 1);
  quillon_destroy(nullptr);
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

  char* empty = nullptr;
  EXPECT_EQ(quillon_HideNode_v1(ctrl, &empty), 0);
  char blank[] = "";
  char* blankp = blank;
  EXPECT_EQ(quillon_UnhideNode_v1(ctrl, &blankp), 0);

  // Negative and absurd counts are refused, and nothing is allocated for them.
  for (long count : {-1L, QUILLON_MAX_MESSAGE_BYTES + 1L, 1L << 40}) {
    QuillonBytes r = quillon_SendChannels_v1(ctrl, nullptr, count);
    ASSERT_NE(r.data, nullptr);
    const std::string text(reinterpret_cast<char*>(r.data), r.size);
    EXPECT_EQ(text.rfind("1290304", 0), 0u);
    quillon_free(r.data);
  }
  quillon_destroy(ctrl);
}

TEST(CApi, CameraDefaultsComeBackAsText) {
  QuillonCtrl* ctrl = quillon_create();
  Owned p, o, n, f, fo, z;
  EXPECT_EQ(quillon_SetCameraPosition_v1(ctrl, &p.p, &o.p, &n.p, &f.p, &fo.p, &z.p), 1);
  EXPECT_STREQ(p.p, "0.0 0.0 0.0");
  EXPECT_STREQ(o.p, "0.0 1.0 0.0 0.0");
  EXPECT_STREQ(n.p, "0.1");
  EXPECT_STREQ(f.p, "10.0");
  EXPECT_STREQ(fo.p, "5.0");
  EXPECT_STREQ(z.p, "1.0");
  quillon_destroy(ctrl);
}

TEST(CApi, InitializeViewerAnswersWithTheEmptyText) {
  QuillonCtrl* ctrl = quillon_create();
  char xml[] = "not a document";
  char* doc = xml;
  Owned annotated, groups;
  QuillonBytes r = quillon_InitializeViewer_v1(ctrl, &doc, &annotated.p, &groups.p);
  EXPECT_EQ(r.data, nullptr);
  EXPECT_EQ(r.size, 0u);
  EXPECT_NE(annotated.p, nullptr);
  EXPECT_NE(groups.p, nullptr);
  quillon_destroy(ctrl);
}

}  // namespace
