// quillon demo: the bundled example, drawn headlessly into a PNG image.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "Commands.h"
#include "RenderSupport.h"

namespace quillon::app {
namespace {

int runDemo(const std::string& outputDir) {
  const std::string path = std::string(QUILLON_EXAMPLES_DIR) + "/scene_tour.xml";
  std::string xml;
  if (!ReadFile(path, xml)) {
    std::cerr << "quillon demo: cannot read " << path << '\n';
    return 2;
  }
  std::error_code ec;
  const std::filesystem::path dir =
      outputDir.empty() ? std::filesystem::temp_directory_path(ec) / "quillon-demo" : std::filesystem::path(outputDir);
  std::filesystem::create_directories(dir, ec);
  const std::string image = (dir / "scene_tour.png").string();

  OffscreenViewer viewer(800, 600);
  if (!viewer.ok()) {
    std::cerr << "quillon demo: no offscreen render area (EGL) on this machine\n";
    return 1;
  }
  if (!viewer.load(xml)) {
    std::cerr << "quillon demo: the example was refused:\n" << viewer.errorText() << '\n';
    return 1;
  }
  viewer.viewAll();
  if (!viewer.writePng(image)) {
    std::cerr << "quillon demo: cannot write " << image << '\n';
    return 1;
  }
  std::cout << "Rendered " << path << "\ninto " << image << '\n';
  return 0;
}

}  // namespace

void addDemoCommand(CLI::App& app, Action& run) {
  auto outputDir = std::make_shared<std::string>();
  CLI::App* cmd = app.add_subcommand("demo", "Render the bundled example to a PNG image, headlessly");
  cmd->add_option("--out", *outputDir, "Folder for the image (default: quillon-demo in the temporary folder)");
  cmd->callback([&run, outputDir] { run = [outputDir] { return runDemo(*outputDir); }; });
}

}  // namespace quillon::app
