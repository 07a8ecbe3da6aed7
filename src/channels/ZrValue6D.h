#pragma once
// A position-and-orientation channel value.

#include <limits>

#include "channels/FltMatrix.h"
#include "channels/ZrValue.h"

namespace quillon {

/// A 4 × 4 homogeneous frame (rotation in the upper-left 3 × 3 block, position in rows 0 to 2
/// of column 3) with its quality; constructed as the identity with infinite quality.
class ZrValue6D final : public ZrValue {
 public:
  static constexpr std::uint16_t kClassId = 1079;
  static const ZrClassRecord kClassRecord;

  ZrValue6D();
  ZrValue6D(const ZrValue6D&) = default;
  ZrValue6D& operator=(const ZrValue6D&) = default;

  int GetType() const override { return kZrValue6D; }
  std::unique_ptr<ZrValue> Clone() const override;
  /// "value" must be a 4 × 4 frame; its rotation block is made the nearest rotation.
  ErrorCode ReadFrom(std::string_view text, std::uint32_t timestamp) override;
  ErrorCode WriteOn(std::ostream& stream) const override;
  /// The length of the position.
  double GetScalarValue() const override;
  double GetQuality() const override { return quality; }
  /// Copies another 6D value; other types leave it unchanged.
  void Assign(const ZrValue& other) override;

  std::uint16_t GetClassId() const override { return kClassId; }
  const ZrClassRecord* GetClassRecord() const override { return &kClassRecord; }
  std::unique_ptr<ZrAnyObject> CreateObject() const override;

  /// The 4 × 4 frame, stored column by column.
  const FltMatrix& GetFrame() const { return frame; }
  FltMatrix& Frame() { return frame; }
  double Position(std::size_t row) const { return frame(row, 3); }
  double Rotation(std::size_t row, std::size_t column) const { return frame(row, column); }
  void SetQuality(double q) { quality = q; }

  /// True when |1 − det R| < 0.1 for the upper-left 3 × 3 block R of a 4 × 4 matrix.
  static bool IsFrame(const FltMatrix& m);
  /// Replaces the rotation block of a 4 × 4 matrix by the nearest rotation.
  static void Normalize(FltMatrix& m);

 private:
  FltMatrix frame;
  double quality = std::numeric_limits<double>::infinity();
};

}  // namespace quillon
