#pragma once
// The error tables of every layer, which the composition root hands to the message registry.

#include <span>
#include <vector>

#include "core/ErrorDefinition.h"

namespace quillon {

/// Every table of registered codes, core's first. Each layer keeps its table in a header of
/// constants, so the list needs no object file of that layer.
std::vector<std::span<const ErrorDefinition>> ErrorCatalogue();

/// Registers every table of the catalogue, in its order; later calls add nothing. Every viewer
/// component calls it before it does anything that may raise an error.
void RegisterErrorCatalogue();

}  // namespace quillon
