#pragma once
// What the viewer component and the receivers need of the channel-group decoder.

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/ErrorDefinition.h"

namespace quillon {

class ZrValueDecodingCallbackInterface;
class ZrValueDecodingCallbackInterface1D;
class ZrValueDecodingCallbackInterface3D;
class ZrValueDecodingCallbackInterface6D;
class ZrValueDecodingCallbackInterfaceTime;

/// Decodes channel-group messages and dispatches each value to the receiver registered for
/// its channel. Receivers are not owned. Every operation returns 0 or an error code.
class IChannelgroupDecoder {
 public:
  virtual ~IChannelgroupDecoder() = default;

  /// Asks the receiver to attach itself through its typed registration.
  virtual ErrorCode Register(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                             ZrValueDecodingCallbackInterface* receiver) = 0;
  virtual ErrorCode Register1D(const std::string& controlPathName, std::int32_t groupNumber,
                               std::uint32_t channelNumber, ZrValueDecodingCallbackInterface1D* receiver) = 0;
  virtual ErrorCode Register3D(const std::string& controlPathName, std::int32_t groupNumber,
                               std::uint32_t channelNumber, ZrValueDecodingCallbackInterface3D* receiver) = 0;
  virtual ErrorCode Register6D(const std::string& controlPathName, std::int32_t groupNumber,
                               std::uint32_t channelNumber, ZrValueDecodingCallbackInterface6D* receiver) = 0;
  virtual ErrorCode RegisterTime(const std::string& controlPathName, std::int32_t groupNumber,
                                 std::uint32_t channelNumber, ZrValueDecodingCallbackInterfaceTime* receiver) = 0;

  /// Decodes one message of `size` bytes; never reads past them.
  virtual ErrorCode DecodeChannelgroup(const unsigned char* bytes, std::size_t size) = 0;

  virtual void SetMeaningfulThreshold(float threshold) = 0;
  virtual void SetNominalThreshold(float threshold) = 0;

  /// Drops every registration at once (the receivers are about to be deleted).
  virtual void Clear() = 0;
};

}  // namespace quillon
