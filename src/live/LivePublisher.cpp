#include "live/LivePublisher.h"

#include <algorithm>

namespace quillon {

LivePublisher::LivePublisher(int sendQueue, int lingerMs) : endpoint(zmq::socket_type::xpub) {
  zmq::socket_t& s = endpoint.socket();
  s.set(zmq::sockopt::sndhwm, sendQueue);
  s.set(zmq::sockopt::linger, lingerMs);
  // Every subscription and cancellation is passed up, not only the first and the last of a
  // topic, so that each subscriber counts.
  s.set(zmq::sockopt::xpub_verboser, 1);
}

void LivePublisher::send(std::string_view topic, const unsigned char* message, std::size_t size) {
  zmq::socket_t& s = endpoint.socket();
  (void)s.send(zmq::buffer(topic), zmq::send_flags::sndmore | zmq::send_flags::dontwait);
  (void)s.send(zmq::const_buffer(message, size), zmq::send_flags::dontwait);
  hear();  // keeps the subscriptions from piling up in the socket
}

bool LivePublisher::hear() {
  zmq::socket_t& s = endpoint.socket();
  bool heard = false;
  zmq::message_t frame;
  while (s.recv(frame, zmq::recv_flags::dontwait)) {
    // A subscription is one byte, 1 to subscribe and 0 to cancel, then the topic prefix.
    if (frame.size() == 0 || frame.more()) continue;
    const auto* bytes = frame.data<char>();
    std::string prefix(bytes + 1, frame.size() - 1);
    if (bytes[0] == 1) {
      ++subscriptions[prefix];
    } else if (bytes[0] == 0) {
      auto found = subscriptions.find(prefix);
      if (found != subscriptions.end() && --found->second == 0) subscriptions.erase(found);
    }
    heard = true;
  }
  return heard;
}

std::size_t LivePublisher::subscribers(std::string_view topic) {
  hear();
  std::size_t count = 0;
  for (const auto& [prefix, n] : subscriptions)
    if (topic.starts_with(prefix)) count += n;
  return count;
}

bool LivePublisher::waitForSubscribers(const std::vector<std::string>& topics, std::size_t count,
                                       std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  zmq::pollitem_t item{endpoint.socket().handle(), 0, ZMQ_POLLIN, 0};
  while (true) {
    if (std::all_of(topics.begin(), topics.end(), [&](const std::string& t) { return subscribers(t) >= count; }))
      return true;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    try {
      zmq::poll(&item, 1, std::min(left, std::chrono::milliseconds(100)));
    } catch (const zmq::error_t&) {
      return false;  // interrupted by a signal
    }
  }
}

}  // namespace quillon
