#pragma once
// The subcommands of the `quillon` program; each adds itself to the command line.

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace quillon::app {

/// Sets `run` to the subcommand's action; its result is the exit status.
using Action = std::function<int()>;

void addCheckCommand(CLI::App& app, Action& run);
void addDemoCommand(CLI::App& app, Action& run);
void addRenderCommand(CLI::App& app, Action& run);
void addViewCommand(CLI::App& app, Action& run);
void addPublishCommand(CLI::App& app, Action& run);
void addRecordCommand(CLI::App& app, Action& run);
void addProxyCommand(CLI::App& app, Action& run);
void addKeygenCommand(CLI::App& app, Action& run);

/// Opens the interactive viewer on a document and replays a stream (none when empty) in real
/// time, until the window is closed. The camera starts where position and orientation (the
/// host's camera texts) put it, or fitted to the scene when they are empty. Returns the exit status.
int RunViewer(const std::string& document, const std::string& stream, double speed, const std::string& position = {},
              const std::string& orientation = {});

}  // namespace quillon::app
