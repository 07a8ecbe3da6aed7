#pragma once
// Character classes of the VRML97 text: separators, and the characters that end a token.

#include <array>
#include <cstdint>
#include <string_view>

namespace VRML::lexer {

enum : std::uint8_t { kSeparator = 1, kTokenEnd = 2 };

inline constexpr std::array<std::uint8_t, 256> kClasses = [] {
  std::array<std::uint8_t, 256> classes{};
  for (const char c : std::string_view(" \t\n\v\f\r,;[]{}"))
    classes[static_cast<unsigned char>(c)] = kSeparator | kTokenEnd;
  classes[static_cast<unsigned char>('#')] = kTokenEnd;
  classes[0] = kTokenEnd;
  return classes;
}();

inline bool isSeparator(char c) { return kClasses[static_cast<unsigned char>(c)] & kSeparator; }
inline bool endsToken(char c) { return kClasses[static_cast<unsigned char>(c)] & kTokenEnd; }

/// The part of a token that a buffer of `bufferSize` bytes keeps; the rest is passed over unkept.
inline std::string_view kept(std::string_view token, std::size_t bufferSize) {
  return token.substr(0, token.size() < bufferSize - 2 ? token.size() : bufferSize - 2);
}

/// Token starts in [from, to): an upper bound of the items a list holds, used to size its storage.
inline std::size_t countTokens(const char* from, const char* to) {
  std::size_t count = 0;
  std::uint8_t previous = kSeparator;
  for (const char* p = from; p < to; ++p) {
    const std::uint8_t current = kClasses[static_cast<unsigned char>(*p)] & kSeparator;
    count += previous & (current ^ kSeparator);
    previous = current;
  }
  return count;
}

}  // namespace VRML::lexer
