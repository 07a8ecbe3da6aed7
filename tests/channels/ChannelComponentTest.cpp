// The decoder inside a real viewer component: what a host's SendChannels reaches.
#include <gtest/gtest.h>

#include <memory>

#include "MessageBuilder.h"
#include "RecordingReceivers.h"
#include "channels/ChannelErrorCodes.h"
#include "channels/QuillonChannelgroupDecoder.h"
#include "control/ComponentErrorCodes.h"
#include "control/QuillonComponent.h"
#include "core/ZrErrorMap.h"

namespace quillon::test {
namespace {

class ChannelComponentTest : public ::testing::Test {
 protected:
  static ComponentParts Parts() {
    ComponentParts parts;
    parts.decoder = std::make_unique<QuillonChannelgroupDecoder>();
    return parts;
  }
  void RegisterExample() {
    ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 0, std::make_unique<Recorder1D>(log)), 0);
    ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 1, std::make_unique<Recorder3D>(log)), 0);
    ASSERT_EQ(component.RegisterInDecoder("Arm1", 2, 2, std::make_unique<Recorder6D>(log)), 0);
  }

  Log log;
  QuillonComponent component{Parts()};
};

TEST_F(ChannelComponentTest, SendChannelsDecodesAndReportsTheErrorTreeToTheHost) {
  RegisterExample();
  const auto message = WorkedExample();
  EXPECT_EQ(component.SendChannels(message.data(), message.size()), "");
  ASSERT_EQ(log.order, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(log.v1[0].GetValue(), 1.5);
  EXPECT_EQ(log.v3[0].Y(), 20.0);
  EXPECT_EQ(log.v6[0].Position(2), 3.0);

  const std::string text = component.SendChannels(message.data(), 100);
  EXPECT_EQ(log.order.size(), 5u);
  EXPECT_NE(text.find(std::to_string(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED)), std::string::npos);
  const std::string last = std::to_string(QUILLONCOMPONENT_CONVERTERRORTREEFORCOM) + '\xA7' +
                           std::string(ZrErrorMap::GetMessage(QUILLONCOMPONENT_CONVERTERRORTREEFORCOM));
  ASSERT_GE(text.size(), last.size());
  EXPECT_EQ(text.substr(text.size() - last.size()), last);

  // A reloaded document registers the same channels again.
  component.ClearMappings();
  RegisterExample();
  EXPECT_EQ(component.SendChannels(message.data(), message.size()), "");
  EXPECT_EQ(log.order.size(), 8u);
}

}  // namespace
}  // namespace quillon::test
