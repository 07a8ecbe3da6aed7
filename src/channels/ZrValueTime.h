#pragma once
// A time-valued channel value.

#include <limits>

#include "channels/ZrValue.h"

namespace quillon {

/// The group's time as one double. Its quality is always 0; a second double travels with
/// the object (the decoder's quality extension writes it) and is otherwise unused: the archive
/// text neither fills it nor shows it.
class ZrValueTime final : public ZrValue {
 public:
  static constexpr std::uint16_t kClassId = 1080;
  static const ZrClassRecord kClassRecord;

  ZrValueTime() = default;
  ZrValueTime(const ZrValueTime&) = default;
  ZrValueTime& operator=(const ZrValueTime&) = default;

  int GetType() const override { return kZrValueTime; }
  std::unique_ptr<ZrValue> Clone() const override;
  ErrorCode ReadFrom(std::string_view text, std::uint32_t timestamp) override;
  ErrorCode WriteOn(std::ostream& stream) const override;
  double GetScalarValue() const override { return time; }
  double GetQuality() const override { return 0.0; }
  /// Takes the other value's scalar view.
  void Assign(const ZrValue& other) override;

  std::uint16_t GetClassId() const override { return kClassId; }
  const ZrClassRecord* GetClassRecord() const override { return &kClassRecord; }
  std::unique_ptr<ZrAnyObject> CreateObject() const override;

  double GetTime() const { return time; }
  void SetTime(double t) { time = t; }
  double GetSecond() const { return second; }
  void SetSecond(double s) { second = s; }

 private:
  double time = std::numeric_limits<double>::quiet_NaN();
  double second = 0.0;
};

}  // namespace quillon
