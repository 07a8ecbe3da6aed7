#include <gtest/gtest.h>

#include <sstream>

#include "channels/ChannelStream.h"

namespace quillon {
namespace {

using Status = ChannelStreamReader::Status;

std::string Recording() {
  std::ostringstream out;
  ChannelStreamWriter writer(out);
  const unsigned char a[] = {1, 2, 3};
  EXPECT_TRUE(writer.Write(0, a, 3));
  EXPECT_TRUE(writer.Write(0x0102030405060708ull, nullptr, 0));
  return out.str();
}

TEST(ChannelStreamTest, RoundTrip) {
  const std::string bytes = Recording();
  ASSERT_EQ(bytes.size(), 4u + 15u + 12u);
  EXPECT_EQ(bytes.substr(0, 4), "QCS1");
  EXPECT_EQ(static_cast<unsigned char>(bytes[4 + 15]), 0x08);  // little-endian time
  std::istringstream in(bytes);
  std::vector<ChannelStreamRecord> records;
  ASSERT_EQ(ChannelStreamReader::ReadAll(in, records), Status::kEnd);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].message, (std::vector<unsigned char>{1, 2, 3}));
  EXPECT_EQ(records[1].timeMicroseconds, 0x0102030405060708ull);
  EXPECT_TRUE(records[1].message.empty());
}

TEST(ChannelStreamTest, DamagedStreams) {
  const std::string good = Recording();
  struct Case {
    std::string bytes;
    Status status;
    std::size_t records;
  };
  std::string hugeCount = good.substr(0, 4) + std::string(8, '\0') + std::string("\xff\xff\xff\xff") + "abc";
  for (const Case& c :
       {Case{"", Status::kBadMagic, 0}, Case{"QCS2", Status::kBadMagic, 0}, Case{"QCS1", Status::kEnd, 0},
        Case{good.substr(0, 10), Status::kTruncated, 0}, Case{good.substr(0, good.size() - 13), Status::kTruncated, 0},
        Case{good.substr(0, good.size() - 1), Status::kTruncated, 1}, Case{hugeCount, Status::kTruncated, 0}}) {
    std::istringstream in(c.bytes);
    std::vector<ChannelStreamRecord> records;
    EXPECT_EQ(ChannelStreamReader::ReadAll(in, records), c.status) << c.bytes.size();
    EXPECT_EQ(records.size(), c.records) << c.bytes.size();
  }
}

}  // namespace
}  // namespace quillon
