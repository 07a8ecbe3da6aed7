#include "control/ComponentParts.h"

namespace quillon {

ComponentParts MakeDefaultParts() {
  ComponentParts parts;
  return parts;
}

}  // namespace quillon
