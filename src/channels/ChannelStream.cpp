#include "channels/ChannelStream.h"

#include <algorithm>
#include <array>
#include <istream>
#include <limits>
#include <ostream>
#include <utility>

namespace quillon {
namespace {

// Bytes are read in pieces of this size, so that a count that the file does not back
// costs no more memory than the file holds.
constexpr std::size_t kChunk = 1 << 16;

template <std::size_t N>
void PutLittleEndian(std::array<unsigned char, N>& out, std::size_t at, std::uint64_t v, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) out[at + i] = static_cast<unsigned char>(v >> (8 * i));
}

std::uint64_t GetLittleEndian(const unsigned char* p, std::size_t bytes) {
  std::uint64_t v = 0;
  for (std::size_t i = bytes; i-- > 0;) v = (v << 8) | p[i];
  return v;
}

// Reads up to n bytes; returns how many arrived.
std::size_t ReadUpTo(std::istream& in, unsigned char* p, std::size_t n) {
  in.read(reinterpret_cast<char*>(p), static_cast<std::streamsize>(n));
  return static_cast<std::size_t>(in.gcount());
}

}  // namespace

ChannelStreamWriter::ChannelStreamWriter(std::ostream& stream) : out(stream) {
  out.write(kChannelStreamMagic.data(), static_cast<std::streamsize>(kChannelStreamMagic.size()));
}

bool ChannelStreamWriter::Write(std::uint64_t timeMicroseconds, const unsigned char* message, std::size_t size) {
  if (size > std::numeric_limits<std::uint32_t>::max() || (size > 0 && !message)) return false;
  std::array<unsigned char, 12> header{};
  PutLittleEndian(header, 0, timeMicroseconds, 8);
  PutLittleEndian(header, 8, size, 4);
  out.write(reinterpret_cast<const char*>(header.data()), header.size());
  if (size > 0) out.write(reinterpret_cast<const char*>(message), static_cast<std::streamsize>(size));
  return Good();
}

bool ChannelStreamWriter::Good() const { return static_cast<bool>(out); }

ChannelStreamReader::ChannelStreamReader(std::istream& stream) : in(stream), state(Status::kRecord) {
  std::array<unsigned char, 4> magic{};
  const std::size_t got = ReadUpTo(in, magic.data(), magic.size());
  if (got != magic.size() || !std::equal(magic.begin(), magic.end(), kChannelStreamMagic.begin()))
    state = Status::kBadMagic;
}

ChannelStreamReader::Status ChannelStreamReader::Next(ChannelStreamRecord& record) {
  if (state != Status::kRecord) return state;
  std::array<unsigned char, 12> header{};
  const std::size_t got = ReadUpTo(in, header.data(), header.size());
  if (got == 0 && in.eof()) return state = Status::kEnd;
  if (got != header.size()) return state = in.bad() ? Status::kReadError : Status::kTruncated;
  record.timeMicroseconds = GetLittleEndian(header.data(), 8);
  const auto size = static_cast<std::size_t>(GetLittleEndian(header.data() + 8, 4));
  record.message.clear();
  while (record.message.size() < size) {
    const std::size_t before = record.message.size();
    const std::size_t want = std::min(kChunk, size - before);
    record.message.resize(before + want);
    const std::size_t arrived = ReadUpTo(in, record.message.data() + before, want);
    if (arrived != want) {
      record.message.resize(before + arrived);
      return state = in.bad() ? Status::kReadError : Status::kTruncated;
    }
  }
  return Status::kRecord;
}

ChannelStreamReader::Status ChannelStreamReader::ReadAll(std::istream& in, std::vector<ChannelStreamRecord>& records) {
  ChannelStreamReader reader(in);
  ChannelStreamRecord record;
  Status status;
  while ((status = reader.Next(record)) == Status::kRecord) records.push_back(std::move(record));
  return status;
}

}  // namespace quillon
