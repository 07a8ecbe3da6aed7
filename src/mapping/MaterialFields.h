#pragma once
// The material fields that a route can drive, and the properties made for them.

#include <string_view>

#include "mapping/IProperties.h"

namespace osg {
class Material;
}

namespace quillon {

/// The name given to the materials by which transform mappings show quality; other
/// material routes leave them alone.
inline constexpr const char* kQualityMaterialName = "QuillonQualityMaterial";

/// The colour property for "diffuseColor", "emissiveColor" or "specularColor"; empty for
/// any other field name.
Ref<IColorProperty> MakeMaterialColorProperty(std::string_view fieldName, osg::Material* material);
/// The number property for "ambientIntensity", "shininess" or "transparency"; empty for any
/// other field name.
Ref<IFloatProperty> MakeMaterialFloatProperty(std::string_view fieldName, osg::Material* material);

}  // namespace quillon
