#pragma once
// The list of every subsystem's error table, read once by the message registry.

#include <span>
#include <vector>

#include "core/ErrorDefinition.h"

namespace quillon {

/// Every table of registered codes. Each subsystem keeps its table in a header of constants,
/// so the registry needs no object file of that subsystem to be linked.
std::vector<std::span<const ErrorDefinition>> ErrorCatalogue();

}  // namespace quillon
