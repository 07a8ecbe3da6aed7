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
  for (int y = y0; y < y1; ++y)
    for (int x = x0; x < x1; ++x) {
      const unsigned char* p = &rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + x) * 4];
      sum = {sum.r + p[0], sum.g + p[1], sum.b + p[2]};
    }
  const double n = static_cast<double>(x1 - x0) * (y1 - y0);
  return n > 0 ? Rgb{sum.r / n, sum.g / n, sum.b / n} : sum;
}

}  // namespace quillon::test
