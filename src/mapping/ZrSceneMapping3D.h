#pragma once
// The mappings fed by 3D channels: a transform follows the point, frozen or hidden when bad.

#include <cstdint>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "mapping/HideSwitch.h"
#include "mapping/IProperties.h"
#include "mapping/QualityColors.h"
#include "mapping/ZrSceneMapping.h"

namespace quillon {

/// Base of the 3D mappings: scale, translation, quality material and the display state.
class ZrSceneMapping3D : public ZrValueDecodingCallbackInterface3D, public ZrSceneMapping {
 public:
  void SetMeaningfulThreshold(float threshold) override { ZrSceneMapping::SetMeaningfulThreshold(threshold); }
  void SetNominalThreshold(float threshold) override { ZrSceneMapping::SetNominalThreshold(threshold); }
  State GetState() const { return state; }

 protected:
  ZrSceneMapping3D(Ref<ITranslationProperty> translation, float scale, Ref<IMaterialProperty> material);
  /// The state of the value: that of its quality, or 2 when the scaled point is not finite.
  State StateOf(const ZrValue3D& value, float& x, float& y, float& z) const;

  float scale;
  Ref<ITranslationProperty> translation;
  QualityMaterial quality;
  State state = kUnknown;
};

/// Keeps the last good position when a value is not meaningful, and shows it red.
class ZrSceneMapping3DFreeze final : public ZrSceneMapping3D {
 public:
  ZrSceneMapping3DFreeze(Ref<ITranslationProperty> translation, float scale, Ref<IMaterialProperty> material);
  void ValueDecoded(ZrValue3D* value) override;
};

/// Hides the node while its values are not meaningful.
class ZrSceneMapping3DHide final : public ZrSceneMapping3D {
 public:
  ZrSceneMapping3DHide(Ref<ITranslationProperty> translation, float scale, Ref<IMaterialProperty> material,
                       Ref<ISwitchProperty> switchProperty);
  void ValueDecoded(ZrValue3D* value) override;
  bool IsHidden() const { return visibility.IsHidden(); }

 private:
  HideSwitch visibility;
};

}  // namespace quillon
