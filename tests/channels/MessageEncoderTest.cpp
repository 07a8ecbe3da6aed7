// The hosts' message encoder (quillon/quillon_message.h) against the viewer's own decoder.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "MessageBuilder.h"
#include "RecordingReceivers.h"
#include "quillon/quillon_message.h"

namespace quillon::test {
namespace {

constexpr double kRotation[9] = {0, 1, 0, -1, 0, 0, 0, 0, 1};  // column by column: 90 degrees about z
constexpr double kPosition[3] = {0.25, -0.5, 2.0};

// One record of each kind, channels 0 to 3, with values that tell them apart.
void AddOneOfEach(QuillonMessage& m) {
  ASSERT_EQ(quillon_message_add_1d(&m, 1.5, 11, 1001, 0.125), QUILLON_MESSAGE_OK);
  ASSERT_EQ(quillon_message_add_3d(&m, 10, 20, 30, 12, 1002, 0.25), QUILLON_MESSAGE_OK);
  ASSERT_EQ(quillon_message_add_6d(&m, kPosition, kRotation, 13, 1003, 0.5), QUILLON_MESSAGE_OK);
  ASSERT_EQ(quillon_message_add_time(&m, 42.0, 14, 1004, 0.75), QUILLON_MESSAGE_OK);
}

class EncoderTest : public DecoderTest {
 protected:
  void SetUp() override {
    DecoderTest::SetUp();
    RegisterReceivers("Probe_1", -7, 4);
  }
  ErrorCode Decode(const unsigned char* bytes, std::size_t size) { return decoder.DecodeChannelgroup(bytes, size); }
};

TEST_F(EncoderTest, WritesTheWorkedExampleByteForByte) {
  unsigned char buffer[169];
  QuillonMessage m;
  const unsigned flags = QUILLON_MESSAGE_VALUES | QUILLON_MESSAGE_STATUS | QUILLON_MESSAGE_TIMESTAMP;
  ASSERT_EQ(quillon_message_begin(&m, buffer, sizeof buffer, "Arm1", 2, flags), QUILLON_MESSAGE_OK);
  const double identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  const double position[3] = {1, 2, 3};
  EXPECT_EQ(quillon_message_add_1d(&m, 1.5, 0, 1000, 99.0), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_add_3d(&m, 10, 20, 30, 0, 1000, 99.0), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_add_6d(&m, position, identity, 0, 1000, 99.0), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_failed(&m), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_count(&m), 3u);
  ASSERT_EQ(quillon_message_size(&m), 169u);
  EXPECT_EQ(std::vector<unsigned char>(buffer, buffer + 169), WorkedExample());
}

// Every combination of the four flags that shape a record (0x0002 travels along unused):
// the size is what record_size promises, and the decoder hands each receiver what was sent,
// or nothing at all when the values flag is clear.
TEST_F(EncoderTest, EveryRecordKindUnderEveryFlagCombination) {
  const unsigned bits[] = {QUILLON_MESSAGE_VALUES, 0x0002u, QUILLON_MESSAGE_STATUS, QUILLON_MESSAGE_TIMESTAMP,
                           QUILLON_MESSAGE_QUALITY};
  for (unsigned combination = 0; combination < 32; ++combination) {
    unsigned flags = 0;
    for (unsigned i = 0; i < 5; ++i)
      if (combination & (1u << i)) flags |= bits[i];
    SCOPED_TRACE(testing::Message() << "flags 0x" << std::hex << flags);
    log = Log{};

    std::array<unsigned char, 512> buffer{};
    QuillonMessage m;
    ASSERT_EQ(quillon_message_begin(&m, buffer.data(), buffer.size(), "Probe_1", -7, flags), QUILLON_MESSAGE_OK);
    AddOneOfEach(m);
    std::size_t expected = quillon_message_header_size(7);
    for (int type = QUILLON_MESSAGE_1D; type <= QUILLON_MESSAGE_TIME; ++type)
      expected += quillon_message_record_size(flags, type);
    ASSERT_EQ(quillon_message_size(&m), expected);
    EXPECT_EQ(buffer[0] | (buffer[1] << 8), static_cast<int>(flags));

    ASSERT_EQ(Decode(buffer.data(), quillon_message_size(&m)), 0);
    if (!(flags & QUILLON_MESSAGE_VALUES)) {
      EXPECT_TRUE(log.order.empty());
      continue;
    }
    ASSERT_EQ(log.order, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(log.v1[0].GetValue(), 1.5);
    EXPECT_EQ(log.v3[0].X(), 10.0);
    EXPECT_EQ(log.v3[0].Z(), 30.0);
    for (std::size_t row = 0; row < 3; ++row) {
      EXPECT_EQ(log.v6[0].Position(row), kPosition[row]);
      for (std::size_t column = 0; column < 3; ++column)
        EXPECT_EQ(log.v6[0].Rotation(row, column), kRotation[column * 3 + row]);
    }
    EXPECT_EQ(log.vt[0].GetTime(), 42.0);

    const bool status = flags & QUILLON_MESSAGE_STATUS, stamp = flags & QUILLON_MESSAGE_TIMESTAMP,
               quality = flags & QUILLON_MESSAGE_QUALITY;
    // The decoder's shared values keep what an earlier message left; a fresh decoder per case
    // would hide that, so only what this message carries is compared.
    if (status) {
      EXPECT_EQ(log.v1[0].GetStatus(), 11);
      EXPECT_EQ(log.v6[0].GetStatus(), 13);
      EXPECT_EQ(log.vt[0].GetStatus(), 14);
    }
    if (stamp) {
      EXPECT_EQ(log.v3[0].GetTimestamp(), 1002u);
      EXPECT_EQ(log.vt[0].GetTimestamp(), 1004u);
    }
    if (quality) {
      EXPECT_EQ(log.v1[0].GetQuality(), 0.125);
      EXPECT_EQ(log.v3[0].GetQuality(), 0.25);
      EXPECT_EQ(log.v6[0].GetQuality(), 0.5);
      // A time has no quality: the double in its place is neither its quality nor its second.
      EXPECT_EQ(log.vt[0].GetQuality(), 0.0);
      EXPECT_EQ(log.vt[0].GetSecond(), 0.0);
    }
  }
}

// A buffer of every size from nothing to the whole message: nothing is written beyond it, the
// records that fit form a message that decodes cleanly, and the first record that does not fit
// is reported and left out, as is every later one.
TEST_F(EncoderTest, FullBuffersKeepWhatFitsAndSayWhatDidNot) {
  const unsigned flags = QUILLON_MESSAGE_VALUES | QUILLON_MESSAGE_QUALITY | QUILLON_MESSAGE_TIMESTAMP;
  const std::size_t header = quillon_message_header_size(7);
  std::vector<std::size_t> ends{header};
  for (int type = QUILLON_MESSAGE_1D; type <= QUILLON_MESSAGE_TIME; ++type)
    ends.push_back(ends.back() + quillon_message_record_size(flags, type));

  for (std::size_t capacity = 0; capacity <= ends.back(); ++capacity) {
    SCOPED_TRACE(capacity);
    log = Log{};
    std::vector<unsigned char> buffer(capacity + 16, 0xEE);
    QuillonMessage m;
    const int begun = quillon_message_begin(&m, buffer.data(), capacity, "Probe_1", -7, flags);
    EXPECT_EQ(begun, capacity < header ? QUILLON_MESSAGE_NO_ROOM : QUILLON_MESSAGE_OK);
    quillon_message_add_1d(&m, 1.5, 0, 1, 0.0);
    quillon_message_add_3d(&m, 1, 2, 3, 0, 1, 0.0);
    quillon_message_add_6d(&m, kPosition, kRotation, 0, 1, 0.0);
    quillon_message_add_time(&m, 4.0, 0, 1, 0.0);

    for (std::size_t i = capacity; i < buffer.size(); ++i) ASSERT_EQ(buffer[i], 0xEE) << "written at " << i;
    std::size_t fitting = 0;
    while (fitting + 1 < ends.size() && ends[fitting + 1] <= capacity) ++fitting;
    if (capacity < header) {
      EXPECT_EQ(quillon_message_size(&m), 0u);
      continue;
    }
    EXPECT_EQ(quillon_message_size(&m), ends[fitting]);
    EXPECT_EQ(quillon_message_count(&m), fitting);
    EXPECT_EQ(quillon_message_failed(&m), fitting == 4 ? QUILLON_MESSAGE_OK : QUILLON_MESSAGE_NO_ROOM);
    EXPECT_EQ(Decode(buffer.data(), quillon_message_size(&m)), 0);
    EXPECT_EQ(log.order.size(), fitting);
  }
}

TEST_F(EncoderTest, RefusesWhatTheMessageCannotHold) {
  // Names up to 65535 bytes fit the header's length field; one more does not.
  std::string longName(65535, 'a');
  std::vector<unsigned char> buffer(70000);
  QuillonMessage m;
  EXPECT_EQ(quillon_message_begin(&m, buffer.data(), buffer.size(), longName.c_str(), 0, QUILLON_MESSAGE_VALUES),
            QUILLON_MESSAGE_OK);
  longName.push_back('a');
  EXPECT_EQ(quillon_message_begin(&m, buffer.data(), buffer.size(), longName.c_str(), 0, QUILLON_MESSAGE_VALUES),
            QUILLON_MESSAGE_TOO_MANY);
  EXPECT_EQ(quillon_message_add_1d(&m, 1.0, 0, 0, 0.0), QUILLON_MESSAGE_UNUSABLE);

  // The channel count is 16 bits wide: 65535 records, and not one more.
  std::vector<unsigned char> big(quillon_message_header_size(1) + 65536 * quillon_message_record_size(0x0001, 1));
  ASSERT_EQ(quillon_message_begin(&m, big.data(), big.size(), "g", 0, QUILLON_MESSAGE_VALUES), QUILLON_MESSAGE_OK);
  for (int i = 0; i < 65535; ++i) ASSERT_EQ(quillon_message_add_1d(&m, i, 0, 0, 0.0), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_add_1d(&m, 0.0, 0, 0, 0.0), QUILLON_MESSAGE_TOO_MANY);
  EXPECT_EQ(quillon_message_count(&m), 65535u);
  EXPECT_EQ(big[8 + 1], 0xFF);
  EXPECT_EQ(big[8 + 2], 0xFF);

  EXPECT_EQ(quillon_message_begin(nullptr, big.data(), big.size(), "g", 0, 1), QUILLON_MESSAGE_UNUSABLE);
  EXPECT_EQ(quillon_message_begin(&m, nullptr, 100, "g", 0, 1), QUILLON_MESSAGE_UNUSABLE);
  EXPECT_EQ(quillon_message_begin(&m, big.data(), big.size(), nullptr, 0, 1), QUILLON_MESSAGE_UNUSABLE);
  EXPECT_EQ(quillon_message_failed(nullptr), QUILLON_MESSAGE_UNUSABLE);
  ASSERT_EQ(quillon_message_begin(&m, big.data(), big.size(), "g", 0, 1), QUILLON_MESSAGE_OK);
  EXPECT_EQ(quillon_message_add_6d(&m, nullptr, kRotation, 0, 0, 0.0), QUILLON_MESSAGE_UNUSABLE);
  EXPECT_EQ(quillon_message_add_record(&m, 5, kPosition, 1, 0, 0, 0.0), QUILLON_MESSAGE_UNUSABLE);
  EXPECT_EQ(quillon_message_count(&m), 0u);
}

}  // namespace
}  // namespace quillon::test
