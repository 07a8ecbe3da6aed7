#pragma once
// A ZeroMQ socket of a live connection, with the context, the keys and the authentication it uses.

#include <memory>
#include <string>
#include <zmq.hpp>

#include "live/CurveKeys.h"

namespace quillon {

class ZapAuthenticator;

/// How a socket reaches an endpoint.
enum class LiveAttach { kConnect, kBind };

struct LiveEndpoint {
  LiveAttach how = LiveAttach::kConnect;
  std::string address;  // a ZeroMQ endpoint: "tcp://127.0.0.1:5556", "ipc:///tmp/arm"
};

/// One socket in a context of its own, so that its authentication handler serves it alone.
class LiveSocket {
 public:
  explicit LiveSocket(zmq::socket_type type);
  ~LiveSocket();
  LiveSocket(const LiveSocket&) = delete;
  LiveSocket& operator=(const LiveSocket&) = delete;

  /// Keys for the connections made from now on. A client without a secret key of its own gets
  /// one made up for the session. Returns the error text, empty on success.
  std::string secure(const CurveKeys& keys);
  /// Connects or binds. A bind to "tcp://127.0.0.1:*" takes a free port, which `lastEndpoint`
  /// then names. Returns the error text, empty on success.
  std::string attach(const LiveEndpoint& endpoint);
  std::string lastEndpoint() const;

  zmq::socket_t& socket() { return sock; }
  const zmq::socket_t& socket() const { return sock; }
  zmq::context_t& context() { return ctx; }

 private:
  zmq::context_t ctx;
  std::unique_ptr<ZapAuthenticator> authenticator;
  zmq::socket_t sock;
  bool secured = false;
};

}  // namespace quillon
