#pragma once
// What the viewer component needs of the visualisation document reader.

#include <string>
#include <string_view>

#include "core/ErrorDefinition.h"

namespace quillon {

class IMappingRegistrar;

/// Reads a visualisation document, builds its scene and registers its mappings.
class IDocumentParser {
 public:
  virtual ~IDocumentParser() = default;
  /// Returns 0 or the code of the first fault. `annotated` receives the document with the
  /// offending element bracketed by marker comments; `neededChannelGroups` the groups that
  /// the routes need. Either may be null.
  virtual ErrorCode Parse(IMappingRegistrar& registrar, std::string_view xmlDescription, std::string* annotated,
                          std::string* neededChannelGroups) = 0;
};

}  // namespace quillon
