#pragma once
// Locale-independent number conversion and the splitting rules of the archive's value texts.

#include <cstddef>
#include <string>
#include <string_view>

#include "channels/FltMatrix.h"

namespace quillon::archive_text {

/// Exactly as strtod in the C locale: skips leading white space, takes an optional sign, and
/// converts as much as forms a number, hexadecimal, infinity and NaN forms included. Returns
/// false (and 0) when nothing converts.
bool ToDouble(std::string_view text, double& value);

/// Exactly as sscanf's "%f" into a float: rounded once, from the text to the float (strtof).
bool ToFloat(std::string_view text, float& value);

/// Exactly as sscanf's "%d" into an int: skips white space, takes an optional sign and the
/// decimal digits; a number beyond an int's range gives what the C library gives. False when
/// there are no digits.
bool ToInt(std::string_view text, int& value);

/// "%d" for every integer type: read into an int, then assigned, so "-5" into an unsigned
/// type wraps and a number wider than the type is cut to it.
template <class T>
bool ToInteger(std::string_view text, T& value);

/// Fixed notation with `precision` decimals ("%.*f"), independent of the C locale.
std::string FormatFixed(double value, int precision);

/// The number of elements of a value text: pieces between any of "[],;' \t" that hold a
/// character other than white space and code 26.
std::size_t CountElements(std::string_view valueText);

/// The number of rows: non-blank pieces between any of "[];'".
std::size_t CountRows(std::string_view valueText);

/// Reads a value text of the matrix kind. False when the element count is not a multiple of
/// the row count; the matrix is then left as it was.
bool ParseMatrix(std::string_view valueText, FltMatrix& matrix);

/// True when the piece holds only white space and the character with code 26.
bool IsBlankPiece(std::string_view piece);
std::string_view SkipBlanks(std::string_view text);

template <class T>
bool ToInteger(std::string_view text, T& value) {
  int parsed = 0;
  if (!ToInt(text, parsed)) return false;
  value = static_cast<T>(parsed);
  return true;
}

/// Calls f(piece) for every element piece of the value text, in text order.
template <class F>
void ForEachElement(std::string_view valueText, F&& f) {
  constexpr std::string_view separators = "[],;' \t";
  std::size_t start = 0;
  while (start <= valueText.size()) {
    std::size_t end = valueText.find_first_of(separators, start);
    if (end == std::string_view::npos) end = valueText.size();
    const std::string_view piece = valueText.substr(start, end - start);
    if (!IsBlankPiece(piece)) f(piece);
    start = end + 1;
  }
}

}  // namespace quillon::archive_text
