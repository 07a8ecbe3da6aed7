#include "live/LiveMessageCheck.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace quillon {

bool TopicMatchesHeader(std::string_view topic, LiveFrame message) {
  // Compared in place rather than through AddressText, which allocates: this runs for every
  // message of a flood.
  if (message.size() < 4) return false;
  const std::size_t nameLength = message[2] | static_cast<std::size_t>(message[3]) << 8;
  if (message.size() < 8 + nameLength || topic.size() < nameLength + 3) return false;
  if (std::memcmp(topic.data(), message.data() + 4, nameLength) != 0) return false;
  const unsigned char* g = message.data() + 4 + nameLength;
  const auto group = static_cast<std::int32_t>(g[0] | std::uint32_t{g[1]} << 8 | std::uint32_t{g[2]} << 16 |
                                               std::uint32_t{g[3]} << 24);
  char digits[16];
  const std::size_t length =
      static_cast<std::size_t>(std::to_chars(digits, digits + sizeof digits, group).ptr - digits);
  const std::string_view suffix = topic.substr(nameLength);
  return suffix.size() == length + 2 && suffix.front() == '[' && suffix.back() == ']' &&
         suffix.substr(1, length) == std::string_view(digits, length);
}

}  // namespace quillon
