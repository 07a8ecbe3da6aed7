#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "MessageBuilder.h"
#include "RecordingReceivers.h"
#include "channels/ChannelErrorCodes.h"

namespace quillon::test {
namespace {

// The encoder tests carry the values through; here what the worked example alone pins: the
// frame's layout and the quality it does not carry, which stays what the constructor left.
TEST_F(DecoderTest, WorkedExampleFillsTheFrameAndLeavesTheQuality) {
  RegisterReceivers("Arm1", 2, 3);  // as the worked example: 1D, 3D, 6D
  ASSERT_EQ(Decode(WorkedExample()), 0);
  EXPECT_EQ(log.order, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(log.v3[0].W(), 1.0);
  const FltMatrix& f = log.v6[0].GetFrame();
  for (std::size_t r = 0; r < 4; ++r)
    for (std::size_t c = 0; c < 4; ++c) EXPECT_EQ(f(r, c), c == 3 && r < 3 ? r + 1.0 : r == c) << r << "," << c;
  EXPECT_EQ(log.v1[0].GetQuality(), std::numeric_limits<double>::infinity());
  EXPECT_EQ(log.v6[0].GetQuality(), std::numeric_limits<double>::infinity());

  // A rotation travels column by column.
  decoder.Register("g", 0, 0, &r6);
  MessageBuilder m;
  m.Header(0x0001, "g", 0, 1).U8(3);
  for (int i = 0; i < 12; ++i) m.F64(i);
  ASSERT_EQ(Decode(m.bytes), 0);
  const FltMatrix& g = log.v6.at(1).GetFrame();
  EXPECT_EQ(g(2, 3), 2.0);
  EXPECT_EQ(g(1, 0), 4.0);
  EXPECT_EQ(g(0, 1), 6.0);
  EXPECT_EQ(g(2, 2), 11.0);
}

// Which receivers the worked example reaches, by the receivers on channels 0, 1 and 2 of Arm1[2]
// ('1', '3' or '6' for their kind, '-' for none) and one changed byte of the message. Receivers
// of the same channels in another group or path hear nothing.
TEST(Decoder, DeliversToTheReceiversOfItsOwnGroupUntilARecordDoesNotFit) {
  const struct {
    const char* receivers;
    std::size_t at;  // 0: the flags; 31: the second record's type
    unsigned char byte;
    ErrorCode code;
    std::vector<int> order;
  } cases[] = {
      {"136", 0, 0x00, 0, {}},
      {"136", 0, 0x0C, 0, {}},
      {"136", 0, 0x02, 0, {}},
      {"1-6", 0, 0x0D, 0, {1, 3}},
      {"116", 0, 0x0D, QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH, {1}},
      {"136", 31, 0, 0, {1}},
      {"136", 31, 5, 0, {1}},
      {"136", 31, 255, 0, {1}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.receivers << " byte " << c.at << " = " << int{c.byte});
    ZrErrorHandler::Instance().Clear();
    QuillonChannelgroupDecoder decoder;
    Log log, others;
    Recorder1D otherGroup{others};
    Recorder3D otherPath{others};
    ASSERT_EQ(decoder.Register("Arm1", 3, 0, &otherGroup), 0);
    ASSERT_EQ(decoder.Register("Arm2", 2, 1, &otherPath), 0);
    std::vector<std::unique_ptr<ZrValueDecodingCallbackInterface>> receivers;
    for (std::uint32_t channel = 0; channel < 3; ++channel) {
      const char kind = c.receivers[channel];
      if (kind == '-') continue;
      if (kind == '1') receivers.push_back(std::make_unique<Recorder1D>(log));
      if (kind == '3') receivers.push_back(std::make_unique<Recorder3D>(log));
      if (kind == '6') receivers.push_back(std::make_unique<Recorder6D>(log));
      ASSERT_EQ(decoder.Register("Arm1", 2, channel, receivers.back().get()), 0);
    }
    auto message = WorkedExample();
    message[c.at] = c.byte;
    EXPECT_EQ(decoder.DecodeChannelgroup(message.data(), message.size()), c.code);
    EXPECT_EQ(log.order, c.order);
    EXPECT_TRUE(others.order.empty());
    if (c.code) {
      EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(0), c.code);
    }
  }
}

TEST_F(DecoderTest, ChannelTakesOneReceiverOnly) {
  ASSERT_EQ(decoder.Register1D("Arm1", 2, 5, &r1), 0);
  EXPECT_EQ(decoder.Register6D("Arm1", 2, 5, &r6), QUILLONCHANNELGROUPDECODER_REGISTER6D_CHANNELALREADYREGISTERED);
  EXPECT_EQ(decoder.Register3D("Arm1", 2, 5, &r3), QUILLONCHANNELGROUPDECODER_REGISTER3D_CHANNELALREADYREGISTERED);
  EXPECT_EQ(decoder.RegisterTime("Arm1", 2, 5, &rt), QUILLONCHANNELGROUPDECODER_REGISTERTIME_CHANNELALREADYREGISTERED);
  // Through the receiver: its own code on top of the decoder's.
  EXPECT_EQ(decoder.Register("Arm1", 2, 5, &r3), QUILLONCHANNELGROUPDECODER_REGISTER);
  const auto& errors = ZrErrorHandler::Instance();
  ASSERT_EQ(errors.Count(), 3);
  EXPECT_EQ(errors.CodeAt(1), ZRVALUEDECODINGCALLBACKINTERFACE3D_ATTACHTODECODER);
  // Far channel numbers are remembered too.
  EXPECT_EQ(decoder.Register1D("Arm1", 2, 4000000000u, &r1), 0);
  EXPECT_NE(decoder.Register1D("Arm1", 2, 4000000000u, &r1), 0);
  EXPECT_EQ(decoder.Register(std::string("Arm1"), 2, 6, nullptr), QUILLONCHANNELGROUPDECODER_REGISTER);
}

TEST_F(DecoderTest, FieldsNotCarriedKeepTheirLastValue) {
  decoder.Register("g", 0, 0, &r1);
  MessageBuilder full;
  full.Header(0x000D, "g", 0, 1).U8(1).F64(1.0).U32(7).U32(99);
  MessageBuilder bare;
  bare.Header(0x0001, "g", 0, 1).U8(1).F64(2.0);
  ASSERT_EQ(Decode(full.bytes), 0);
  ASSERT_EQ(Decode(bare.bytes), 0);
  ASSERT_EQ(log.v1.size(), 2u);
  EXPECT_EQ(log.v1[1].GetValue(), 2.0);
  EXPECT_EQ(log.v1[1].GetStatus(), 7);
  EXPECT_EQ(log.v1[1].GetTimestamp(), 99u);
}

// Every cut of the worked example stops at the first incomplete field with the truncation
// code, and exactly the complete records before it are delivered.
TEST_F(DecoderTest, TruncatedMessagesDeliverCompleteRecordsOnlyAndLengthsMustFit) {
  RegisterReceivers("Arm1", 2, 3);
  const auto message = WorkedExample();
  for (std::size_t size = 0; size < message.size(); ++size) {
    log.order.clear();
    EXPECT_EQ(decoder.DecodeChannelgroup(message.data(), size), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED)
        << size;
    const std::size_t expected = size >= 64 ? 2 : size >= 31 ? 1 : 0;
    EXPECT_EQ(log.order.size(), expected) << size;
  }
  EXPECT_EQ(decoder.DecodeChannelgroup(nullptr, 10), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);

  // Lengths that reach beyond the message: a name, and a channel count.
  log.order.clear();
  MessageBuilder nameTooLong;
  nameTooLong.U16(0x000D).U16(500).U8('A');
  EXPECT_EQ(Decode(nameTooLong.bytes), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
  MessageBuilder manyChannels;
  manyChannels.Header(0x000D, "Arm1", 2, 65535).U8(1).F64(1.0);  // 23 bytes
  manyChannels.bytes.resize(20);
  EXPECT_EQ(Decode(manyChannels.bytes), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
  EXPECT_TRUE(log.order.empty());
}

TEST_F(DecoderTest, ThresholdsReachTheReceiversWheneverTheyRegister) {
  decoder.SetMeaningfulThreshold(0.75f);
  EXPECT_NE(log.meaningful, 0.75f);
  RegisterReceivers("Arm1", 2, 3);
  EXPECT_EQ(log.meaningful, 0.75f);
  EXPECT_NE(log.nominal, 0.75f);  // never set, so the receivers keep their own
  decoder.SetMeaningfulThreshold(0.5f);
  decoder.SetNominalThreshold(0.25f);
  EXPECT_EQ(log.meaningful, 0.5f);
  EXPECT_EQ(log.nominal, 0.25f);
}

}  // namespace
}  // namespace quillon::test
