// quillon proxy: one meeting point for many publishers and many viewers.
#include <chrono>
#include <iostream>
#include <memory>
#include <string>
#include <thread>

#include "Commands.h"
#include "LiveOptions.h"
#include "StopSignal.h"
#include "live/LiveProxy.h"

namespace quillon::app {
namespace {

struct ProxyOptions {
  std::string frontend, backend;
  LiveOptions keys;
  double duration = 0;  // seconds; 0: until stopped
};

int runProxy(const ProxyOptions& options) {
  CurveKeys keys;
  std::string error = options.keys.readKeys(keys);
  CatchStopSignals();
  LiveProxy proxy;
  if (error.empty()) error = proxy.secure(keys);
  if (error.empty()) error = proxy.attachFrontend({LiveAttach::kBind, options.frontend});
  if (error.empty()) error = proxy.attachBackend({LiveAttach::kBind, options.backend});
  if (!error.empty()) {
    std::cerr << "quillon proxy: " << error << '\n';
    return 1;
  }
  std::cerr << "quillon proxy: publishers connect to " << proxy.frontendEndpoint() << ", viewers to "
            << proxy.backendEndpoint() << std::endl;
  proxy.start();
  const auto start = std::chrono::steady_clock::now();
  const auto limit = std::chrono::duration<double>(options.duration);
  while (!StopRequested() && (options.duration <= 0 || std::chrono::steady_clock::now() - start < limit))
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  proxy.stop();
  const LiveProxy::Traffic traffic = proxy.traffic();
  std::cout << "Forwarded " << traffic.messages << " messages (" << traffic.bytes << " bytes) and "
            << traffic.subscriptions << " subscriptions" << std::endl;
  return 0;
}

}  // namespace

void addProxyCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<ProxyOptions>();
  CLI::App* cmd = app.add_subcommand("proxy", "Forward live data from many publishers to many viewers");
  cmd->add_option("--frontend", options->frontend, "Endpoint to bind for publishers, e.g. tcp://*:5555")->required();
  cmd->add_option("--backend", options->backend, "Endpoint to bind for viewers, e.g. tcp://*:5556")->required();
  AddKeyOptions(*cmd, options->keys);
  cmd->add_option("--duration", options->duration, "Stop after this many seconds")->check(CLI::NonNegativeNumber);
  cmd->callback([&run, options] { run = [options] { return runProxy(*options); }; });
}

}  // namespace quillon::app
