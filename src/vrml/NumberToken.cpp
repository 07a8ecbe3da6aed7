#include "vrml/NumberToken.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace VRML {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view kept(std::string_view token) { return token.substr(0, std::min(token.size(), kNumberTokenChars)); }

}  // namespace

bool fastConvertFloat(std::string_view token, float& value) {
  const char* first = token.data();
  const char* last = first + token.size();
  const bool plus = first != last && *first == '+';
  if (plus) ++first;
  if (first == last) return false;
  // Only plain decimals: infinities, NaNs and hexadecimal floats take the standard path.
  const char lead = (*first == '-' && !plus && first + 1 != last) ? first[1] : *first;
  if (!isDigit(lead) && lead != '.') return false;
  float parsed = 0.0f;
  const auto result = fast_float::from_chars(first, last, parsed);
  if (result.ec != std::errc() || result.ptr != last) return false;
  value = parsed;
  return true;
}

bool fastConvertInt(std::string_view token, std::int32_t& value) {
  std::size_t i = 0;
  bool negative = false;
  if (i < token.size() && (token[i] == '-' || token[i] == '+')) negative = token[i++] == '-';
  const std::size_t digitsStart = i;
  std::int32_t magnitude = 0;
  // Nine digits always fit; longer runs take the standard path, which defines their overflow.
  while (i < token.size() && isDigit(token[i])) {
    if (i - digitsStart == 9) return false;
    magnitude = magnitude * 10 + (token[i++] - '0');
  }
  if (i == digitsStart) return false;
  value = negative ? -magnitude : magnitude;
  return true;
}

bool scanFloat(std::string_view token, float& value) {
  char buffer[kNumberTokenChars + 2];
  const std::string_view k = kept(token);
  std::memcpy(buffer, k.data(), k.size());
  buffer[k.size()] = '\0';
  float parsed = 0.0f;
  if (std::sscanf(buffer, "%f", &parsed) != 1) return false;
  value = parsed;
  return true;
}

bool scanInt(std::string_view token, std::int32_t& value) {
  char buffer[kNumberTokenChars + 2];
  const std::string_view k = kept(token);
  std::memcpy(buffer, k.data(), k.size());
  buffer[k.size()] = '\0';
  int parsed = 0;
  if (std::sscanf(buffer, "%d", &parsed) != 1) return false;
  value = parsed;
  return true;
}

bool convertFloat(std::string_view token, float& value) {
  return fastConvertFloat(kept(token), value) || scanFloat(token, value);
}

bool convertInt(std::string_view token, std::int32_t& value) {
  return fastConvertInt(kept(token), value) || scanInt(token, value);
}

}  // namespace VRML
