#include "control/RouteValues.h"

#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueDecodingCallbackInterface.h"
#include "channels/ZrValueTime.h"
#include "mapping/ZrSceneMapping1D.h"

namespace quillon {
namespace {

void numbersOf(const ZrValue1D& value, RouteSample& sample) { sample.numbers[0] = value.GetValue(); }

void numbersOf(const ZrValueTime& value, RouteSample& sample) { sample.numbers[0] = value.GetTime(); }

void numbersOf(const ZrValue3D& value, RouteSample& sample) {
  sample.numbers[0] = value.X();
  sample.numbers[1] = value.Y();
  sample.numbers[2] = value.Z();
}

void numbersOf(const ZrValue6D& value, RouteSample& sample) {
  for (std::size_t row = 0; row < 3; ++row) {
    sample.numbers[row] = value.Position(row);
    for (std::size_t column = 0; column < 3; ++column)
      sample.numbers[3 + row * 3 + column] = value.Rotation(row, column);
  }
}

template <class Value>
void record(const Value& value, RouteSample& sample) {
  const RouteSample before = sample;
  sample.type = value.GetType();
  numbersOf(value, sample);
  sample.quality = value.GetQuality();
  sample.status = value.GetStatus();
  sample.timestamp = value.GetTimestamp();
  ++sample.received;
  // Compared bit for bit, so that a value that stays NaN does not count as a change.
  auto same = [](double a, double b) { return a == b || (a != a && b != b); };
  bool changed = before.received == 0 || !same(before.quality, sample.quality) || before.status != sample.status;
  for (std::size_t i = 0; i < sample.numbers.size() && !changed; ++i)
    changed = !same(before.numbers[i], sample.numbers[i]);
  if (changed) sample.changed = std::chrono::steady_clock::now();
}

/// Registers itself for the mapping's channel, keeps each value and hands it on.
template <class Receiver, class Value>
class Tap final : public Receiver {
 public:
  Tap(std::unique_ptr<ZrValueDecodingCallbackInterface> owned, Receiver& receiver, RouteSample& kept)
      : mapping(std::move(owned)), inner(receiver), sample(kept) {}

  void ValueDecoded(Value* value) override {
    record(*value, sample);
    inner.ValueDecoded(value);
  }
  void SetMeaningfulThreshold(float threshold) override { inner.SetMeaningfulThreshold(threshold); }
  void SetNominalThreshold(float threshold) override { inner.SetNominalThreshold(threshold); }

 private:
  std::unique_ptr<ZrValueDecodingCallbackInterface> mapping;
  Receiver& inner;
  RouteSample& sample;
};

template <class Receiver, class Value>
std::unique_ptr<ZrValueDecodingCallbackInterface> tapAs(std::unique_ptr<ZrValueDecodingCallbackInterface>& mapping,
                                                        RouteSample& sample) {
  auto* receiver = dynamic_cast<Receiver*>(mapping.get());
  if (!receiver) return nullptr;
  return std::make_unique<Tap<Receiver, Value>>(std::move(mapping), *receiver, sample);
}

}  // namespace

RouteValues::RouteValues() = default;

RouteValues::~RouteValues() = default;

std::unique_ptr<ZrValueDecodingCallbackInterface> RouteValues::Tap(
    const RouteRecord& route, std::unique_ptr<ZrValueDecodingCallbackInterface> mapping) {
  if (!mapping) return mapping;
  auto entry = std::make_unique<RouteEntry>();
  entry->from = route.from;
  entry->controlPathName = route.controlPathName;
  entry->groupNumber = route.groupNumber;
  entry->channelNumber = route.channelNumber;
  entry->kind = route.channelKind;
  entry->nodeName = route.targetNodeName;
  entry->fieldName = route.targetFieldName;
  entry->scale = route.scale;
  entry->hide = route.hide;
  entry->cascading = route.cascading;
  if (const auto* colour = dynamic_cast<const ZrSceneMapping1DSFColor*>(mapping.get()))
    entry->colourMap = colour->GetColourMap();

  RouteSample& sample = entry->sample;
  std::unique_ptr<ZrValueDecodingCallbackInterface> tapped;
  if (!(tapped = tapAs<ZrValueDecodingCallbackInterface1D, ZrValue1D>(mapping, sample)) &&
      !(tapped = tapAs<ZrValueDecodingCallbackInterface3D, ZrValue3D>(mapping, sample)) &&
      !(tapped = tapAs<ZrValueDecodingCallbackInterface6D, ZrValue6D>(mapping, sample)) &&
      !(tapped = tapAs<ZrValueDecodingCallbackInterfaceTime, ZrValueTime>(mapping, sample)))
    return mapping;
  routes.push_back(std::move(entry));
  return tapped;
}

void RouteValues::Clear() { routes.clear(); }

}  // namespace quillon
