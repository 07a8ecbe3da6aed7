#include "mapping/Property.h"

namespace quillon {

int Property::ChangeReference(int delta) {
  count_ += delta;
  const int count = count_;
  if (count <= 0) delete this;
  return count;
}

}  // namespace quillon
