#include "mapping/CompositeProperties.h"

namespace quillon {

void CompositeColorProperty::SetColor(float r, float g, float b) {
  for (const auto& member : members) member->SetColor(r, g, b);
}

void CompositeFloatProperty::SetValue(float value) {
  for (const auto& member : members) member->SetValue(value);
}

}  // namespace quillon
