#pragma once
// Receivers that keep a copy of every value they are handed, for the decoder tests.

#include <array>
#include <vector>

#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "channels/ZrValueTime.h"

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

}  // namespace quillon::test
