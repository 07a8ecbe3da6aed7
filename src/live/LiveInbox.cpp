#include "live/LiveInbox.h"

#include <algorithm>
#include <numeric>

namespace quillon {

std::uint64_t LiveCounts::droppedTotal() const {
  return std::accumulate(dropped.begin(), dropped.end(), std::uint64_t{0});
}

void LiveInbox::setTopics(const std::vector<ChannelgroupAddress>& groups) {
  std::map<std::string, Slot, std::less<>> next;
  for (const ChannelgroupAddress& group : groups) {
    const std::string topic = AddressText(group);
    auto kept = latest.find(topic);
    next[topic] = kept != latest.end() ? std::move(kept->second) : Slot{};
  }
  for (const auto& [topic, slot] : latest)
    if (slot.waiting && !next.contains(topic)) ++tally.conflated;
  latest = std::move(next);
  // The slots moved, so the queue is rebuilt; the order among the kept ones is lost, which only
  // matters between groups and so not at all.
  queue.clear();
  for (auto& [topic, slot] : latest)
    if (slot.waiting) queue.push_back(&slot);
}

std::vector<std::string> LiveInbox::topics() const {
  std::vector<std::string> names;
  for (const auto& [topic, slot] : latest) names.push_back(topic);
  return names;
}

std::optional<LiveDrop> LiveInbox::offer(std::size_t frameCount, LiveFrame topic, LiveFrame message,
                                         Clock::time_point now) {
  Slot* slot = nullptr;
  const auto drop = CheckLiveMessage(frameCount, topic, message, limit, [&](std::string_view text) {
    const auto found = latest.find(text);
    if (found != latest.end()) slot = &found->second;
    return slot != nullptr;
  });
  if (drop) {
    ++tally.dropped[static_cast<std::size_t>(*drop)];
    return drop;
  }
  ++tally.received;
  tally.newest = now;
  if (slot->waiting)
    ++tally.conflated;
  else
    queue.push_back(slot);
  slot->waiting = true;
  slot->message.assign(message.begin(), message.end());
  return std::nullopt;
}

std::size_t LiveInbox::apply(const std::function<void(const std::vector<unsigned char>&)>& apply, std::size_t most) {
  const std::size_t handed = std::min(most, queue.size());
  for (std::size_t i = 0; i < handed; ++i) {
    queue[i]->waiting = false;
    ++tally.applied;
    apply(queue[i]->message);
  }
  queue.erase(queue.begin(), queue.begin() + static_cast<std::ptrdiff_t>(handed));
  return handed;
}

}  // namespace quillon
