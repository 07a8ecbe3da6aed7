#include "scenegraph/TrafoTransform.h"

namespace quillon {

TrafoTransform::TrafoTransform() = default;
TrafoTransform::~TrafoTransform() = default;

}  // namespace quillon
