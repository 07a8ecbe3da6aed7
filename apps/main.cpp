// quillon: the command-line face of the viewer.
#include "Commands.h"

int main(int argc, char** argv) {
  CLI::App app{"quillon: an embeddable 3D viewer for live measurement data"};
  app.require_subcommand(1);
  quillon::app::Action run;
  quillon::app::addCheckCommand(app, run);
  quillon::app::addDemoCommand(app, run);
  quillon::app::addRenderCommand(app, run);
  quillon::app::addViewCommand(app, run);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? 0 : 2;  // usage errors exit with 2
  }
  return run ? run() : 2;
}
