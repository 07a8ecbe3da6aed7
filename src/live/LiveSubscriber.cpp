#include "live/LiveSubscriber.h"

#include <algorithm>

namespace quillon {

namespace {

// Each subscriber has a context of its own, so one name serves them all.
constexpr const char* kMonitorEndpoint = "inproc://quillon-subscriber-monitor";

}  // namespace

LiveSubscriber::LiveSubscriber(std::size_t limit, int receiveQueue)
    : endpoint(zmq::socket_type::sub), monitor(endpoint.context(), zmq::socket_type::pair) {
  zmq::socket_t& s = endpoint.socket();
  s.set(zmq::sockopt::rcvhwm, receiveQueue);
  s.set(zmq::sockopt::maxmsgsize, static_cast<std::int64_t>(limit));
  s.set(zmq::sockopt::linger, 0);
  monitor.set(zmq::sockopt::linger, 0);
  zmq_socket_monitor(s.handle(), kMonitorEndpoint, ZMQ_EVENT_DISCONNECTED);
  monitor.connect(kMonitorEndpoint);
}

LiveSubscriber::~LiveSubscriber() {
  zmq_socket_monitor(endpoint.socket().handle(), nullptr, 0);
  monitor.close();
}

std::string LiveSubscriber::attach(const LiveEndpoint& where) {
  std::string error = endpoint.attach(where);
  if (error.empty() && where.how == LiveAttach::kConnect) connected.push_back(endpoint.lastEndpoint());
  return error;
}

void LiveSubscriber::watchConnections() {
  // An event is two frames: the event number (u16) with a value (u32), then the endpoint.
  zmq::message_t event, address;
  while (monitor.recv(event, zmq::recv_flags::dontwait)) {
    if (!event.more() || !monitor.recv(address)) continue;
    ++lost;
    // ZeroMQ reconnects after a network failure but gives up on a peer that broke the
    // protocol, an oversized frame included; a viewer that connected wants its source back.
    const std::string where = address.to_string();
    if (std::find(connected.begin(), connected.end(), where) == connected.end()) continue;
    try {
      endpoint.socket().disconnect(where);
    } catch (const zmq::error_t&) {
      // Already gone from the socket's list.
    }
    endpoint.attach({LiveAttach::kConnect, where});
  }
}

void LiveSubscriber::subscribe(const std::vector<std::string>& topics) {
  std::vector<std::string> wanted = topics;
  std::sort(wanted.begin(), wanted.end());
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  zmq::socket_t& s = endpoint.socket();
  for (const std::string& topic : subscribed)
    if (!std::binary_search(wanted.begin(), wanted.end(), topic)) s.set(zmq::sockopt::unsubscribe, topic);
  for (const std::string& topic : wanted)
    if (!std::binary_search(subscribed.begin(), subscribed.end(), topic)) s.set(zmq::sockopt::subscribe, topic);
  subscribed = std::move(wanted);
}

bool LiveSubscriber::wait(std::chrono::milliseconds timeout) {
  zmq::pollitem_t items[] = {{endpoint.socket().handle(), 0, ZMQ_POLLIN, 0}, {monitor.handle(), 0, ZMQ_POLLIN, 0}};
  try {
    return zmq::poll(items, 2, timeout) > 0;
  } catch (const zmq::error_t&) {
    return false;  // a signal interrupted the wait; the caller looks again
  }
}

bool LiveSubscriber::receive(LiveMessage& message) {
  zmq::socket_t& s = endpoint.socket();
  if (!s.recv(message.topic, zmq::recv_flags::dontwait)) {
    watchConnections();
    return false;
  }
  // The parts of a message arrive together, so the rest never has to be waited for.
  message.frames = 1;
  if (!message.topic.more()) {
    message.payload.rebuild();
    return true;
  }
  (void)s.recv(message.payload);
  ++message.frames;
  zmq::message_t extra;
  for (bool more = message.payload.more(); more; more = extra.more()) {
    (void)s.recv(extra);
    ++message.frames;
  }
  return true;
}

bool LiveSubscriber::drain(LiveInbox& inbox, std::size_t budget) {
  const std::uint64_t lostBefore = lost;
  bool more = true;
  for (std::size_t n = 0; n < budget && more; ++n) {
    more = receive(scratch);
    if (more) inbox.offer(scratch.frames, scratch.topicFrame(), scratch.payloadFrame());
  }
  for (std::uint64_t i = lostBefore; i < lost; ++i) inbox.noteLostConnection();
  return more;
}

int LiveSubscriber::fd() const { return endpoint.socket().get(zmq::sockopt::fd); }

}  // namespace quillon
