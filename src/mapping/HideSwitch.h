#pragma once
// The switch that a hide mapping turns off while its values are not meaningful.

#include <utility>

#include "mapping/IProperties.h"
#include "mapping/Property.h"
#include "mapping/osgSwitchProperties.h"

namespace quillon {

/// Shows or hides the mapped node, touching the switch only when the visibility changes.
class HideSwitch {
 public:
  explicit HideSwitch(Ref<ISwitchProperty> switchProperty) : property(std::move(switchProperty)) {}

  void Hide() { Set(true, osgSwitchProperty::kHide); }
  void Show() { Set(false, osgSwitchProperty::kShow); }
  bool IsHidden() const { return hidden; }

 private:
  void Set(bool hide, std::int32_t choice) {
    if (hidden == hide) return;
    if (property) property->SetChoice(choice);
    hidden = hide;
  }

  Ref<ISwitchProperty> property;
  bool hidden = false;
};

}  // namespace quillon
