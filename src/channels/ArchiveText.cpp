#include "channels/ArchiveText.h"

#include <fast_float/fast_float.h>

#include <array>
#include <cctype>
#include <cmath>

namespace quillon::archive_text {

std::string_view SkipBlanks(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  return text.substr(i);
}

bool ToDouble(std::string_view text, double& value) {
  text = SkipBlanks(text);
  // The parser takes a minus sign itself but no plus sign.
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double parsed = 0.0;
  const auto result = fast_float::from_chars(text.data(), text.data() + text.size(), parsed);
  if (result.ptr == text.data()) {
    value = 0.0;
    return false;
  }
  value = parsed;
  return true;
}

std::string FormatFixed(double value, int precision) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
  // 309 digits before the point, the precision after it, sign and point.
  std::array<char, 400> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, precision);
  if (error != std::errc{}) return "0";
  return std::string(buffer.data(), end);
}

bool IsBlankPiece(std::string_view piece) {
  for (const char c : piece)
    if (!std::isspace(static_cast<unsigned char>(c)) && c != 26) return false;
  return true;
}

std::size_t CountElements(std::string_view valueText) {
  std::size_t count = 0;
  ForEachElement(valueText, [&count](std::string_view) { ++count; });
  return count;
}

std::size_t CountRows(std::string_view valueText) {
  constexpr std::string_view separators = "[];'";
  std::size_t count = 0;
  std::size_t start = 0;
  while (start <= valueText.size()) {
    std::size_t end = valueText.find_first_of(separators, start);
    if (end == std::string_view::npos) end = valueText.size();
    if (!IsBlankPiece(valueText.substr(start, end - start))) ++count;
    start = end + 1;
  }
  return count;
}

bool ParseMatrix(std::string_view valueText, FltMatrix& matrix) {
  const std::size_t elements = CountElements(valueText);
  if (elements == 0) {
    matrix.Resize(0, 0);
    return true;
  }
  const std::size_t rows = CountRows(valueText);
  if (rows == 0 || elements % rows != 0) return false;
  const std::size_t columns = elements / rows;
  matrix.Resize(rows, columns);
  std::size_t k = 0;
  ForEachElement(valueText, [&](std::string_view piece) {
    double v = 0.0;
    ToDouble(piece, v);  // a piece that is no number counts as 0
    matrix(k / columns, k % columns) = v;
    ++k;
  });
  if (valueText.back() == '\'') matrix.Transpose();
  return true;
}

}  // namespace quillon::archive_text
