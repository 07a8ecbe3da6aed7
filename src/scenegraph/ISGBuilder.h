#pragma once
// Entry of the scene-graph builder: a parsed VRML tree becomes the displayed scene.

namespace VRML {
class Group;
}

namespace quillon {

/// Builds the scene graph of a VRML97 node tree. A successful build replaces the displayed
/// scene (and the registries that name its nodes); a failed one leaves it as it was.
class ISGBuilder {
 public:
  virtual ~ISGBuilder() = default;
  /// True when the tree yielded a scene.
  virtual bool build(const VRML::Group& root) = 0;
};

}  // namespace quillon
