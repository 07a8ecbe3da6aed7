#pragma once
// A forwarder between many publishers and many viewers, on ZeroMQ's own proxy.

#include <cstdint>
#include <string>
#include <thread>

#include "live/LiveSocket.h"

namespace quillon {

/// XSUB at the front, where publishers connect, and XPUB at the back, where viewers connect.
/// The viewers' subscriptions travel upstream, so a publisher sends only what someone wants.
/// The proxy runs on a thread of its own between `start` and `stop`.
class LiveProxy {
 public:
  LiveProxy();
  ~LiveProxy();
  LiveProxy(const LiveProxy&) = delete;
  LiveProxy& operator=(const LiveProxy&) = delete;

  /// The same keys serve both sides. Returns the error text, empty on success.
  std::string secure(const CurveKeys& keys);
  std::string attachFrontend(const LiveEndpoint& where) { return frontend.attach(where); }
  std::string attachBackend(const LiveEndpoint& where) { return backend.attach(where); }
  std::string frontendEndpoint() const { return frontend.lastEndpoint(); }
  std::string backendEndpoint() const { return backend.lastEndpoint(); }

  void start();
  /// Stops the forwarding and waits for the thread.
  void stop();

  /// What went through, read when the proxy has stopped.
  struct Traffic {
    std::uint64_t messages = 0, bytes = 0;  // from publishers to viewers
    std::uint64_t subscriptions = 0;        // from viewers to publishers
  };
  Traffic traffic() const { return counted; }

 private:
  LiveSocket frontend{zmq::socket_type::xsub};
  LiveSocket backend{zmq::socket_type::xpub};
  // Steers the proxy; both ends live in the frontend's context, as inproc requires.
  zmq::socket_t control, steered;
  std::thread worker;
  Traffic counted;
};

}  // namespace quillon
