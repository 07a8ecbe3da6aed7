// Offscreen rendering through the C interface, as a host without a display uses it.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "RenderHelpers.h"
#include "quillon/quillon.h"

namespace {

using quillon::test::MeanColour;

constexpr int kWidth = 200, kHeight = 150;

class OffscreenControl : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) GTEST_SKIP() << "no offscreen render area here";
  }
  void TearDown() override {
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }

  std::vector<unsigned char> Render() {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(kWidth) * kHeight * 4);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    return pixels;
  }

  quillon::test::Rgb Centre() {
    return MeanColour(Render(), kWidth, kWidth / 2 - 4, kHeight / 2 - 4, kWidth / 2 + 4, kHeight / 2 + 4);
  }

  bool Load(std::string vrml) {
    std::string xml =
        "<?xml version=\"1.0\"?>\n<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[" + vrml +
        "]]></Scene></Visualisation>\n";
    char* document = xml.data();
    char* annotated = nullptr;
    char* groups = nullptr;
    QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
    const bool ok = !annotated || !*annotated;
    quillon_free(result.data);
    quillon_free(annotated);
    quillon_free(groups);
    return ok;
  }

  QuillonCtrl* ctrl = nullptr;
};

TEST_F(OffscreenControl, DrawsTheBackgroundAndRefusesShortBuffers) {
  const auto pixels = Render();
  const auto mean = MeanColour(pixels, kWidth, 0, 0, kWidth, kHeight);
  EXPECT_NEAR(mean.r, 76.5, 2);
  EXPECT_NEAR(mean.g, 76.5, 2);
  EXPECT_NEAR(mean.b, 127.5, 2);

  std::vector<unsigned char> small(16);
  EXPECT_NE(quillon_render_rgba(ctrl, small.data(), small.size()), 0);
  EXPECT_NE(quillon_render_rgba(ctrl, nullptr, pixels.size()), 0);

  quillon_resize(ctrl, 64, 32);
  std::vector<unsigned char> resized(64 * 32 * 4);
  EXPECT_EQ(quillon_render_rgba(ctrl, resized.data(), resized.size()), 0);
  quillon_resize(ctrl, kWidth, kHeight);

  quillon_destroy_window(ctrl);
  EXPECT_NE(quillon_render_rgba(ctrl, resized.data(), resized.size()), 0);
}

TEST_F(OffscreenControl, CameraTextRoundTrips) {
  std::array<char*, 6> texts{};
  std::array<char**, 6> args{};
  for (std::size_t i = 0; i < 6; ++i) args[i] = &texts[i];
  ASSERT_EQ(quillon_SetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
  ASSERT_EQ(quillon_GetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  const std::array<std::string, 6> defaults = {
      "0.000 0.000 0.000", "0.000 0.000 0.000 0.000", "0.100", "10.000", "5.000", "1.000"};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(texts[i], defaults[i]) << i;
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));

  std::array<std::string, 6> wanted = {
      "1.500 -2.000 3.250", "0.000 1.000 0.000 0.500", "0.010", "20.000", "4.000", "0.800"};
  for (std::size_t i = 0; i < 6; ++i) texts[i] = wanted[i].data();
  ASSERT_EQ(quillon_SetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
  ASSERT_EQ(quillon_GetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(texts[i], wanted[i]) << i;
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
}

// 16777.217 m is 2^24 + 1 scene units, which the camera's floats hold as 2^24.
TEST_F(OffscreenControl, CameraReportsWhatItsFloatsHold) {
  std::array<std::string, 6> wanted = {
      "16777.217 -16777.217 2.000", "0.000 1.000 0.000 0.500", "0.010", "16777.217", "16777.217", "0.800"};
  std::array<char*, 6> texts{};
  for (std::size_t i = 0; i < 6; ++i) texts[i] = wanted[i].data();
  std::array<char**, 6> args{};
  for (std::size_t i = 0; i < 6; ++i) args[i] = &texts[i];
  ASSERT_EQ(quillon_SetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
  ASSERT_EQ(quillon_GetCameraPosition_v1(ctrl, args[0], args[1], args[2], args[3], args[4], args[5]), 1);
  const std::array<std::string, 6> held = {
      "16777.216 -16777.216 2.000", "0.000 1.000 0.000 0.500", "0.010", "16777.216", "16777.216", "0.800"};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(texts[i], held[i]) << i;
  for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
}

TEST_F(OffscreenControl, ShowsTheDocumentsBoxAndHidesItByName) {
  ASSERT_TRUE(
      Load("#VRML V2.0 utf8\nDEF Probe Transform { children [ Shape { appearance Appearance { material "
           "Material { diffuseColor 0 0.9 0 emissiveColor 0 0.4 0 } } geometry Box { size 0.1 0.1 0.1 } } ] "
           "}\n"));
  quillon_ViewAll_v2(ctrl);
  auto centre = Centre();
  EXPECT_GT(centre.g, 120);
  EXPECT_LT(centre.r, 40);
  EXPECT_LT(centre.b, 40);

  std::string name = "Probe";
  char* text = name.data();
  EXPECT_EQ(quillon_HideNode_v1(ctrl, &text), 1);
  centre = Centre();
  EXPECT_NEAR(centre.b, 127.5, 2);
  EXPECT_EQ(quillon_UnhideNode_v1(ctrl, &text), 1);
  EXPECT_GT(Centre().g, 120);

  // A document without anything to draw is refused and leaves the box in view.
  Load("#VRML V2.0 utf8\nWorldInfo { }\n");
  char* errors = quillon_error_text(ctrl);
  ASSERT_NE(errors, nullptr);
  EXPECT_NE(std::string(errors).find("1290808"), std::string::npos);
  quillon_free(errors);
  EXPECT_GT(Centre().g, 120);
}

}  // namespace
