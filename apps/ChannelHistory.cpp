#include "ChannelHistory.h"

#include <algorithm>

#include "channels/QuillonChannelgroupDecoder.h"

namespace quillon::app {
namespace {

// Receives the channel's values from a decoder of its own and keeps each at the time of the
// message that carried it.
struct Collector {
  std::vector<ChannelPoint>* points = nullptr;
  double time = 0;

  void add(std::array<double, 3> value, double quality) const { points->push_back({time, value, quality}); }
};

struct Collector1D final : ZrValueDecodingCallbackInterface1D, Collector {
  void ValueDecoded(ZrValue1D* v) override { add({v->GetValue(), 0, 0}, v->GetQuality()); }
};
struct Collector3D final : ZrValueDecodingCallbackInterface3D, Collector {
  void ValueDecoded(ZrValue3D* v) override { add({v->X(), v->Y(), v->Z()}, v->GetQuality()); }
};
struct Collector6D final : ZrValueDecodingCallbackInterface6D, Collector {
  void ValueDecoded(ZrValue6D* v) override { add({v->Position(0), v->Position(1), v->Position(2)}, v->GetQuality()); }
};
struct CollectorTime final : ZrValueDecodingCallbackInterfaceTime, Collector {
  void ValueDecoded(ZrValueTime* v) override { add({v->GetTime(), 0, 0}, v->GetQuality()); }
};

bool earlier(const ChannelPoint& point, double time) { return point.time < time; }

}  // namespace

ChannelHistory::ChannelHistory(const RouteState& route)
    : from(route.from), controlPath(route.controlPath), group(route.group), number(route.channel), kind(route.kind) {}

void ChannelHistory::readRecording(const std::vector<ChannelStreamRecord>& records) {
  points.clear();
  Collector1D one;
  Collector3D three;
  Collector6D six;
  CollectorTime clock;
  QuillonChannelgroupDecoder decoder;
  Collector* collector = nullptr;
  switch (kind) {
    case RouteState::Kind::Value1D:
      decoder.Register1D(controlPath, group, number, &one);
      collector = &one;
      break;
    case RouteState::Kind::Value3D:
      decoder.Register3D(controlPath, group, number, &three);
      collector = &three;
      break;
    case RouteState::Kind::Frame6D:
      decoder.Register6D(controlPath, group, number, &six);
      collector = &six;
      break;
    case RouteState::Kind::Time:
      decoder.RegisterTime(controlPath, group, number, &clock);
      collector = &clock;
      break;
  }
  collector->points = &points;
  for (const ChannelStreamRecord& record : records) {
    collector->time = static_cast<double>(record.timeMicroseconds) / 1e6;
    decoder.DecodeChannelgroup(record.message.data(), record.message.size());
  }
}

void ChannelHistory::follow(const RouteState& route, double time) {
  if (route.received == lastReceived || route.value.empty()) return;
  lastReceived = route.received;
  ChannelPoint point{time, {route.value[0], 0, 0}, route.quality};
  if (route.value.size() >= 3) point.value = {route.value[0], route.value[1], route.value[2]};
  points.push_back(point);
}

void ChannelHistory::forgetBefore(double time) {
  points.erase(points.begin(), std::lower_bound(points.begin(), points.end(), time, earlier));
}

std::vector<ChannelPoint> ChannelHistory::between(double start, double end) const {
  const auto first = std::lower_bound(points.begin(), points.end(), start, earlier);
  const auto last = std::upper_bound(points.begin(), points.end(), end,
                                     [](double t, const ChannelPoint& point) { return t < point.time; });
  return first < last ? std::vector<ChannelPoint>(first, last) : std::vector<ChannelPoint>();
}

int ChannelHistory::components() const {
  return kind == RouteState::Kind::Value3D || kind == RouteState::Kind::Frame6D ? 3 : 1;
}

}  // namespace quillon::app
