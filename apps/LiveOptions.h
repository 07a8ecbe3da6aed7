#pragma once
// The command-line options by which a command reaches a live bus: where, and with which keys.

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "live/CurveKeys.h"
#include "live/LiveSocket.h"

namespace quillon::app {

/// --connect and --bind (each may repeat) and the CURVE key options of one socket.
struct LiveOptions {
  std::vector<std::string> connect, bind;
  std::string secretKey, serverKey;
  std::vector<std::string> clientKeys;

  /// Adds the options to a command; `peer` names what sits at the other end, for the help.
  void add(CLI::App& cmd, const std::string& peer);
  bool given() const { return !connect.empty() || !bind.empty(); }
  std::vector<LiveEndpoint> endpoints() const;
  /// Reads the key options (texts or files). Returns the error text, empty on success.
  std::string readKeys(CurveKeys& keys) const;
};

/// Adds only the CURVE key options, for a command whose endpoints have names of their own.
void AddKeyOptions(CLI::App& cmd, LiveOptions& options);

/// Gives a socket (a LiveSubscriber, LivePublisher or LiveSocket) its keys and attaches it to
/// every endpoint; says on `log` where it bound, since a bind to port "*" takes any free port.
/// Returns the error text, empty on success.
template <class Socket>
std::string AttachLive(Socket& socket, const LiveOptions& options, std::string_view command,
                       std::ostream& log = std::cerr) {
  CurveKeys keys;
  std::string error = options.readKeys(keys);
  if (error.empty()) error = socket.secure(keys);
  for (const LiveEndpoint& endpoint : options.endpoints()) {
    if (!error.empty()) break;
    error = socket.attach(endpoint);
    if (error.empty() && endpoint.how == LiveAttach::kBind)
      log << command << ": bound " << socket.lastEndpoint() << std::endl;
  }
  return error;
}

}  // namespace quillon::app
