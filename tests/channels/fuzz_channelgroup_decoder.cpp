// Drives the channel-group decoder with arbitrary messages, receivers of all four types registered.
#include <cstddef>
#include <cstdint>

#include "channels/QuillonChannelgroupDecoder.h"

namespace {

using namespace quillon;

double sink = 0.0;

struct Sum1D : ZrValueDecodingCallbackInterface1D {
  void ValueDecoded(ZrValue1D* v) override { sink += v->GetScalarValue() + v->GetQuality(); }
};
struct Sum3D : ZrValueDecodingCallbackInterface3D {
  void ValueDecoded(ZrValue3D* v) override { sink += v->GetScalarValue(); }
};
struct Sum6D : ZrValueDecodingCallbackInterface6D {
  void ValueDecoded(ZrValue6D* v) override { sink += v->GetScalarValue() + v->GetFrame()(3, 3); }
};
struct SumTime : ZrValueDecodingCallbackInterfaceTime {
  void ValueDecoded(ZrValueTime* v) override { sink += v->GetScalarValue() + v->GetTimestamp(); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Sum1D r1;
  static Sum3D r3;
  static Sum6D r6;
  static SumTime rt;
  static QuillonChannelgroupDecoder* decoder = [] {
    auto* d = new QuillonChannelgroupDecoder();
    for (const char* name : {"Arm1", "", "A"}) {
      for (std::uint32_t group : {0u, 2u}) {
        const auto g = static_cast<std::int32_t>(group);
        d->Register(name, g, 0, &r1);
        d->Register(name, g, 1, &r3);
        d->Register(name, g, 2, &r6);
        d->Register(name, g, 3, &rt);
        d->Register(name, g, 200, &r1);
      }
    }
    return d;
  }();
  decoder->DecodeChannelgroup(data, size);
  return 0;
}
