#pragma once
// Receivers that keep a copy of every value they are handed, and a decoder that feeds them.

#include <gtest/gtest.h>

#include <vector>

#include "channels/QuillonChannelgroupDecoder.h"
#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "channels/ZrValueTime.h"
#include "core/ZrErrorHandler.h"

namespace quillon::test {

/// Values seen by the receivers, in arrival order across all of them.
struct Log {
  std::vector<int> order;  // type codes
  std::vector<ZrValue1D> v1;
  std::vector<ZrValue3D> v3;
  std::vector<ZrValue6D> v6;
  std::vector<ZrValueTime> vt;
  float meaningful = -1.0f;
  float nominal = -1.0f;
};

template <class Base, class Value>
class Recorder : public Base {
 public:
  explicit Recorder(Log& l) : log(l) {}
  void ValueDecoded(Value* value) override {
    log.order.push_back(value->GetType());
    Store(*value);
  }
  void SetMeaningfulThreshold(float t) override { log.meaningful = t; }
  void SetNominalThreshold(float t) override { log.nominal = t; }

 private:
  void Store(const ZrValue1D& v) { log.v1.push_back(v); }
  void Store(const ZrValue3D& v) { log.v3.push_back(v); }
  void Store(const ZrValue6D& v) { log.v6.push_back(v); }
  void Store(const ZrValueTime& v) { log.vt.push_back(v); }
  Log& log;
};

using Recorder1D = Recorder<ZrValueDecodingCallbackInterface1D, ZrValue1D>;
using Recorder3D = Recorder<ZrValueDecodingCallbackInterface3D, ZrValue3D>;
using Recorder6D = Recorder<ZrValueDecodingCallbackInterface6D, ZrValue6D>;
using RecorderTime = Recorder<ZrValueDecodingCallbackInterfaceTime, ZrValueTime>;

/// A decoder and one receiver of each kind, all writing to one log.
class DecoderTest : public ::testing::Test {
 protected:
  void SetUp() override { ZrErrorHandler::Instance().Clear(); }
  // The first `count` of r1, r3, r6 and rt on channels 0, 1, ... of name[group].
  void RegisterReceivers(const char* name, std::int32_t group, std::uint32_t count) {
    ZrValueDecodingCallbackInterface* receivers[] = {&r1, &r3, &r6, &rt};
    for (std::uint32_t i = 0; i < count; ++i) ASSERT_EQ(decoder.Register(name, group, i, receivers[i]), 0);
  }
  ErrorCode Decode(const std::vector<unsigned char>& m) { return decoder.DecodeChannelgroup(m.data(), m.size()); }

  QuillonChannelgroupDecoder decoder;
  Log log;
  Recorder1D r1{log};
  Recorder3D r3{log};
  Recorder6D r6{log};
  RecorderTime rt{log};
};

}  // namespace quillon::test
