#pragma once
// The authentication handler of one ZeroMQ context: lets in CURVE clients whose keys are listed.

#include <array>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>
#include <zmq.hpp>

namespace quillon {

/// Answers the context's authentication requests on a thread of its own: a CURVE client whose
/// public key is on the list is let in, every other connection is refused. Runs until the
/// context is shut down, which the owner does before destroying it.
class ZapAuthenticator {
 public:
  /// `clientKeys` in Z85 text, already checked. Throws zmq::error_t when the context already
  /// has a handler.
  ZapAuthenticator(zmq::context_t& context, const std::vector<std::string>& clientKeys);
  ~ZapAuthenticator();
  ZapAuthenticator(const ZapAuthenticator&) = delete;
  ZapAuthenticator& operator=(const ZapAuthenticator&) = delete;

 private:
  using Key = std::array<std::uint8_t, 32>;
  void serve();
  bool allowed(const zmq::message_t& mechanism, const zmq::message_t& credentials) const;

  zmq::socket_t socket;
  std::vector<Key> keys;
  std::thread worker;
};

}  // namespace quillon
