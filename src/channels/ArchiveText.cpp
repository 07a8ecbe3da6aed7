#include "channels/ArchiveText.h"

#include <fast_float/fast_float.h>
#include <locale.h>
#include <stdlib.h>

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <system_error>
#include <type_traits>

namespace quillon::archive_text {

namespace {

bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

// An optional sign, then a digit or a decimal point, and no hexadecimal prefix: the text that
// the fast parsers read exactly as the C library does. Anything else goes to the C library.
bool IsPlainDecimal(std::string_view text) {
  const std::size_t i = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  if (i >= text.size()) return false;
  if (text[i] == '0' && i + 1 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X')) return false;
  return IsDigit(text[i]) || text[i] == '.';
}

// The fast parsers take a minus sign but no plus sign.
std::string_view WithoutPlus(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  return text;
}

locale_t CLocale() {
  static const locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return c;
}

template <class T>
bool ToFloating(std::string_view text, T& value) {
  text = SkipBlanks(text);
  if (IsPlainDecimal(text)) {
    const std::string_view number = WithoutPlus(text);
    T parsed{};
    const auto result = fast_float::from_chars(number.data(), number.data() + number.size(), parsed);
    if (result.ec == std::errc{} && result.ptr != number.data()) {
      value = parsed;
      return true;
    }
  }
  const std::string terminated(text);
  char* end = nullptr;
  T parsed{};
  if constexpr (std::is_same_v<T, float>)
    parsed = strtof_l(terminated.c_str(), &end, CLocale());
  else
    parsed = strtod_l(terminated.c_str(), &end, CLocale());
  if (end == terminated.c_str()) {
    value = T{};
    return false;
  }
  value = parsed;
  return true;
}

}  // namespace

std::string_view SkipBlanks(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  return text.substr(i);
}

bool ToDouble(std::string_view text, double& value) { return ToFloating(text, value); }

bool ToFloat(std::string_view text, float& value) { return ToFloating(text, value); }

bool ToInt(std::string_view text, int& value) {
  text = SkipBlanks(text);
  const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  if (sign < text.size() && IsDigit(text[sign])) {
    const std::string_view number = WithoutPlus(text);
    int parsed = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), parsed).ec == std::errc{}) {
      value = parsed;
      return true;
    }
  }
  // Out of range, or no number at all: "%d" decides.
  const std::string terminated(text);
  int parsed = 0;
  if (std::sscanf(terminated.c_str(), "%d", &parsed) != 1) return false;
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
