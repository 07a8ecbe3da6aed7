#include "live/LiveProxy.h"

#include <array>
#include <cstring>

namespace quillon {
namespace {

constexpr const char* kControlEndpoint = "inproc://quillon-proxy-control";

}  // namespace

LiveProxy::LiveProxy()
    : control(frontend.context(), zmq::socket_type::pair), steered(frontend.context(), zmq::socket_type::pair) {
  for (zmq::socket_t* s : {&control, &steered}) s->set(zmq::sockopt::linger, 0);
  // Should the proxy have ended on its own, nobody answers; stopping must not hang on that.
  control.set(zmq::sockopt::rcvtimeo, 2000);
  control.set(zmq::sockopt::sndtimeo, 2000);
  frontend.socket().set(zmq::sockopt::linger, 0);
  backend.socket().set(zmq::sockopt::linger, 0);
  // Every viewer's subscription goes up, not only the first of a topic, so that the publishers
  // joined at the time can count the viewers behind the proxy.
  backend.socket().set(zmq::sockopt::xpub_verboser, 1);
  steered.bind(kControlEndpoint);
  control.connect(kControlEndpoint);
}

LiveProxy::~LiveProxy() {
  stop();
  control.close();
  steered.close();
}

std::string LiveProxy::secure(const CurveKeys& keys) {
  std::string error = frontend.secure(keys);
  return error.empty() ? backend.secure(keys) : error;
}

void LiveProxy::start() {
  if (worker.joinable()) return;
  worker = std::thread([this] {
    try {
      zmq::proxy_steerable(frontend.socket(), backend.socket(), zmq::socket_ref(), steered);
    } catch (const zmq::error_t&) {
      // The context went away underneath; there is nothing left to forward.
    }
  });
}

void LiveProxy::stop() {
  if (!worker.joinable()) return;
  // The proxy answers STATISTICS with eight counts: messages and bytes in and out of the
  // frontend, then of the backend.
  std::array<std::uint64_t, 8> stats{};
  try {
    control.send(zmq::str_buffer("STATISTICS"));
    for (std::uint64_t& value : stats) {
      zmq::message_t frame;
      if (control.recv(frame) && frame.size() == sizeof value) std::memcpy(&value, frame.data(), sizeof value);
    }
    control.send(zmq::str_buffer("TERMINATE"));
  } catch (const zmq::error_t&) {
  }
  worker.join();
  counted = {stats[0], stats[1], stats[4]};
}

}  // namespace quillon
