#pragma once
// The channel-group decoder: turns one message into values and hands each to its receiver.

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "channels/IChannelgroupDecoder.h"
#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "channels/ZrValueTime.h"

namespace quillon {

/// Decodes channel-group messages (little-endian, packed, IEEE doubles) into four shared
/// value objects, one per value type, and calls the receiver registered for each channel, in
/// channel order. A field that a message does not carry keeps what the previous message left.
/// Decoding allocates nothing.
class QuillonChannelgroupDecoder final : public IChannelgroupDecoder {
 public:
  /// Message flags.
  static constexpr std::uint16_t kHasValues = 0x0001;
  static constexpr std::uint16_t kHasStatus = 0x0004;
  static constexpr std::uint16_t kHasTimestamp = 0x0008;
  /// Our extension: each record carries its quality (a double) after its payload.
  static constexpr std::uint16_t kHasQuality = 0x0010;
  /// Registration tables grow to the channel number plus this many slots.
  static constexpr std::uint32_t kGrowth = 99;
  /// The highest channel number that a message can address.
  static constexpr std::uint32_t kMaxChannel = 0xFFFE;

  QuillonChannelgroupDecoder();
  ~QuillonChannelgroupDecoder() override;

  ErrorCode Register(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                     ZrValueDecodingCallbackInterface* receiver) override;
  ErrorCode Register1D(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                       ZrValueDecodingCallbackInterface1D* receiver) override;
  ErrorCode Register3D(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                       ZrValueDecodingCallbackInterface3D* receiver) override;
  ErrorCode Register6D(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                       ZrValueDecodingCallbackInterface6D* receiver) override;
  ErrorCode RegisterTime(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber,
                         ZrValueDecodingCallbackInterfaceTime* receiver) override;

  ErrorCode DecodeChannelgroup(const unsigned char* bytes, std::size_t size) override;

  void SetMeaningfulThreshold(float threshold) override;
  void SetNominalThreshold(float threshold) override;
  void Clear() override;

 private:
  /// The receivers of one (control path, group) for one value type, by channel number.
  template <class Receiver>
  struct Registration {
    std::string controlPathName;
    std::int32_t groupNumber = 0;
    std::vector<Receiver*> receivers;
  };
  template <class Receiver>
  using Table = std::vector<Registration<Receiver>>;

  /// The channels of one (control path, group) that have a receiver of any type.
  struct UsedChannels {
    std::string controlPathName;
    std::int32_t groupNumber;
    std::vector<bool> used;
    std::set<std::uint32_t> beyond;  // numbers no message can address; kept for the duplicate test
  };

  template <class Receiver>
  ErrorCode RegisterTyped(Table<Receiver>& table, const std::string& controlPathName, std::int32_t groupNumber,
                          std::uint32_t channelNumber, Receiver* receiver, ErrorCode alreadyRegistered);
  bool IsUsed(const UsedChannels* entry, std::uint32_t channelNumber) const;
  void MarkUsed(const std::string& controlPathName, std::int32_t groupNumber, std::uint32_t channelNumber);
  template <class F>
  void ForEachReceiver(F&& f);

  ZrValue1D value1D;
  ZrValue3D value3D;
  ZrValue6D value6D;
  ZrValueTime valueTime;
  Table<ZrValueDecodingCallbackInterface1D> table1D;
  Table<ZrValueDecodingCallbackInterface3D> table3D;
  Table<ZrValueDecodingCallbackInterface6D> table6D;
  Table<ZrValueDecodingCallbackInterfaceTime> tableTime;
  std::vector<UsedChannels> usedChannels;
  std::optional<float> meaningfulThreshold;  // as the host last set them
  std::optional<float> nominalThreshold;
};

}  // namespace quillon
