#pragma once
// Conversions between the host's C strings and byte arrays and our own strings.

#include <string>
#include <string_view>

#include "quillon/quillon.h"

namespace quillon {

/// The text of an in/out argument: a null pointer or a null string is the empty text.
std::string ReadHostString(char** p);
/// A new NUL-terminated copy, to be freed with quillon_free; null when memory runs out.
char* CopyToHost(std::string_view text);
/// Stores a new copy into *p when p is not null; the old string is the host's to free.
void WriteHostString(char** p, std::string_view text);
/// A byte array holding the text without terminator; {NULL, 0} for the empty text.
QuillonBytes ToHostBytes(std::string_view text);

}  // namespace quillon
