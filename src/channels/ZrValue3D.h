#pragma once
// A point-valued channel value.

#include <limits>

#include "channels/FltMatrix.h"
#include "channels/ZrValue.h"

namespace quillon {

/// A one-column matrix x, y, z, w (w a homogeneous weight) with its quality; constructed as
/// NaN, NaN, NaN, 1 with infinite quality.
class ZrValue3D final : public ZrValue {
 public:
  static constexpr std::uint16_t kClassId = 1078;
  static const ZrClassRecord kClassRecord;

  ZrValue3D();
  ZrValue3D(const ZrValue3D&) = default;
  ZrValue3D& operator=(const ZrValue3D&) = default;

  int GetType() const override { return kZrValue3D; }
  std::unique_ptr<ZrValue> Clone() const override;
  /// "value" must be a matrix of 3 or 4 rows and one column.
  ErrorCode ReadFrom(std::string_view text, std::uint32_t timestamp) override;
  ErrorCode WriteOn(std::ostream& stream) const override;
  /// The length of x, y, z.
  double GetScalarValue() const override;
  double GetQuality() const override { return quality; }
  /// Copies another 3D value; other types leave it unchanged.
  void Assign(const ZrValue& other) override;

  std::uint16_t GetClassId() const override { return kClassId; }
  const ZrClassRecord* GetClassRecord() const override { return &kClassRecord; }
  std::unique_ptr<ZrAnyObject> CreateObject() const override;

  /// The 4 × 1 matrix x, y, z, w.
  const FltMatrix& GetValue() const { return value; }
  double X() const { return value[0]; }
  double Y() const { return value[1]; }
  double Z() const { return value[2]; }
  double W() const { return value[3]; }
  /// Sets x, y, z; w is kept.
  void SetPosition(double x, double y, double z) {
    value[0] = x;
    value[1] = y;
    value[2] = z;
  }
  void SetQuality(double q) { quality = q; }

 private:
  FltMatrix value;
  double quality = std::numeric_limits<double>::infinity();
};

}  // namespace quillon
