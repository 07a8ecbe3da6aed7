#pragma once
// The newest message of each channel group from a live source, kept until the viewer applies it.

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/ChannelgroupAddress.h"
#include "live/LiveMessageCheck.h"

namespace quillon {

/// What a live source has delivered so far.
struct LiveCounts {
  std::uint64_t received = 0;   // kept the rules and were taken in
  std::uint64_t applied = 0;    // handed to the viewer
  std::uint64_t conflated = 0;  // replaced by a newer message of their group before they were applied
  std::array<std::uint64_t, kLiveDropKinds> dropped{};  // by LiveDrop
  std::uint64_t lostConnections = 0;                    // closed by a peer, the network, or for a frame over the limit
  std::optional<std::chrono::steady_clock::time_point> newest;  // when the newest message was taken in

  std::uint64_t droppedTotal() const;
  std::uint64_t droppedFor(LiveDrop why) const { return dropped[static_cast<std::size_t>(why)]; }
};

/// Takes in what a live source delivers, drops what breaks the wire rules, and keeps only the
/// newest message of each group: a message carries the whole state of its channels, so one
/// that was superseded before the viewer got to it need never be decoded.
class LiveInbox {
 public:
  using Clock = std::chrono::steady_clock;

  explicit LiveInbox(std::size_t messageLimit = kLiveMessageLimit) : limit(messageLimit) {}

  /// The groups whose messages are taken in. A waiting message of a group that is no longer
  /// wanted counts as conflated: it will never be applied.
  void setTopics(const std::vector<ChannelgroupAddress>& groups);
  std::vector<std::string> topics() const;

  /// Takes in a message of `frameCount` frames, the first two `topic` and `message`; returns why
  /// it was dropped, or nothing when it was kept.
  std::optional<LiveDrop> offer(std::size_t frameCount, LiveFrame topic, LiveFrame message,
                                Clock::time_point now = Clock::now());

  /// Hands the waiting message of each group to `apply`, in the order in which the groups came
  /// in, at most `most` of them; the rest keep waiting. `apply` must not change the inbox.
  /// Returns how many it handed.
  std::size_t apply(const std::function<void(const std::vector<unsigned char>&)>& apply,
                    std::size_t most = static_cast<std::size_t>(-1));

  void noteLostConnection() { ++tally.lostConnections; }

  std::size_t waiting() const { return queue.size(); }
  const LiveCounts& counts() const { return tally; }

 private:
  struct Slot {
    std::vector<unsigned char> message;  // keeps its capacity from one message to the next
    bool waiting = false;
  };

  std::size_t limit;
  std::map<std::string, Slot, std::less<>> latest;
  std::vector<Slot*> queue;
  LiveCounts tally;
};

}  // namespace quillon
