#pragma once
// The common base of the channel values: a status and a time stamp on top of the object base.

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "core/ErrorDefinition.h"
#include "core/ZrAnyObject.h"

namespace quillon {

class ZrArchiveM;

/// Value type codes; the channel-group message uses the same numbers.
enum ZrValueType : int { kZrValue1D = 1, kZrValue3D = 2, kZrValue6D = 3, kZrValueTime = 4 };

/// One sample of one measurement channel.
class ZrValue : public ZrAnyObject {
 public:
  static constexpr std::uint16_t kClassId = 1076;
  static constexpr std::uint32_t kNoTimestamp = 0xFFFFFFFFu;
  static constexpr std::int32_t kNoStatus = 32767;
  static const ZrClassRecord kClassRecord;

  ~ZrValue() override;

  /// The type code (ZrValueType).
  virtual int GetType() const = 0;
  /// A new object of the same class with every field copied.
  virtual std::unique_ptr<ZrValue> Clone() const = 0;
  /// Reads "value", "quality" and "status" from an archive text; the time stamp is the
  /// argument's. A missing or unreadable status becomes 0.
  virtual ErrorCode ReadFrom(std::string_view text, std::uint32_t timestamp) = 0;
  /// Writes "value", "quality", "status" and "timestamp" as archive statements.
  virtual ErrorCode WriteOn(std::ostream& stream) const = 0;
  /// The value seen as one number (a length for 3D and 6D).
  virtual double GetScalarValue() const = 0;
  virtual double GetQuality() const = 0;
  /// Takes what it can from another value.
  virtual void Assign(const ZrValue& other) = 0;

  std::uint16_t GetClassId() const override { return kClassId; }
  const ZrClassRecord* GetClassRecord() const override { return &kClassRecord; }

  std::uint32_t GetTimestamp() const { return timestamp; }
  void SetTimestamp(std::uint32_t t) { timestamp = t; }
  std::int32_t GetStatus() const { return status; }
  void SetStatus(std::int32_t s) { status = s; }

 protected:
  ZrValue() = default;
  ZrValue(const ZrValue&) = default;
  ZrValue& operator=(const ZrValue&) = default;

  /// Writes the "quality", "status" and "timestamp" statements after the value's own.
  ErrorCode WriteCommon(ZrArchiveM& archive, double quality) const;

  std::uint32_t timestamp = kNoTimestamp;
  std::int32_t status = kNoStatus;
};

}  // namespace quillon
