#pragma once
// The process-wide message registry: every registered error code with its message.

#include <span>
#include <string>
#include <string_view>

#include "core/ErrorDefinition.h"

namespace quillon {

/// Maps error codes to their registered messages. It starts with core's own codes; each layer
/// above declares a table of constants, and the composition root registers the tables of every
/// layer before the first component runs.
class ZrErrorMap {
 public:
  /// Adds a table; a code already registered keeps its text, and a table added before adds
  /// nothing. The table must outlive the process's lookups (tables are constants).
  static void Register(std::span<const ErrorDefinition> table);
  /// The registered text, or "Undocumented error code".
  static std::string_view GetMessage(ErrorCode code);
  /// The registration flag; false for an unregistered code.
  static bool IsCoreCode(ErrorCode code);
  /// Number of registered codes.
  static std::size_t Size();
};

}  // namespace quillon
