#pragma once
// The receivers that the channel-group decoder hands decoded values to.

#include <cstdint>
#include <string>

#include "core/ErrorDefinition.h"

namespace quillon {

class IChannelgroupDecoder;
class ZrValue1D;
class ZrValue3D;
class ZrValue6D;
class ZrValueTime;

/// A receiver of one channel's values, of any of the four value types. It registers itself
/// in the decoder through the typed registration of its own type.
class ZrValueDecodingCallbackInterface {
 public:
  virtual ~ZrValueDecodingCallbackInterface() = default;
  virtual ErrorCode AttachToDecoder(const std::string& controlPathName, std::int32_t groupNumber,
                                    std::uint32_t channelNumber, IChannelgroupDecoder* decoder) = 0;
  /// Quality thresholds forwarded by the decoder; receivers that judge quality keep them.
  virtual void SetMeaningfulThreshold(float) {}
  virtual void SetNominalThreshold(float) {}
};

/// Receives 1D values.
class ZrValueDecodingCallbackInterface1D : public ZrValueDecodingCallbackInterface {
 public:
  ErrorCode AttachToDecoder(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                            IChannelgroupDecoder* decoder) override;
  /// The decoder's shared value, valid only during the call.
  virtual void ValueDecoded(ZrValue1D* value) = 0;
};

/// Receives 3D values.
class ZrValueDecodingCallbackInterface3D : public ZrValueDecodingCallbackInterface {
 public:
  ErrorCode AttachToDecoder(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                            IChannelgroupDecoder* decoder) override;
  virtual void ValueDecoded(ZrValue3D* value) = 0;
};

/// Receives 6D frames.
class ZrValueDecodingCallbackInterface6D : public ZrValueDecodingCallbackInterface {
 public:
  ErrorCode AttachToDecoder(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                            IChannelgroupDecoder* decoder) override;
  virtual void ValueDecoded(ZrValue6D* value) = 0;
};

/// Receives the group's time value.
class ZrValueDecodingCallbackInterfaceTime : public ZrValueDecodingCallbackInterface {
 public:
  ErrorCode AttachToDecoder(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                            IChannelgroupDecoder* decoder) override;
  virtual void ValueDecoded(ZrValueTime* value) = 0;
};

}  // namespace quillon
