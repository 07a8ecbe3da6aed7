#include "channels/ChannelgroupAddress.h"

#include <algorithm>
#include <cstring>

namespace quillon {
namespace {

constexpr std::size_t kFlagsAndLength = 4, kGroupBytes = 4;

std::uint32_t LittleEndian(const unsigned char* p, int n) {
  std::uint32_t value = 0;
  for (int i = n - 1; i >= 0; --i) value = (value << 8) | p[i];
  return value;
}

// A group number as written in a route: a sign and decimal digits, read as far as they go.
std::int32_t ReadGroup(std::string_view text) {
  std::size_t i = 0;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9' && value < (std::int64_t{1} << 32); ++i)
    value = value * 10 + (text[i] - '0');
  return static_cast<std::int32_t>(negative ? -value : value);
}

}  // namespace

std::optional<ChannelgroupAddress> ReadChannelgroupAddress(const unsigned char* bytes, std::size_t size) {
  if (!bytes || size < kFlagsAndLength) return std::nullopt;
  const std::size_t nameLength = LittleEndian(bytes + 2, 2);
  if (size < kFlagsAndLength + nameLength + kGroupBytes) return std::nullopt;
  ChannelgroupAddress address;
  address.name.assign(reinterpret_cast<const char*>(bytes + kFlagsAndLength), nameLength);
  address.group = static_cast<std::int32_t>(LittleEndian(bytes + kFlagsAndLength + nameLength, 4));
  return address;
}

std::vector<ChannelgroupAddress> ParseNeededGroups(std::string_view text) {
  std::vector<ChannelgroupAddress> groups;
  while (true) {
    const std::size_t open = text.find('[');
    const std::size_t comma = text.find(", ", open);
    const std::size_t close = text.find(']', comma);
    if (open == std::string_view::npos || comma == std::string_view::npos || close == std::string_view::npos) break;
    ChannelgroupAddress address{std::string(text.substr(open + 1, comma - open - 1)),
                                ReadGroup(text.substr(comma + 2, close - comma - 2))};
    if (std::find(groups.begin(), groups.end(), address) == groups.end()) groups.push_back(std::move(address));
    text.remove_prefix(close + 1);
  }
  return groups;
}

std::string AddressText(const ChannelgroupAddress& address) {
  return address.name + "[" + std::to_string(address.group) + "]";
}

}  // namespace quillon
