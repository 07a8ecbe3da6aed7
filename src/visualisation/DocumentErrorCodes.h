#pragma once
// Codes of the visualisation document reader and of the scene-mapping construction.

#include <array>

#include "core/ErrorDefinition.h"

namespace quillon {

inline constexpr std::array<ErrorDefinition, 0> kDocumentErrors{};

}  // namespace quillon
