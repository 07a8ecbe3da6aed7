#pragma once
// The channel stream file (.qcs): recorded channel-group messages with their times, for replay.

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <vector>

namespace quillon {

/// The layout: the 4 bytes "QCS1", then records back to back, each a u64 LE time in
/// microseconds since the recording began, a u32 LE byte count N and N message bytes.
inline constexpr std::string_view kChannelStreamMagic = "QCS1";

/// One recorded message.
struct ChannelStreamRecord {
  std::uint64_t timeMicroseconds = 0;
  std::vector<unsigned char> message;
};

/// Writes a stream file: the magic on construction, then one record per Write.
class ChannelStreamWriter {
 public:
  explicit ChannelStreamWriter(std::ostream& out);
  /// False when the message is too long for a record or the stream failed.
  bool Write(std::uint64_t timeMicroseconds, const unsigned char* message, std::size_t size);
  bool Good() const;

 private:
  std::ostream& out;
};

/// Reads a stream file record by record. A last record cut short is reported as kTruncated;
/// nothing is read past the end, and a record never takes more memory than the bytes that
/// actually follow it.
class ChannelStreamReader {
 public:
  enum class Status { kRecord, kEnd, kBadMagic, kTruncated, kReadError };

  /// Reads and checks the magic.
  explicit ChannelStreamReader(std::istream& in);

  /// The next record into `record`; kEnd after the last one. Once it has returned anything
  /// other than kRecord it returns the same again.
  Status Next(ChannelStreamRecord& record);

  /// Every record of a stream; the status is kEnd when all of it was read.
  static Status ReadAll(std::istream& in, std::vector<ChannelStreamRecord>& records);

 private:
  std::istream& in;
  Status state;
};

}  // namespace quillon
