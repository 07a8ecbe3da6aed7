#pragma once
// The subcommands of the `quillon` program; each adds itself to the command line.

#include <CLI/CLI.hpp>
#include <functional>

namespace quillon::app {

/// Sets `run` to the subcommand's action; its result is the exit status.
using Action = std::function<int()>;

void addCheckCommand(CLI::App& app, Action& run);
void addDemoCommand(CLI::App& app, Action& run);
void addRenderCommand(CLI::App& app, Action& run);
void addViewCommand(CLI::App& app, Action& run);

}  // namespace quillon::app
