#pragma once
// One registered error: its code, its registration flag and its message, word for word.

#include <cstdint>
#include <string_view>

namespace quillon {

using ErrorCode = std::int32_t;

/// A code with the message that the registry hands out for it.
/// `core` marks the three codes that every build of the system knows (success, not
/// implemented, illegal class id); all others are registered by their subsystem.
struct ErrorDefinition {
  ErrorCode code;
  std::string_view message;
  bool core = false;
};

}  // namespace quillon
