#pragma once
// Pixel checks shared by the render tests.

#include <cstddef>
#include <vector>

namespace quillon::test {

struct Rgb {
  double r = 0, g = 0, b = 0;
};

/// Mean colour (0..255) of a rectangle of an RGBA image with rows from top to bottom.
inline Rgb MeanColour(const std::vector<unsigned char>& rgba, int width, int x0, int y0, int x1, int y1) {
  Rgb sum;
  std::size_t n = 0;
  for (int y = y0; y < y1; ++y)
    for (int x = x0; x < x1; ++x) {
      const std::size_t i =
          (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) * 4;
      sum.r += rgba[i];
      sum.g += rgba[i + 1];
      sum.b += rgba[i + 2];
      ++n;
    }
  if (n > 0) sum = {sum.r / static_cast<double>(n), sum.g / static_cast<double>(n), sum.b / static_cast<double>(n)};
  return sum;
}

}  // namespace quillon::test
