// Offscreen rendering through the C interface, as a host without a display uses it: one control
// that draws, answers for its camera, hides parts by name, and loads document after document
// under a render state that outlives them all.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <optional>
#include <osg/Notify>
#include <osg/ref_ptr>
#include <random>
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
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
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
};

constexpr const char* kGreenBox =
    "DEF Probe Transform { children [ Shape { appearance Appearance { material Material { diffuseColor 0 0.9 0 "
    "emissiveColor 0 0.4 0 } } geometry Box { size 0.1 0.1 0.1 } } ] }";

TEST_F(OffscreenControl, DrawsTheBackgroundAndRefusesShortBuffers) {
  quillon_process_events(ctrl);  // no window yet
  Open(200, 150);
  quillon_process_events(ctrl);  // an offscreen viewer has no events, and is left alone
  std::vector<unsigned char> pixels(200 * 150 * 4);
  ASSERT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
  const Rgb mean = MeanColour(pixels, 200, 0, 0, 200, 150);
  EXPECT_NEAR(mean.r, 76.5, 2);
  EXPECT_NEAR(mean.g, 76.5, 2);
  EXPECT_NEAR(mean.b, 127.5, 2);
  EXPECT_EQ(pixels[3], 255);  // opaque

  std::vector<unsigned char> small(16);
  EXPECT_NE(quillon_render_rgba(ctrl, small.data(), small.size()), 0);
  EXPECT_NE(quillon_render_rgba(ctrl, nullptr, pixels.size()), 0);

  quillon_resize(ctrl, 64, 32);
  std::vector<unsigned char> resized(64 * 32 * 4);
  EXPECT_EQ(quillon_render_rgba(ctrl, resized.data(), resized.size()), 0);

  quillon_destroy_window(ctrl);
  EXPECT_NE(quillon_render_rgba(ctrl, resized.data(), resized.size()), 0);
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

// Makes documents of every node kind with values from a list that mixes good ones with
// those OpenGL would refuse or choke on. Some are cut short, some have nothing to draw.
class DocumentMaker {
 public:
  explicit DocumentMaker(unsigned seed) : random(seed) {}

  std::string Next() {
    if (Pick(0, 14) == 0) return "WorldInfo { } ";  // nothing to draw
    std::string text;
    const int roots = Pick(1, 3);
    for (int i = 0; i < roots; ++i) text += Node(0);
    if (Pick(0, 9) == 0) text.resize(static_cast<std::size_t>(Pick(0, static_cast<int>(text.size()))));
    if (Pick(0, 19) == 0) text += " } ] garbage { ";
    return text;
  }

 private:
  int Pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); }
  template <std::size_t N>
  const char* Any(const std::array<const char*, N>& values) {
    return values[static_cast<std::size_t>(Pick(0, static_cast<int>(N) - 1))];
  }

  // Two in three numbers are ordinary, so that most scenes still show something.
  std::string Number() {
    static const std::array<const char*, 5> plain = {"0.1", "0.3", "0.5", "1", "2"};
    static const std::array<const char*, 12> odd = {"0",    "-1",  "-3",   "128",  "1e30",  "nan",
                                                    "-nan", "inf", "-inf", "1e39", "-1e39", "3e38"};
    return Pick(0, 2) != 0 ? Any(plain) : Any(odd);
  }
  std::string Numbers(int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s += Number() + " ";
    return s;
  }
  std::string Index() {
    static const std::array<const char*, 9> values = {"0",  "1",  "2",          "3",          "-1",
                                                      "-7", "99", "2147483647", "-2147483648"};
    return Any(values);
  }

  std::string Material() {
    static const std::array<const char*, 6> fields = {"diffuseColor 3", "emissiveColor 3", "specularColor 3",
                                                      "shininess 1",    "transparency 1",  "ambientIntensity 1"};
    std::string s = "Material { ";
    for (const char* field : fields) {
      if (Pick(0, 1) == 0) continue;
      const std::string f(field);
      s += f.substr(0, f.size() - 2) + " " + Numbers(f.back() - '0');
    }
    return s + "} ";
  }

  std::string Geometry() {
    switch (Pick(0, 4)) {
      case 0:
        return "Box { size " + Numbers(3) + "} ";
      case 1:
        return "Sphere { radius " + Number() + " } ";
      case 2:
        return "Cone { bottomRadius " + Number() + " height " + Number() + " } ";
      case 3:
        return "Cylinder { radius " + Number() + " height " + Number() + " top FALSE } ";
      default: {
        std::string s = "IndexedFaceSet { coord Coordinate { point [ ";
        const int points = Pick(0, 5);
        for (int i = 0; i < points; ++i)
          s += (Pick(0, 2) == 0 ? Numbers(3) : std::to_string(i % 2) + " " + std::to_string(i / 2) + " 0") + ", ";
        s += "] } coordIndex [ ";
        const int indices = Pick(0, 12);
        for (int i = 0; i < indices; ++i) s += Index() + " ";
        if (Pick(0, 1) == 0)
          s += "] color Color { color [ " + Numbers(3) + "] } colorPerVertex FALSE ";
        else
          s += "] ";
        return s + "} ";
      }
    }
  }

  std::string Shape() {
    std::string s = "Shape { ";
    if (Pick(0, 3) != 0) s += "appearance Appearance { material " + Material() + "} ";
    return s + "geometry " + Geometry() + "} ";
  }

  std::string Children(int depth) {
    std::string s = "[ ";
    const int n = Pick(0, 3);
    for (int i = 0; i < n; ++i) s += Node(depth + 1);
    return s + "] ";
  }

  std::string Node(int depth) {
    const int kind = depth >= 3 ? 0 : Pick(0, 4);
    const std::string def = Pick(0, 3) == 0 ? "DEF N" + std::to_string(Pick(0, 3)) + " " : "";
    switch (kind) {
      case 1:
        return def + "Switch { whichChoice " + Index() + " choice " + Children(depth) + "} ";
      case 2:
        return def + "Transform { rotation " + Numbers(4) + "scale " + Numbers(3) + "center " + Numbers(3) +
               "scaleOrientation " + Numbers(4) + "translation " + Numbers(3) + "children " + Children(depth) + "} ";
      case 3:
        return def + "Transform { rotation 0 0 0 " + Number() + " scale " + Number() + " 1 0 children " +
               Children(depth) + "} ";
      case 4:
        return def + "Group { children " + Children(depth) + "} ";
      default:
        return def + Shape();
    }
  }

  std::mt19937 random;
};

TEST_F(OffscreenControl, SurvivesHundredsOfOddDocuments) {
  Open(96, 96);
  const auto start = std::chrono::steady_clock::now();
  const Warnings warnings;
  DocumentMaker maker(20240611u);
  int refused = 0, drawn = 0;
  for (int i = 0; i < 400; ++i) {
    const std::string vrml = maker.Next();
    SCOPED_TRACE(vrml);
    refused += Load(vrml, i % 17 == 0 ? "2.0" : "1.0") ? 0 : 1;
    if (i % 7 != 0) quillon_ViewAll_v2(ctrl);
    if (i % 11 == 0) {
      std::string name = "N1";
      char* text = name.data();
      quillon_HideNode_v1(ctrl, &text);
    }
    drawn += IsBackground(Render(true)) ? 0 : 1;
  }
  // Documents were refused in between, and enough of the others drew something to matter.
  EXPECT_GT(refused, 0);
  EXPECT_GT(drawn, 50);

  ASSERT_TRUE(Load(kGreenBox));
  quillon_ViewAll_v2(ctrl);
  EXPECT_TRUE(IsGreen(Render()));
  EXPECT_EQ(warnings.text().substr(0, 1000), "");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
