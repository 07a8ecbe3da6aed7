#pragma once
// One external route of a visualisation document, from its reading to its mapping.

#include <cstdint>
#include <memory>
#include <string>

#include "channels/FltMatrix.h"
#include "channels/ZrValueDecodingCallbackInterface.h"

namespace quillon {

/// Which value of a channel group a route takes.
enum class ChannelKind : int { Kind1D = 0, Kind3D = 1, Kind6D = 2, KindTime = 3 };

/// A channel bound to one field of one named scene node ("ExternRoute" or
/// "ExternRouteToChildren"). The document reader fills everything but the mapping; the
/// scene-mapping builder fills the mapping when it can bind the route.
struct RouteRecord {
  std::string from;  // the channel as the document names it, name[group][channel][kind]
  std::string controlPathName;
  std::string targetFieldName;  // empty when the route names no field
  std::string targetNodeName;
  std::int32_t groupNumber = 0;
  std::uint32_t channelNumber = 0;
  double scale = 1.0;
  bool hide = true;        // render-invalids is "hide" (else "freeze")
  bool cascading = false;  // "ExternRouteToChildren": reaches every material below the target
  ChannelKind channelKind = ChannelKind::Kind1D;
  std::unique_ptr<ZrValueDecodingCallbackInterface> mapping;  // empty when none was built
  FltMatrix colourMap;                                        // rows of R, G, B in 0..1
  FltMatrix invalidColour;                                    // one row of R, G, B
};

}  // namespace quillon
