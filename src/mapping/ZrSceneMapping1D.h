#pragma once
// The mappings fed by 1D channels: colour, number and integer.

#include <array>
#include <vector>

#include "channels/FltMatrix.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "mapping/IProperties.h"
#include "mapping/ZrSceneMapping.h"

namespace quillon {

/// Base of the 1D mappings: the scale factor and the threshold setters of the decoder.
class ZrSceneMapping1D : public ZrValueDecodingCallbackInterface1D, public ZrSceneMapping {
 public:
  void SetMeaningfulThreshold(float threshold) override { ZrSceneMapping::SetMeaningfulThreshold(threshold); }
  void SetNominalThreshold(float threshold) override { ZrSceneMapping::SetNominalThreshold(threshold); }

 protected:
  explicit ZrSceneMapping1D(float scaleFactor) : scale(scaleFactor) {}
  /// value × scale, and whether it may be shown: the quality is meaningful and the product a
  /// number.
  bool ScaledMeaningful(const ZrValue1D& value, double& scaled) const;

  float scale;
};

/// Picks a colour-map entry for each meaningful value and the invalid colour otherwise.
class ZrSceneMapping1DSFColor final : public ZrSceneMapping1D {
 public:
  using Color = std::array<float, 3>;

  /// The colour map holds one entry per row (R, G, B in its first three columns); the invalid
  /// colour is the first three elements of its matrix. Components are clamped to 0..1.
  ZrSceneMapping1DSFColor(Ref<IColorProperty> property, float scale, const FltMatrix& colourMap,
                          const FltMatrix& invalidColour);
  void ValueDecoded(ZrValue1D* value) override;

  const std::vector<Color>& GetColourMap() const { return colourMap; }

 private:
  Ref<IColorProperty> property;
  std::vector<Color> colourMap;
  Color invalidColour{};
  bool hasInvalidColour = false;
};

/// Writes value × scale while the value is meaningful.
class ZrSceneMapping1DSFFloat final : public ZrSceneMapping1D {
 public:
  ZrSceneMapping1DSFFloat(Ref<IFloatProperty> property, float scale);
  void ValueDecoded(ZrValue1D* value) override;

 private:
  Ref<IFloatProperty> property;
};

/// Writes value × scale rounded (halves away from zero) while the value is meaningful.
class ZrSceneMapping1DSFInt32 final : public ZrSceneMapping1D {
 public:
  ZrSceneMapping1DSFInt32(Ref<IInt32Property> property, float scale);
  void ValueDecoded(ZrValue1D* value) override;

 private:
  Ref<IInt32Property> property;
};

}  // namespace quillon
