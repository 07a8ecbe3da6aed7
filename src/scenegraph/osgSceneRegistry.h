#pragma once
// What the builder records about a scene: its named objects, its switchable nodes and its
// colourable materials.

#include <osg/Group>
#include <osg/Material>
#include <osg/StateSet>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillon {

/// The kind of scene object that a DEF name stands for.
enum class NamedKind { Group, Transform, Switch, Shape, Appearance, Material, Geometry };

/// One DEF-named VRML node and what the builder made of it.
struct NamedObject {
  std::string name;
  NamedKind kind = NamedKind::Group;
  /// Group: osg::Group; Transform: TrafoTransform; Switch: osg::Switch; Shape: osg::Geode;
  /// Appearance: osg::StateSet; Material: osg::Material; Geometry: osg::Geometry.
  osg::ref_ptr<osg::Object> object;
  /// Shape, Appearance, Material: the state set that holds the shape's material (may be null
  /// for a Shape without an Appearance).
  osg::ref_ptr<osg::StateSet> stateSet;

  /// The object as a scene node, or null for a state set, material or geometry.
  osg::Node* node() const { return dynamic_cast<osg::Node*>(object.get()); }
  /// The group the node hangs under now (it may have moved since the build), or null.
  osg::Group* parent() const;
};

/// The three registries of one scene. Every entry holds counted references, so an entry
/// kept beyond its scene still points at live objects.
class osgSceneRegistry {
 public:
  void addNamed(NamedObject entry);
  /// Records a node that HideNode and UnhideNode may switch, under its name.
  void addSwitchable(std::string name, osg::Node* node);
  /// Records a material that the foreground colour overrides, with the state set that holds it.
  void addColourable(osg::StateSet* stateSet, osg::Material* material);

  /// The first named object of exactly that name, in insertion order, or null.
  const NamedObject* findNamed(std::string_view name) const;
  const std::vector<NamedObject>& namedObjects() const { return named; }

  /// Sets the choice of the first switchable node of that name: on a Switch, -1 shows none
  /// of its children and 0 the first; any other node is hidden by -1 and shown otherwise.
  bool setSwitchChoice(std::string_view name, int choice);
  /// Puts the override colour on every colourable material (keeping its opacity), or takes
  /// it off again so that the material shows as before.
  void setForegroundOverride(bool on, float r, float g, float b);

  std::size_t switchableCount() const { return switchables.size(); }
  std::size_t colourableCount() const { return colourables.size(); }
  bool empty() const { return named.empty() && switchables.empty() && colourables.empty(); }
  void clear();

 private:
  struct Switchable {
    std::string name;
    osg::ref_ptr<osg::Node> node;
  };
  struct Colourable {
    osg::ref_ptr<osg::StateSet> stateSet;
    osg::ref_ptr<osg::Material> material;
    osg::ref_ptr<osg::Material> override;
  };

  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>{}(name); }
  };

  std::vector<NamedObject> named;
  /// The first named object of each name, so that binding many routes stays linear.
  std::unordered_map<std::string, std::size_t, NameHash, std::equal_to<>> firstNamed;
  std::vector<Switchable> switchables;
  std::vector<Colourable> colourables;
};

}  // namespace quillon
