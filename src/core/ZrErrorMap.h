#pragma once
// The process-wide message registry: every error code of every subsystem with its message.

#include <string>
#include <string_view>

#include "core/ErrorDefinition.h"

namespace quillon {

/// Maps error codes to their registered messages.
/// The registry is built from constant tables on first use, so it is complete before any
/// lookup, whatever the order of static initialisation or of linking.
class ZrErrorMap {
 public:
  /// The registered text, or "Undocumented error code".
  static std::string_view GetMessage(ErrorCode code);
  /// The registration flag; false for an unregistered code.
  static bool IsCoreCode(ErrorCode code);
  /// Number of registered codes.
  static std::size_t Size();
};

}  // namespace quillon
