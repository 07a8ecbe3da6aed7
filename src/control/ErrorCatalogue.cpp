#include "control/ErrorCatalogue.h"

#include "channels/ChannelErrorCodes.h"
#include "control/ComponentErrorCodes.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorMap.h"
#include "visualisation/DocumentErrorCodes.h"

namespace quillon {

std::vector<std::span<const ErrorDefinition>> ErrorCatalogue() {
  return {kCoreErrors, kChannelErrors, kComponentErrors, kDocumentErrors};
}

void RegisterErrorCatalogue() {
  static const bool registered = [] {
    for (std::span<const ErrorDefinition> table : ErrorCatalogue()) ZrErrorMap::Register(table);
    return true;
  }();
  (void)registered;
}

}  // namespace quillon
