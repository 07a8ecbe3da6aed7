// One control that loads document after document and draws each, offscreen, through the C
// interface. Scenes come and go under a render state that outlives them all.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <osg/Notify>
#include <osg/ref_ptr>
#include <random>
#include <string>
#include <vector>

#include "RenderHelpers.h"
#include "quillon/quillon.h"

namespace {

using quillon::test::MeanColour;
using quillon::test::Rgb;

class SceneChange : public ::testing::Test {
 protected:
  void Open(int w, int h) {
    width = w;
    height = h;
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, width, height) != 0) GTEST_SKIP() << "no offscreen render area here";
  }
  void TearDown() override {
    if (!ctrl) return;
    quillon_destroy_window(ctrl);
    quillon_destroy(ctrl);
  }

  // True when the document was accepted. A version other than "1.0" fails the document
  // before its scene is read.
  bool Load(const std::string& vrml, const char* version = "1.0") {
    std::string xml = "<?xml version=\"1.0\"?>\n<Visualisation><Version>" + std::string(version) +
                      "</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" + vrml +
                      "\n]]></Scene></Visualisation>\n";
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

  QuillonCtrl* ctrl = nullptr;
  int width = 0, height = 0;
};

// A scene that draws nothing lies between two that draw the same box: the third must not be
// drawn through what the render state remembers of the first.
TEST_F(SceneChange, BoxAfterAnEmptySwitchAfterABox) {
  Open(463, 480);
  const char* box = "Shape { geometry Box { size 1 1 1 } } ";
  ASSERT_TRUE(Load(box));
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

  // Two in three numbers are ordinary, so that most scenes still show something.
  std::string Number() {
    static const std::array<const char*, 5> plain = {"0.1", "0.3", "0.5", "1", "2"};
    static const std::array<const char*, 12> odd = {"0",    "-1",  "-3",   "128",  "1e30",  "nan",
                                                    "-nan", "inf", "-inf", "1e39", "-1e39", "3e38"};
    if (Pick(0, 2) != 0) return plain[static_cast<std::size_t>(Pick(0, static_cast<int>(plain.size()) - 1))];
    return odd[static_cast<std::size_t>(Pick(0, static_cast<int>(odd.size()) - 1))];
  }
  std::string Numbers(int n) {
    std::string s;
    for (int i = 0; i < n; ++i) s += Number() + " ";
    return s;
  }
  std::string Index() {
    static const std::array<const char*, 9> values = {"0",  "1",  "2",          "3",          "-1",
                                                      "-7", "99", "2147483647", "-2147483648"};
    return values[static_cast<std::size_t>(Pick(0, static_cast<int>(values.size()) - 1))];
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

TEST_F(SceneChange, SurvivesHundredsOfOddDocumentsInOneControl) {
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

  ASSERT_TRUE(
      Load("Shape { appearance Appearance { material Material { diffuseColor 0 0.9 0 emissiveColor 0 0.4 0 } } "
           "geometry Box { size 0.1 0.1 0.1 } } "));
  quillon_ViewAll_v2(ctrl);
  const Rgb centre = Render();
  EXPECT_GT(centre.g, 120);
  EXPECT_LT(centre.r, 40);
  EXPECT_LT(centre.b, 40);
  EXPECT_EQ(warnings.text().substr(0, 1000), "");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
