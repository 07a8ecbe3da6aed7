#include "ui/cStreamReplay.h"

#include <algorithm>
#include <string_view>

namespace quillon {
namespace {

// A message's header: flags, control path name, group number and channel count. A message too
// short to hold one gets an empty header.
std::string_view header(const std::vector<unsigned char>& message) {
  if (message.size() < 4) return {};
  const std::size_t nameLength = message[2] | static_cast<std::size_t>(message[3]) << 8;
  const std::size_t length = 10 + nameLength;
  if (message.size() < length) return {};
  return {reinterpret_cast<const char*>(message.data()), length};
}

// A later message replaces an earlier one when it sets the same channels the same way: same
// header and length. Messages without a header are never replaced.
bool replaces(const ChannelStreamRecord& later, const ChannelStreamRecord& earlier) {
  const std::string_view key = header(later.message);
  return !key.empty() && later.message.size() == earlier.message.size() && key == header(earlier.message);
}

}  // namespace

cStreamReplay::cStreamReplay(std::vector<ChannelStreamRecord> recorded) : records(std::move(recorded)) {}

std::vector<const ChannelStreamRecord*> cStreamReplay::due(std::uint64_t now) {
  std::vector<const ChannelStreamRecord*> latest;
  for (; next < records.size() && records[next].timeMicroseconds <= now; ++next) {
    const ChannelStreamRecord& record = records[next];
    auto earlier = std::find_if(latest.begin(), latest.end(),
                                [&record](const ChannelStreamRecord* r) { return replaces(record, *r); });
    if (earlier != latest.end()) latest.erase(earlier);
    latest.push_back(&record);
  }
  return latest;
}

std::size_t cStreamReplay::countUpTo(std::uint64_t time) const {
  const auto after =
      std::upper_bound(records.begin(), records.end(), time,
                       [](std::uint64_t t, const ChannelStreamRecord& r) { return t < r.timeMicroseconds; });
  return static_cast<std::size_t>(after - records.begin());
}

}  // namespace quillon
