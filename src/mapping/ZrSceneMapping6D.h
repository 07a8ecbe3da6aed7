#pragma once
// The mappings fed by 6D channels: a transform follows the frame, frozen or hidden when bad.

#include <cstdint>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "mapping/HideSwitch.h"
#include "mapping/IProperties.h"
#include "mapping/QualityColors.h"
#include "mapping/ZrSceneMapping.h"

namespace quillon {

/// Base of the 6D mappings. Unlike the 3D ones, their display follows their own value alone;
/// they count their degraded sources but do not consult the counts.
class ZrSceneMapping6D : public ZrValueDecodingCallbackInterface6D, public ZrSceneMapping {
 public:
  void SetMeaningfulThreshold(float threshold) override { ZrSceneMapping::SetMeaningfulThreshold(threshold); }
  void SetNominalThreshold(float threshold) override { ZrSceneMapping::SetNominalThreshold(threshold); }
  State GetState() const { return state; }

 protected:
  ZrSceneMapping6D(Ref<ITranslationProperty> translation, Ref<IRotationProperty> rotation, float scale,
                   Ref<IMaterialProperty> material);
  /// The state of the value: that of its quality, or 2 when the scaled position or the
  /// rotation is not finite. Fills the position and rotation to write.
  State StateOf(const ZrValue6D& value, float (&position)[3], RotationMatrix& rotationMatrix) const;
  /// Moves and turns the transform, and shows the quality of a meaningful state.
  void Show(State next, const float (&position)[3], const RotationMatrix& rotationMatrix);

  float scale;
  Ref<ITranslationProperty> translation;
  Ref<IRotationProperty> rotation;
  QualityMaterial quality;
  State state = kUnknown;
};

/// Keeps the last good frame when a value is not meaningful, and shows it red.
class ZrSceneMapping6DFreeze final : public ZrSceneMapping6D {
 public:
  ZrSceneMapping6DFreeze(Ref<ITranslationProperty> translation, Ref<IRotationProperty> rotation, float scale,
                         Ref<IMaterialProperty> material);
  void ValueDecoded(ZrValue6D* value) override;
};

/// Hides the node while its values are not meaningful; observers hear only of state 1, as
/// with the 3D hide mapping.
class ZrSceneMapping6DHide final : public ZrSceneMapping6D {
 public:
  ZrSceneMapping6DHide(Ref<ITranslationProperty> translation, Ref<IRotationProperty> rotation, float scale,
                       Ref<IMaterialProperty> material, Ref<ISwitchProperty> switchProperty);
  void ValueDecoded(ZrValue6D* value) override;
  bool IsHidden() const { return visibility.IsHidden(); }

 private:
  HideSwitch visibility;
};

}  // namespace quillon
