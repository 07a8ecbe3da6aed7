#pragma once
// Reading a matrix from its text in the archive notation, without an archive around it.

#include <string_view>

#include "channels/FltMatrix.h"
#include "core/ErrorDefinition.h"

namespace quillon {

/// Reads a matrix value text such as "[1, 0, 0]", "[0 0 1; 1 0 0]" or "[1 2 3]'" (commas
/// and blanks separate elements, ";" separates rows, a line break only joins lines, an odd
/// number of quotes after "]" transposes). "[]" gives an empty matrix. Text after the
/// closing bracket other than the quotes is ignored. A bare number gives a 1 × 1 matrix.
/// Returns 0, or the code recorded in the error list: ZRARCHIVEM_GETVALUE_NOMATRIX when the
/// rows do not hold equal numbers of elements, ZRARCHIVEM_READVALUESTRING_ENDOFFILE when the
/// closing bracket is missing.
ErrorCode ReadFltMatrixText(std::string_view text, FltMatrix& matrix);

}  // namespace quillon
