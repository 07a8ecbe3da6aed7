#include "live/ZapAuthenticator.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace quillon {
namespace {

// ZeroMQ asks the handler at this fixed address of the socket's own context.
constexpr const char* kZapEndpoint = "inproc://zeromq.zap.01";

std::string_view Text(const zmq::message_t& frame) { return {frame.data<char>(), frame.size()}; }

}  // namespace

ZapAuthenticator::ZapAuthenticator(zmq::context_t& context, const std::vector<std::string>& clientKeys)
    : socket(context, zmq::socket_type::rep) {
  for (const std::string& text : clientKeys) {
    Key key{};
    if (zmq_z85_decode(key.data(), text.c_str())) keys.push_back(key);
  }
  socket.set(zmq::sockopt::linger, 0);
  socket.bind(kZapEndpoint);
  worker = std::thread([this] { serve(); });
}

ZapAuthenticator::~ZapAuthenticator() {
  if (worker.joinable()) worker.join();
}

bool ZapAuthenticator::allowed(const zmq::message_t& mechanism, const zmq::message_t& credentials) const {
  if (Text(mechanism) != "CURVE" || credentials.size() != sizeof(Key)) return false;
  return std::any_of(keys.begin(), keys.end(),
                     [&](const Key& key) { return std::memcmp(key.data(), credentials.data(), key.size()) == 0; });
}

void ZapAuthenticator::serve() {
  // A request: version, request id, domain, address, routing id, mechanism, credentials.
  constexpr std::size_t kVersion = 0, kRequestId = 1, kMechanism = 5, kCredentials = 6;
  try {
    while (true) {
      std::vector<zmq::message_t> request;
      do {
        request.emplace_back();
        if (!socket.recv(request.back())) return;
      } while (request.back().more());
      const bool ok = request.size() > kCredentials && Text(request[kVersion]) == "1.0" &&
                      allowed(request[kMechanism], request[kCredentials]);
      const std::string_view requestId = request.size() > kRequestId ? Text(request[kRequestId]) : "";
      socket.send(zmq::buffer(std::string_view("1.0")), zmq::send_flags::sndmore);
      socket.send(zmq::buffer(requestId), zmq::send_flags::sndmore);
      socket.send(zmq::buffer(std::string_view(ok ? "200" : "400")), zmq::send_flags::sndmore);
      socket.send(zmq::buffer(std::string_view(ok ? "OK" : "client key not allowed")), zmq::send_flags::sndmore);
      socket.send(zmq::buffer(std::string_view()), zmq::send_flags::sndmore);
      socket.send(zmq::buffer(std::string_view()), zmq::send_flags::none);
    }
  } catch (const zmq::error_t&) {
    // The context was shut down: the owner is going.
  }
  socket.close();
}

}  // namespace quillon
