#include "mapping/osgSwitchProperties.h"

namespace quillon {

void ShowSwitchChoice(osg::Switch& node, std::int32_t choice) {
  // Checked against the children: the runtime grows its value list to any index it is given.
  if (choice >= 0 && static_cast<std::uint32_t>(choice) < node.getNumChildren())
    node.setSingleChildOn(static_cast<unsigned int>(choice));
  else
    node.setAllChildrenOff();
}

osgSwitchInt32Property::osgSwitchInt32Property(osg::Switch* n) : node(n) {
  if (!node) return;
  node->setDataVariance(osg::Object::DYNAMIC);
  node->setAllChildrenOff();
}

void osgSwitchInt32Property::SetValue(std::int32_t value) {
  if (node) ShowSwitchChoice(*node, value);
}

osgSwitchProperty::osgSwitchProperty(osg::Switch* n) : node(n) {
  if (node) node->setDataVariance(osg::Object::DYNAMIC);
}

void osgSwitchProperty::SetChoice(std::int32_t choice) {
  if (node) ShowSwitchChoice(*node, choice);
}

}  // namespace quillon
