#pragma once
// The materials by which transform mappings show the quality of their values.

#include <utility>

#include "mapping/IProperties.h"

namespace quillon {

/// Green: the value is nominal.
inline void ShowNominal(IMaterialProperty& material) {
  material.SetDiffuseColor(0.0f, 1.0f, 0.0f);
  material.SetEmissiveColor(0.0f, 0.25f, 0.0f);
  material.SetTransparency(0.0f);
}

/// Orange: the value is meaningful but not nominal, or something it depends on is degraded.
inline void ShowMeaningful(IMaterialProperty& material) {
  material.SetDiffuseColor(1.0f, 0.5f, 0.0f);
  material.SetEmissiveColor(0.5f, 0.25f, 0.0f);
  material.SetTransparency(0.0f);
}

/// Red and half transparent: the value, or one it depends on, is not meaningful.
inline void ShowNotMeaningful(IMaterialProperty& material) {
  material.SetDiffuseColor(1.0f, 0.0f, 0.0f);
  material.SetEmissiveColor(0.25f, 0.0f, 0.0f);
  material.SetTransparency(0.5f);
}

/// A mapping's quality material and the colour it last showed there: a stream of values of
/// one quality writes the material once, not once a value.
class QualityMaterial {
 public:
  explicit QualityMaterial(Ref<IMaterialProperty> m) : material(std::move(m)) {}

  void ShowNominal() { Show(Shown::kNominal); }
  void ShowMeaningful() { Show(Shown::kMeaningful); }
  void ShowNotMeaningful() { Show(Shown::kNotMeaningful); }

 private:
  enum class Shown { kNothing, kNominal, kMeaningful, kNotMeaningful };

  void Show(Shown next) {
    if (!material || next == shown) return;
    shown = next;
    if (next == Shown::kNominal)
      quillon::ShowNominal(*material);
    else if (next == Shown::kMeaningful)
      quillon::ShowMeaningful(*material);
    else
      quillon::ShowNotMeaningful(*material);
  }

  Ref<IMaterialProperty> material;
  Shown shown = Shown::kNothing;
};

}  // namespace quillon
