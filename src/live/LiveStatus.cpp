#include "live/LiveStatus.h"

#include <cmath>
#include <cstdio>

namespace quillon {
namespace {

std::string Count(std::uint64_t n, const char* what) { return std::to_string(n) + " " + what; }

}  // namespace

std::string LiveStatus::update(const LiveCounts& counts, Clock::time_point now) {
  using std::chrono::duration;
  const double window = duration<double>(now - last).count();
  const double rate = window > 0 ? static_cast<double>(counts.received - lastReceived) / window : 0.0;
  last = now;
  lastReceived = counts.received;

  const Clock::time_point heard = counts.newest.value_or(since);
  silent = now - heard > kQuietAfter;
  std::string text;
  if (silent) {
    const auto seconds = static_cast<long long>(duration<double>(now - heard).count());
    text = "no data for " + std::to_string(seconds) + " s";
  } else {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.0f messages/s", std::round(rate));
    text = buffer;
  }
  text += " · " + Count(counts.received, "received") + " · " + Count(counts.droppedTotal(), "dropped") + " · " +
          Count(counts.conflated, "conflated");
  if (counts.lostConnections > 0)
    text += " · " + Count(counts.lostConnections, counts.lostConnections == 1 ? "connection lost" : "connections lost");
  if (counts.newest && !silent) {
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now - *counts.newest).count();
    text += " · newest " + std::to_string(ms) + " ms old";
  }
  return text;
}

}  // namespace quillon
