#pragma once
// Which channel group a message is for, and the needed-groups text that names groups.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A channel group: its control path name and its group number.
struct ChannelgroupAddress {
  std::string name;
  std::int32_t group = 0;
  auto operator<=>(const ChannelgroupAddress&) const = default;
};

/// Reads the address from a message's header; nothing when the header is cut short.
std::optional<ChannelgroupAddress> ReadChannelgroupAddress(const unsigned char* bytes, std::size_t size);

/// The groups of a needed-groups text "[name, group][name, group]…", each once, in the order of
/// their first mention, with the group numbers read as decimal integers ("007" is 7, "-0" is 0).
std::vector<ChannelgroupAddress> ParseNeededGroups(std::string_view text);

/// "name[group]", the group in plain decimal.
std::string AddressText(const ChannelgroupAddress& address);

}  // namespace quillon
