#include "live/LiveSocket.h"

#include "live/ZapAuthenticator.h"

namespace quillon {

LiveSocket::LiveSocket(zmq::socket_type type) : ctx(1), sock(ctx, type) {}

LiveSocket::~LiveSocket() {
  sock.close();
  if (authenticator) {
    ctx.shutdown();  // ends the handler's wait
    authenticator.reset();
  }
}

std::string LiveSocket::secure(const CurveKeys& given) {
  if (std::string error = CheckCurveKeys(given); !error.empty()) return error;
  try {
    // The options apply to the connections made from now on.
    if (given.client()) {
      auto [publicKey, secretKey] =
          given.secretKey.empty() ? MakeCurveKeyPair() : std::pair(CurvePublicKey(given.secretKey), given.secretKey);
      sock.set(zmq::sockopt::curve_serverkey, given.serverKey);
      sock.set(zmq::sockopt::curve_publickey, publicKey);
      sock.set(zmq::sockopt::curve_secretkey, secretKey);
    } else if (given.enabled()) {
      sock.set(zmq::sockopt::curve_server, 1);
      sock.set(zmq::sockopt::curve_secretkey, given.secretKey);
      if (!given.clientKeys.empty() && !authenticator)
        authenticator = std::make_unique<ZapAuthenticator>(ctx, given.clientKeys);
    } else if (secured) {
      sock.set(zmq::sockopt::curve_server, 0);  // back to no security
    }
  } catch (const zmq::error_t& e) {
    return std::string("cannot use the CURVE keys: ") + e.what();
  }
  secured = given.enabled();
  return {};
}

std::string LiveSocket::attach(const LiveEndpoint& endpoint) {
  try {
    if (endpoint.how == LiveAttach::kBind)
      sock.bind(endpoint.address);
    else
      sock.connect(endpoint.address);
  } catch (const zmq::error_t& e) {
    return std::string("cannot ") + (endpoint.how == LiveAttach::kBind ? "bind " : "connect to ") + endpoint.address +
           ": " + e.what();
  }
  return {};
}

std::string LiveSocket::lastEndpoint() const { return sock.get(zmq::sockopt::last_endpoint); }

}  // namespace quillon
