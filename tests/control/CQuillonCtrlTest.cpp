#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Fakes.h"
#include "control/CQuillonCtrl.h"

namespace quillon {
namespace {

using namespace quillon::testing;

struct ControlTest : ::testing::Test {
  ControlTest() {
    auto d = std::make_unique<FakeDecoder>();
    decoder = d.get();
    control = std::make_unique<CQuillonCtrl>(ComponentParts{std::move(d), std::make_unique<FakeParser>(), &scene, {}});
  }
  std::string text(QuillonBytes bytes) {
    std::string s(reinterpret_cast<char*>(bytes.data), bytes.size);
    std::free(bytes.data);
    return s;
  }

  FakeDecoder* decoder;
  FakeSceneGraph scene;
  std::unique_ptr<CQuillonCtrl> control;
};

TEST_F(ControlTest, ChannelBufferGrowsButNeverShrinks) {
  EXPECT_EQ(control->channelBufferSize(), 100u);
  std::vector<unsigned char> big(150, 7), small(20, 9);

  EXPECT_EQ(text(control->SendChannels_v1(big.data(), 150)), "");
  EXPECT_EQ(control->channelBufferSize(), 150u);
  EXPECT_EQ(decoder->decoded.back(), big);

  EXPECT_EQ(text(control->SendChannels_v1(small.data(), 20)), "");
  EXPECT_EQ(control->channelBufferSize(), 150u);
  EXPECT_EQ(decoder->decoded.back(), small);
}

TEST_F(ControlTest, WithoutBytesThePreviousMessageIsDecodedAgain) {
  // At first the buffer holds 100 zero bytes.
  control->SendChannels_v1(nullptr, 0);
  EXPECT_EQ(decoder->decoded.back(), std::vector<unsigned char>(100, 0));

  std::vector<unsigned char> message{1, 2, 3, 4};
  control->SendChannels_v1(message.data(), 4);
  control->SendChannels_v1(nullptr, 300);  // grows, copies nothing
  EXPECT_EQ(control->channelBufferSize(), 300u);
  EXPECT_EQ(decoder->decoded.back(), message);
  control->SendChannels_v1(message.data(), 0);  // an empty array copies nothing either
  EXPECT_EQ(decoder->decoded.back(), message);
}

TEST_F(ControlTest, AbsurdCountsAreRefusedWithAnError) {
  for (long count : {-1L, -100000L, CQuillonCtrl::kMaxMessageBytes + 1, 1L << 30}) {
    const std::string result = text(control->SendChannels_v1(nullptr, count));
    EXPECT_EQ(result.rfind("1290304\xA7", 0), 0u) << count;
    EXPECT_NE(result.find("\xA7"
                          "1290302\xA7"),
              std::string::npos)
        << count;
  }
  EXPECT_EQ(control->channelBufferSize(), 100u);
  EXPECT_TRUE(decoder->decoded.empty());
}

TEST_F(ControlTest, InitializeViewerWritesBothOutputsBack) {
  char xml[] = "<Visualisation/>";
  char* document = xml;
  char old[] = "old";
  char* annotated = old;
  char* needed = nullptr;
  QuillonBytes result = control->InitializeViewer_v1(&document, &annotated, &needed);
  EXPECT_EQ(result.data, nullptr);
  EXPECT_EQ(result.size, 0u);
  ASSERT_NE(annotated, old);
  EXPECT_STREQ(annotated, "annotated:<Visualisation/>");
  EXPECT_STREQ(needed, "[Arm1, 2]");
  std::free(annotated);
  std::free(needed);

  // Null arguments are empty strings, and nothing is written through a null pointer.
  result = control->InitializeViewer_v1(nullptr, nullptr, nullptr);
  EXPECT_EQ(result.data, nullptr);
}

TEST_F(ControlTest, SetCameraPositionFillsInAndWritesBackTheDefaults) {
  char* position = nullptr;
  char* texts[6] = {};
  char near[] = "0.2";
  texts[2] = near;
  char** args[6] = {&position, &texts[1], &texts[2], &texts[3], &texts[4], nullptr};
  EXPECT_EQ(control->SetCameraPosition_v1(args), 1);
  EXPECT_STREQ(position, "0.0 0.0 0.0");
  EXPECT_STREQ(texts[1], "0.0 1.0 0.0 0.0");
  EXPECT_STREQ(texts[2], "0.2");
  EXPECT_STREQ(texts[3], "10.0");
  EXPECT_STREQ(texts[4], "5.0");
  EXPECT_DOUBLE_EQ(scene.cam.nearDistance, 200.0);
  EXPECT_DOUBLE_EQ(scene.cam.zoomFactor, 1.0);
  std::free(position);
  for (int i : {1, 2, 3, 4}) std::free(texts[i]);
}

TEST_F(ControlTest, NodeNamesMayBeNull) {
  scene.switches["Base"] = 0;
  EXPECT_EQ(control->HideNode_v1(nullptr), 0);
  char name[] = "Base";
  char* p = name;
  EXPECT_EQ(control->HideNode_v1(&p), 1);
  EXPECT_EQ(control->UnhideNode_v1(&p), 1);
}

}  // namespace
}  // namespace quillon
