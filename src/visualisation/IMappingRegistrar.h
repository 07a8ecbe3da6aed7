#pragma once
// What the document reader needs of the viewer component: a place for the mappings it builds.

#include <cstdint>
#include <memory>
#include <string>

#include "core/ErrorDefinition.h"
#include "visualisation/RouteRecord.h"

namespace quillon {

class ZrValueDecodingCallbackInterface;

/// Takes ownership of scene mappings and registers them in the decoder.
class IMappingRegistrar {
 public:
  virtual ~IMappingRegistrar() = default;
  /// Keeps the mapping (even when its registration fails) and registers it for the channel.
  virtual ErrorCode RegisterInDecoder(const std::string& controlPathName, std::int32_t groupNumber,
                                      std::uint32_t channelNumber,
                                      std::unique_ptr<ZrValueDecodingCallbackInterface> mapping) = 0;
  /// Registers the mapping built for a route, taking it out of the record. A registrar that
  /// wants to know more of the route than its channel overrides this.
  virtual ErrorCode RegisterRoute(RouteRecord& route) {
    return RegisterInDecoder(route.controlPathName, route.groupNumber, route.channelNumber, std::move(route.mapping));
  }
  /// Deletes every mapping registered before, after dropping their registrations.
  virtual void ClearMappings() = 0;
};

}  // namespace quillon
