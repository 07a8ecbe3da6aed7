#include "LiveOptions.h"

namespace quillon::app {

void AddKeyOptions(CLI::App& cmd, LiveOptions& options) {
  cmd.add_option("--curve-secret-key", options.secretKey,
                 "This side's CURVE secret key: Z85 text or a file holding it (see docs/live-data.md)");
  cmd.add_option("--curve-server-key", options.serverKey,
                 "The CURVE server's public key (Z85 text or a file); makes this side the client");
  cmd.add_option("--curve-client-key", options.clientKeys,
                 "A client's CURVE public key that this server lets in, or a file of them one a line; may repeat")
      ->allow_extra_args(false);
}

void LiveOptions::add(CLI::App& cmd, const std::string& peer) {
  cmd.add_option("--connect", connect, "Connect to " + peer + " at this ZeroMQ endpoint; may repeat")
      ->allow_extra_args(false);
  cmd.add_option("--bind", bind, "Bind this ZeroMQ endpoint for " + peer + " to connect to; may repeat")
      ->allow_extra_args(false);
  AddKeyOptions(cmd, *this);
}

std::vector<LiveEndpoint> LiveOptions::endpoints() const {
  std::vector<LiveEndpoint> all;
  for (const std::string& address : bind) all.push_back({LiveAttach::kBind, address});
  for (const std::string& address : connect) all.push_back({LiveAttach::kConnect, address});
  return all;
}

std::string LiveOptions::readKeys(CurveKeys& keys) const {
  std::string error;
  if (!secretKey.empty()) error = ReadCurveKey(secretKey, keys.secretKey);
  if (error.empty() && !serverKey.empty()) error = ReadCurveKey(serverKey, keys.serverKey);
  for (const std::string& value : clientKeys)
    if (error.empty()) error = ReadCurveKeys(value, keys.clientKeys);
  return error;
}

}  // namespace quillon::app
