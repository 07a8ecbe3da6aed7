#pragma once
// Helpers for properties that change an osg::Material after the scene was built.

namespace osg {
class Material;
}

namespace quillon {

/// Marks the material and every state set that holds it as changing at run time.
void MakeMaterialDynamic(osg::Material& material);

/// Sets the alpha of all four colours of the material (clamped to 0..1, NaN as opaque), and
/// sets up blending and the transparent render bin in every state set that holds it while the
/// alpha is below 1, removing them again when it is 1.
void SetMaterialOpacity(osg::Material& material, float opacity);

}  // namespace quillon
