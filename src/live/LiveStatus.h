#pragma once
// The line of text in which a viewer shows how its live source is doing.

#include <chrono>
#include <cstdint>
#include <string>

#include "live/LiveInbox.h"

namespace quillon {

/// Turns the counts of a live source into one line: messages a second, drops, conflation, the
/// newest message's age, and a plain warning once the source has been quiet for a while.
class LiveStatus {
 public:
  using Clock = std::chrono::steady_clock;
  /// A source quiet for longer than this is reported as silent.
  static constexpr std::chrono::seconds kQuietAfter{2};

  explicit LiveStatus(Clock::time_point started = Clock::now()) : since(started), last(started) {}

  /// The line for `now`; the rate is measured over the time since the previous call.
  std::string update(const LiveCounts& counts, Clock::time_point now = Clock::now());
  bool quiet() const { return silent; }

 private:
  Clock::time_point since, last;
  std::uint64_t lastReceived = 0;
  bool silent = false;
};

}  // namespace quillon
