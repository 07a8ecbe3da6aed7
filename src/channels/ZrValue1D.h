#pragma once
// A scalar channel value.

#include <limits>

#include "channels/ZrValue.h"

namespace quillon {

/// One double with its quality; NaN with infinite quality until a sample arrives.
class ZrValue1D final : public ZrValue {
 public:
  static constexpr std::uint16_t kClassId = 1077;
  static const ZrClassRecord kClassRecord;

  ZrValue1D() = default;
  ZrValue1D(const ZrValue1D&) = default;
  ZrValue1D& operator=(const ZrValue1D&) = default;

  int GetType() const override { return kZrValue1D; }
  std::unique_ptr<ZrValue> Clone() const override;
  ErrorCode ReadFrom(std::string_view text, std::uint32_t timestamp) override;
  ErrorCode WriteOn(std::ostream& stream) const override;
  double GetScalarValue() const override { return value; }
  double GetQuality() const override { return quality; }
  /// Takes the other value's scalar view.
  void Assign(const ZrValue& other) override;

  std::uint16_t GetClassId() const override { return kClassId; }
  const ZrClassRecord* GetClassRecord() const override { return &kClassRecord; }
  std::unique_ptr<ZrAnyObject> CreateObject() const override;

  double GetValue() const { return value; }
  void SetValue(double v) { value = v; }
  void SetQuality(double q) { quality = q; }

 private:
  double value = std::numeric_limits<double>::quiet_NaN();
  double quality = std::numeric_limits<double>::infinity();
};

}  // namespace quillon
