#pragma once
// A live source on the Qt event loop of a viewer that draws on the UI thread.

#include <QObject>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "live/LiveInbox.h"
#include "live/LiveStatus.h"
#include "live/LiveSubscriber.h"

class QSocketNotifier;

namespace quillon {

/// Reads a subscriber's socket when ZeroMQ signals it and hands the newest message of each
/// group to the viewer, on the thread that owns the feed. Reading stops after a budget and
/// goes on at the next turn of the event loop, and messages are handed over at most once per
/// apply interval, so a flood costs one decode per group per interval and input still gets
/// through.
class cLiveFeed final : public QObject {
 public:
  /// Hands one message to the viewer; returns its error text, empty when it took it cleanly.
  using Apply = std::function<std::string(const unsigned char*, std::size_t)>;

  static constexpr std::chrono::milliseconds kApplyInterval{8};
  static constexpr std::size_t kReadBudget = 256;  // messages read in one turn of the event loop

  explicit cLiveFeed(Apply apply, QObject* parent = nullptr);
  ~cLiveFeed() override;

  /// Returns the error text, empty on success.
  std::string connectTo(const std::string& endpoint, const CurveKeys& keys = {});
  std::string bindTo(const std::string& endpoint, const CurveKeys& keys = {});
  /// The endpoint attached last; for a bind to port "*", with the port that was taken.
  std::string lastEndpoint() const { return subscriber.lastEndpoint(); }

  /// The groups to subscribe to: the needed groups of the document on show.
  void setGroups(const std::vector<ChannelgroupAddress>& groups);

  const LiveCounts& counts() const { return inbox.counts(); }
  /// Messages that were applied but that the viewer did not take cleanly, and the last answer.
  std::uint64_t refused() const { return refusals; }
  const std::string& lastRefusal() const { return refusal; }
  /// The status line of LiveStatus; the rate is measured since the previous call.
  std::string statusLine() { return status.update(inbox.counts()); }

 private:
  std::string attach(const LiveEndpoint& endpoint, const CurveKeys& keys);
  void read();
  void applyWaiting();

  Apply apply;
  LiveSubscriber subscriber;
  LiveInbox inbox;
  std::unique_ptr<QSocketNotifier> notifier;  // declared after the socket it watches, so it goes first
  QTimer readOn, applySoon, safety;
  std::chrono::steady_clock::time_point lastApply;
  std::uint64_t refusals = 0;
  std::string refusal;
  LiveStatus status;
};

}  // namespace quillon
