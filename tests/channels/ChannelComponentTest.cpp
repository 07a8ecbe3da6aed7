// The decoder inside a real viewer component: what a host's SendChannels reaches. How the text
// ends, and that a reloaded document registers its channels again, the component's and the C
// interface's own tests pin.
#include <gtest/gtest.h>

#include <memory>

#include "MessageBuilder.h"
#include "RecordingReceivers.h"
#include "channels/ChannelErrorCodes.h"
#include "control/QuillonComponent.h"

namespace quillon::test {
namespace {

TEST(ChannelComponentTest, SendChannelsDecodesAndReportsTheDecodersErrorToTheHost) {
  ComponentParts parts;
  parts.decoder = std::make_unique<QuillonChannelgroupDecoder>();
  QuillonComponent component{std::move(parts)};
  Log log;
  ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 0, std::make_unique<Recorder1D>(log)), 0);
  ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 1, std::make_unique<Recorder3D>(log)), 0);
  ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 2, std::make_unique<Recorder6D>(log)), 0);

  const auto message = WorkedExample();
  EXPECT_EQ(component.SendChannels(message.data(), message.size()), "");
  ASSERT_EQ(log.order, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(log.v1[0].GetValue(), 1.5);
  EXPECT_EQ(log.v3[0].Y(), 20.0);
  EXPECT_EQ(log.v6[0].Position(2), 3.0);

  const std::string text = component.SendChannels(message.data(), 100);
  EXPECT_EQ(log.order.size(), 5u);
  EXPECT_EQ(text.rfind(std::to_string(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED) + '\xA7', 0), 0u)
      << text;
}

}  // namespace
}  // namespace quillon::test
