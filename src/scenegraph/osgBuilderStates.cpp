#include "scenegraph/osgBuilderStates.h"

#include <osg/Group>

namespace quillon {

osg::Group* IOSGBuilderState::group() const {
  auto* node = dynamic_cast<osg::Node*>(made.get());
  return node ? node->asGroup() : nullptr;
}

}  // namespace quillon
