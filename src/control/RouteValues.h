#pragma once
// The routes of the document on show, each with the newest value that reached its mapping.

#include <array>
#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "visualisation/RouteRecord.h"

namespace quillon {

class ZrValueDecodingCallbackInterface;

/// The newest value of one route's channel, as its mapping received it.
struct RouteSample {
  int type = 0;  // the value's ZrValueType; 0 until the first value arrives
  /// 1D and time: [0]; 3D: [0..2]; 6D: the position [0..2], then the rotation row by row [3..11].
  std::array<double, 12> numbers{};
  double quality = std::numeric_limits<double>::infinity();
  std::int32_t status = 0;
  std::uint32_t timestamp = 0;
  std::uint64_t received = 0;
  /// When the value, its quality or its status last differed from the one before.
  std::chrono::steady_clock::time_point changed;
};

/// One bound route: what the document says of it, and what its channel delivered last.
struct RouteEntry {
  std::string from;  // as the document writes it
  std::string controlPathName;
  std::int32_t groupNumber = 0;
  std::uint32_t channelNumber = 0;
  ChannelKind kind = ChannelKind::Kind1D;
  std::string nodeName;
  std::string fieldName;
  double scale = 1.0;
  bool hide = true;
  bool cascading = false;
  /// The colours that a value picks from, for routes that colour through a map; else empty.
  std::vector<std::array<float, 3>> colourMap;
  RouteSample sample;
};

/// Keeps the bound routes of the loaded document in document order, and puts a tap in front of
/// each route's mapping that records every value on its way in. The viewer component owns it;
/// hosts read it.
class RouteValues {
 public:
  RouteValues();
  ~RouteValues();
  RouteValues(const RouteValues&) = delete;
  RouteValues& operator=(const RouteValues&) = delete;

  /// Returns what to register in place of the route's mapping: the mapping behind a tap that
  /// keeps its newest value here. A mapping that receives no kind of value known here comes
  /// back as it was, and the route is not listed.
  std::unique_ptr<ZrValueDecodingCallbackInterface> Tap(const RouteRecord& route,
                                                        std::unique_ptr<ZrValueDecodingCallbackInterface> mapping);
  /// Forgets every route; the taps handed out must be gone before.
  void Clear();

  std::size_t Count() const { return routes.size(); }
  const RouteEntry& At(std::size_t index) const { return *routes[index]; }

  /// The thresholds as the host last set them; until then those that the mappings start with.
  float NominalThreshold() const { return nominal; }
  float MeaningfulThreshold() const { return meaningful; }
  void SetNominalThreshold(float threshold) { nominal = threshold; }
  void SetMeaningfulThreshold(float threshold) { meaningful = threshold; }

 private:
  std::vector<std::unique_ptr<RouteEntry>> routes;  // the taps hold their entry's address
  float nominal = 0.0f;
  float meaningful = 100.0f;
};

}  // namespace quillon
