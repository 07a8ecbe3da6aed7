#include "mapping/ZrSceneMapping1D.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "channels/ZrValue1D.h"

namespace quillon {

namespace {

float ClampedComponent(double c) {
  if (!(c >= 0.0)) return 0.0f;  // NaN as well
  return c >= 1.0 ? 1.0f : static_cast<float>(c);
}

// A double that a float holds without overflowing.
bool FitsFloat(double x) { return std::fabs(x) <= static_cast<double>(std::numeric_limits<float>::max()); }

}  // namespace

bool ZrSceneMapping1D::ScaledMeaningful(const ZrValue1D& value, double& scaled) const {
  scaled = value.GetValue() * static_cast<double>(scale);
  return IsMeaningful(value.GetQuality()) && std::isfinite(scaled);
}

ZrSceneMapping1DSFColor::ZrSceneMapping1DSFColor(Ref<IColorProperty> colourProperty, float scaleFactor,
                                                 const FltMatrix& map, const FltMatrix& invalid)
    : ZrSceneMapping1D(scaleFactor), property(std::move(colourProperty)) {
  if (map.Columns() >= 3) {
    colourMap.reserve(map.Rows());
    for (std::size_t row = 0; row < map.Rows(); ++row)
      colourMap.push_back(
          {ClampedComponent(map(row, 0)), ClampedComponent(map(row, 1)), ClampedComponent(map(row, 2))});
  }
  if (invalid.Size() >= 3) {
    invalidColour = {ClampedComponent(invalid[0]), ClampedComponent(invalid[1]), ClampedComponent(invalid[2])};
    hasInvalidColour = true;
  }
}

void ZrSceneMapping1DSFColor::ValueDecoded(ZrValue1D* value) {
  if (!value || !property) return;
  double x = 0.0;
  if (ScaledMeaningful(*value, x)) {
    if (colourMap.empty()) return;
    x = x < 0.0 ? 0.0 : (x > 1.0 ? 1.0 : x);
    const double n = static_cast<double>(colourMap.size());
    double i = x * n;
    if (i == n) i = n - 1.0;
    const Color& c = colourMap[static_cast<std::size_t>(std::floor(i))];
    property->SetColor(c[0], c[1], c[2]);
  } else if (hasInvalidColour) {
    property->SetColor(invalidColour[0], invalidColour[1], invalidColour[2]);
  }
}

ZrSceneMapping1DSFFloat::ZrSceneMapping1DSFFloat(Ref<IFloatProperty> floatProperty, float scaleFactor)
    : ZrSceneMapping1D(scaleFactor), property(std::move(floatProperty)) {}

void ZrSceneMapping1DSFFloat::ValueDecoded(ZrValue1D* value) {
  if (!value || !property) return;
  double x = 0.0;
  if (ScaledMeaningful(*value, x) && FitsFloat(x)) property->SetValue(static_cast<float>(x));
}

ZrSceneMapping1DSFInt32::ZrSceneMapping1DSFInt32(Ref<IInt32Property> intProperty, float scaleFactor)
    : ZrSceneMapping1D(scaleFactor), property(std::move(intProperty)) {}

void ZrSceneMapping1DSFInt32::ValueDecoded(ZrValue1D* value) {
  if (!value || !property) return;
  double x = 0.0;
  if (!ScaledMeaningful(*value, x)) return;
  const double rounded = std::round(x);  // halves away from zero
  constexpr double kMin = std::numeric_limits<std::int32_t>::min();
  constexpr double kMax = std::numeric_limits<std::int32_t>::max();
  property->SetValue(static_cast<std::int32_t>(rounded < kMin ? kMin : (rounded > kMax ? kMax : rounded)));
}

}  // namespace quillon
