#pragma once
// The base of every scene mapping: quality thresholds, degraded-source counts, observers.

#include <vector>

namespace quillon {

/// Turns channel values into scene changes through properties. It keeps the two quality
/// thresholds and counts how many of the mappings it depends on are degraded: between the
/// thresholds (state 1) or beyond the meaningful one (state 2); the counter operations pass
/// on to the observers, so observing the nearest dependants reaches all. A mapping has one
/// owner, which holds it by std::unique_ptr (the viewer component, through the registrar); the
/// decoder and the observer links only point at it.
class ZrSceneMapping {
 public:
  /// Quality states of a value; 3 means that no value has arrived yet.
  enum State : int { kNominal = 0, kMeaningful = 1, kNotMeaningful = 2, kUnknown = 3 };

  virtual ~ZrSceneMapping();
  virtual void EnterState1();
  /// Never goes below 0.
  virtual void LeaveState1();
  virtual void EnterState2();
  /// Never goes below 0.
  virtual void LeaveState2();

  void SetMeaningfulThreshold(float threshold) { meaningfulThreshold = threshold; }
  void SetNominalThreshold(float threshold) { nominalThreshold = threshold; }
  float GetMeaningfulThreshold() const { return meaningfulThreshold; }
  float GetNominalThreshold() const { return nominalThreshold; }
  unsigned GetNotNominalCount() const { return notNominalCount; }
  unsigned GetNotMeaningfulCount() const { return notMeaningfulCount; }

  /// Makes `observer` (and, through it, its own observers) hear of this mapping's state
  /// changes. The link is undone when either side is destroyed.
  void AddObserver(ZrSceneMapping* observer);
  const std::vector<ZrSceneMapping*>& GetObservers() const { return observers; }

  ZrSceneMapping(const ZrSceneMapping&) = delete;
  ZrSceneMapping& operator=(const ZrSceneMapping&) = delete;

 protected:
  ZrSceneMapping() = default;

  /// The state of a quality: 0 up to the nominal threshold, 1 up to the meaningful one, 2
  /// beyond it or when the quality is not a number.
  State StateOf(double quality) const;
  /// True when the quality is at most the meaningful threshold.
  bool IsMeaningful(double quality) const { return quality <= static_cast<double>(meaningfulThreshold); }

  /// Tells the observers of a change from `previous` to `next`, both states 1 and 2.
  void NotifyStateChange(State previous, State next);
  /// Tells the observers of entering or leaving state 1 only.
  void NotifyState1Change(State previous, State next);

 private:
  void RemoveObserver(ZrSceneMapping* observer);

  float nominalThreshold = 0.0f;
  float meaningfulThreshold = 100.0f;
  unsigned notNominalCount = 0;
  unsigned notMeaningfulCount = 0;
  std::vector<ZrSceneMapping*> observers;
  std::vector<ZrSceneMapping*> subjects;  // the mappings that this one observes
};

}  // namespace quillon
