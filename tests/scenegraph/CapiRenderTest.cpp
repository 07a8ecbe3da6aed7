// Offscreen rendering through the C interface, as a host without a display uses it: one control
// that draws, answers for its camera, hides parts by name, and loads document after document
// under a render state that outlives them all.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>
#include <osg/Notify>
#include <osg/ref_ptr>
#include <string>
#include <utility>
#include <vector>

#include "RenderHelpers.h"
#include "quillon/quillon.h"

namespace {

using quillon::test::MeanColour;
using quillon::test::Rgb;

class OffscreenControl : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
  }
  void Open(int w, int h) {
    width = w;
    height = h;
    if (quillon_create_window(ctrl, 0, width, height) != 0) GTEST_SKIP() << "no offscreen render area here";
  }
  void TearDown() override {
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }

  // True when the document was accepted. A version other than "1.0" fails the document
  // before its scene is read.
  bool Load(const std::string& vrml, const char* version = "1.0") {
    const std::string xml = "<?xml version=\"1.0\"?>\n<Visualisation><Version>" + std::string(version) +
                            "</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" + vrml +
                            "\n]]></Scene></Visualisation>\n";
    return quillon_load_document(ctrl, xml.c_str(), nullptr, nullptr) == 0;
  }

  // The mean colour of the picture's centre, or of all of it.
  Rgb Render(bool whole = false) {
    pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4, 0);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    if (whole) return MeanColour(pixels, width, 0, 0, width, height);
    return MeanColour(pixels, width, width / 2 - 4, height / 2 - 4, width / 2 + 4, height / 2 + 4);
  }

  static bool IsBackground(const Rgb& c) {
    return std::abs(c.r - 76.5) < 3 && std::abs(c.g - 76.5) < 3 && std::abs(c.b - 127.5) < 3;
  }
  static bool IsGreen(const Rgb& c) { return c.g > 120 && c.r < 40 && c.b < 40; }

  QuillonCtrl* ctrl = nullptr;
  int width = 0, height = 0;
  std::vector<unsigned char> pixels;
};

constexpr const char* kGreenBox =
    "DEF Probe Transform { children [ Shape { appearance Appearance { material Material { diffuseColor 0 0.9 0 "
    "emissiveColor 0 0.4 0 } } geometry Box { size 0.1 0.1 0.1 } } ] }";

TEST_F(OffscreenControl, DrawsTheBackgroundAndRefusesShortBuffers) {
  quillon_process_events(ctrl);  // no window yet
  Open(200, 150);
  quillon_process_events(ctrl);  // an offscreen viewer has no events, and is left alone
  EXPECT_TRUE(IsBackground(Render(true)));
  EXPECT_EQ(pixels[3], 255);  // opaque
  std::vector<unsigned char> small(16);
  EXPECT_NE(quillon_render_rgba(ctrl, small.data(), small.size()), 0);
  EXPECT_NE(quillon_render_rgba(ctrl, nullptr, pixels.size()), 0);

  quillon_resize(ctrl, width = 64, height = 32);
  EXPECT_TRUE(IsBackground(Render(true)));
  quillon_destroy_window(ctrl);
  EXPECT_NE(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
}

// What is set comes back as text with three decimals; the defaults fill in what is not given.
// 16777.217 m is 2^24 + 1 scene units, which the camera's floats hold as 2^24.
TEST_F(OffscreenControl, CameraTextRoundTripsAsItsFloatsHoldIt) {
  Open(200, 150);
  using Texts = std::array<std::string, 6>;
  const struct {
    std::optional<Texts> set;
    Texts get;
  } cases[] = {
      {std::nullopt, {"0.000 0.000 0.000", "0.000 0.000 0.000 0.000", "0.100", "10.000", "5.000", "1.000"}},
      {Texts{"1.500 -2.000 3.250", "0.000 1.000 0.000 0.500", "0.010", "20.000", "4.000", "0.800"},
       {"1.500 -2.000 3.250", "0.000 1.000 0.000 0.500", "0.010", "20.000", "4.000", "0.800"}},
      {Texts{"16777.217 -16777.217 2.000", "0.000 1.000 0.000 0.500", "0.010", "16777.217", "16777.217", "0.800"},
       {"16777.216 -16777.216 2.000", "0.000 1.000 0.000 0.500", "0.010", "16777.216", "16777.216", "0.800"}},
  };
  for (const auto& c : cases) {
    Texts wanted = c.set.value_or(Texts{});
    std::array<char*, 6> texts{};
    if (c.set)
      for (std::size_t i = 0; i < 6; ++i) texts[i] = wanted[i].data();
    ASSERT_EQ(quillon_SetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]), 1);
    for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
    ASSERT_EQ(quillon_GetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]), 1);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(texts[i], c.get[i]) << i;
    for (char*& t : texts) quillon_free(std::exchange(t, nullptr));
  }
}

TEST_F(OffscreenControl, ShowsTheDocumentsBoxAndHidesItByName) {
  Open(200, 150);
  ASSERT_TRUE(Load(kGreenBox));
  quillon_ViewAll_v2(ctrl);
  EXPECT_TRUE(IsGreen(Render()));

  std::string name = "Probe";
  char* text = name.data();
  EXPECT_EQ(quillon_HideNode_v1(ctrl, &text), 1);
  EXPECT_NEAR(Render().b, 127.5, 2);
  EXPECT_EQ(quillon_UnhideNode_v1(ctrl, &text), 1);
  EXPECT_TRUE(IsGreen(Render()));

  // A document without anything to draw is refused and leaves the box in view.
  EXPECT_FALSE(Load("WorldInfo { }"));
  char* errors = quillon_error_text(ctrl);
  ASSERT_NE(errors, nullptr);
  EXPECT_NE(std::string(errors).find("1290808"), std::string::npos);
  quillon_free(errors);
  EXPECT_TRUE(IsGreen(Render()));
}

// A scene that draws nothing lies between two that draw the same box: the third must not be
// drawn through what the render state remembers of the first.
TEST_F(OffscreenControl, BoxAfterAnEmptySwitchAfterABox) {
  Open(463, 480);
  ASSERT_TRUE(Load("Shape { geometry Box { size 1 1 1 } } "));
  EXPECT_FALSE(IsBackground(Render()));

  ASSERT_TRUE(Load("Switch { whichChoice -5 choice [ Shape { geometry Box { size 1 1 1 } } ] } "));
  EXPECT_TRUE(IsBackground(Render()));

  ASSERT_TRUE(
      Load("Shape { appearance Appearance { material Material { shininess -3 } } geometry Box { size 1 1 1 } } "));
  const Rgb lit = Render();
  EXPECT_FALSE(IsBackground(lit));

  // The same box again, now with a material that OpenGL takes as it stands.
  ASSERT_TRUE(
      Load("Shape { appearance Appearance { material Material { shininess 0 } } geometry Box { size 1 1 1 } } "));
  const Rgb valid = Render();
  EXPECT_NEAR(lit.r, valid.r, 1);
  EXPECT_NEAR(lit.g, valid.g, 1);
  EXPECT_NEAR(lit.b, valid.b, 1);
}

// Collects what the runtime warns about while it lives; the runtime checks for OpenGL errors
// after every frame.
class Warnings {
 public:
  Warnings() : before(osg::getNotifyHandler()), handler(new Handler) { osg::setNotifyHandler(handler.get()); }
  ~Warnings() { osg::setNotifyHandler(before.get()); }
  Warnings(const Warnings&) = delete;
  Warnings& operator=(const Warnings&) = delete;
  const std::string& text() const { return handler->text; }

 private:
  struct Handler : osg::NotifyHandler {
    void notify(osg::NotifySeverity severity, const char* message) override {
      if (severity <= osg::WARN) text += message;
    }
    std::string text;
  };
  osg::ref_ptr<osg::NotifyHandler> before;
  osg::ref_ptr<Handler> handler;
};

// The values OpenGL would refuse or choke on, in every node kind, document after document on
// one control; the random host in tests/stress goes through thousands more of them.
TEST_F(OffscreenControl, OddDocumentsDrawWithoutOpenGlWarningsAndLeaveTheStateClean) {
  Open(96, 96);
  const Warnings warnings;
  const char* documents[] = {
      "Shape { appearance Appearance { material Material { shininess nan transparency 2 diffuseColor nan inf -1 } } "
      "geometry Box { size nan -1 1e39 } }",
      "Shape { appearance Appearance { material Material { shininess 128 ambientIntensity -inf } } "
      "geometry Sphere { radius 3e38 } }",
      "DEF N1 Transform { scale 0 0 0 rotation 0 0 0 nan children [ Shape { geometry Cone { bottomRadius -2 } } ] }",
      "Transform { scale nan 1 -1 translation 3e38 0 0 center inf 0 0 scaleOrientation 0 0 0 0 children [ "
      "Shape { geometry Cylinder { radius 1e30 height -inf top FALSE } } ] }",
      "Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, nan 1 0, 1e39 0 0 ] } coordIndex "
      "[ 0 1 2 -1 0 1 3 -1 2147483647 -2147483648 1 ] color Color { color [ nan 2 -1 ] } colorPerVertex FALSE } }",
      "Switch { whichChoice 2147483647 choice [ Shape { geometry Box { } } ] } Group { children [ Shape { geometry",
  };
  for (const char* vrml : documents) {
    SCOPED_TRACE(vrml);
    Load(vrml);
    quillon_ViewAll_v2(ctrl);
    std::string name = "N1";
    char* text = name.data();
    quillon_HideNode_v1(ctrl, &text);
    Render(true);
  }
  ASSERT_TRUE(Load(kGreenBox));
  quillon_ViewAll_v2(ctrl);
  EXPECT_TRUE(IsGreen(Render()));
  EXPECT_EQ(warnings.text().substr(0, 1000), "");
}

}  // namespace
