// Through the C interface, with offscreen pixels: a mapped transform moves while its values
// are good, and stays where it was, red, while they are bad.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "quillon/quillon.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

const char* kDocument = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<Visualisation>
  <Version>1.0</Version>
  <Settings><RenderInvalids>freeze</RenderInvalids></Settings>
  <Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Transform { translation -0.15 0 0 children [ Shape { appearance Appearance { material Material { diffuseColor 0.3 0.3 0.3 } } geometry Box { size 0.02 0.02 0.02 } } ] }
Transform { translation 0.15 0 0 children [ Shape { appearance Appearance { material Material { diffuseColor 0.3 0.3 0.3 } } geometry Box { size 0.02 0.02 0.02 } } ] }
DEF Probe Transform { children [ Shape { appearance Appearance { material Material { } } geometry Box { size 0.04 0.04 0.04 } } ] }
]]></Scene>
  <ExternRoute from="Arm[2][0][3D]" to="Probe.translation"/>
</Visualisation>
)";

// One channel group "Arm", group 2, with one 3D value and nothing else.
std::vector<unsigned char> Message(double x, double y, double z) {
  std::vector<unsigned char> m = {0x01, 0x00, 3, 0, 'A', 'r', 'm', 2, 0, 0, 0, 1, 0, 2};
  for (double d : {x, y, z}) {
    unsigned char bytes[8];
    std::memcpy(bytes, &d, 8);
    m.insert(m.end(), bytes, bytes + 8);
  }
  return m;
}

struct Blob {
  double x = 0;  // mean column of the pixels
  int count = 0;
};

class LiveMapping : public ::testing::Test {
 protected:
  void SetUp() override {
    ctrl = quillon_create();
    ASSERT_NE(ctrl, nullptr);
    if (quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) GTEST_SKIP() << "no offscreen rendering here";
    char* doc = const_cast<char*>(kDocument);
    QuillonBytes r = quillon_InitializeViewer_v1(ctrl, &doc, nullptr, nullptr);
    quillon_free(r.data);
    quillon_ViewAll_v2(ctrl);
  }
  void TearDown() override { quillon_destroy(ctrl); }

  void Send(double x) {
    const auto m = Message(x, 0, 0);
    QuillonBytes r = quillon_SendChannels_v1(ctrl, m.data(), static_cast<long>(m.size()));
    EXPECT_EQ(r.size, 0u) << std::string(reinterpret_cast<char*>(r.data), r.size);
    quillon_free(r.data);
  }

  // Where the pixels of one quality colour are: green or red.
  Blob Find(bool green) {
    std::vector<unsigned char> pixels(kWidth * kHeight * 4);
    EXPECT_EQ(quillon_render_rgba(ctrl, pixels.data(), pixels.size()), 0);
    Blob blob;
    double sum = 0;
    for (int row = 0; row < kHeight; ++row)
      for (int column = 0; column < kWidth; ++column) {
        const unsigned char* p = &pixels[(row * kWidth + column) * 4];
        const bool match = green ? (p[1] > p[0] + 60 && p[1] > p[2] + 60) : (p[0] > p[1] + 60 && p[0] > p[2] + 20);
        if (match) sum += column, ++blob.count;
      }
    if (blob.count) blob.x = sum / blob.count;
    return blob;
  }

  QuillonCtrl* ctrl = nullptr;
};

TEST_F(LiveMapping, MovesGreenWhenGoodAndFreezesRedWhenBad) {
  // The decoder hands on the quality it was made with (positive infinity): with infinite
  // thresholds that is nominal.
  const float inf = std::numeric_limits<float>::infinity();
  quillon_SetMeaningfulThreshold(ctrl, inf);
  quillon_SetNominalThreshold(ctrl, inf);
  Send(0.0);
  const Blob start = Find(true);
  ASSERT_GT(start.count, 20);
  Send(0.08);  // 8 cm to the right
  const Blob moved = Find(true);
  ASSERT_GT(moved.count, 20);
  EXPECT_GT(moved.x, start.x + 10);

  quillon_SetMeaningfulThreshold(ctrl, 100.0f);
  quillon_SetNominalThreshold(ctrl, 0.0f);
  Send(-0.08);
  EXPECT_EQ(Find(true).count, 0);
  const Blob frozen = Find(false);
  ASSERT_GT(frozen.count, 20);
  EXPECT_NEAR(frozen.x, moved.x, 3.0);
}

}  // namespace
