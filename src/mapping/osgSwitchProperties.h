#pragma once
// Properties that choose what an osg::Switch shows.

#include <cstdint>
#include <osg/Switch>
#include <osg/ref_ptr>

#include "mapping/IProperties.h"

namespace quillon {

/// Shows the child of the given index alone; -1, or an index that names no child, shows none.
void ShowSwitchChoice(osg::Switch& node, std::int32_t choice);

/// Drives a switch's choice from a number. Construction makes the switch show nothing.
class osgSwitchInt32Property final : public IInt32Property {
 public:
  explicit osgSwitchInt32Property(osg::Switch* node);
  void SetValue(std::int32_t value) override;

 private:
  osg::ref_ptr<osg::Switch> node;
};

/// Shows or hides the child of the switch that a hide mapping inserted above its transform.
class osgSwitchProperty final : public ISwitchProperty {
 public:
  static constexpr std::int32_t kShow = 0;
  static constexpr std::int32_t kHide = -1;

  explicit osgSwitchProperty(osg::Switch* node);
  void SetChoice(std::int32_t choice) override;

 private:
  osg::ref_ptr<osg::Switch> node;
};

}  // namespace quillon
