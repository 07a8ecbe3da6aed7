#pragma once
// CURVE keys for the sockets of a live connection, as the user gives them.

#include <string>
#include <utility>
#include <vector>

namespace quillon {

/// Keys in ZeroMQ's Z85 text (40 characters). The side that knows the server's public key is
/// the client; the other side, with its own secret key, is the server.
struct CurveKeys {
  std::string secretKey;                // this side's own secret key
  std::string serverKey;                // the server's public key: makes this side a client
  std::vector<std::string> clientKeys;  // public keys of the clients a server lets in; empty: any

  bool enabled() const { return !secretKey.empty() || !serverKey.empty() || !clientKeys.empty(); }
  bool client() const { return !serverKey.empty(); }
};

/// Reads the keys of an option's value: the Z85 text itself, or the name of a file holding one
/// key a line, where a line that is no key and starts with '#' is a comment. Returns the error text, empty on success.
std::string ReadCurveKeys(const std::string& value, std::vector<std::string>& keys);
/// As ReadCurveKeys, for an option that takes exactly one key.
std::string ReadCurveKey(const std::string& value, std::string& key);

/// Whether the keys can be used: this ZeroMQ has CURVE, every key is well formed, a server has
/// its secret key, and only a server lists clients. The error text, empty when they can.
std::string CheckCurveKeys(const CurveKeys& keys);

/// A new key pair: {public, secret}. Empty texts when this ZeroMQ has no CURVE.
std::pair<std::string, std::string> MakeCurveKeyPair();
/// The public key that belongs to a secret key; empty when the key is not well formed.
std::string CurvePublicKey(const std::string& secretKey);

}  // namespace quillon
