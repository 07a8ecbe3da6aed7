#include "live/CurveKeys.h"

#include <zmq.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace quillon {
namespace {

constexpr std::size_t kZ85KeyLength = 40;

bool WellFormed(const std::string& key) {
  std::uint8_t binary[32];
  return key.size() == kZ85KeyLength && zmq_z85_decode(binary, key.c_str()) != nullptr;
}

std::string Trimmed(std::string line) {
  const auto blank = [](unsigned char c) { return std::isspace(c) != 0; };
  line.erase(line.begin(), std::find_if_not(line.begin(), line.end(), blank));
  line.erase(std::find_if_not(line.rbegin(), line.rend(), blank).base(), line.end());
  return line;
}

}  // namespace

std::string ReadCurveKeys(const std::string& value, std::vector<std::string>& keys) {
  if (WellFormed(value)) {
    keys.push_back(value);
    return {};
  }
  std::error_code ec;
  if (!std::filesystem::is_regular_file(value, ec))
    return "'" + value + "' is neither a key (40 characters of Z85 text) nor a file holding one";
  std::ifstream in(value);
  std::size_t found = 0, lineNumber = 0;
  for (std::string line; std::getline(in, line);) {
    ++lineNumber;
    const std::string key = Trimmed(line);
    // '#' is a Z85 character too, so a line is a comment only when it is no key.
    if (key.empty() || (key[0] == '#' && !WellFormed(key))) continue;
    if (!WellFormed(key)) return value + ":" + std::to_string(lineNumber) + ": not a key (40 characters of Z85 text)";
    keys.push_back(key);
    ++found;
  }
  if (in.bad()) return "cannot read " + value;
  if (found == 0) return value + " holds no key";
  return {};
}

std::string ReadCurveKey(const std::string& value, std::string& key) {
  std::vector<std::string> keys;
  std::string error = ReadCurveKeys(value, keys);
  if (error.empty() && keys.size() != 1)
    error = value + " holds " + std::to_string(keys.size()) + " keys; one is wanted";
  if (error.empty()) key = keys.front();
  return error;
}

std::string CheckCurveKeys(const CurveKeys& keys) {
  if (!keys.enabled()) return {};
  if (!zmq_has("curve")) return "this ZeroMQ library was built without CURVE security, so it cannot use keys";
  if (!keys.secretKey.empty() && !WellFormed(keys.secretKey)) return "the secret key is not 40 characters of Z85 text";
  if (!keys.serverKey.empty() && !WellFormed(keys.serverKey)) return "the server key is not 40 characters of Z85 text";
  for (const std::string& key : keys.clientKeys)
    if (!WellFormed(key)) return "the client key '" + key + "' is not 40 characters of Z85 text";
  if (!keys.client() && keys.secretKey.empty())
    return "a CURVE server needs its secret key (--curve-secret-key); a client needs the server's public key "
           "(--curve-server-key)";
  if (keys.client() && !keys.clientKeys.empty())
    return "client keys are checked by the server; a side that has the server's key is a client";
  return {};
}

std::pair<std::string, std::string> MakeCurveKeyPair() {
  char publicKey[kZ85KeyLength + 1] = {};
  char secretKey[kZ85KeyLength + 1] = {};
  if (zmq_curve_keypair(publicKey, secretKey) != 0) return {};
  return {publicKey, secretKey};
}

std::string CurvePublicKey(const std::string& secretKey) {
  char publicKey[kZ85KeyLength + 1] = {};
  if (!WellFormed(secretKey) || zmq_curve_public(publicKey, secretKey.c_str()) != 0) return {};
  return publicKey;
}

}  // namespace quillon
