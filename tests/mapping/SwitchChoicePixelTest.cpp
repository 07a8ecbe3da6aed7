// A Switch's choices that build nothing leave no child: the document's whichChoice, a channel
// that drives the choice and UnhideNode all count the children that were built. Checked by
// what the offscreen view shows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../channels/MessageBuilder.h"
#include "quillon/quillon.h"

namespace {

constexpr int kWidth = 120, kHeight = 90;

const std::string kRedBox =
    "Shape { appearance Appearance { material Material { diffuseColor 1 0 0 } } geometry Box { size 1 1 1 } } ";
const std::string kGreenBox =
    "Shape { appearance Appearance { material Material { diffuseColor 0 1 0 } } geometry Box { size 1 1 1 } } ";

enum class Seen { Nothing, Red, Green };

class SwitchChoice : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) GTEST_SKIP() << "no offscreen rendering here";
  }
  void TearDown() override { quillon_destroy(ctrl); }

  // Loads a scene and looks at the origin from 4 m away, whatever the choice shows.
  void Load(const std::string& vrml, const std::string& routes = "") {
    std::string xml = "<Visualisation><Version>1.0</Version><Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n" +
                      vrml + "\n]]></Scene>" + routes + "</Visualisation>";
    char* document = xml.data();
    char* annotated = nullptr;
    QuillonBytes r = quillon_InitializeViewer_v1(ctrl, &document, &annotated, nullptr);
    EXPECT_TRUE(!annotated || !*annotated) << annotated;
    quillon_free(annotated);
    quillon_free(r.data);
    char* camera[6] = {const_cast<char*>("0 0 4"), nullptr, nullptr, nullptr, nullptr, nullptr};
    ASSERT_TRUE(
        quillon_SetCameraPosition_v1(ctrl, &camera[0], &camera[1], &camera[2], &camera[3], &camera[4], &camera[5]));
    for (char* text : camera) quillon_free(text);
  }

  void SendChoice(double value) {
    quillon::test::MessageBuilder m;
    m.Header(0x0011, "Sel", 1, 1).U8(1).F64(value).F64(0.0);
    QuillonBytes r = quillon_SendChannels_v1(ctrl, m.bytes.data(), static_cast<long>(m.bytes.size()));
    EXPECT_EQ(r.size, 0u);
    quillon_free(r.data);
  }

  Seen Centre() {
    std::vector<unsigned char> pixels(kWidth * kHeight * 4);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    const unsigned char* p = &pixels[((kHeight / 2) * kWidth + kWidth / 2) * 4];
    if (p[0] > p[1] + 60 && p[0] > p[2] + 60) return Seen::Red;
    if (p[1] > p[0] + 60 && p[1] > p[2] + 60) return Seen::Green;
    return Seen::Nothing;
  }

  QuillonCtrl* ctrl = nullptr;
};

TEST_F(SwitchChoice, SkippedAndEmptyChoicesAreNotCounted) {
  Load("Switch { choice [ Viewpoint { } " + kRedBox + "] whichChoice 0 }");
  EXPECT_EQ(Centre(), Seen::Red);

  Load("Switch { choice [ NULL " + kRedBox + "] whichChoice 1 }");
  EXPECT_EQ(Centre(), Seen::Nothing);

  Load(
      "DEF Box Shape { geometry Box { size 0.1 0.1 0.1 } }\n"
      "Switch { choice [ USE Nowhere WorldInfo { } " +
      kGreenBox + kRedBox + "] whichChoice 1 }");
  EXPECT_EQ(Centre(), Seen::Red);
}

TEST_F(SwitchChoice, ChannelValuesCountTheBuiltChildren) {
  Load("DEF Sel Switch { choice [ NULL Viewpoint { } " + kRedBox + kGreenBox + "] whichChoice 0 }",
       "<ExternRoute from=\"Sel[1][0][1D]\" to=\"Sel\"/>");
  // The route makes the switch show nothing until a value comes.
  EXPECT_EQ(Centre(), Seen::Nothing);
  SendChoice(1);
  EXPECT_EQ(Centre(), Seen::Green);
  SendChoice(0);
  EXPECT_EQ(Centre(), Seen::Red);
  SendChoice(2);
  EXPECT_EQ(Centre(), Seen::Nothing);
}

TEST_F(SwitchChoice, UnhideShowsTheFirstBuiltChild) {
  Load("DEF Sel Switch { choice [ NULL Viewpoint { } " + kGreenBox + kRedBox + "] }");
  EXPECT_EQ(Centre(), Seen::Nothing);
  char* name = const_cast<char*>("Sel");
  EXPECT_TRUE(quillon_UnhideNode_v1(ctrl, &name));
  EXPECT_EQ(Centre(), Seen::Green);
  EXPECT_TRUE(quillon_HideNode_v1(ctrl, &name));
  EXPECT_EQ(Centre(), Seen::Nothing);
}

}  // namespace
