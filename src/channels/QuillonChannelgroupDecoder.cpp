#include "channels/QuillonChannelgroupDecoder.h"

#include <bit>
#include <type_traits>

#include "channels/ChannelErrorCodes.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

// Little-endian fields of a message, read without trusting any length in it.
class MessageReader {
 public:
  MessageReader(const unsigned char* bytes, std::size_t size) : p(bytes), left(bytes ? size : 0) {}

  bool Has(std::size_t n) const { return left >= n; }
  std::size_t Left() const { return left; }
  const unsigned char* Here() const { return p; }
  void Skip(std::size_t n) {
    p += n;
    left -= n;
  }

  // The callers check Has() first.
  std::uint16_t U16() {
    const auto v = static_cast<std::uint16_t>(p[0] | (p[1] << 8));
    Skip(2);
    return v;
  }
  std::uint32_t U32() {
    const std::uint32_t v = static_cast<std::uint32_t>(p[0]) | (static_cast<std::uint32_t>(p[1]) << 8) |
                            (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
    Skip(4);
    return v;
  }
  double F64() {
    std::uint64_t v = 0;
    for (int i = 7; i >= 0; --i) v = (v << 8) | p[i];
    Skip(8);
    return std::bit_cast<double>(v);
  }

 private:
  const unsigned char* p;
  std::size_t left;
};

constexpr std::size_t PayloadSize(int type) {
  switch (type) {
    case kZrValue1D:
    case kZrValueTime:
      return 8;
    case kZrValue3D:
      return 24;
    case kZrValue6D:
      return 96;
    default:
      return 0;
  }
}

template <class Entry>
const Entry* Find(const std::vector<Entry>& table, std::string_view name, std::int32_t group) {
  for (const Entry& e : table)
    if (e.groupNumber == group && e.controlPathName == name) return &e;
  return nullptr;
}

template <class Entry>
Entry* Find(std::vector<Entry>& table, std::string_view name, std::int32_t group) {
  for (Entry& e : table)
    if (e.groupNumber == group && e.controlPathName == name) return &e;
  return nullptr;
}

// The receiver of channel i in one type's registration, or null.
template <class Receiver>
struct Slots {
  Receiver* const* data = nullptr;
  std::size_t size = 0;
  Receiver* At(std::size_t i) const { return i < size ? data[i] : nullptr; }
};

template <class Entry>
auto SlotsOf(const Entry* entry) {
  using Receiver = std::remove_pointer_t<typename decltype(entry->receivers)::value_type>;
  Slots<Receiver> slots;
  if (entry) {
    slots.data = entry->receivers.data();
    slots.size = entry->receivers.size();
  }
  return slots;
}

template <class Receiver, class Value>
bool Deliver(const Slots<Receiver>& slots, std::size_t channel, Value& value) {
  Receiver* receiver = slots.At(channel);
  if (!receiver) return false;
  receiver->ValueDecoded(&value);
  return true;
}

}  // namespace

QuillonChannelgroupDecoder::QuillonChannelgroupDecoder() = default;

QuillonChannelgroupDecoder::~QuillonChannelgroupDecoder() = default;

// ---- Registration --------------------------------------------------------------------------

ErrorCode QuillonChannelgroupDecoder::Register(const std::string& controlPathName, std::int32_t groupNumber,
                                               std::uint32_t channelNumber,
                                               ZrValueDecodingCallbackInterface* receiver) {
  if (!receiver) return RaiseRootError(QUILLONCHANNELGROUPDECODER_REGISTER);
  if (receiver->AttachToDecoder(controlPathName, groupNumber, channelNumber, this) != HALCYON_SUCCESS)
    return RaiseError(QUILLONCHANNELGROUPDECODER_REGISTER);
  // A host may set the thresholds before it loads a document; its mappings get them too.
  if (meaningfulThreshold) receiver->SetMeaningfulThreshold(*meaningfulThreshold);
  if (nominalThreshold) receiver->SetNominalThreshold(*nominalThreshold);
  return HALCYON_SUCCESS;
}

ErrorCode QuillonChannelgroupDecoder::Register1D(const std::string& name, std::int32_t group, std::uint32_t channel,
                                                 ZrValueDecodingCallbackInterface1D* receiver) {
  return RegisterTyped(table1D, name, group, channel, receiver,
                       QUILLONCHANNELGROUPDECODER_REGISTER1D_CHANNELALREADYREGISTERED);
}

ErrorCode QuillonChannelgroupDecoder::Register3D(const std::string& name, std::int32_t group, std::uint32_t channel,
                                                 ZrValueDecodingCallbackInterface3D* receiver) {
  return RegisterTyped(table3D, name, group, channel, receiver,
                       QUILLONCHANNELGROUPDECODER_REGISTER3D_CHANNELALREADYREGISTERED);
}

ErrorCode QuillonChannelgroupDecoder::Register6D(const std::string& name, std::int32_t group, std::uint32_t channel,
                                                 ZrValueDecodingCallbackInterface6D* receiver) {
  return RegisterTyped(table6D, name, group, channel, receiver,
                       QUILLONCHANNELGROUPDECODER_REGISTER6D_CHANNELALREADYREGISTERED);
}

ErrorCode QuillonChannelgroupDecoder::RegisterTime(const std::string& name, std::int32_t group, std::uint32_t channel,
                                                   ZrValueDecodingCallbackInterfaceTime* receiver) {
  return RegisterTyped(tableTime, name, group, channel, receiver,
                       QUILLONCHANNELGROUPDECODER_REGISTERTIME_CHANNELALREADYREGISTERED);
}

template <class Receiver>
ErrorCode QuillonChannelgroupDecoder::RegisterTyped(Table<Receiver>& table, const std::string& name, std::int32_t group,
                                                    std::uint32_t channel, Receiver* receiver,
                                                    ErrorCode alreadyRegistered) {
  if (!receiver) return RaiseRootError(QUILLONCHANNELGROUPDECODER_REGISTER);
  if (IsUsed(Find(usedChannels, name, group), channel)) return RaiseRootError(alreadyRegistered);
  // A channel that no message can address is only remembered as used: it can never be delivered,
  // and a table grown to its number would be enormous.
  if (channel <= kMaxChannel) {
    Registration<Receiver>* entry = Find(table, name, group);
    if (!entry) entry = &table.emplace_back(Registration<Receiver>{name, group, {}});
    if (channel >= entry->receivers.size()) entry->receivers.resize(channel + kGrowth, nullptr);
    entry->receivers[channel] = receiver;
  }
  MarkUsed(name, group, channel);
  return HALCYON_SUCCESS;
}

bool QuillonChannelgroupDecoder::IsUsed(const UsedChannels* entry, std::uint32_t channel) const {
  if (!entry) return false;
  if (channel > kMaxChannel) return entry->beyond.count(channel) > 0;
  return channel < entry->used.size() && entry->used[channel];
}

void QuillonChannelgroupDecoder::MarkUsed(const std::string& name, std::int32_t group, std::uint32_t channel) {
  UsedChannels* entry = Find(usedChannels, name, group);
  if (!entry) entry = &usedChannels.emplace_back(UsedChannels{name, group, {}, {}});
  if (channel > kMaxChannel) {
    entry->beyond.insert(channel);
    return;
  }
  if (channel >= entry->used.size()) entry->used.resize(channel + kGrowth, false);
  entry->used[channel] = true;
}

void QuillonChannelgroupDecoder::Clear() {
  table1D.clear();
  table3D.clear();
  table6D.clear();
  tableTime.clear();
  usedChannels.clear();
}

template <class F>
void QuillonChannelgroupDecoder::ForEachReceiver(F&& f) {
  auto each = [&f](auto& table) {
    for (auto& entry : table)
      for (auto* receiver : entry.receivers)
        if (receiver) f(*receiver);
  };
  each(table1D);
  each(table3D);
  each(table6D);
  each(tableTime);
}

void QuillonChannelgroupDecoder::SetMeaningfulThreshold(float threshold) {
  meaningfulThreshold = threshold;
  ForEachReceiver([threshold](ZrValueDecodingCallbackInterface& r) { r.SetMeaningfulThreshold(threshold); });
}

void QuillonChannelgroupDecoder::SetNominalThreshold(float threshold) {
  nominalThreshold = threshold;
  ForEachReceiver([threshold](ZrValueDecodingCallbackInterface& r) { r.SetNominalThreshold(threshold); });
}

// ---- Decoding ------------------------------------------------------------------------------

ErrorCode QuillonChannelgroupDecoder::DecodeChannelgroup(const unsigned char* bytes, std::size_t size) {
  MessageReader in(bytes, size);
  if (!in.Has(4)) return RaiseRootError(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
  const std::uint16_t flags = in.U16();
  const std::uint16_t nameLength = in.U16();
  if (!in.Has(std::size_t{nameLength} + 6))
    return RaiseRootError(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
  const std::string_view name(reinterpret_cast<const char*>(in.Here()), nameLength);
  in.Skip(nameLength);
  const auto group = static_cast<std::int32_t>(in.U32());
  const std::uint16_t count = in.U16();

  if (!(flags & kHasValues)) return HALCYON_SUCCESS;

  const auto slots1D = SlotsOf(Find(table1D, name, group));
  const auto slots3D = SlotsOf(Find(table3D, name, group));
  const auto slots6D = SlotsOf(Find(table6D, name, group));
  const auto slotsTime = SlotsOf(Find(tableTime, name, group));
  const UsedChannels* used = nullptr;
  bool usedLooked = false;

  const bool hasQuality = flags & kHasQuality;
  const bool hasStatus = flags & kHasStatus;
  const bool hasTimestamp = flags & kHasTimestamp;
  const std::size_t tail = (hasQuality ? 8u : 0u) + (hasStatus ? 4u : 0u) + (hasTimestamp ? 4u : 0u);

  for (std::size_t i = 0; i < count; ++i) {
    if (!in.Has(1)) return RaiseRootError(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
    const int type = in.Here()[0];
    // An unknown type byte ends the message silently: every later index would read it again.
    if (type < kZrValue1D || type > kZrValueTime) return HALCYON_SUCCESS;
    if (!in.Has(1 + PayloadSize(type) + tail))
      return RaiseRootError(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TRUNCATED);
    in.Skip(1);

    // Status and time stamp follow the payload (and the quality) in every record.
    auto readTail = [&](ZrValue& value) {
      if (hasStatus) value.SetStatus(static_cast<std::int32_t>(in.U32()));
      if (hasTimestamp) value.SetTimestamp(in.U32());
    };
    bool delivered = false;
    switch (type) {
      case kZrValue1D:
        value1D.SetValue(in.F64());
        if (hasQuality) value1D.SetQuality(in.F64());
        readTail(value1D);
        delivered = Deliver(slots1D, i, value1D);
        break;
      case kZrValue3D: {
        const double x = in.F64();
        const double y = in.F64();
        const double z = in.F64();
        value3D.SetPosition(x, y, z);
        if (hasQuality) value3D.SetQuality(in.F64());
        readTail(value3D);
        delivered = Deliver(slots3D, i, value3D);
        break;
      }
      case kZrValue6D: {
        FltMatrix& frame = value6D.Frame();
        for (std::size_t r = 0; r < 3; ++r) frame(r, 3) = in.F64();
        for (std::size_t c = 0; c < 3; ++c)
          for (std::size_t r = 0; r < 3; ++r) frame(r, c) = in.F64();
        if (hasQuality) value6D.SetQuality(in.F64());
        readTail(value6D);
        delivered = Deliver(slots6D, i, value6D);
        break;
      }
      default:
        valueTime.SetTime(in.F64());
        // A time has no quality of its own: the extension's double is passed over.
        if (hasQuality) in.F64();
        readTail(valueTime);
        delivered = Deliver(slotsTime, i, valueTime);
        break;
    }
    if (!delivered) {
      if (!usedLooked) {
        used = Find(usedChannels, name, group);
        usedLooked = true;
      }
      if (IsUsed(used, static_cast<std::uint32_t>(i)))
        return RaiseRootError(QUILLONCHANNELGROUPDECODER_DECODECHANNELGROUP_TYPEMISMATCH);
    }
  }
  return HALCYON_SUCCESS;
}

}  // namespace quillon
