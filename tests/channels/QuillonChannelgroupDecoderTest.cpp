#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "MessageBuilder.h"
#include "RecordingReceivers.h"
#include "channels/ChannelErrorCodes.h"
#include "channels/QuillonChannelgroupDecoder.h"
#include "core/ZrErrorHandler.h"

namespace quillon::test {
namespace {

class DecoderTest : public ::testing::Test {
 protected:
  void SetUp() override { ZrErrorHandler::Instance().Clear(); }

  // Receivers for channels 0 (1D), 1 (3D) and 2 (6D) of Arm1, group 2.
  void RegisterExample() {
    ASSERT_EQ(decoder.Register("Arm1", 2, 0, &r1), 0);
    ASSERT_EQ(decoder.Register("Arm1", 2, 1, &r3), 0);
    ASSERT_EQ(decoder.Register("Arm1", 2, 2, &r6), 0);
  }
  ErrorCode Decode(const std::vector<unsigned char>& m) { return decoder.DecodeChannelgroup(m.data(), m.size()); }

  QuillonChannelgroupDecoder decoder;
  Log log;
  Recorder1D r1{log};
  Recorder3D r3{log};
  Recorder6D r6{log};
  RecorderTime rt{log};
};

TEST_F(DecoderTest, WorkedExampleReachesThreeReceivers) {
  RegisterExample();
  const auto message = WorkedExample();
  ASSERT_EQ(message.size(), 169u);
  ASSERT_EQ(Decode(message), 0);

  EXPECT_EQ(log.order, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(log.v1[0].GetValue(), 1.5);
  EXPECT_EQ(log.v1[0].GetStatus(), 0);
  EXPECT_EQ(log.v1[0].GetTimestamp(), 1000u);
  EXPECT_EQ(log.v3[0].X(), 10.0);
  EXPECT_EQ(log.v3[0].Y(), 20.0);
  EXPECT_EQ(log.v3[0].Z(), 30.0);
  EXPECT_EQ(log.v3[0].W(), 1.0);
  EXPECT_EQ(log.v3[0].GetTimestamp(), 1000u);
  const FltMatrix& f = log.v6[0].GetFrame();
  for (std::size_t r = 0; r < 4; ++r)
    for (std::size_t c = 0; c < 3; ++c) EXPECT_EQ(f(r, c), r == c ? 1.0 : 0.0) << r << "," << c;
  EXPECT_EQ(f(0, 3), 1.0);
  EXPECT_EQ(f(1, 3), 2.0);
  EXPECT_EQ(f(2, 3), 3.0);
  EXPECT_EQ(f(3, 3), 1.0);
  // The message carries no quality: it stays what the constructor left.
  EXPECT_EQ(log.v1[0].GetQuality(), std::numeric_limits<double>::infinity());
  EXPECT_EQ(log.v6[0].GetQuality(), std::numeric_limits<double>::infinity());
}

TEST_F(DecoderTest, RotationIsReadColumnByColumn) {
  decoder.Register("g", 0, 0, &r6);
  MessageBuilder m;
  m.Header(0x0001, "g", 0, 1).U8(3);
  for (int i = 0; i < 12; ++i) m.F64(i);
  ASSERT_EQ(Decode(m.bytes), 0);
  const FltMatrix& f = log.v6.at(0).GetFrame();
  EXPECT_EQ(f(0, 3), 0.0);
  EXPECT_EQ(f(2, 3), 2.0);
  EXPECT_EQ(f(0, 0), 3.0);
  EXPECT_EQ(f(1, 0), 4.0);
  EXPECT_EQ(f(0, 1), 6.0);
  EXPECT_EQ(f(2, 2), 11.0);
}

TEST_F(DecoderTest, FlagsWithoutValuesCallNobody) {
  RegisterExample();
  for (std::uint16_t flags : {0x0000, 0x0002, 0x000C}) {
    auto message = WorkedExample();
    message[0] = static_cast<unsigned char>(flags);
    EXPECT_EQ(Decode(message), 0) << flags;
  }
  EXPECT_TRUE(log.order.empty());
}

TEST_F(DecoderTest, ChannelWithoutReceiverIsSkipped) {
  ASSERT_EQ(decoder.Register("Arm1", 2, 0, &r1), 0);
  ASSERT_EQ(decoder.Register("Arm1", 2, 2, &r6), 0);
  EXPECT_EQ(Decode(WorkedExample()), 0);
  EXPECT_EQ(log.order, (std::vector<int>{1, 3}));
}

TEST_F(DecoderTest, OtherGroupOrPathIsNotDelivered) {
  decoder.Register("Arm1", 3, 0, &r1);
  decoder.Register("Arm2", 2, 1, &r3);
  EXPECT_EQ(Decode(WorkedExample()), 0);
  EXPECT_TRUE(log.order.empty());
}

TEST_F(DecoderTest, TypeMismatchStopsAfterEarlierChannels) {
  Recorder1D second{log};
  ASSERT_EQ(decoder.Register("Arm1", 2, 0, &r1), 0);
  ASSERT_EQ(decoder.Register("Arm1", 2, 1, &second), 0);  // the message sends 3D there
  ASSERT_EQ(decoder.Register("Arm1", 2, 2, &r6), 0);
  EXPECT_EQ(Decode(WorkedExample()), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH);
  EXPECT_EQ(log.order, (std::vector<int>{1}));
  EXPECT_EQ(ZrErrorHandler::Instance().CodeAt(0), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH);
}

TEST_F(DecoderTest, UnknownTypeByteEndsTheMessageSilently) {
  RegisterExample();
  for (unsigned char type : {0, 5, 255}) {
    log.order.clear();
    auto message = WorkedExample();
    message[31] = type;  // the second record
    EXPECT_EQ(Decode(message), 0);
    EXPECT_EQ(log.order, (std::vector<int>{1})) << int{type};
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

TEST_F(DecoderTest, QualityExtensionWritesQuality) {
  decoder.Register("g", 0, 0, &r1);
  decoder.Register("g", 0, 1, &r3);
  decoder.Register("g", 0, 2, &r6);
  decoder.Register("g", 0, 3, &rt);
  MessageBuilder m;
  m.Header(0x001D, "g", 0, 4);
  m.U8(1).F64(5.0).F64(0.25).U32(1).U32(2);
  m.U8(2).F64(1).F64(2).F64(3).F64(0.5).U32(1).U32(2);
  m.U8(3);
  for (int i = 0; i < 12; ++i) m.F64(0);
  m.F64(0.75).U32(1).U32(2);
  m.U8(4).F64(9.0).F64(0.125).U32(1).U32(2);
  ASSERT_EQ(Decode(m.bytes), 0);
  ASSERT_EQ(log.order, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(log.v1[0].GetValue(), 5.0);
  EXPECT_EQ(log.v1[0].GetQuality(), 0.25);
  EXPECT_EQ(log.v1[0].GetStatus(), 1);
  EXPECT_EQ(log.v3[0].GetQuality(), 0.5);
  EXPECT_EQ(log.v3[0].Z(), 3.0);
  EXPECT_EQ(log.v6[0].GetQuality(), 0.75);
  EXPECT_EQ(log.vt[0].GetTime(), 9.0);
  EXPECT_EQ(log.vt[0].GetSecond(), 0.0);  // a time's second double is its own, not a quality
  EXPECT_EQ(log.vt[0].GetQuality(), 0.0);
  EXPECT_EQ(log.vt[0].GetTimestamp(), 2u);
}

// Every cut of the worked example stops at the first incomplete field with the truncation
// code, and exactly the complete records before it are delivered.
TEST_F(DecoderTest, TruncatedMessagesDeliverCompleteRecordsOnly) {
  RegisterExample();
  const auto message = WorkedExample();
  for (std::size_t size = 0; size < message.size(); ++size) {
    log.order.clear();
    EXPECT_EQ(decoder.DecodeChannelgroup(message.data(), size), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED)
        << size;
    const std::size_t expected = size >= 64 ? 2 : size >= 31 ? 1 : 0;
    EXPECT_EQ(log.order.size(), expected) << size;
  }
  EXPECT_EQ(decoder.DecodeChannelgroup(nullptr, 10), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
}

TEST_F(DecoderTest, LengthsBeyondTheMessageAreRefused) {
  RegisterExample();
  MessageBuilder nameTooLong;
  nameTooLong.U16(0x000D).U16(500).U8('A');
  EXPECT_EQ(Decode(nameTooLong.bytes), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);

  MessageBuilder manyChannels;
  manyChannels.Header(0x000D, "Arm1", 2, 65535).U8(1).F64(1.0);  // 23 bytes
  manyChannels.bytes.resize(20);
  EXPECT_EQ(Decode(manyChannels.bytes), QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
  EXPECT_TRUE(log.order.empty());
}

TEST_F(DecoderTest, ClearDropsEveryRegistration) {
  RegisterExample();
  decoder.Clear();
  EXPECT_EQ(Decode(WorkedExample()), 0);
  EXPECT_TRUE(log.order.empty());
  RegisterExample();  // the same channels register again
  EXPECT_EQ(Decode(WorkedExample()), 0);
  EXPECT_EQ(log.order.size(), 3u);
}

TEST_F(DecoderTest, ThresholdsReachTheReceivers) {
  RegisterExample();
  decoder.SetMeaningfulThreshold(0.5f);
  decoder.SetNominalThreshold(0.25f);
  EXPECT_EQ(log.meaningful, 0.5f);
  EXPECT_EQ(log.nominal, 0.25f);
}

TEST_F(DecoderTest, ThresholdsSetBeforeRegistrationStillReachTheReceivers) {
  decoder.SetMeaningfulThreshold(0.75f);
  EXPECT_NE(log.meaningful, 0.75f);
  RegisterExample();
  EXPECT_EQ(log.meaningful, 0.75f);
  EXPECT_NE(log.nominal, 0.75f);  // never set, so the receivers keep their own
}

}  // namespace
}  // namespace quillon::test
