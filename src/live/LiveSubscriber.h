#pragma once
// The receiving end of a live connection: a SUB socket on the topics of the groups a viewer needs.

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>
#include <zmq.hpp>

#include "live/LiveInbox.h"
#include "live/LiveSocket.h"

namespace quillon {

/// One received ZeroMQ message: its first two frames and how many it had.
struct LiveMessage {
  zmq::message_t topic, payload;
  std::size_t frames = 0;

  LiveFrame topicFrame() const { return {topic.data<unsigned char>(), topic.size()}; }
  LiveFrame payloadFrame() const { return {payload.data<unsigned char>(), payload.size()}; }
};

/// Subscribes to topics and reads what arrives, without ever blocking unless asked to wait.
/// Its receive queue is bounded: a source faster than the reader is held back by TCP and
/// loses its newest messages at the publisher, never fills the viewer's memory.
class LiveSubscriber {
 public:
  /// At most `receiveQueue` whole messages wait in ZeroMQ's queue. A frame over `limit` bytes
  /// makes ZeroMQ close the connection that carried it before reading it in (tcp and ipc;
  /// inproc frames reach the inbox, which drops them); the subscriber counts the lost
  /// connection and connects again where it had connected.
  explicit LiveSubscriber(std::size_t limit = kLiveMessageLimit, int receiveQueue = kReceiveQueue);
  ~LiveSubscriber();
  LiveSubscriber(const LiveSubscriber&) = delete;
  LiveSubscriber& operator=(const LiveSubscriber&) = delete;

  std::string secure(const CurveKeys& keys) { return endpoint.secure(keys); }
  std::string attach(const LiveEndpoint& where);
  std::string lastEndpoint() const { return endpoint.lastEndpoint(); }

  /// Subscribes to exactly these topics, each once.
  void subscribe(const std::vector<std::string>& topics);

  /// Waits up to `timeout` for something to read; true when there is.
  bool wait(std::chrono::milliseconds timeout);
  /// Reads one whole message without waiting; false when none is waiting.
  bool receive(LiveMessage& message);
  /// Reads what has arrived into `inbox`, at most `budget` messages; true when more may wait.
  bool drain(LiveInbox& inbox, std::size_t budget);

  /// The descriptor that an event loop watches. It only says "look": it is edge-triggered and
  /// ZeroMQ clears it whenever the socket is used, so a reader must drain until `drain` says
  /// nothing more waits, then go back to the loop.
  int fd() const;

  zmq::context_t& context() { return endpoint.context(); }

  static constexpr int kReceiveQueue = 100;

  /// Connections that were closed, by a peer, the network, or for a frame over the limit.
  std::uint64_t lostConnections() const { return lost; }

 private:
  /// Handles what the socket's monitor has reported.
  void watchConnections();

  LiveSocket endpoint;
  zmq::socket_t monitor;  // in the socket's context; closed before it
  std::vector<std::string> connected;
  std::vector<std::string> subscribed;
  std::uint64_t lost = 0;
  LiveMessage scratch;
};

}  // namespace quillon
