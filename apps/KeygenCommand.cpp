// quillon keygen: a CURVE key pair for the live bus.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "Commands.h"
#include "live/CurveKeys.h"

namespace quillon::app {
namespace {

int runKeygen(const std::string& name) {
  const auto [publicKey, secretKey] = MakeCurveKeyPair();
  if (publicKey.empty()) {
    std::cerr << "quillon keygen: this ZeroMQ library was built without CURVE security\n";
    return 1;
  }
  const std::string secretPath = name + ".secret", publicPath = name + ".public";
  {
    // Made unreadable to others before the secret goes in.
    std::ofstream(secretPath, std::ios::trunc).close();
    std::error_code ec;
    std::filesystem::permissions(secretPath, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write,
                                 ec);
    std::ofstream secret(secretPath, std::ios::trunc);
    std::ofstream pub(publicPath, std::ios::trunc);
    if (ec || !(secret << secretKey << '\n') || !(pub << publicKey << '\n')) {
      std::cerr << "quillon keygen: cannot write " << secretPath << " and " << publicPath << '\n';
      return 2;
    }
  }
  std::cout << "Wrote " << secretPath << " (keep it to this side) and " << publicPath << '\n';
  return 0;
}

}  // namespace

void addKeygenCommand(CLI::App& app, Action& run) {
  auto name = std::make_shared<std::string>();
  CLI::App* cmd = app.add_subcommand("keygen", "Make a CURVE key pair for the live bus: NAME.secret and NAME.public");
  cmd->add_option("name", *name, "Path and name of the two key files, without extension")->required();
  cmd->callback([&run, name] { run = [name] { return runKeygen(*name); }; });
}

}  // namespace quillon::app
