#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "vrml/Nodes.h"
#include "vrml/NumberToken.h"

namespace VRML {
namespace {

// What the C library makes of a token once its buffer has kept the first 14 characters.
bool referenceFloat(const std::string& token, float& value) {
  return std::sscanf(token.substr(0, 14).c_str(), "%f", &value) == 1;
}
bool referenceInt(const std::string& token, int& value) {
  return std::sscanf(token.substr(0, 14).c_str(), "%d", &value) == 1;
}

// Tokens as the reader delivers them: no white space, commas, semicolons, brackets, braces or '#'.
std::vector<std::string> numberTokens() {
  std::vector<std::string> tokens;
  std::istringstream plain(
      "0 -0 1.5abc -.5 +1 1e3 inf -inf nan NAN infinity 0x1p3 0x1.8p-1 -0X10 e5 x . - + +-1 -+1 1e 1e+ 1e-x 1.e5 .5e-3 "
      "5. 1e50 -1e50 1e-50 1e-40 3.4028235e38 0.1 0.3 1, 00000000000001.5 1.23456789012345678 12345678901234567890 "
      "16777217 16777216.5 2147483647 2147483648 -2147483649 99999999999999 40000 65535 -1 007 1_000 \"1\"");
  for (std::string token; plain >> token;) tokens.push_back(token);
  tokens.insert(tokens.end(), {"\xff"
                               "1",
                               "1\xff", "TRUE"});
  std::mt19937 random(20240601);
  const std::string alphabet = "0123456789.eE+-x";
  for (int i = 0; i < 60000; ++i) {
    std::string token;
    const int shape = i % 4;
    if (shape == 0) {  // well-formed decimals of many lengths
      if (random() % 3 == 0) token += "-+"[random() % 2];
      const int whole = static_cast<int>(random() % 12);
      for (int d = 0; d < whole; ++d) token += static_cast<char>('0' + random() % 10);
      if (random() % 2) token += '.';
      const int fraction = static_cast<int>(random() % 12);
      for (int d = 0; d < fraction; ++d) token += static_cast<char>('0' + random() % 10);
      if (random() % 3 == 0) token += "e" + std::to_string(static_cast<int>(random() % 90) - 45);
    } else if (shape == 1) {  // typical mesh numbers
      char buffer[32];
      std::snprintf(buffer, sizeof buffer, "%.*f", static_cast<int>(random() % 9),
                    (static_cast<double>(random()) / 4294967296.0 - 0.5) * 2000.0);
      token = buffer;
    } else if (shape == 2) {  // integers around the 32-bit and 16-bit edges
      const long long base = std::vector<long long>{0, 32767, 65535, 2147483647, 4294967295LL}[random() % 5];
      token = std::to_string(base + static_cast<long long>(random() % 5) - 2);
      if (random() % 2) token = "-" + token;
    } else {  // noise from the number alphabet
      const int length = 1 + static_cast<int>(random() % 18);
      for (int d = 0; d < length; ++d) token += alphabet[random() % alphabet.size()];
    }
    if (token.empty()) token = "0";
    tokens.push_back(token);
  }
  return tokens;
}

// Both conversions, and their fast paths where they take a token, agree bit for bit with sscanf.
TEST(NumberToken, ConvertsExactlyAsSscanfOnBothPaths) {
  int fastHits = 0;
  for (const std::string& token : numberTokens()) {
    float expected = 0.0f, value = 0.0f, fast = 0.0f;
    const bool converts = referenceFloat(token, expected);
    ASSERT_EQ(convertFloat(token, value), converts) << token;
    if (converts) {
      ASSERT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(expected)) << token;
    }
    if (fastConvertFloat(token.substr(0, 14), fast)) {
      ++fastHits;
      ASSERT_TRUE(converts) << token;
      ASSERT_EQ(std::bit_cast<std::uint32_t>(fast), std::bit_cast<std::uint32_t>(expected)) << token;
    }

    int expectedInt = 0;
    std::int32_t integer = 0, fastInt = 0;
    const bool convertsInt = referenceInt(token, expectedInt);
    ASSERT_EQ(convertInt(token, integer), convertsInt) << token;
    if (convertsInt) {
      ASSERT_EQ(integer, expectedInt) << token;
    }
    if (fastConvertInt(token.substr(0, 14), fastInt)) {
      ASSERT_EQ(fastInt, expectedInt) << token;
    }
  }
  EXPECT_GT(fastHits, 20000);  // the fast path must really carry the plain decimals
}

// The reader converts plain numbers straight from the text; that path must agree too.
TEST(NumberToken, ReaderConvertsTokensInTheTextLikeSscanf) {
  const auto tokens = numberTokens();
  for (std::size_t i = 0; i < tokens.size(); i += 7) {
    const std::string& token = tokens[i];
    float expectedFloat = 0.0f;
    int expectedInt = 0;
    Group sphere, choice;
    sphere.parse("#VRML V2.0 utf8\nShape { geometry Sphere { radius " + token + " } }\n");
    choice.parse("#VRML V2.0 utf8\nSwitch { whichChoice " + token + " }\n");
    const auto* shape = static_cast<const Shape*>(sphere.children()->nodes.at(0).get());
    const auto* which = static_cast<const Switch*>(choice.children()->nodes.at(0).get());
    ASSERT_EQ(shape != nullptr, referenceFloat(token, expectedFloat)) << token;
    ASSERT_EQ(which != nullptr, referenceInt(token, expectedInt)) << token;
    if (shape) {
      const auto* radius = static_cast<const Sphere&>(*shape->geometry()->node).radius();
      EXPECT_EQ(std::bit_cast<std::uint32_t>(radius->value), std::bit_cast<std::uint32_t>(expectedFloat)) << token;
    }
    if (which) {
      EXPECT_EQ(which->whichChoice()->value, expectedInt) << token;
    }
  }
}

}  // namespace
}  // namespace VRML
