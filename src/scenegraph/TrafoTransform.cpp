// The class's virtual table, with the runtime's inline accept(), is made here only: GCC's
// null-dereference analysis misreads the runtime's node path inside that accept().
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnull-dereference"
#include "scenegraph/TrafoTransform.h"

namespace quillon {

TrafoTransform::TrafoTransform() = default;
TrafoTransform::~TrafoTransform() = default;

}  // namespace quillon
#pragma GCC diagnostic pop
