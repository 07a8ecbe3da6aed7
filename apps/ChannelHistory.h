#pragma once
// The values of one route's channel over time, for quillon view's plots.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "channels/ChannelStream.h"
#include "widget/QuillonWidget.h"

namespace quillon::app {

/// One value of a channel: its time in seconds, its components (one number, or a vector's or a
/// frame's position x, y, z) and its quality.
struct ChannelPoint {
  double time = 0;
  std::array<double, 3> value{};
  double quality = 0;
};

/// The values of the channel that a route names, oldest first: decoded from a whole recording
/// at the recording's times, or collected from the viewer as they arrive.
class ChannelHistory {
 public:
  explicit ChannelHistory(const RouteState& route);

  /// Decodes every message of the recording for this channel; replaces what was there.
  void readRecording(const std::vector<ChannelStreamRecord>& records);
  /// Adds the route's newest value at `time` (seconds), unless it was added already.
  void follow(const RouteState& route, double time);
  /// Forgets the values before `time`.
  void forgetBefore(double time);

  /// The values from `from` to `to` seconds, both included.
  std::vector<ChannelPoint> between(double from, double to) const;
  /// 1 for numbers and times, 3 for vectors and frames.
  int components() const;
  /// The channel, as the route names it.
  const std::string& channel() const { return from; }
  std::size_t size() const { return points.size(); }

 private:
  std::string from;
  std::string controlPath;
  std::int32_t group;
  std::uint32_t number;
  RouteState::Kind kind;
  std::vector<ChannelPoint> points;
  std::uint64_t lastReceived = 0;
};

}  // namespace quillon::app
