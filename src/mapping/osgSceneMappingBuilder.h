#pragma once
// Binds the routes of a document to the scene graph that was just built from it.

#include <vector>

#include "visualisation/ISceneMappingBuilder.h"

namespace quillon {

class OSGSceneGraph;
class osgSceneRegistry;

/// Makes one scene mapping per route that names a node it can drive: a material field, a
/// switch's choice or a transform's position. Transforms get a new switch above them and a
/// quality material over their subtree; the mapping of every mapped transform is observed
/// by the mappings of the mapped transforms below it.
class osgSceneMappingBuilder final : public ISceneMappingBuilder {
 public:
  explicit osgSceneMappingBuilder(OSGSceneGraph& sceneGraph) : holder(sceneGraph) {}

  /// False only when the holder has no scene.
  bool build(std::vector<RouteRecord>& routes) override;

  /// Binds the routes to the nodes that the registry names; routes that cannot be bound
  /// keep an empty mapping.
  static void Bind(const osgSceneRegistry& registry, std::vector<RouteRecord>& routes);

 private:
  OSGSceneGraph& holder;
};

}  // namespace quillon
