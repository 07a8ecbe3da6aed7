// Through the C interface, with offscreen pixels: a mapped transform moves while its values are
// good and stays where it was, red, while they are bad; a Switch's choices that build nothing
// leave no child, for a channel that drives the choice and for UnhideNode alike.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "../channels/MessageBuilder.h"
#include "quillon/quillon.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

const std::string kRedBox =
    "Shape { appearance Appearance { material Material { diffuseColor 1 0 0 } } geometry Box { size 1 1 1 } } ";
const std::string kGreenBox =
    "Shape { appearance Appearance { material Material { diffuseColor 0 1 0 } } geometry Box { size 1 1 1 } } ";

enum class Seen { Nothing, Red, Green };

struct Blob {
  double x = 0;  // mean column of the pixels
  int count = 0;
};

class MappingPixels : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) GTEST_SKIP() << "no offscreen rendering here";
  }
  void TearDown() override { quillon_destroy(ctrl); }

  void Load(const std::string& vrml, const std::string& routes = "", const std::string& settings = "") {
    const std::string xml = "<Visualisation><Version>1.0</Version>" + settings +
                            "<Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" + vrml + "\n]]></Scene>" + routes +
                            "</Visualisation>";
    char* annotated = nullptr;
    EXPECT_EQ(quillon_load_document(ctrl, xml.c_str(), &annotated, nullptr), 0) << annotated;
    quillon_free(annotated);
  }
  // Looks at the origin from 4 m away, whatever the scene holds.
  void LookFromFourMetres() {
    char* camera[6] = {const_cast<char*>("0 0 4"), nullptr, nullptr, nullptr, nullptr, nullptr};
    ASSERT_TRUE(
        quillon_SetCameraPosition_v1(ctrl, &camera[0], &camera[1], &camera[2], &camera[3], &camera[4], &camera[5]));
    for (char* text : camera) quillon_free(text);
  }

  void Send(const quillon::test::MessageBuilder& m) {
    QuillonBytes r = quillon_SendChannels_v1(ctrl, m.bytes.data(), static_cast<long>(m.bytes.size()));
    EXPECT_EQ(r.size, 0u) << std::string(reinterpret_cast<char*>(r.data), r.size);
    quillon_free(r.data);
  }

  std::vector<unsigned char> Render() {
    std::vector<unsigned char> pixels(kWidth * kHeight * 4);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    return pixels;
  }
  static bool Red(const unsigned char* p, int margin = 60) { return p[0] > p[1] + 60 && p[0] > p[2] + margin; }
  static bool Green(const unsigned char* p) { return p[1] > p[0] + 60 && p[1] > p[2] + 60; }

  // Where the pixels of one quality colour are: green or red.
  Blob Find(bool green) {
    const auto pixels = Render();
    Blob blob;
    double sum = 0;
    for (int i = 0; i < kWidth * kHeight; ++i)
      if (green ? Green(&pixels[i * 4]) : Red(&pixels[i * 4], 20)) sum += i % kWidth, ++blob.count;
    if (blob.count) blob.x = sum / blob.count;
    return blob;
  }

  Seen Centre() {
    const auto pixels = Render();
    const unsigned char* p = &pixels[((kHeight / 2) * kWidth + kWidth / 2) * 4];
    return Red(p) ? Seen::Red : Green(p) ? Seen::Green : Seen::Nothing;
  }

  QuillonCtrl* ctrl = nullptr;
};

TEST_F(MappingPixels, MovesGreenWhenGoodAndFreezesRedWhenBad) {
  const std::string grey = "Shape { appearance Appearance { material Material { diffuseColor 0.3 0.3 0.3 } } ";
  Load("Transform { translation -0.15 0 0 children [ " + grey + "geometry Box { size 0.02 0.02 0.02 } } ] }\n" +
           "Transform { translation 0.15 0 0 children [ " + grey + "geometry Box { size 0.02 0.02 0.02 } } ] }\n" +
           "DEF Probe Transform { children [ Shape { appearance Appearance { material Material { } } "
           "geometry Box { size 0.04 0.04 0.04 } } ] }",
       "<ExternRoute from=\"Arm[2][0][3D]\" to=\"Probe.translation\"/>",
       "<Settings><RenderInvalids>freeze</RenderInvalids></Settings>");
  quillon_ViewAll_v2(ctrl);
  // One 3D value, without a quality: the decoder hands on the one it was made with (positive
  // infinity), which with infinite thresholds is nominal.
  const auto send = [&](double x) {
    quillon::test::MessageBuilder m;
    Send(m.Header(0x0001, "Arm", 2, 1).U8(2).F64(x).F64(0).F64(0));
  };
  const float inf = std::numeric_limits<float>::infinity();
  quillon_SetMeaningfulThreshold(ctrl, inf);
  quillon_SetNominalThreshold(ctrl, inf);
  send(0.0);
  const Blob start = Find(true);
  ASSERT_GT(start.count, 20);
  send(0.08);  // 8 cm to the right
  const Blob moved = Find(true);
  ASSERT_GT(moved.count, 20);
  EXPECT_GT(moved.x, start.x + 10);

  quillon_SetMeaningfulThreshold(ctrl, 100.0f);
  quillon_SetNominalThreshold(ctrl, 0.0f);
  send(-0.08);
  EXPECT_EQ(Find(true).count, 0);
  const Blob frozen = Find(false);
  ASSERT_GT(frozen.count, 20);
  EXPECT_NEAR(frozen.x, moved.x, 3.0);
}

TEST_F(MappingPixels, SwitchChoicesCountOnlyTheBuiltChildren) {
  // What a document's own whichChoice shows is pinned on the built scene graph; here the choices
  // a channel or UnhideNode makes. A route makes the switch show nothing until a value comes.
  Load("DEF Sel Switch { choice [ NULL Viewpoint { } " + kRedBox + kGreenBox + "] whichChoice 0 }",
       "<ExternRoute from=\"Sel[1][0][1D]\" to=\"Sel\"/>");
  LookFromFourMetres();
  EXPECT_EQ(Centre(), Seen::Nothing);
  for (const auto& [choice, seen] :
       {std::pair{1.0, Seen::Green}, std::pair{0.0, Seen::Red}, std::pair{2.0, Seen::Nothing}}) {
    quillon::test::MessageBuilder m;
    Send(m.Header(0x0011, "Sel", 1, 1).U8(1).F64(choice).F64(0.0));
    EXPECT_EQ(Centre(), seen) << choice;
  }

  Load("DEF Sel Switch { choice [ NULL Viewpoint { } " + kGreenBox + kRedBox + "] }");
  LookFromFourMetres();
  EXPECT_EQ(Centre(), Seen::Nothing);
  char* name = const_cast<char*>("Sel");
  EXPECT_TRUE(quillon_UnhideNode_v1(ctrl, &name));
  EXPECT_EQ(Centre(), Seen::Green);
  EXPECT_TRUE(quillon_HideNode_v1(ctrl, &name));
  EXPECT_EQ(Centre(), Seen::Nothing);
}

}  // namespace
