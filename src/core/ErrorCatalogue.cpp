#include "core/ErrorCatalogue.h"

#include "channels/ChannelErrorCodes.h"
#include "control/ComponentErrorCodes.h"
#include "core/CoreErrorCodes.h"
#include "visualisation/DocumentErrorCodes.h"

namespace quillon {

std::vector<std::span<const ErrorDefinition>> ErrorCatalogue() {
  return {kCoreErrors, kChannelErrors, kComponentErrors, kDocumentErrors};
}

}  // namespace quillon
