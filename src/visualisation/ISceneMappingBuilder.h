#pragma once
// Binds the routes of a document to the scene graph that was just built from it.

#include <vector>

#include "visualisation/RouteRecord.h"

namespace quillon {

/// Turns each route into a scene mapping on the displayed scene. A route that cannot be
/// bound (unknown node or field, wrong node type for its channel kind) keeps an empty
/// mapping and is no error.
class ISceneMappingBuilder {
 public:
  virtual ~ISceneMappingBuilder() = default;
  /// Fills the mapping of every route it can bind, in order; false when the scene cannot
  /// take mappings at all.
  virtual bool build(std::vector<RouteRecord>& routes) = 0;
};

}  // namespace quillon
