#include "mapping/ZrSceneMapping.h"

#include <algorithm>

namespace quillon {

ZrSceneMapping::~ZrSceneMapping() {
  for (ZrSceneMapping* subject : subjects) subject->RemoveObserver(this);
  for (ZrSceneMapping* observer : observers) std::erase(observer->subjects, this);
}

// A mapping's observers are the nearest mapped nodes below it, and each passes on what it
// hears, so the counts of a mapping cover every mapping above it however deep the chain is,
// with one link per mapping.
void ZrSceneMapping::EnterState1() {
  ++notNominalCount;
  for (ZrSceneMapping* observer : observers) observer->EnterState1();
}

void ZrSceneMapping::LeaveState1() {
  if (notNominalCount > 0) --notNominalCount;
  for (ZrSceneMapping* observer : observers) observer->LeaveState1();
}

void ZrSceneMapping::EnterState2() {
  ++notMeaningfulCount;
  for (ZrSceneMapping* observer : observers) observer->EnterState2();
}

void ZrSceneMapping::LeaveState2() {
  if (notMeaningfulCount > 0) --notMeaningfulCount;
  for (ZrSceneMapping* observer : observers) observer->LeaveState2();
}

void ZrSceneMapping::AddObserver(ZrSceneMapping* observer) {
  if (!observer || observer == this) return;
  observers.push_back(observer);
  observer->subjects.push_back(this);
}

void ZrSceneMapping::RemoveObserver(ZrSceneMapping* observer) { std::erase(observers, observer); }

ZrSceneMapping::State ZrSceneMapping::StateOf(double quality) const {
  if (quality <= static_cast<double>(nominalThreshold)) return kNominal;
  if (quality <= static_cast<double>(meaningfulThreshold)) return kMeaningful;
  return kNotMeaningful;
}

void ZrSceneMapping::NotifyStateChange(State previous, State next) {
  if (previous == next) return;
  for (ZrSceneMapping* observer : observers) {
    switch (next) {
      case kNotMeaningful:
        if (previous == kMeaningful) observer->LeaveState1();
        observer->EnterState2();
        break;
      case kMeaningful:
        observer->EnterState1();
        if (previous == kNotMeaningful) observer->LeaveState2();
        break;
      case kNominal:
        if (previous == kMeaningful) observer->LeaveState1();
        if (previous == kNotMeaningful) observer->LeaveState2();
        break;
      case kUnknown:
        break;
    }
  }
}

void ZrSceneMapping::NotifyState1Change(State previous, State next) {
  if (next == kMeaningful && previous != kMeaningful) {
    for (ZrSceneMapping* observer : observers) observer->EnterState1();
  } else if (next != kMeaningful && previous == kMeaningful) {
    for (ZrSceneMapping* observer : observers) observer->LeaveState1();
  }
}

}  // namespace quillon
