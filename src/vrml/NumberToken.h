#pragma once
// Conversion of number tokens, exactly as the C library's sscanf with "%f" and "%d" converts them.

#include <cstdint>
#include <string_view>

namespace VRML {

/// Characters of a number token that take part in the conversion; the rest is passed over.
inline constexpr std::size_t kNumberTokenChars = 14;

/// Converts the first kNumberTokenChars characters of a token as sscanf "%f" would. False for a
/// token that does not convert ("x", "e5", ".").
bool convertFloat(std::string_view token, float& value);

/// Converts the first kNumberTokenChars characters of a token as sscanf "%d" would, to 32 bits.
bool convertInt(std::string_view token, std::int32_t& value);

/// The fast paths alone: false when the token is not a plain decimal number that the fast path
/// handles (the caller then uses the standard conversion). Exposed for testing.
bool fastConvertFloat(std::string_view token, float& value);
bool fastConvertInt(std::string_view token, std::int32_t& value);

/// The standard conversions alone, through sscanf. Exposed for testing.
bool scanFloat(std::string_view token, float& value);
bool scanInt(std::string_view token, std::int32_t& value);

}  // namespace VRML
