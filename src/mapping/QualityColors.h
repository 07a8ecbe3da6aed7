#pragma once
// The materials by which transform mappings show the quality of their values.

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

}  // namespace quillon
