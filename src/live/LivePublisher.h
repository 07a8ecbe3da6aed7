#pragma once
// The sending end of a live connection: channel-group messages onto the bus under their topics.

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "live/LiveSocket.h"

namespace quillon {

/// An XPUB socket: it sends as a PUB socket does and also hears the subscriptions, so that a
/// publisher can wait for its subscribers instead of sending into the void while they join.
class LivePublisher {
 public:
  /// `sendQueue`: messages kept for each slow subscriber before the newest are dropped; 0 keeps
  /// everything. `lingerMs`: how long closing waits for what is still queued.
  explicit LivePublisher(int sendQueue = 1000, int lingerMs = 2000);

  std::string secure(const CurveKeys& keys) { return endpoint.secure(keys); }
  std::string attach(const LiveEndpoint& where) { return endpoint.attach(where); }
  std::string lastEndpoint() const { return endpoint.lastEndpoint(); }

  /// Sends one channel-group message under its topic, as two frames. Never blocks.
  void send(std::string_view topic, const unsigned char* message, std::size_t size);

  /// How many subscriptions cover `topic` (subscriptions are prefixes), as far as heard.
  std::size_t subscribers(std::string_view topic);
  /// Waits until every topic has `count` subscriptions, or `timeout` passes; true when they have.
  bool waitForSubscribers(const std::vector<std::string>& topics, std::size_t count, std::chrono::milliseconds timeout);

  zmq::context_t& context() { return endpoint.context(); }

 private:
  /// Reads the subscription messages that have come in; true when there were any.
  bool hear();

  LiveSocket endpoint;
  std::map<std::string, std::size_t, std::less<>> subscriptions;
};

}  // namespace quillon
