// quillon: the command-line face of the viewer.
#include <exception>
#include <iostream>

#include "Commands.h"

namespace {

int runCommandLine(int argc, char** argv) {
  CLI::App app{"quillon: an embeddable 3D viewer for live measurement data"};
  app.require_subcommand(1);
  app.set_version_flag("--version", "quillon " QUILLON_VERSION);
  quillon::app::Action run;
  quillon::app::addCheckCommand(app, run);
  quillon::app::addDemoCommand(app, run);
  quillon::app::addRenderCommand(app, run);
  quillon::app::addViewCommand(app, run);
  quillon::app::addPublishCommand(app, run);
  quillon::app::addRecordCommand(app, run);
  quillon::app::addProxyCommand(app, run);
  quillon::app::addKeygenCommand(app, run);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    // A first word that is no subcommand is most likely a mistyped one: say which.
    if (argc > 1 && argv[1][0] != '-' && app.get_subcommands().empty()) {
      std::cerr << "quillon: unknown subcommand '" << argv[1] << "'; the subcommands are";
      const char* separator = " ";
      for (const CLI::App* sub : app.get_subcommands([](CLI::App*) { return true; })) {
        std::cerr << separator << sub->get_name();
        separator = ", ";
      }
      std::cerr << " (see quillon --help)\n";
      return 2;
    }
    return app.exit(e) == 0 ? 0 : 2;  // usage errors exit with 2
  }
  return run ? run() : 2;
}

}  // namespace

int main(int argc, char** argv) {
  // A command that throws ends with its message and status 2, not with an abort.
  try {
    return runCommandLine(argc, argv);
  } catch (const std::exception& e) {
    std::cerr << "quillon: " << e.what() << "\n";
  } catch (...) {
    std::cerr << "quillon: unexpected failure\n";
  }
  return 2;
}
